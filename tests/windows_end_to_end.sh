# shellcheck shell=bash
# Sourced by tools/test_windows: a check and an update of one route in the window under Wine, by
# mouse and keys, beside the same on Linux by a script for the console program. The same files and the
# same logs must come out.

old=A4tPnt15dLft.s
linux_programs=$root/build/release/src/programs
key='HKLM\SOFTWARE\Microsoft\Microsoft Games\Train Simulator\1.0'

"$linux_programs/rivelt-sample" "$scratch/linux" >/dev/null
cp -r "$scratch/linux" "$scratch/windows"
"$linux_programs/rivelt-cli" --root "$scratch/linux" script >/dev/null <<END
route Brenn Valley Line
option all
old 0 $old
new 0  -delete-
check
save $scratch/linux-check.txt
update
save $scratch/linux-update.txt
END
grep -q ' updated files are in' "$scratch/linux-check.txt" || fail 'the sample needs no update'

# Without a window manager Wine draws the frame, in which the client area has its place.
click_client() { click $(($1 + 45)) $(($2 + 330)); }

# save_log NAME: by the dialog of the system.
save_log() {
  wait_until press_until_shown 'Save As' click_client 3487 5947
  type_text "S:\\$1"
  keys Return
  wait_until test -s "$scratch/$1"
  sleep 1
  screenshot "$output/${1%.txt}.png"
}

"$wine" reg add "$key" /v Path /d 'S:\windows' /f /reg:32 >/dev/null 2>&1
"$wine" "$root/build/windows-64/src/programs/Rivelt.exe" >"$output/rivelt.log" 2>&1 &
program=$!
wait_until shows_window Rivelt
xdotool windowmove "$(window)" 0 0 || true
sleep 2
click_client 3300 275                          # the list of routes
type_text Bre
keys Return
click_client 3150 600                          # all track sections
click_client 1200 1237                         # the first row
type_text "$old"
keys Tab Down                           # the first entry removes
keys alt+c
save_log windows-check.txt
wait_until press_until_shown Update keys alt+u
keys Return
save_log windows-update.txt
click_client 4687 5947                         # Quit
wait "$program" || fail "Rivelt.exe ended with $?"
program=
"$wine" reg delete 'HKLM\SOFTWARE\Microsoft\Microsoft Games' /f /reg:32 >/dev/null 2>&1

# A backup has the time of its update as its name.
for system in linux windows; do
  mv "$scratch/$system/Quenby/backup/Brenn_Valley/"* "$scratch/$system/Quenby/backup/once"
done
for result in '' -check.txt -update.txt; do
  diff -r "$scratch/linux$result" "$scratch/windows$result" || fail "not the same: windows$result"
done
echo "The run under Wine gives the same files and the same log as the one on Linux"
