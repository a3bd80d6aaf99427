#!/bin/bash
# Updates on disks that do not play along: full_disk_test.sh PROGRAMS CASE, where CASE is a function
# below. Status 77, for a skipped test, if no file system can be mounted here.
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
clean_up() {
  findmnt -rno TARGET | grep "^$work/" | xargs -r umount
  rm -rf "$work"
}
trap clean_up EXIT
cd "$work"

update() { cli update Ambrewick --all --yes; }
kilobytes() { du -sk --apparent-size "$1" | cut -f 1; }
mount_or_skip() {
  mount "$@" 2>err || {
    echo "Skipped, for nothing can be mounted here: $(cat err)"
    exit 77
  }
}

# The sample, its routes as they are and as an Update leaves them, and what the Update stages.
sample() {
  "$programs/rivelt-sample" msts "$@"
  cp -r msts before
  update
  expect_status 0
  cp -r msts/Routes updated
  rm -rf msts
  cp -r before msts
  cli check Ambrewick --all
  mv msts/Quenby/tmp staged
  rm -rf msts/Quenby
}

# A folder of the installation on a file system of its own, of so many kilobytes.
own_disk() {
  mkdir -p "$1" moved
  mv "$1"/* moved 2>/dev/null || true
  mount_or_skip -t tmpfs -o "size=${2}k" tmpfs "$1"
  cp -r moved/. "$1"
}

expect_failed_update() {
  expect_status 1
  expect_line err "Rivelt: Had problems updating this route!"
  expect_nothing_stray
}
expect_nothing_stray() { expect_empty <(find msts/ -name '.*'); }
expect_rolled_back_at_start() {
  cli routes
  expect_status 0
  expect_line err "Rolled back an unfinished update: AMBREWICK"
  expect_empty <(ls -A msts/Quenby/backup)
  expect_nothing_stray
  expect_same before/Routes msts/Routes
}
expect_update_works() {
  update
  expect_status 0
  expect_same updated msts/Routes
}

# Our own folders have half of what the Update stages, then half of that and of what it keeps.
A_Disk_Full_While_Staging_Or_Keeping_Leaves_The_Route_And_Keeps_Nothing() {
  sample --objects 100
  local halves file
  for halves in 1 3; do
    own_disk msts/Quenby $(($(kilobytes staged) * halves / 2))
    update
    expect_failed_update
    expect_same before/Routes msts/Routes
    expect_empty <(ls -A msts/Quenby/backup 2>/dev/null)
    for file in msts/Quenby/tmp/*; do expect_same "$file" "staged/${file##*/}"; done
    mount -o remount,size=100m msts/Quenby
    expect_update_works
    umount msts/Quenby
    rm -r msts
    cp -r before msts
  done
}

A_Disk_Full_While_Moving_Is_Rolled_Back_Though_It_Is_Still_Full_And_Works_With_Room() {
  sample --objects 100
  own_disk $world 8000
  mkdir msts/Quenby
  check_in_script Ambrewick
  # The route's files shrink with what was to take their place, so the copies must grow.
  for file in msts/Quenby/tmp/w*; do head -c 9000 /dev/zero >>"$file"; done
  head -c 9M /dev/zero >$world/filler 2>/dev/null || true
  tell update
  cli routes
  expect_empty err # while the program that failed is at work no other one rolls it back
  end_script
  cp complained err
  expect_failed_update
  cp $world/filler before/${world#*/}
  expect_rolled_back_at_start
  rm $world/filler before/${world#*/}/filler
  expect_update_works
  ends 0 restore Ambrewick --yes
  expect_same before/Routes msts/Routes
}

A_World_Folder_That_Cannot_Be_Written_Is_Rolled_Back_When_It_Can() {
  sample
  make_read_only() {
    mount_or_skip --bind $world $world
    mount -o remount,bind,ro $world
  }
  make_read_only
  update
  expect_failed_update
  expect_line out "Rolled back an unfinished update: AMBREWICK"
  umount $world
  interrupted_update
  make_read_only
  cli routes
  expect_status 0
  expect_line err "Could not roll back an unfinished update: AMBREWICK"
  umount $world
  expect_rolled_back_at_start
}

"$2"
finish
