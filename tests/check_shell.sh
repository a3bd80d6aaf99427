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

# A file holds a line, or a part of one.
expect_line() { grep -qFx -- "$2" "$1" || { fail "$1 lacks the line: $2" && sed 's/^/  /' "$1"; }; }
expect_part() { grep -qF -- "$2" "$1" || { fail "$1 lacks: $2" && sed 's/^/  /' "$1"; }; }
expect_no_part() { ! grep -F -- "$2" "$1" || fail "$1 should not hold: $2"; }
expect_empty() {
  local content
  content=$(cat "$1") # which may be a pipe and have no size
  [ -z "$content" ] || fail "$1 is not empty: $content"
}

# Two files or folders hold the same.
expect_same() { diff -r "$1" "$2" || fail "$1 and $2 differ"; }

finish() { exit $((failures > 0)); }
