# shellcheck shell=bash
# Runs GoogleTest programs and adds up what they report; sourced after lib.sh.

passed=0
failed=0
skipped=0
unchanged=0
results=build/results
mkdir -p "$results"

# A program that says no word for so many looks, one each second, stands still. However slow the machine, a
# program says more: every test tells its beginning and its end, and a long one its rounds. The looks
# are counted and no clock is read: a machine that sleeps is no program that stands still.
standstill=900
look=1

# watched LOG COMMAND...: runs a program with its output in LOG, however long it takes, and ends it
# once it stands still.
watched() {
  local log=$1 status=0 program size said=-1 quiet=0
  shift
  "$@" > "$log" 2>&1 < /dev/null &
  program=$!
  while kill -0 "$program" 2> /dev/null && ((quiet < standstill)); do
    sleep "$look"
    size=$(stat -c %s "$log")
    quiet=$((size == said ? quiet + 1 : 0)) said=$size
  done
  if ((quiet >= standstill)) && kill -0 "$program" 2> /dev/null; then
    echo "   standstill in $(last_begun "$log"); it is ended"
    kill "$program" 2> /dev/null && sleep 2
    kill -KILL "$program" 2> /dev/null
  fi
  wait "$program" 2> /dev/null || status=$?
  return "$status"
}

# The test that a program began last, by its output.
last_begun() {
  local test
  test=$(grep -aoP '^\[ RUN +\] \K[^\r]*' "$1" | tail -n 1)
  echo "${test:-its beginning}"
}

# run_tests NAME COMMAND...: runs a test program. One that fails to report, crashes, stands still or
# runs nothing counts as one failed test.
run_tests() {
  local name=$1 report=$results/$1.xml log=$results/$1.txt start=$SECONDS status=0
  shift
  rm -f "$report"
  say "$name"
  watched "$log" "$@" "--gtest_output=xml:$report" || status=$?
  add_up "$name" "$report" "$status" ||
    { grep -aE -B12 '^\[  FAILED  \]|ERROR:|runtime error:' "$log" || tail -n 30 "$log"; } |
    head -n 150
  took "$start"
}

# unless_unchanged NAME OF COMMAND...: runs a command, unless it passed when what its outcome hangs on was the
# same, to the byte.
unless_unchanged() {
  if [[ $(cat "$results/$1.passed" 2> /dev/null) == "$2" ]]; then
    say "$1: unchanged since it passed, not run"
    unchanged=$((unchanged + 1))
  else
    in_any_case "$@"
  fi
}

# in_any_case NAME OF COMMAND...: runs a command and notes whether it passed.
in_any_case() {
  local note=$results/$1.passed of=$2 before=$failed
  shift 2
  rm -f "$note"
  "$@"
  ((failed > before)) || echo "$of" > "$note"
}

# made_of FILE...: what the outcome of a command hangs on: files and the wishes for tests.
made_of() { { env | { grep '^KRX_' || true; } | sort && cat "$@"; } | sha256sum; }

# check NAME COMMAND...: a check that is no test program; it counts only when it fails.
check() {
  local name=$1
  shift
  say "$name"
  "$@" < /dev/null || fail "$name"
}

# skip WHAT: something that cannot be run here; it counts as one skipped test.
skip() {
  skipped=$((skipped + 1))
  echo "SKIPPED: $1"
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
  if ((unchanged)); then line+=", $unchanged not run, unchanged since they passed"; fi
  echo "$line"
  ((failed == 0 && passed + unchanged > 0))
}
