#!/bin/bash
# One process that checks and updates again and again: soak_test.sh PROGRAMS [ROUNDS]. Two shapes
# change places in every round, so that each has something to convert. Its memory and its open files
# must not grow.
set -eu
# shellcheck source=tests/check_shell.sh
source "$(dirname "$0")/check_shell.sh"

programs=$(realpath "$1")
rounds=${2:-2000}
work=$(mktemp -d -p "$PWD")
trap 'rm -rf "$work"' EXIT
cd "$work"

"$programs/rivelt-sample" msts --routes 1
start_script 7000
memory() { sed -n 's/^VmRSS:[^0-9]*\([0-9]*\).*/\1/p' "/proc/$process/status"; } # in kilobytes
open_files() { find "/proc/$process/fd" -type l | wc -l; }

tell 'route Ambrewick' 'option all'
process=$(xargs <"/proc/$scripted/task/$scripted/children")
# The names of plain track shapes in some files.
shapes() { cat "$@" | tr -d '\0' | grep -ao '\<A[0-9]t[A-Za-z0-9]*\.s\>' | sort -u; }
shapes msts/Global/tsection.dat >catalogue
swap=("$(shapes $world/*.w | comm -12 - catalogue | head -n 1)" "$(tail -n 1 catalogue)")
for ((round = 0; round < rounds && failures == 0; ++round)); do
  here=${swap[round % 2]} there=${swap[1 - round % 2]}
  tell "old 0 $here" "new 0 $there" check
  [ -n "$(ls msts/Quenby/tmp)" ] || fail "round $round has nothing to convert"
  tell update
  expect_empty <(ls msts/Quenby/tmp)
  ((round % 100 < 99)) || rm -r msts/Quenby/backup/*
  # By then all that one round keeps for the next has been made.
  ((round % (rounds / 10) == rounds / 10 - 1)) || continue
  echo "round $((round + 1)): $(memory) KB, $(open_files) open files"
  [ -n "${first_memory:-}" ] || first_memory=$(memory) first_files=$(open_files)
  [ "$(memory)" -le $((first_memory + 1024)) ] || fail "memory has grown from $first_memory KB"
  [ "$(open_files)" -eq "$first_files" ] || fail "open files were $first_files"
done
end_script
expect_status 0
expect_no_part complained "Had problems"
finish
