# shellcheck shell=bash
# The second platform: a Debian 13 with its Wine in a folder, and commands run inside; sourced after
# lib.sh.

trixie=build/trixie
sums=build/log/sums-inside.txt

# contained COMMAND...: runs a command with root rights where its mounts and processes end with it, and
# with this script, however that ends.
contained() {
  local lifeline status=0
  exec {lifeline}> >(as_root unshare --mount --pid --fork --kill-child tools/contained "$@")
  wait $! || status=$?
  exec {lifeline}>&-
  return "$status"
}

# The archive that this machine has its packages from.
debian_mirror() {
  apt-get indextargets --format '$(SITE)' 'Created-By: Packages' 'Label: Debian' 'Component: main' |
    sort -u | sed -n 1p
}

# Makes the folder, or takes it up again when the same packages, of both widths, are in it. It is made aside: what was
# interrupted is thrown away.
make_trixie() {
  local log=build/log/trixie.txt made_of mirror start=$SECONDS
  made_of=$(tools/trixie packages)
  [[ $(cat "$trixie/made-of" 2> /dev/null) == "$made_of" ]] && return 0
  say 'making a Debian 13 with its Wine'
  mkdir -p build/log
  mirror=$(debian_mirror)
  [[ -n $mirror ]] || { echo 'apt names no Debian archive' >&2; return 1; }
  as_root rm -rf --one-file-system "$trixie" "$trixie.new"
  contained tools/trixie make "$PWD/$trixie.new" "$mirror" > "$log" 2>&1 ||
    { tail -n 20 "$log" >&2; echo "it cannot be made; all of it: $log" >&2; return 1; }
  [[ -e $trixie.new/without-x86 ]] || echo "$made_of" | as_root tee "$trixie.new/made-of" > /dev/null
  as_root mv "$trixie.new" "$trixie"
  took "$start"
}

# in_trixie COMMAND...: runs a command of this checkout there, as this user and without input.
in_trixie() {
  mkdir -p build/trixie-home
  contained tools/trixie run "$PWD/$trixie" "$(id -u):$(id -g)" "$@"
}

# The Windows test programs for both widths on the second platform; what they report is added up.
everywhere() {
  local line='^([0-9]+) passed, ([0-9]+) failed(, ([0-9]+) skipped)?$'
  make_trixie || { fail 'the second platform'; return 0; }
  rm -f "$sums"
  in_trixie ./test inside || true
  if [[ -f $sums && $(< "$sums") =~ $line ]]; then
    passed=$((passed + BASH_REMATCH[1]))
    failed=$((failed + BASH_REMATCH[2]))
    skipped=$((skipped + ${BASH_REMATCH[4]:-0}))
  else
    fail 'the second platform ends without a sum'
  fi
}
