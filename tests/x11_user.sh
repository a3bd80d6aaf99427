# Sourced: a person at the window under Xvfb, with real X events.
# Needs Xvfb, xdotool and ImageMagick. SCALE is the factor of the screen (1 unless set).

: "${SCALE:=1}"
frame=(0 0)  # in twips, what is left of the client area and above it
scratch=$(mktemp -d)
program=
server=

clean_up() {
  [ -z "$program" ] || kill "$program" 2>/dev/null || true
  [ -z "$server" ] || kill "$server" 2>/dev/null || true
  rm -rf "$scratch"
}
trap clean_up EXIT

# The server picks a free display and reports it.
start_screen() {
  Xvfb -noreset -displayfd 3 -screen 0 1600x1200x24 -nolisten tcp 3>"$scratch/display" 2>"$scratch/xvfb.log" &
  server=$!
  wait_until test -s "$scratch/display"
  DISPLAY=:$(cat "$scratch/display")
  export DISPLAY
}

wait_until() {
  local end=$((SECONDS + 60))
  while [ $SECONDS -lt $end ]; do
    "$@" && return 0
    sleep 0.05
  done
  echo "gave up waiting until: $*" >&2
  return 1
}

shows_window() { xdotool search --onlyvisible --name "^$1\$" >"$scratch/window" 2>/dev/null; }
window() { head -1 "$scratch/window"; }

# There is no window manager that would give the keyboard to a dialog and back.
focus() {
  wait_until shows_window "$1"
  xdotool windowfocus --sync "$(window)"
  sleep 0.2
}

# Puts the window into the corner of the screen and measures what is above its client area: the menu
# bar and, where somebody draws one, a title. What is left of it is below it, too.
place_window() {
  xdotool windowmove "$(window)" 0 0 || true
  sleep 0.5
  frame[1]=$(xdotool getwindowgeometry --shell "$(window)" |
    awk -F= "/HEIGHT/ { print (\$2 / $SCALE - 440) * 15 - ${frame[0]} }")
}

# start_program PROGRAM FOLDER: in the working folder FOLDER.
start_program() {
  (cd "$2" && QT_QPA_PLATFORM=xcb QT_SCALE_FACTOR=$SCALE exec "$1") &
  program=$!
  focus Rivelt
  place_window
}

# click LEFT TOP [BUTTON]: places count in twips, as in the table of controls.
click() {
  xdotool mousemove "$(awk "BEGIN { print int(($1 + ${frame[0]}) * $SCALE / 15) }")" \
    "$(awk "BEGIN { print int(($2 + ${frame[1]}) * $SCALE / 15) }")" click "${3:-1}"
  sleep 0.3
}
keys() { xdotool key --clearmodifiers --delay 40 "$@"; sleep 0.3; }
type_text() { xdotool type --clearmodifiers --delay 20 "$1"; sleep 0.3; }

# screenshot FILE [WIDTH HEIGHT]: of the screen's corner, at first of the window.
screenshot() {
  local size
  size=$(awk "BEGIN { print int(${2:-383 + ${frame[0]} / 7.5} * $SCALE) \"x\" \
    int((${3:-440} + (${frame[0]} + ${frame[1]}) / 15) * $SCALE) }")
  import -window root -crop "$size+0+0" +repage "$1"
}

# A check and an update of a route, by a script for the console program and in the window: the same
# files and the same logs must come out. Both are in $scratch: console and desktop, console-check.txt...

shape=A4tPnt15dLft.s

# play_script PROGRAMS
play_script() {
  "$1/rivelt-sample" "$scratch/console" >/dev/null
  mkdir "$scratch/console/tools"
  cp -r "$scratch/console" "$scratch/desktop"
  "$1/rivelt-cli" --root "$scratch/console" script >/dev/null <<END
route Brenn Valley Line
option all
old 0 $shape
new 0  -delete-
check
save $scratch/console-check.txt
update
save $scratch/console-update.txt
END
  grep -q ' updated files are in' "$scratch/console-check.txt" || fail 'the sample needs no update'
}

# press_until_shown WINDOW COMMAND...: as long as the program works, what is pressed is dropped.
press_until_shown() {
  "${@:2}"
  sleep 1
  shows_window "$1"
}

# save_log NAME FOLDER PICTURE: FOLDER is $scratch as the program writes it.
save_log() {
  wait_until press_until_shown 'Save As' click 3487 5947
  focus 'Save As'
  type_text "$2$1"
  keys Return
  wait_until test -s "$scratch/$1"
  focus Rivelt
  screenshot "$3/${1%.txt}.png"
}

# play_in_window FOLDER PICTURES: in the program, which must not have been used.
play_in_window() {
  click 3300 275  # the list of routes
  type_text Bre
  keys Return
  click 3150 600  # all track sections
  click 1200 1237
  type_text "$shape"
  keys Tab Down  # the first entry removes
  keys alt+c
  save_log desktop-check.txt "$@"
  wait_until press_until_shown Update keys alt+u
  focus Update
  keys Return
  focus Rivelt
  save_log desktop-update.txt "$@"
  click 4687 5947  # Quit
  wait "$program" || fail "the program ended with $?"
  program=
}

expect_the_same() {
  local player result
  for player in console desktop; do  # a backup has the time of its update as its name
    mv "$scratch/$player/Quenby/backup/Brenn_Valley/"* "$scratch/$player/Quenby/backup/once"
  done
  for result in '' -check.txt -update.txt; do
    diff -r "$scratch/console$result" "$scratch/desktop$result" || fail "not the same: desktop$result"
  done
  echo "The window makes the same files and the same log as the console program"
}
