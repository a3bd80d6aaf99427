# Sourced by the tests that are scripts: expectations that print what was there and go on. A test
# ends with `finish`.

failures=0

# The line of the test itself that leads here.
fail() {
  local depth=0
  while [ "${BASH_SOURCE[$depth]}" = "${BASH_SOURCE[0]}" ]; do depth=$((depth + 1)); done
  echo "${BASH_SOURCE[$depth]}:${BASH_LINENO[$((depth - 1))]}: $1"
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
# waits until they have been carried out; leaves the files said and complained.
start_script() {
  mkfifo told
  timeout 200 "$programs/rivelt-cli" --root msts script - <told >said 2>complained &
  scripted=$!
  exec 3>told
  rm told
}
tell() {
  local line=${BASH_LINENO[0]}.$SECONDS.$RANDOM deadline=$((SECONDS + 60))
  printf '%s\n' "$@" "echo told $line" >&3
  until grep -qFx "told $line" said; do
    if ! kill -0 "$scripted" 2>/dev/null || ((SECONDS > deadline)); then
      fail "no answer to $*: $(cat complained)"
      return 0
    fi
    sleep 0.01
  done
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
