#!/bin/bash
# An update on a disk that is full: full_disk_test.sh PROGRAMS CASE, where CASE is a function below.
# Status 77, for a skipped test, if no file system can be mounted here.
set -eu
# Mounts are made in a name space of their own, so that they go with the process.
if [ -z "${RIVELT_OWN_MOUNTS:-}" ]; then
  export RIVELT_OWN_MOUNTS=yes
  for option in --mount --map-root-user; do
    ! unshare --mount $option true 2>/dev/null || exec unshare --mount $option "$0" "$@"
  done
fi
# shellcheck source=tests/check_shell.sh
source "$(dirname "$0")/check_shell.sh"

programs=$(realpath "$1")
work=$(mktemp -d -p "$PWD")
trap 'umount -q $world || true; cd /; rm -rf "$work"' EXIT
cd "$work"

A_Disk_Full_While_Moving_Is_Rolled_Back_Though_It_Is_Still_Full_And_Works_With_Room() {
  "$programs/rivelt-sample" msts --objects 100
  cp -r msts before
  rm -r "${world:?}"/*
  mount -t tmpfs -o size=8000k tmpfs $world 2>err || {
    echo "Skipped, for nothing can be mounted here: $(cat err)"
    exit 77
  }
  cp -r before/${world#*/}/. $world
  check_in_script Ambrewick
  # The route's files shrink with what was to take their place, so the copies must grow.
  for file in msts/Quenby/tmp/w*; do head -c 9000 /dev/zero >>"$file"; done
  head -c 9M /dev/zero >$world/filler 2>/dev/null || true
  tell update
  cli routes
  expect_empty err # while the program that failed is at work no other one rolls it back
  end_script
  expect_status 1
  expect_line complained "Rivelt: Had problems updating this route!"
  expect_empty <(find msts/ -name '.*')
  ends 0 routes
  expect_line err "Rolled back an unfinished update: AMBREWICK"
  expect_empty <(ls -A msts/Quenby/backup)
  expect_empty <(find msts/ -name '.*')
  rm $world/filler
  expect_same before/Routes msts/Routes
  ends 0 update Ambrewick --all --yes
  ! diff -r before/Routes msts/Routes >/dev/null || fail "nothing is updated"
  ends 0 restore Ambrewick --yes
  expect_same before/Routes msts/Routes
}

"$2"
finish
