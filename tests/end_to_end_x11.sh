#!/bin/bash
# The installed program under Xvfb with real X events: from picking the route to the updated files.
# usage: tests/end_to_end_x11.sh BUILD_FOLDER; leaves end_to_end.png there.

set -euo pipefail
build=$(realpath "$1")
. "$(dirname "$0")/x11_user.sh"

fail() {
  echo "FAILED: $*" >&2
  import -window root "$build/end_to_end_failure.png" || true
  exit 1
}

cmake --install "$build" --prefix "$scratch/usr" >"$scratch/install.log"
installed=$(cd "$scratch/usr" && find . -type f | sort | tr '\n' ' ')
[ "$installed" = "./bin/rivelt ./bin/rivelt-cli ./share/applications/rivelt.desktop \
./share/man/man1/rivelt-cli.1 ./share/pixmaps/rivelt.xpm " ] || fail "installed: $installed"

train=$scratch/train
"$build/src/programs/rivelt-sample" "$train"
mkdir "$train/tools"
start_screen
start_program "$scratch/usr/bin/rivelt" "$train/tools"

click 3300 275  # the list of routes, by mouse: its second entry
keys Down Return
click 3150 600  # all track sections
click 1200 1237
type_text a1t10mstrt
keys Tab alt+Down Home Return  # " -delete-" is the first entry
keys alt+c
wait_until compgen -G "$train/Quenby/tmp/*.w" >/dev/null || fail "Check staged no world file"
wait_until press_until_shown Update keys alt+u || fail "no confirmation"
focus Update
keys Return
focus Rivelt
wait_until press_until_shown "Save As" keys alt+s || fail "no dialog to save the log"
focus "Save As"
type_text "$scratch/log.txt"
keys Return
wait_until test -s "$scratch/log.txt" || fail "Save wrote nothing"
[ -z "$(ls "$train/Quenby/tmp")" ] || fail "Update left files behind"
tail -1 "$scratch/log.txt" | grep -q '^Finished updating ' || fail "the log ends otherwise"
focus Rivelt
screenshot "$build/end_to_end.png"

keys alt+q
wait "$program" || fail "exit status $?"
program=
! shows_window Rivelt || fail "the window is still there"
echo "1 passed, 0 failed"
