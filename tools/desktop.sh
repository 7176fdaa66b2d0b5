# shellcheck shell=bash
# A display and a Wine prefix of this run's own; sourced after lib.sh. `close_desktop` ends both.

wine64=/usr/lib/wine/wine64
wine32=/usr/lib/wine/wine
# Neither a browser engine nor another runtime is asked for while a prefix is made.
export WINEDLLOVERRIDES='mscoree=;mshtml='
desktop_processes=()
prefix_open=false

# open_display WIDTHxHEIGHT: starts a virtual display under the first free number, and a window manager: without one every
# managed window stalls for seconds on closing.
open_display() {
  local number
  number=$(mktemp)
  Xvfb -displayfd 3 -screen 0 "$1x24" -nolisten tcp 3> "$number" > /dev/null 2>&1 &
  desktop_processes+=($!)
  local attempt
  for ((attempt = 0; attempt < 3600; ++attempt)); do
    if [[ -s $number ]] || ! kill -0 "${desktop_processes[0]}" 2> /dev/null; then break; fi
    sleep 0.05
  done
  DISPLAY=:$(< "$number")
  rm -f "$number"
  [[ $DISPLAY != : ]] || { echo 'the virtual display does not start' >&2; return 1; }
  export DISPLAY
  openbox > /dev/null 2>&1 &
  desktop_processes+=($!)
}

has_x86() { [[ -x $wine32 ]]; }

# platform PRESET: the name of what the programs of a build run on, such as wine8-x64.
platform() {
  local version
  version=$("$wine64" --version)
  version=${version#wine-}
  [[ $1 == win32 ]] && echo "wine${version%%.*}-x86" || echo "wine${version%%.*}-x64"
}

# A prefix that another script has opened is left alone.
close_prefix() { if $prefix_open; then wineserver -k > /dev/null 2>&1 || true; fi; }

# open_prefix FOLDER: makes the Wine prefix, or takes it up again when the same Wine made it. It takes the
# place of the one before.
open_prefix() {
  close_prefix
  export WINEPREFIX=$PWD/$1
  prefix_open=true
  local made_by
  made_by="$(dpkg-query -W -f='${Version}' wine64) x86:$(has_x86 && echo yes || echo no) y:empty"
  [[ $(cat "$WINEPREFIX/made-by" 2> /dev/null) == "$made_by" ]] && return 0
  say 'preparing a Wine prefix'
  rm -rf "$WINEPREFIX"
  mkdir -p "$WINEPREFIX"
  # On machines without a 32-bit Wine it complains and goes on.
  "$wine64" wineboot -i > /dev/null 2>&1 || true
  wineserver -w
  # A drive whose medium is missing, for the tests.
  ln -sfn /nonexistent "$WINEPREFIX/dosdevices/y:"
  [[ -f $WINEPREFIX/system.reg ]] || { echo 'the Wine prefix cannot be made' >&2; return 1; }
  echo "$made_by" > "$WINEPREFIX/made-by"
}

# register PRESET: registers both components of a build.
register() { each_component "$1" /s; }

# unregister PRESET: takes them away again, also where they are not registered.
unregister() { each_component "$1" /s /u; }

each_component() {
  local preset=$1 loader=$wine64 tool='C:\windows\system32\regsvr32.exe' component
  shift
  if [[ $preset == win32 ]]; then
    loader=$wine32 tool='C:\windows\syswow64\regsvr32.exe'
  fi
  for component in KorvelRuntime KRXDialogs; do
    "$loader" "$tool" "$@" "$(windows_path "build/$preset/bin/$component.dll")" 2> /dev/null ||
      { echo "$component.dll ($preset): regsvr32 $* fails" >&2; return 1; }
  done
}

# windows_path FILE: how Wine names a file of this checkout.
windows_path() {
  local file=$PWD/$1
  echo "Z:${file//\//\\}"
}

close_desktop() {
  close_prefix
  prefix_open=false
  if ((${#desktop_processes[@]})); then
    kill "${desktop_processes[@]}" 2> /dev/null || true
    wait "${desktop_processes[@]}" 2> /dev/null || true
  fi
  desktop_processes=()
}
