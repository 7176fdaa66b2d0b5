# shellcheck shell=bash
# Runs GoogleTest programs and adds up what they report; sourced after lib.sh.

passed=0
failed=0
skipped=0
results=build/results
mkdir -p "$results"

# run_tests NAME LIMIT COMMAND...: runs a test program, at most LIMIT seconds. A program that fails
# to report, crashes or runs nothing counts as one failed test.
run_tests() {
  local name=$1 limit=$2 report=$results/$1.xml log=$results/$1.txt start=$SECONDS status=0
  shift 2
  rm -f "$report"
  say "$name"
  timeout -k 5 "$limit" "$@" "--gtest_output=xml:$report" > "$log" 2>&1 < /dev/null || status=$?
  add_up "$name" "$report" "$status" ||
    { grep -aE -B12 '^\[  FAILED  \]|ERROR:|runtime error:' "$log" || tail -n 30 "$log"; } |
    head -n 150
  took "$start"
}

# check NAME COMMAND...: a check that is no test program; it counts only when it fails.
check() {
  local name=$1
  shift
  say "$name"
  "$@" < /dev/null || fail "$name"
}

fail() {
  failed=$((failed + 1))
  echo "FAILED: $1"
}

# One attribute of the whole run, which is the first element of a report.
attribute() { grep -m1 '<testsuites ' "$1" | grep -oP " $2=\"\K[0-9]+" || echo 0; }

add_up() {
  local name=$1 report=$2 status=$3
  if [[ ! -s $report ]]; then
    fail "$name ended with status $status and without a report"
    return 1
  fi
  local tests bad off
  tests=$(attribute "$report" tests)
  bad=$(($(attribute "$report" failures) + $(attribute "$report" errors)))
  off=$(($(attribute "$report" disabled) + $(grep -c 'result="skipped"' "$report" || true)))
  passed=$((passed + tests - bad - off))
  failed=$((failed + bad))
  skipped=$((skipped + off))
  echo "   $tests tests, $bad failed, $off skipped"
  if ((bad)); then return 1; fi
  if ((status)); then
    fail "$name ended with status $status"
    return 1
  fi
  if ((tests == off)); then
    fail "$name ran no test"
    return 1
  fi
}

# Prints the sums as the last line and fails when anything failed.
conclude() {
  local line="$passed passed, $failed failed"
  if ((skipped)); then line+=", $skipped skipped"; fi
  echo "$line"
  ((failed == 0 && passed > 0))
}
