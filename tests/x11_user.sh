# Sourced: a person at the window under Xvfb, with real X events.
# Needs Xvfb, xdotool and ImageMagick. SCALE is the factor of the screen (1 unless set).

: "${SCALE:=1}"
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

# press_until_shown WINDOW COMMAND...: as long as the program works, what is pressed is dropped.
press_until_shown() {
  "${@:2}"
  sleep 1
  shows_window "$1"
}

# start_program PROGRAM FOLDER: in the working folder FOLDER.
start_program() {
  (cd "$2" && QT_QPA_PLATFORM=xcb QT_SCALE_FACTOR=$SCALE exec "$1") &
  program=$!
  focus Rivelt
  xdotool windowmove "$(window)" 0 0
  sleep 0.5
}

# click LEFT TOP [BUTTON]: places count in twips, as in the table of controls.
click() {
  xdotool mousemove "$(awk "BEGIN { print int($1 * $SCALE / 15) }")" \
    "$(awk "BEGIN { print int($2 * $SCALE / 15) }")" click "${3:-1}"
  sleep 0.3
}
keys() { xdotool key --clearmodifiers --delay 40 "$@"; sleep 0.3; }
type_text() { xdotool type --clearmodifiers --delay 20 "$1"; sleep 0.3; }

# screenshot FILE: of the whole screen down to the window's size and somewhat more.
screenshot() {
  local size
  size=$(awk "BEGIN { print int(${2:-383} * $SCALE) \"x\" int(${3:-440} * $SCALE) }")
  import -window root -crop "$size+0+0" +repage "$1"
}
