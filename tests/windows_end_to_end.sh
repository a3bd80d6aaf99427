# shellcheck shell=bash
# Sourced by tools/test_windows: a check and an update of one route in the window under Wine, by
# mouse and keys, beside the same on Linux by a script for the console program.

key='HKLM\SOFTWARE\Microsoft\Microsoft Games\Train Simulator\1.0'
frame=(45 0)  # drawn by Wine, for want of a window manager
# Which Wine gives to a dialog and back.
focus() { wait_until shows_window "$1"; }

play_script "$root/build/release/src/programs"
"$wine" reg add "$key" /v Path /d 'S:\desktop' /f /reg:32 >/dev/null 2>&1
"$wine" "$root/build/windows-64/src/programs/Rivelt.exe" >"$output/rivelt.log" 2>&1 &
program=$!
wait_until shows_window Rivelt
sleep 2
place_window
play_in_window 'S:\' "$output"
"$wine" reg delete 'HKLM\SOFTWARE\Microsoft\Microsoft Games' /f /reg:32 >/dev/null 2>&1
expect_the_same
