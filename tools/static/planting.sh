# shellcheck shell=bash
# What the tests of the static checks share: a folder of their own, in which they plant findings.

place=$(mktemp -d)
trap 'rm -rf "$place"' EXIT
wrong=0
# What the check is called with, before the folder.
options=()

# plant FILE TEXT: makes a file of the folder.
plant() {
  mkdir -p "$place/$(dirname "$1")"
  printf '%b\n' "$2" > "$place/$1"
}

# finds CHECK FINDING...: the check of the folder reports just so many findings and these; none at all passes.
finds() {
  local check=$1 said status=0 finding
  shift
  said=$("tools/static/$check" "${options[@]}" "$place" 2>&1) || status=1
  ((status == ($# > 0))) || { echo "$check ends with $status" && wrong=1; }
  for finding in "$@" ", $# findings"; do
    grep -qF -e "$finding" <<< "$said" || { echo "$check does not say: $finding" && wrong=1; }
  done
  ((!wrong)) || echo "$said"
  rm -rf "${place:?}"/*
}
