#!/bin/bash
# Updates, restores and starts of the console program that are killed, on the disk of the working
# folder: kill_test.sh PROGRAMS [ROUNDS [SEED [FOLDER]]], where FOLDER is on another disk and gets the
# world files. After the next whole start the route is all old or all new.
set -eu
# shellcheck source=tests/check_shell.sh
source "$(dirname "$0")/check_shell.sh"

programs=$(realpath "$1")
rounds=${2:-10}
seed=${3:-$$}
world_disk=${4:-}
RANDOM=$seed
work=$(mktemp -d -p "$PWD")
away=$world_disk/${work##*/}
trap 'rm -rf "$work" ${world_disk:+"$away"}' EXIT
cd "$work"
route=msts/Routes/AMBREWICK

now() { echo "${EPOCHREALTIME/./}"; } # in microseconds
sleep_below() {
  local microseconds=$(((RANDOM * 32768 + RANDOM) % $1))
  sleep "$((microseconds / 1000000)).$(printf %06d $((microseconds % 1000000)))"
}
cli() { run timeout 200 "$programs/rivelt-cli" --root msts "$@"; }
start() { "$programs/rivelt-cli" --root msts "$@" >out 2>err </dev/null & }
kill_it() {
  kill -KILL $! 2>/dev/null || true
  wait $! 2>/dev/null || true
}
is_unfinished() { compgen -G 'msts/Quenby/backup/AMBREWICK/*.unfinished' >/dev/null; }
has_journal() { compgen -G 'msts/Quenby/backup/AMBREWICK/*.unfinished/journal.txt' >/dev/null; }
until_it() { until "$1" || ! kill -0 $! 2>/dev/null; do :; done; }
# In every second round the files have two names, so that an Update has to copy what it keeps.
copy_of_sample() {
  rm -rf msts second
  cp -a sample msts
  [ -z "$world_disk" ] || {
    rm -rf "$away"
    mv $route/World "$away"
    ln -s "$away" $route/World
  }
  (($1 % 2)) || cp -rlL $route second 2>/dev/null || true # not across disks
}

# Many small files, so that moving them takes its part of the time.
"$programs/rivelt-sample" sample --routes 2
"$programs/rivelt-cli" --root sample check Ambrewick --all >check.txt
pattern=$(find sample/Quenby/tmp -name "w*" -printf "%s %f\n" | sort -n | head -n 1)
for ((i = 1000; i < 2000; ++i)); do
  name=sample/Routes/AMBREWICK/World/x-$i.w
  cp "sample/Routes/AMBREWICK/World/${pattern#* }" "$name"
  printf '\n\0%s\0%s\0%s\0%s\0' ${i:0:1} ${i:1:1} ${i:2:1} ${i:3:1} >>"$name" # no two are the same
done
rm -r sample/Quenby
cp -r sample/Routes old

# An Update that nobody disturbs: what all others are compared with, and how long they take.
copy_of_sample 0
cli check Ambrewick --all
cp -r msts/Quenby/tmp staged
files=$(find staged -type f | wc -l)
began=$(now)
start update Ambrewick --all --yes
until_it is_unfinished
keep_began=$(now)
until_it has_journal
move_began=$(now)
wait $!
update_time=$(($(now) - began))
keep_time=$(($(now) - keep_began))
move_time=$(($(now) - move_began))
cp -rL msts/Routes updated
rm msts/Quenby/backup/*/*/journal.txt
cp -r msts/Quenby/backup/AMBREWICK/* originals
[ "$(find originals -type f | wc -l)" -eq "$files" ] || fail "not all originals are in the backup"

# What an Update has come to, by its traces.
stage() {
  if ! compgen -G 'msts/Quenby/backup/AMBREWICK/*' >/dev/null; then
    echo before
  elif ! is_unfinished; then
    echo after
  elif has_journal; then
    echo moving
  else
    echo keeping
  fi
}

expect_all_old_or_all_new() {
  if diff -rq msts/Routes sample/Routes >differs; then
    [ "$1" != after ] || fail "a finished Update was rolled back"
    expect_empty <(ls -A msts/Quenby/backup 2>/dev/null)
  elif diff -rq msts/Routes updated >>differs; then
    expect_same -xjournal.txt originals msts/Quenby/backup/AMBREWICK/*
  else
    fail "the route is neither old nor new: $(head -n 3 differs)"
  fi
  # What is staged is whole, though it need not be all.
  [ ! -d msts/Quenby/tmp ] ||
    expect_empty <(diff -rq msts/Quenby/tmp staged | grep -v '^Only in staged: ')
}

expect_clean() {
  expect_same sample/Global msts/Global
  expect_empty <(find msts/ ${world_disk:+"$away/"} -mindepth 1 -name '.*' -o -name '*.unfinished')
  expect_empty <(find msts -mindepth 1 -maxdepth 2 -path '*/Quenby/*' ! -name tmp ! -name backup)
}

restarts_killed=0
killed_restart() {
  is_unfinished || return 0
  start routes
  sleep_below "$move_time"
  kill_it
  ! is_unfinished || restarts_killed=$((restarts_killed + 1))
}

# A restore that is killed leaves the route as it found it or as it was before the update.
killed_restore() {
  start restore Ambrewick --yes
  sleep_below "$update_time"
  kill_it
  cli routes
  diff -rq msts/Routes updated >differs || diff -rq msts/Routes old >>differs ||
    fail "a killed restore left neither: $(head -n 3 differs)"
}

declare -A at=([before]=0 [keeping]=0 [moving]=0 [after]=0)
for ((round = 0; round < rounds && failures == 0; ++round)); do
  copy_of_sample $((round / 2))
  start update Ambrewick --all --yes
  # Aimed at the whole time, at that from the first kept original on, or at the moves.
  case $((round % 4)) in
    0) sleep_below "$update_time" ;;
    1) until_it is_unfinished && sleep_below "$keep_time" ;;
    *) until_it has_journal && sleep_below "$move_time" ;;
  esac
  kill_it
  for ((kills = 0; kills < round / 2 % 3; ++kills)); do killed_restart; done
  reached=$(stage)
  at[$reached]=$((at[$reached] + 1))
  cli routes
  expect_status 0
  expect_all_old_or_all_new "$reached"
  [ "$reached" != after ] || killed_restore
  expect_clean
  ((failures == 0)) || echo "round $round of seed $seed: $reached"
done

echo "$rounds rounds, seed $seed, $files files; update $((update_time / 1000)) ms, of which" \
  "$((keep_time / 1000)) ms from the first kept original and $((move_time / 1000)) ms from the journal on"
echo "killed before: ${at[before]}, keeping: ${at[keeping]}, moving: ${at[moving]}," \
  "after: ${at[after]}; restarts killed: $restarts_killed"
expect_same old sample/Routes
((rounds < 10 || at[moving] > 0)) || fail "no kill hit the moves"
finish
