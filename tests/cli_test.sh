#!/bin/bash
# The console program on real files: cli_test.sh PROGRAMS CASE, where PROGRAMS is the folder of the
# programs and CASE a function below.
set -eu
source "$(dirname "$0")/check_shell.sh"

programs=$1
manual=$(realpath "$(dirname "$0")/../docs/rivelt-cli.1")
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"

count_files() { find "$1" -type f | wc -l; }
script() { printf '%s\n' "$@" >script.txt && cli script script.txt; }
# Makes an installation and a copy of it to compare with.
sample() {
  "$programs/rivelt-sample" msts "$@"
  cp -r msts before
}

# A sample whose route Ambrewick has been updated, which is kept in the folder updated too.
updated_sample() {
  sample
  ends 0 update Ambrewick --all --yes "$@"
  cp -r msts/Routes updated
}

expect_routes_untouched() { expect_same before/Routes msts/Routes; }

Routes_Prints_Each_Entry_And_Its_Folder_And_The_Sample_Spares_A_Folder_In_Use() {
  sample
  ends 0 routes
  expect_same out - < <(printf '%s\t%s\n' Ambrewick AMBREWICK "Brenn Valley Line" Brenn_Valley \
    Dörnquell Doernquell Hestbeck Hestbeck Kellcombe Kellcombe)
  expect_empty err
  run "$programs/rivelt-sample" msts --seed 8
  expect_status 1
  expect_same before msts
}

A_Name_Of_Odd_Bytes_Shows_As_Valid_Text_And_Is_Staged_Under_Its_Bytes() {
  sample
  cp "$world/w-005354+014850.w" "$world/odd"$'\xff'.w
  script 'route Ambrewick' check 'save log.txt' log
  expect_part out $'odd\xef\xbf\xbd.w'
  expect_part log.txt $'odd\xef\xbf\xbd.w'
  [ -f "msts/Quenby/tmp/odd"$'\xff'.w ] || fail "not staged"
}

Check_Stages_Copies_With_Shapes_Replaced_And_Deleted_And_Leaves_The_Route() {
  sample
  ends 0 check ambrewick
  expect_line out " $(count_files msts/Quenby/tmp) updated files are in Quenby\\tmp"
  expect_no_part out "track sections has been changed"
  expect_no_part out $'\r'
  ends 0 check Ambrewick --replace a2t500R10d=a1t500r10d.s --delete My2t90mTrestle.s
  expect_line out "Transforming A2t500r10d.s >> A1t500r10d.s" \
    "Transforming My2t90mTrestle.s >>  -delete-"
  expect_part out "track sections has been changed"
  # A shape that the route does not have stops an update.
  ends 1 update Ambrewick --yes --delete a2t500R10D --delete Nothing
  expect_line err "No track object has Nothing"
  expect_no_part err a2t500
  expect_routes_untouched
  # An error line does not overtake the output.
  run bash -c '"$1" --root msts check Hestbeck --log missing/log.txt 2>&1' - "$programs/rivelt-cli"
  expect_status 1
  expect_no_part <(sed '1,/^Rivelt: Could not save the log!/d' out) updating
  # Nor is a failed write forgotten.
  for arguments in "--root msts check Hestbeck" --help --version; do
    run bash -c '"$1" $2 >/dev/full' - "$programs/rivelt-cli" "$arguments"
    expect_status 1
  done
}

# Runs a command of the console program on a terminal, where the answer is typed.
on_terminal() {
  status=0
  command script -qec "$programs/rivelt-cli --root msts ${*:2}" /dev/null <<<"$1" >out || status=$?
}

Update_Asks_After_It_Has_Shown_The_Check() {
  sample
  for command in update restore; do
    ends 2 $command Ambrewick
    expect_part err "--yes"
    expect_empty out
  done
  on_terminal no update Ambrewick
  expect_status 1
  expect_part out "before updating" "Type ok to go on" "Cancelled; the route is untouched."
  local update="$programs/rivelt-cli --root msts update Ambrewick"
  : >out
  status=0
  {
    until grep -q "Type ok" out; do sleep 0.05; done
    printf '\003'
  } | command script -qefc "exec $update" out >shown || status=$?
  expect_status 130
  expect_part shown "Interrupted; the route is untouched."
  expect_routes_untouched
  on_terminal YES update Ambrewick
  expect_status 0
  expect_same <(grep -o 'before updating\|Finished updating\|Type ok' out) - \
    < <(printf '%s\n' 'before updating' 'Type ok' 'Finished updating')
  on_terminal none update Ambrewick
  expect_part out "No update needed"
  expect_no_part out "Type ok"
  on_terminal "" restore Ambrewick
  expect_status 1
  on_terminal y restore Ambrewick
  expect_routes_untouched
}

Wrong_Usage_Says_What_Is_Wrong_And_Touches_Nothing() {
  "$programs/rivelt-sample" msts
  # A route whose name differs from another's in letter case only.
  cp -r msts/Routes/AMBREWICK msts/Routes/Other
  LC_ALL=C sed -i 's/A\x00m\x00/A\x00M\x00/' msts/Routes/Other/AMBREWICK.trk
  cp -r msts before
  refuses() {
    ends 2 "${@:2}"
    expect_part err "$1"
    expect_same before msts
  }
  refuses 'There is no route "Nowhere". The routes are:' check Nowhere
  expect_line err $'Dörnquell\tDoernquell'
  for route in ambrewick AMBREWICK other; do
    refuses 'Several routes have one name' check $route
    expect_line err $'Ambrewick\tAMBREWICK' $'AMbrewick\tOther'
  done
  refuses 'There is no command "chekc"' chekc Hestbeck
  refuses 'quote the name' check Brenn Valley Line
  refuses 'is not of the form OLD=NEW' check Hestbeck --replace A3t1000r5d
  refuses 'is not of the form OLD=NEW' check Hestbeck --replace =A1t10mStrt.s
  refuses 'needs the name of a shape' update Hestbeck --yes --delete ""
  refuses 'The catalogue has no single shape "A1t10mStr"' check Hestbeck --replace X=A1t10mStr
  expect_line err "  A1t10mStrt.s"
  refuses 'No more than five' check Hestbeck --delete A --delete B --delete C --delete D --delete E \
    --replace F=A1t10mStrt.s
  refuses 'ROUTE' check
  refuses 'yes' check Hestbeck --yes
  refuses 'Cannot read no.txt' script no.txt
  run "$programs/rivelt-cli" check brenn_valley --root msts
  expect_part out "Checking: Brenn Valley Line"
}

Fatal_Errors_Are_Told_On_The_Output_And_Change_Nothing() {
  sample
  rm -r {msts,before}/Routes/AMBREWICK/World
  ends 1 update Ambrewick --all --yes --log log.txt
  expect_line out "Had problems reading route w-files!"
  expect_line err "Rivelt: Had problems updating this route!" "Had problems reading route w-files!" \
    "The log of a stopped program cannot be saved."
  on_terminal ok update Ambrewick
  expect_status 1
  expect_no_part out "Type ok"
  expect_routes_untouched
  head -c 3000 /dev/urandom >msts/Global/tsection.dat
  ends 1 routes
  expect_empty out
  expect_line err "Could not read installed track sections!"
}

# Starts a command of the console program and sends it a signal, which it may have been started to
# ignore, once such a file exists: signal_at FILE SIGNAL COMMAND...
signal_at() {
  [ "$2" = ignored ] || set -m
  "$programs/rivelt-cli" --root msts "${@:3}" >out 2>err &
  set +m
  until compgen -G "$1" >/dev/null || ! kill -0 $!; do :; done
  kill "-${2/ignored/INT}" $!
  wait $! || status=$?
}

A_Closed_Output_Or_A_Signal_Ends_The_Check_Between_Two_Files_Unless_It_Was_Ignored() {
  sample --world-files 400 --routes 1
  local check=(check Ambrewick --all) end
  ends 0 "${check[@]}"
  mv msts/Quenby/tmp whole
  local -A wanted=([full]=1 [PIPE]=1 [INT]=130 [TERM]=130 [HUP]=130 [ignored]=0)
  for end in "${!wanted[@]}"; do
    rm -rf msts/Quenby/tmp
    status=0
    case $end in
      full) "$programs/rivelt-cli" --root msts "${check[@]}" 2>err >/dev/full || status=$? ;;
      PIPE) "$programs/rivelt-cli" --root msts "${check[@]}" 2>err > >(head -n 40 >out) || status=$? ;;
      *) signal_at 'msts/Quenby/tmp/w*' "$end" "${check[@]}" ;;
    esac
    expect_status "${wanted[$end]}"
    [ "$end" != ignored ] || { expect_same whole msts/Quenby/tmp && continue; }
    # Some of the files are staged, and those whole.
    [ "$(count_files msts/Quenby/tmp)" -lt "$(count_files whole)" ] || fail "$end: it went on"
    expect_empty <(diff -rq whole msts/Quenby/tmp | grep -v '^Only in whole: ')
    local said="Interrupted; the"
    [ "${wanted[$end]}" -ne 1 ] || said=The
    expect_line err "$said route is untouched."
    [ "$end" != full ] || expect_line err "Reason: standard output cannot be written"
    expect_routes_untouched
  done
  status=0
  signal_at 'msts/Quenby/backup/*/*/journal.txt' INT update Ambrewick --all --yes
  expect_status 130
  expect_line err "Interrupted; the update was finished."
}

Script_Presses_The_Controls_And_Prints_What_It_Is_Asked_For() {
  sample
  # A file of the other line ends with a mark.
  script $'\xef\xbb\xbf# nothing\r' $'\r' $'echo  two blanks \r' $'log\r' $'state\r'
  expect_status 0
  expect_line out " two blanks " "Select a route above for check/update" \
    $'optDynamic(0)\tenabled\tTrue' $'Whole route\tenabled\tFalse' $'Restore a backup\tdisabled\t0'
  [ "$(grep -c $'\tenabled\t\\|\tdisabled\t' out)" -eq 32 ] || fail "not 26 controls and 6 entries"
  script 'route Dörnquell' 'option all' 'old 0 A3t1000r5d' 'new 0  -delete-' 'old 4  x ' state \
    'answer cancel' update 'echo cancelled' 'answer ok' update log 'save log.txt' quit 'echo behind'
  expect_status 0
  expect_line out $'cmbRoutes\tenabled\tDörnquell' $'cmbTracks(0)\tenabled\t -delete-' \
    $'txtTrack(4)\tenabled\t x ' $'cmdUpdate\tenabled\t&Update' "Finished updating "
  expect_same <(sed '1,/^cancelled$/d' out) <(tr -d '\r' <log.txt)
}

Script_Stops_At_A_Line_That_Cannot_Be_Carried_Out() {
  sample
  local line message
  while IFS='|' read -r line message; do
    script 'echo first' "$line" 'echo behind'
    expect_status 1
    expect_line err "line 2: $message"
    expect_same - out <<<first
  done <<'END'
check|cmdCheck is disabled
old 0 A|txtTrack(0) is disabled
route ambrewick|cmbRoutes has no entry "ambrewick"
route  Ambrewick|cmbRoutes has no entry " Ambrewick"
option both|option is dynamic or all
answer yes|answer is ok or cancel
whole yes|whole is on or off
old 5 A|a row is a number from 0 to 4
log now|nothing may follow this command
save|save needs a file
Check|unknown command "Check"
END
  expect_same before msts
}

# The folders of the route's backups.
backup() { find msts/Quenby/backup/AMBREWICK -mindepth 1 -maxdepth 1; }

Every_Command_Rolls_Back_What_Was_Interrupted_And_Sets_Aside_What_Was_Changed_Since() {
  sample
  interrupted_update
  cp -a msts interrupted # -a: a kept file is the route's own until it is replaced
  for command in routes backups 'check Hestbeck' 'update Hestbeck --yes' 'script /dev/null' \
    'restore Ambrewick --yes'; do
    rm -r msts
    cp -a interrupted msts
    # shellcheck disable=SC2086 # it is words
    cli $command
    [[ $command = restore* ]] || expect_status 0 # there is nothing to restore
    expect_line <(cat out err) "Rolled back an unfinished update: AMBREWICK"
    expect_same before/Routes/AMBREWICK msts/Routes/AMBREWICK
    [ ! -e msts/Quenby/backup/AMBREWICK ] || fail "left: $(find msts/Quenby/backup)"
  done
  rm -r msts
  mv interrupted msts
  echo edited >>msts/Routes/AMBREWICK/tsection.dat
  cp msts/Routes/AMBREWICK/tsection.dat edited
  ends 0 backups
  expect_line err "Set aside a file that was changed since the update: tsection.dat"
  expect_part out "1 files" "set aside, cannot be restored"
  expect_same edited "$(backup)/changed since/tsection.dat"
  expect_routes_untouched
}

A_Backup_Is_Found_Whatever_Its_Place_And_Restore_Says_What_It_Has_Done_And_What_Not() {
  updated_sample --log log.txt
  expect_no_part err sure
  expect_same <(sed -n '/^Updating/,$p' out) <(tr -d '\r' <log.txt)
  local backups=msts/Quenby/backup
  local first="$backups/Ambrewick/2099-12-31 23.59.59"
  mv "$(backup)" "$backups/AMBREWICK/${first##*/}"
  mv $backups/AMBREWICK $backups/Ambrewick
  mkdir -p "$backups/HESTBECK/2026-01-01 00.00.00"
  echo damaged >"$backups/HESTBECK/2026-01-01 00.00.00/journal.txt"
  ends 0 backups
  expect_part out "2099-12-31 23.59.59" "8 files" "cannot be read"
  # By hand, too: a backup is copied over the route.
  cp -r "$first/." updated/AMBREWICK
  rm updated/AMBREWICK/journal.txt
  expect_same before/Routes updated
  ends 2 restore Hestbeck --yes
  expect_part err "There is no such backup, or it cannot be restored; see"
  ends 0 update Ambrewick --delete A1t500r10d --yes
  later=$(find $backups/Ambrewick/2100*/World -printf '%f\n' | grep -vxFf <(ls "$first/World"))
  touch -d 2100-01-02 "$world/w-new.w"
  ends 0 restore Ambrewick --backup "${first##*/}" --yes
  expect_line out $'Put back\ttsection.dat' \
    $'From a later update, so it may be on other numbers\tWorld\\'"$(tail -n 1 <<<"$later")" \
    $'Left, newer than the backup, so it may be on other numbers\tWorld\\w-new.w'
  rm "$world/w-new.w"
  expect_routes_untouched
  ends 0 backups Ambrewick
  expect_part out "2100-01-01 00.00.01" "made by a restore" # though the clock went back
}

Restore_Fails_With_The_Route_Untouched_Or_Rolled_Back() {
  updated_sample
  cp -r msts/Quenby/backup backups
  fails() {
    ends 1 restore Ambrewick --yes
    expect_line err "Had problems restoring this route! $1" "$2"
    expect_same updated msts/Routes
    expect_same backups msts/Quenby/backup
  }
  check_in_script Hestbeck
  fails "Nothing was touched." "Reason: another Rivelt is at work on this installation"
  end_script
  local kept=("$(backup)"/World/*)
  for file in {updated,msts/Routes}/AMBREWICK/World/"${kept[-1]##*/}"; do
    rm "$file"
    mkdir "$file"
  done
  fails "Rolled back; the route is what it was." "Rolled back an unfinished update: AMBREWICK"
}

# Of each kind how many references there are and where they lead, and the status.
references() {
  cli references "$1"
  grep -v 'to nowhere.*[0-9]$' out >"$2"
  echo "$status" >>"$2"
}

Whole_Route_Leads_Every_Reference_To_Where_It_Led() {
  sample --routes 5
  rm "$world/w-005351+014852.w" # which is damaged
  ends 0 check Kellcombe
  expect_line out "file is binary, please convert to text with ffedit" \
    "Stays behind:  58 numbers in track databases, 7 track objects"
  ends 0 check Kellcombe --whole-route
  expect_line out "file is binary, read as text"
  local route
  for route in Ambrewick "Brenn Valley Line" Dörnquell Hestbeck Kellcombe; do
    references "$route" wanted
    expect_line wanted 0
    ends 0 update "$route" --whole-route --yes
    expect_no_part out behind
    references "$route" found
    expect_same wanted found
  done
  script 'route Hestbeck' 'whole on' state
  expect_line out $'Whole route\tenabled\tTrue' $'Restore a backup\tenabled\t1'
  script 'route Ambrewick' check log
  cp out partly
  cli script --whole-route script.txt
  expect_same partly out # there is nothing left to move
}

An_Update_Without_The_Whole_Route_Says_What_Stays_Behind_And_It_Leads_To_Nowhere() {
  sample
  ends 0 update Ambrewick --yes
  expect_line out "Stays behind:  76 numbers in track databases, 12 track objects" \
    "Only converting the route as a whole moves them" \
    "To move what stays behind, restore the backup first"
  expect_part err "Summary: 12 world files, 1 binary; 4 to update"
  expect_no_part err shapes
  expect_line err "$(grep -o '^Summary: .* to update' err); backup $(basename "$(backup)"); to go back: $(
    )rivelt-cli --root \"msts\" restore \"Ambrewick\" --backup \"$(basename "$(backup)")\""
  ends 1 references ambrewick
  expect_part out $'365 to the catalogue\t0 to the route\'s own\t12 to nowhere'
  expect_line out $'  to nowhere\tSections in databases\tAMBREWICK.tdb\t36863' \
    $'Unknown shapes\t21\t22 track objects' $'Passed over\tWorld\\w-005351+014852.w, at byte 32: block 68ed1e9b is not known'
  [ "$(grep -c $'^  to nowhere\t' out)" -eq 9 ] || fail "not three of each kind: $(cat out)"
  ends 1 references ambrewick --list
  [ "$(grep -c $'^  to nowhere\t' out)" -eq 88 ] || fail "not all"
  [ "$(grep -c $'^  unknown shape\t' out)" -eq 21 ] || fail "not all"
  expect_line out $'  unknown shape\tMy2t90mTrestle.s\t4\t1 track objects\t'$(
    )$'World\\w-005354+014850.w\tto the catalogue'
  ends 0 check Ambrewick --all
  expect_part err "; 7 to update; 17 numbers corrected; 22 track objects of 21 shapes that the"
}

References_Need_A_Database_That_Can_Be_Read_And_The_Only_One_May_Have_Any_Name() {
  sample
  local route=msts/Routes/Hestbeck
  rm "$route/Hestbeck.rdb"
  ends 0 references Hestbeck
  mv "$route/Hestbeck.tdb" "$route/Other.TDB"
  ends 0 check Hestbeck --whole-route
  expect_line out "Other.TDB"
  truncate -s 5001 "$route/Other.TDB"
  ends 1 references Hestbeck
  expect_part err "Reason: Other.TDB, line "
  expect_empty out
  rm "$route/Other.TDB"
  ends 1 references Hestbeck
  expect_line out "No track database"
  truncate -s 900 "$route/TSECTION.DAT"
  ends 1 update Hestbeck --yes
  expect_line out "No tsection.dat, seems like this route does not use dynamic tracks." "No update needed"
  expect_part err "Reason: Hestbeck\\tsection.dat, line "
  expect_no_part err touched
  ends 2 references nowhere
}

Binary_Files_Become_Texts_In_One_Update_And_Come_Back() {
  sample
  ends 0 text kellcombe --yes
  expect_line err "Files to convert to text: 10, which will need about 1 MB"
  expect_line out $'Converted\tKellcombe.tdb'
  texts_lead_somewhere_and_come_back
  ends 0 update Kellcombe --whole-route --yes
  texts_lead_somewhere_and_come_back
}
# A compressed and a binary file have become texts; then the route is restored.
texts_lead_somewhere_and_come_back() {
  local file
  for file in msts/Routes/Kellcombe/World/w-005354+01485[01].w; do
    iconv -f UTF-16 -t UTF-8 "$file" | grep -q '^.Tr_Watermark ( ' || fail "no text: $file"
  done
  ends 0 references Kellcombe # none leads to nowhere
  ends 0 restore Kellcombe --yes
  expect_routes_untouched
}

Manual_Page_Has_Every_Option_And_No_Fault() {
  expect_empty <(groff -man -Tutf8 -ww -z "$manual" "${manual%-cli.1}.1" 2>&1)
  sed 's/\\//g' "$manual" >plain
  for command in "" routes check update references backups restore text script; do
    # shellcheck disable=SC2086 # it may be none
    "$programs/rivelt-cli" $command --help
  done >help
  expect_empty <(grep '.\{101\}' help)
  [ "$(grep -c '^Example:' help)" -eq 9 ] || fail "not an example each"
  for option in $(grep -o -- '--[a-z]*' help); do expect_part plain "$option"; done
}

"$2"
finish
