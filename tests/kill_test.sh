#!/bin/bash
# Updates and starts of the console program that are killed, on the disk of the working folder, and a
# person who changes the route before the next start: kill_test.sh PROGRAMS [ROUNDS [SEED [FOLDER]]],
# where FOLDER is on another disk and gets the world files. In every third round nobody comes in
# between. After the next whole start the route is on one numbering, or nobody but the person has
# touched it since, and every byte the person wrote is in the route or in a backup.
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
route=msts/Routes/AMBREWICK

now() { echo "${EPOCHREALTIME/./}"; } # in microseconds
sleep_below() {
  local microseconds=$(((RANDOM * 32768 + RANDOM) % $1))
  sleep "$((microseconds / 1000000)).$(printf %06d $((microseconds % 1000000)))"
}
one_of() { shift $((RANDOM % $#)) && echo "$1"; }
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
files_of() { find -L "$1" -type f ! -name '.rivelt-*'; }
# "SHA1 PLACE" of every file of a route, in small letters.
sums_of() {
  (cd "$1" && files_of . | tr '\n' '\0' | xargs -0r sha1sum) | tr '[:upper:]' '[:lower:]' |
    sed 's|  \./| |' | sort -k 2
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
sums_of sample/Routes/AMBREWICK >old

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
sums_of updated/AMBREWICK >new
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

# The person takes one file or all of them, and leaves in the file person "SHA1 PLACE" of what they
# wrote, in bases "SHA1 PLACE" of what that was before, in removed the places of what they removed.
person() {
  local file name chosen=() change=$1
  : | tee person removed >bases
  readarray -t chosen < <(files_of $route | sort)
  ((${#chosen[@]} > 0)) || return 0 # killed before there was anything else
  [ "$2" = all ] || chosen=("${chosen[$([ "$2" = first ] && echo 0 || echo $((RANDOM % ${#chosen[@]})))]}")
  sums_of $route >was
  for file in "${chosen[@]}"; do echo "${file#"$route"/}"; done | tr '[:upper:]' '[:lower:]' |
    sort >touched
  case $change in
    edit) for file in "${chosen[@]}"; do printf '\n\0%s\0' 7 >>"$file"; done ;;
    replace)
      rm -rf replaced
      cp -rL $route replaced
      for file in "${chosen[@]}"; do
        name=${file#"$route"/}
        printf '\n\0%s\0' 8 >>"replaced/$name"
        mv -f "replaced/$name" "$file"
      done
      ;;
    remove)
      printf '%s\0' "${chosen[@]}" | xargs -0 rm
      cp touched removed
      ;;
    rename) perl -e 'for (@ARGV) { my $to = s{([^/]*)$}{uc $1}er; rename $_, $to }' "${chosen[@]}" ;;
    put_back)
      for file in "${chosen[@]}"; do
        name=sample/Routes/AMBREWICK/${file#"$route"/}
        [ ! -e "$name" ] || cp "$name" "$file"
      done
      ;;
  esac
  [ "$change" != remove ] && [ "$change" != rename ] || return 0
  join -1 2 -o 1.1,0 was touched >bases
  join -1 2 -o 1.1,0 <(sums_of $route) touched >person
}

# No name is there twice, none is missing that nobody has removed or that an unfinished Update has
# to put back, and all files are on one numbering.
expect_one_numbering() { # FOLDER STAGE
  sums_of "$1" >is
  expect_empty <(cut -d ' ' -f 2- is | uniq -d | sed 's/^/twice: /')
  cut -d ' ' -f 2- old | comm -23 - <(cut -d ' ' -f 2- is) >missing
  if [ "$2" = moving ]; then
    (cd staged && find . -type f) | sed 's|^\./w\|^\./x|world/&|; s|\./||' >converted
    sort -o converted converted
    expect_empty <(comm -12 missing converted | sed 's/^/missing: /')
  fi
  expect_empty <(comm -23 missing removed | sed 's/^/missing: /')
  diff -rq -x '.rivelt-*' "$1" touched_by_person >/dev/null && return
  local numbering
  for numbering in old new; do
    # What the person wrote is on the numbering of what it was before.
    join -j 2 -o 1.1,2.1,0 bases person | sort -k 1 >changes
    sort -k 1 $numbering | join -1 1 -2 1 -o 2.2,2.3 - changes | cat - $numbering | sort -u >fine
    sort is | comm -23 - fine >other_$numbering
    [ -s other_$numbering ] || return 0
  done
  fail "two numberings: $(head -n 3 other_old other_new)"
}

expect_nothing_lost() {
  find -L msts/Routes msts/Quenby/backup -type f -exec sha1sum {} + 2>/dev/null | cut -d ' ' -f 1 |
    sort -u >kept
  expect_empty <(cut -d ' ' -f 1 person | sort -u | comm -23 - kept | sed 's/^/lost: /')
}

# What has been done about the Update of an installation that the person has changed is in the log.
expect_told() {
  local aside=0
  [ -z "$(find msts/Quenby/backup -path '*/changed since/*' -type f 2>/dev/null)" ] ||
    aside=$(find msts/Quenby/backup -path '*/changed since/*' -type f | wc -l)
  [ "$(cat out err | grep -c '^Set aside a file that was changed since')" -eq "$aside" ] ||
    fail "$aside files were set aside: $(head -n 5 out err)"
  diff -rq -x '.rivelt-*' $route touched_by_person >/dev/null ||
    expect_line <(cat out err) "Rolled back an unfinished update: AMBREWICK"
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

# A further command that is killed leaves what it found, once recovered, or what it would have made.
killed_command() {
  rm -rf reference found made
  cp -a msts reference
  [ -z "$world_disk" ] || {
    rm reference/Routes/AMBREWICK/World
    cp -a "$away" reference/Routes/AMBREWICK/World
  }
  timeout 200 "$programs/rivelt-cli" --root reference routes >out 2>err
  cp -rL reference/Routes found
  expect_one_numbering found/AMBREWICK "$reached"
  timeout 200 "$programs/rivelt-cli" --root reference "$@" --yes >out 2>err || true
  start "$@" --yes
  sleep_below $((update_time * 3 / 2))
  kill_it
  cli routes
  diff -rq msts/Routes found >differs || diff -rq msts/Routes reference/Routes >>differs ||
    fail "$* left neither what it found nor what it makes: $(head -n 3 differs)"
}

after_the_person() {
  rm -rf touched_by_person
  cp -rL $route touched_by_person
  local next
  next=$(one_of start other update restore)
  happened+=", then $next"
  case $next in
    start | other)
      ((RANDOM % 3)) || { killed_restart && happened+=" killed"; }
      if [ "$next" = start ]; then cli routes; else cli check "Brenn Valley Line"; fi
      expect_status 0
      [[ $happened = *killed ]] || expect_told
      expect_one_numbering $route "$reached"
      ;;
    update) killed_command update Ambrewick --all ;;
    restore) killed_command restore Ambrewick ;;
  esac
  expect_nothing_lost
}

declare -A at=([before]=0 [keeping]=0 [moving]=0 [after]=0)
changed=0
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
  happened=$reached
  if ((round % 3 == 0)); then
    cli routes
    expect_status 0
    expect_all_old_or_all_new "$reached"
  else
    change=$(one_of edit replace remove rename put_back) who=$(one_of first one all)
    person "$change" "$who"
    happened+=", $change $who"
    changed=$((changed + 1))
    after_the_person
  fi
  expect_clean
  ((failures == 0)) || echo "round $round of seed $seed: $happened"
done

echo "$rounds rounds, seed $seed, $files files; update $((update_time / 1000)) ms, of which" \
  "$((keep_time / 1000)) ms from the first kept original and $((move_time / 1000)) ms from the journal on"
echo "killed before: ${at[before]}, keeping: ${at[keeping]}, moving: ${at[moving]}," \
  "after: ${at[after]}; restarts killed: $restarts_killed; route changed by a person: $changed"
expect_same old <(sums_of sample/Routes/AMBREWICK)
((rounds < 20 || at[moving] > 0)) || fail "no kill hit the moves"
finish
