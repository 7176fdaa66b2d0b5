# shellcheck shell=bash
# What the steps of ./package share; sourced after lib.sh.
# shellcheck disable=SC2034 # read by the steps

widths=(x64 x86)
package=build/package # what the steps take from each other
dist=dist
version=$(tools/package/version)
modules=(KRXDialogs.dll KorvelRuntime.dll krxusers.exe every_dialog.exe)

# Whatever writes down a moment writes down that of the commit.
if [[ -z ${SOURCE_DATE_EPOCH:-} ]]; then
  SOURCE_DATE_EPOCH=$(git log -1 --format=%ct 2> /dev/null) ||
    { echo 'no commit gives the date: set SOURCE_DATE_EPOCH' >&2; exit 1; }
fi
export SOURCE_DATE_EPOCH TZ=UTC LC_ALL=C.UTF-8
umask 022

# need TOOL...: fails, with a word, when one of them is missing.
need() {
  local tool missing=()
  for tool in "$@"; do
    command -v "$tool" > /dev/null || missing+=("$tool")
  done
  ((${#missing[@]} == 0)) || { echo "not installed: ${missing[*]}; tools/setup --package installs it" >&2; exit 1; }
}

# prefix WIDTH: the cross compiler's tools of a width begin with it.
prefix() { [[ $1 == x64 ]] && echo x86_64-w64-mingw32 || echo i686-w64-mingw32; }

# built WIDTH: fails, with a word, where nothing has been built.
built() { [[ -f $package/$1/KRXDialogs.dll ]] || { echo "$1 is not built: tools/package/build does it" >&2; exit 1; }; }

# make_zip FILE FOLDER: an archive of a folder, which is its one entry on top. The same files give the same bytes;
# moments in it are even seconds.
make_zip() {
  local file=$PWD/$1
  mkdir -p "$(dirname "$1")"
  rm -f "$file"
  find "$2" -exec touch -h -d "@$((SOURCE_DATE_EPOCH / 2 * 2))" {} +
  (cd "$(dirname "$2")" && find "$(basename "$2")" | LC_ALL=C sort | zip -q -X -9 -@ "$file")
  echo "   $1"
}
