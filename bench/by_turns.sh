# Sourced, in the root of the tree, by the scripts that time runs of the console program by turns. Their
# argument is the number of rounds. The array written names the folders that runs write to.
# shellcheck shell=bash disable=SC2034,SC2154
#
# The output of a run is moved aside and not removed before the last round has ended: every run starts
# without old output, and none pays for removing any. (A file system may be slow to reuse the blocks of
# files just removed.) The disk settles before each run.
rounds=${1:-5}
programs=build/bench/src/programs
work=build/$(basename "$0")
output=$work/output
times=$work/times

cmake --preset bench >/dev/null
cmake --build --preset bench -j "$(nproc)" --target rivelt-sample rivelt-cli >/dev/null

# Runs the function of that name, notes its seconds and moves what it has written into $output.
timed() { # NAME ROUND
  sync
  local start=$EPOCHREALTIME place
  "$1"
  local end=$EPOCHREALTIME
  echo "$1 $(awk "BEGIN { print $end - $start }")" >>"$times"
  for place in "${written[@]}"; do
    if [[ -d $place ]]; then mv "$place" "$output/$1.$2"; fi
  done
}

time_by_turns() { # NAME...
  local round run
  rm -rf "$output" "${written[@]}"
  mkdir -p "$output"
  : >"$times"
  for ((round = 0; round < rounds; ++round)); do
    for run in "$@"; do timed "$run" $round; done
  done
}

median() { # NAME
  awk -v name="$1" '$1 == name { print $2 }' "$times" | sort -g |
    awk '{ value[NR] = $1 } END { print (value[int((NR + 1) / 2)] + value[int(NR / 2) + 1]) / 2 }'
}
