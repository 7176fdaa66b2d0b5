# shellcheck shell=bash
# What the static checks share; sourced by each, which then stands in the root folder of what it looks at.

# files TEST...: the files that a checkout brings, one a line, as far as `find` has them pass the tests.
files() { find . \( -path ./build -o -path ./dist -o -path ./.git \) -prune -o -type f "$@" -printf '%P\n' | sort; }

# tell WHAT: prints the findings of the input, one a line, and their number in WHAT; fails when there are any.
tell() {
  local finding count=0
  while IFS= read -r finding; do
    echo "$finding"
    count=$((count + 1))
  done
  echo "   $1, $count findings"
  ((count == 0))
}
