#!/bin/bash
# Keeps the documents true: docs_test.sh PROGRAMS CASE, where PROGRAMS is the folder
# of the programs and CASE a function below.
# shellcheck disable=SC2016 # what looks like the shell's variables is Perl's
set -eu
cd "$(dirname "$0")/.."
programs=$1

# Paths in the repository, from backticks and links: what stands in the root, or has a slash and no
# sign of being something else. Paths of an installation, of a build, and patterns are not ours.
Every_Path_That_The_Documents_Name_Exists() {
  perl -ne '
    for my $name (/`([^`\s]+)`/g, /\]\(([^)\s#]+)[^)]*\)/g) {
      next if $name =~ m{^(https?:|build/|Quenby/|~|/|--)|[\\*<>{}=]};
      $name =~ s{^\./}{};
      next unless $name =~ m{/} || $name =~ m{^[\w.-]+\.(md|txt|json|sh|h|cpp|1)$} || -e $name;
      (my $folder = $ARGV) =~ s{[^/]*$}{};
      ++$named;
      next if -e $name || -e "$folder$name" || -e "src/$name";
      print "$ARGV names $name, which does not exist\n";
      $missing = 1;
    }
    END { exit($missing || $named < 10) }
  ' README.md docs/*.md
}

# A message that is put together in the source must stand in a row of a table of README.md, with anything in
# place of what varies.
README_Explains_Every_Message() {
  find src -name '*.cpp' -print0 | xargs -0 perl -0777 -ne '
    BEGIN {
      open my $file, "<", "README.md" or die;
      $readme = do { local $/; <$file> };
    }
    # The pieces of a message: what looks like a text, without the blanks at its ends.
    sub demand {
      my @pieces = grep { /[[:alpha:]]/ } map { s/\\n/ /gr =~ s/\\(.)/$1/gr =~ s/^\s+|\s+$//gr } @_;
      return unless @pieces;
      ++$found;
      my $pattern = join ".*", map { quotemeta } @pieces;
      return if $readme =~ /^\| .*$pattern/m;
      print "$ARGV: README.md lacks the message: @pieces\n";
      $missing = 1;
    }
    my $literal = qr/"((?:[^"\\]|\\.)*)"/;
    # Of the boxes only the text: the title and the style stand behind it.
    demand($1) while /\b(?:Message_Box|Standard_Line)\b[ (=]+u$literal/g;
    while (/\b(?:Fatal_Error|Add_Line|Add_Text|Set_Log|[Ll]og|Write_Error|Wrong_Usage)
            ([({] (?: [^(){}"] | "(?:[^"\\]|\\.)*" | (?1) )* [)}])/gx) {
      my $arguments = $1;
      demand($arguments =~ /$literal/g);
    }
    END { exit($missing || $found < 40) }
  '
}

# The example is played on a new sample: each of its lines must come, but for those that only a
# terminal shows.
README_Shows_What_The_Program_Says() {
  work=$(mktemp -d)
  trap 'rm -rf "$work"' EXIT
  "$programs/rivelt-sample" "$work/msts"
  sed -n '/^    \$ rivelt-cli/,/^    Finished/s/^    //p; /^Finished/q' README.md |
    grep -v '^\.\.\.$\|^Update: \|^Type ok' >"$work/example"
  [ "$(wc -l <"$work/example")" -ge 15 ]
  grep '^\$ rivelt-cli' "$work/example" | while read -r command; do
    echo "$command"
    read -ra words <<<"$command"
    [ "${words[4]}" = check ] || words+=(--yes)
    "$programs/rivelt-cli" --root "$work/msts" "${words[@]:4}" 2>/dev/null </dev/null
  done | sed 's/ *$//' >"$work/said"
  ! sed 's/ *$//' "$work/example" | grep -vxFf "$work/said"
}

"$2"
