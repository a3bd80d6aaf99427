#!/bin/bash
# The installed program under Xvfb with real X events: from picking the route to the updated files.
# usage: tests/end_to_end_x11.sh BUILD_FOLDER; leaves desktop-check.png and desktop-update.png there.

set -euo pipefail
build=$(realpath "$1")
. "$(dirname "$0")/x11_user.sh"

fail() {
  echo "FAILED: $*" >&2
  import -window root "$build/end_to_end_failure.png" || true
  exit 1
}

cmake --install "$build" --prefix "$scratch/usr" >"$scratch/install.log"
installed=$(cd "$scratch/usr" && find . -type f -not -path './share/doc/*' | sort | tr '\n' ' ')
icons=$(printf './share/icons/hicolor/%s/apps/rivelt.png ' 128x128 256x256 32x32 48x48 64x64)
[ "$installed" = "./bin/rivelt ./bin/rivelt-cli ./share/applications/rivelt.desktop $icons\
./share/man/man1/rivelt-cli.1.gz ./share/man/man1/rivelt.1.gz " ] || fail "installed: $installed"

play_script "$build/src/programs"
start_screen
start_program "$scratch/usr/bin/rivelt" "$scratch/desktop/tools"
play_in_window "$scratch/" "$build"
! shows_window Rivelt || fail "the window is still there"
expect_the_same
