# shellcheck shell=bash
# Runs tasks side by side and adds up what they count; sourced after results.sh and desktop.sh.

lanes=()
lane_tasks=()
lane_folder=

# As many as there are processors, but two at least: most tests wait most of the time.
lane_count() {
  local count
  count=$(nproc)
  echo "$((count < 2 ? 2 : count > 4 ? 4 : count))"
}

# begin_lanes COUNT TASK...: begins tasks, each a command in one word, in their order and so many at a time.
# Each lane is a process of its own, with its number in $lane. What a task prints is shown when it ends.
begin_lanes() {
  local count=$1 lane
  shift
  lane_tasks=("$@")
  lane_folder=$(mktemp -d)
  for ((lane = 1; lane <= count; ++lane)); do
    run_lane &
    lanes+=($!)
  done
}

# end_lanes: waits for all tasks and adds up. One that has not come to its end counts as failed.
end_lanes() {
  local number good bad off same
  wait "${lanes[@]}" || true
  lanes=()
  for number in "${!lane_tasks[@]}"; do
    if read -r good bad off same 2> /dev/null < "$lane_folder/$number/sums"; then
      passed=$((passed + good)) failed=$((failed + bad)) skipped=$((skipped + off))
      unchanged=$((unchanged + same))
    else
      cat "$lane_folder/$number/said" 2> /dev/null || true
      fail "${lane_tasks[number]} has not come to its end"
    fi
  done
  rm -rf "$lane_folder"
}

in_lanes() {
  begin_lanes "$@"
  end_lanes
}

# stop_lanes: ends what is still running, for a script that ends early.
stop_lanes() {
  if ((${#lanes[@]})); then
    kill "${lanes[@]}" 2> /dev/null || true
    wait "${lanes[@]}" 2> /dev/null || true
    rm -rf "$lane_folder"
  fi
  lanes=()
}

run_lane() {
  local number here
  # shellcheck disable=SC2034 # read by desktop.sh and lib.sh
  lanes=() desktop_processes=() prefix_open=false progress=false
  trap end_lane EXIT
  for number in "${!lane_tasks[@]}"; do
    here=$lane_folder/$number
    mkdir "$here" 2> /dev/null || continue # another lane has it
    passed=0 failed=0 skipped=0 unchanged=0
    # shellcheck disable=SC2086 # a task is a command with its arguments
    ${lane_tasks[number]} > "$here/said" 2>&1
    echo "$passed $failed $skipped $unchanged" > "$here/sums"
    flock "$lane_folder" cat "$here/said"
  done
}

end_lane() {
  local running
  running=$(jobs -p)
  close_desktop
  # shellcheck disable=SC2086 # several identifiers
  [[ -z $running ]] || kill $running 2> /dev/null || true
}
