#!/bin/bash
# Updates and starts of the console program that are killed, on the disk of the working folder:
# kill_test.sh PROGRAMS [ROUNDS [SEED [FOLDER]]], where FOLDER is on another disk and gets the world
# files. After the next whole start the route is all old or all new.
set -eu
# shellcheck source=tests/check_shell.sh
source "$(dirname "$0")/check_shell.sh"

programs=$(realpath "$1")
rounds=${2:-20}
seed=${3:-$$}
world_disk=${4:-}
RANDOM=$seed
work=$(mktemp -d -p "$PWD")
away=$world_disk/${work##*/}
trap 'rm -rf "$work" ${world_disk:+"$away"}' EXIT
cd "$work"
unfinished=msts/Quenby/backup/AMBREWICK.unfinished

now() { echo "${EPOCHREALTIME/./}"; } # in microseconds
sleep_below() {
  local microseconds=$(((RANDOM * 32768 + RANDOM) % $1))
  sleep "$((microseconds / 1000000)).$(printf %06d $((microseconds % 1000000)))"
}
start() { "$programs/rivelt-cli" --root msts "$@" >out 2>err </dev/null & }
update() { start update Ambrewick --all --yes; }
kill_it() {
  kill -KILL $! 2>/dev/null || true
  wait $! 2>/dev/null || true
}
until_moving() { until [ -d $unfinished ] || ! kill -0 $! 2>/dev/null; do :; done; }
copy_of_sample() {
  rm -rf msts
  cp -rl sample msts # second names, so that an Update's flushes have nothing to do with it
  [ -z "$world_disk" ] || {
    rm -rf "$away" msts/Routes/AMBREWICK/World
    cp -r sample/Routes/AMBREWICK/World "$away"
    ln -s "$away" msts/Routes/AMBREWICK/World
  }
}

# Many small files, so that moving them takes its part of the time.
"$programs/rivelt-sample" sample --routes 1
"$programs/rivelt-cli" --root sample check Ambrewick --all >check.txt
pattern=$(find sample/Quenby/tmp -name "w*" -printf "%s %f\n" | sort -n | head -n 1)
for ((i = 1000; i < 2000; ++i)); do
  name=sample/Routes/AMBREWICK/World/x-$i.w
  cp "sample/Routes/AMBREWICK/World/${pattern#* }" "$name"
  printf '\n\0%s\0%s\0%s\0%s\0' ${i:0:1} ${i:1:1} ${i:2:1} ${i:3:1} >>"$name" # no two are the same
done
rm -r sample/Quenby
find sample -type f -exec sha1sum {} + >sums

# An Update that nobody disturbs: what all others are compared with, and how long they take.
copy_of_sample
"$programs/rivelt-cli" --root msts check Ambrewick --all >check.txt
cp -r msts/Quenby/tmp staged
files=$(find staged -type f | wc -l)
began=$(now)
update
until_moving
move_began=$(now)
wait $!
update_time=$(($(now) - began))
move_time=$(($(now) - move_began))
cp -r msts/Routes updated
cp -r msts/Quenby/backup/* originals
[ "$(find originals -type f | wc -l)" -eq "$files" ] || fail "not all originals are in the backup"

# What an Update has come to, by its traces.
stage() {
  if compgen -G 'msts/Quenby/backup/AMBREWICK *' >/dev/null; then
    echo after
  elif [ -d $unfinished ]; then
    echo between
  else
    echo before
  fi
}

expect_all_old_or_all_new() {
  if diff -rq msts/Routes sample/Routes >old; then
    [ "$1" != after ] || fail "a finished Update was taken back"
    expect_empty <(ls -A msts/Quenby/backup 2>/dev/null)
  elif diff -rq msts/Routes updated >new; then
    [ "$1" = after ] || fail "an unfinished Update was not taken back"
    expect_same originals msts/Quenby/backup/*
  else
    fail "the route is neither old nor new: $(head -n 3 old new)"
  fi
  expect_same sample/Global msts/Global
  # What is staged is whole, though it need not be all.
  [ ! -d msts/Quenby/tmp ] ||
    expect_empty <(diff -rq msts/Quenby/tmp staged | grep -v '^Only in staged: ')
  expect_empty <(find msts/ ${world_disk:+"$away/"} -mindepth 1 -name '.*' -o -name '*.unfinished')
  expect_empty <(find msts -mindepth 1 -maxdepth 2 -path '*/Quenby/*' ! -name tmp ! -name backup)
}

declare -A at=([before]=0 [between]=0 [after]=0)
restarts_killed=0
for ((round = 0; round < rounds && failures == 0; ++round)); do
  copy_of_sample
  update
  ((round % 2 == 0)) || until_moving # aimed at the time from the first kept original on
  sleep_below $((round % 2 ? move_time : update_time))
  kill_it
  reached=$(stage)
  at[$reached]=$((at[$reached] + 1))
  for ((kills = 0; kills < round / 2 % 3; ++kills)); do
    [ -d $unfinished ] || break
    start routes
    sleep_below "$move_time"
    kill_it
    [ ! -d $unfinished ] || restarts_killed=$((restarts_killed + 1))
  done
  run "$programs/rivelt-cli" --root msts routes
  expect_status 0
  expect_all_old_or_all_new "$reached"
  ((failures == 0)) || echo "round $round of seed $seed, killed $reached"
done

echo "$round rounds, seed $seed, $files files; update $((update_time / 1000)) ms, of which" \
  "$((move_time / 1000)) ms from the first kept original on"
echo "killed before: ${at[before]}, between: ${at[between]}, after: ${at[after]};" \
  "killed while taking back: $restarts_killed"
sha1sum --quiet -c sums || fail "an original was written to"
((rounds < 20 || at[between] > 0)) || fail "no kill hit the moves"
finish
