# Sourced by the tests that are scripts: expectations that print what was there and go on. A test
# ends with `finish`.

failures=0

# With the lines that lead here.
fail() {
  echo "$0: lines ${BASH_LINENO[*]}: $1"
  failures=$((failures + 1))
}

# Runs a command without a terminal; leaves $status and the files out and err.
run() {
  status=0
  "$@" >out 2>err </dev/null || status=$?
}

expect_status() {
  [ "$status" -eq "$1" ] && return
  fail "exit status $status, not $1"
  [ ! -e err ] || sed 's/^/  err: /' err
}

# expect_line FILE LINE...: a file holds each line, or part of one.
expect_line() { expect_found -qFx "$@"; }
expect_part() { expect_found -qF "$@"; }
expect_found() {
  local wanted
  for wanted in "${@:3}"; do
    grep "$1" -- "$wanted" "$2" || { fail "$2 lacks: $wanted" && sed 's/^/  /' "$2"; }
  done
}
expect_no_part() { ! grep -F -- "$2" "$1" || fail "$1 should not hold: $2"; }
expect_empty() {
  local content
  content=$(cat "$1") # which may be a pipe and have no size
  [ -z "$content" ] || fail "$1 is not empty: $content"
}

# Two files or folders hold the same; options of diff come first.
expect_same() { diff -r "$@" || fail "${*: -2:1} and ${*: -1} differ"; }

# Starts a script of the console program in $programs on msts that is given its lines by `tell`, which
# waits until they have been carried out; leaves the file complained. It is killed after SECONDS:
# start_script [SECONDS].
start_script() {
  coproc timeout "${1:-200}" "$programs/rivelt-cli" --root msts script - 2>complained
  scripted=$COPROC_PID
  exec 3>&"${COPROC[1]}" 4<&"${COPROC[0]}" # which bash closes when the program ends
  eval "exec ${COPROC[1]}>&-"
}
tell() {
  local line
  printf '%s\n' "$@" "echo end of $*" >&3
  while read -r -t 60 line <&4; do [ "$line" != "end of $*" ] || return 0; done
  fail "no answer to $*: $(cat complained)"
}
end_script() {
  exec 3>&-
  status=0
  wait "$scripted" || status=$?
}

# The installation msts of the sample, of which before is a copy.
world=msts/Routes/AMBREWICK/World
cli() { run timeout 200 "$programs/rivelt-cli" --root msts "$@"; }
# ends STATUS COMMAND...: a command of the console program.
ends() {
  cli "${@:2}"
  expect_status "$1"
}
check_in_script() {
  start_script
  tell "route $1" 'option all' check
}
last_converted() { find msts/Quenby/tmp -name 'w*' -printf '%f\n' | sort | tail -n 1; }
# An Update that comes upon a file that somebody has removed, in a program that ends then.
interrupted_update() {
  check_in_script Ambrewick
  rm "$world/$(last_converted)" "before/${world#*/}/$(last_converted)"
  tell update
  end_script
  expect_status 1
  expect_line complained "Rivelt: Had problems updating this route!"
}

finish() { exit $((failures > 0)); }
