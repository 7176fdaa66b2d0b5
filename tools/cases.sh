# shellcheck shell=bash
# Tests written as scripts, told as test programs tell theirs, so that run_tests counts them: a script
# calls `begin_cases NAME "$@"`, then `try` for every test, then `end_cases`.

suite=
cases=0
broken=0
cases_report=

# begin_cases SUITE ARGUMENT...: the arguments are those of the script.
begin_cases() {
  local argument
  suite=$1
  for argument in "${@:2}"; do
    [[ $argument != --gtest_output=xml:* ]] || cases_report=${argument#--gtest_output=xml:}
  done
}

# try TEST COMMAND...: one test; it passes when the command succeeds, every step of it.
try() {
  local name=$suite.$1 status
  shift
  echo "[ RUN      ] $name"
  set +e
  (set -e && "$@")
  status=$?
  set -e
  cases=$((cases + 1))
  if ((status)); then
    broken=$((broken + 1))
    echo "[  FAILED  ] $name"
  else
    echo "[       OK ] $name"
  fi
}

# refuses TEXT... -- COMMAND...: the command fails and says each of the texts.
refuses() {
  local text said status=0 texts=()
  while [[ $1 != -- ]]; do texts+=("$1") && shift; done
  shift
  said=$("$@" 2>&1) || status=$?
  ((status)) || { echo "passes: $*" && return 1; }
  for text in "${texts[@]}"; do
    grep -qF -e "$text" <<< "$said" || { echo "'$text' is not said by $*, but:" && echo "$said" && return 1; }
  done
}

end_cases() {
  if [[ -n $cases_report ]]; then
    echo "<testsuites tests=\"$cases\" failures=\"$broken\" disabled=\"0\" errors=\"0\"></testsuites>" > "$cases_report"
  fi
  echo "$cases tests, $broken failed"
  ((cases > 0 && broken == 0))
}
