#!/bin/bash
# The console program on real files: cli_test.sh PROGRAMS CASE MANUAL, where PROGRAMS is the folder
# of the programs, CASE a function below and MANUAL the manual page.
set -eu
source "$(dirname "$0")/check_shell.sh"

programs=$1
manual=$3
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"

count_files() { find "$1" -type f | wc -l; }
cli() { run "$programs/rivelt-cli" --root msts "$@"; }
script() { printf '%s\n' "$@" >script.txt && cli script script.txt; }
# Makes an installation and a copy of it to compare with.
sample() {
  "$programs/rivelt-sample" msts "$@"
  cp -r msts before
}

expect_untouched() { expect_same before msts; }
expect_routes_untouched() { expect_same before/Routes msts/Routes; }

# All that is staged now was staged by the finished check whose staging folder is given, too.
expect_staged_whole() {
  local file
  while read -r file; do
    cmp "$1/$file" "msts/Quenby/tmp/$file" || fail "partial: $file"
  done < <(ls -A msts/Quenby/tmp)
}

utf16() { iconv -f UTF-8 -t UTF-16LE; }

Routes_Prints_Each_Entry_And_Its_Folder() {
  sample
  cli routes
  expect_status 0
  printf '%s\t%s\n' Ambrewick AMBREWICK "Brenn Valley Line" Brenn_Valley Dörnquell Doernquell \
    Hestbeck Hestbeck >wanted
  expect_same wanted out
  expect_empty err
  expect_untouched
}

Check_Stages_Copies_And_Leaves_The_Route() {
  sample
  cli check ambrewick
  expect_status 0
  expect_line out "Checking: Ambrewick, this will take some time"
  expect_line out "$(printf ' %d updated files are in Quenby\\tmp' "$(count_files msts/Quenby/tmp)")"
  expect_no_part out "track sections has been changed"
  expect_no_part out $'\r'
  expect_empty err
  expect_routes_untouched
  [ "$(head -c 2 msts/Quenby/tmp/tsection.dat | od -An -tx1)" = " ff fe" ] || fail "no mark"
  cli check Ambrewick --all
  expect_part out "track sections has been changed"
  cli check Hestbeck --log missing/log.txt
  expect_status 1
  expect_line err "Rivelt: Could not save the log!"
}

Check_Replaces_And_Deletes_Shapes() {
  sample
  cli check Ambrewick --replace a2t500R10d=a1t500r10d.s --delete My2t110mTrestle.s
  expect_status 0
  expect_line out "Transforming A2t500r10d.s >> A1t500r10d.s"
  expect_line out "Transforming My2t110mTrestle.s >>  -delete-"
  cat msts/Quenby/tmp/*.[wW] | iconv -f UTF-16LE -t UTF-8 >staged
  expect_no_part staged A2t500r10d.s
  expect_no_part staged My2t110mTrestle.s
}

Update_Moves_The_Copies_And_Then_Nothing_Is_Left_To_Do() {
  sample
  cli check Ambrewick --all
  cp -r msts/Quenby/tmp staged
  cli update Ambrewick --all --yes --log log.txt
  expect_status 0
  expect_line out "Finished updating "
  expect_line err "Update: Are you sure you want to perform an update?"
  expect_empty <(ls -A msts/Quenby/tmp)
  expect_same staged/tsection.dat msts/Routes/AMBREWICK/tsection.dat
  for file in staged/w*; do expect_same "$file" "msts/Routes/AMBREWICK/World/${file#staged/}"; done
  expect_same <(sed -n '/^Updating/,$p' out) <(tr -d '\r' <log.txt)
  cli update Ambrewick --all --yes
  expect_status 0
  expect_line out "No update needed"
}

Update_Without_A_Terminal_Is_Cancelled() {
  sample
  cli update Ambrewick --all
  expect_status 0
  expect_line err "Update: Are you sure you want to perform an update?"
  expect_no_part out "Updating"
  expect_untouched
}

Update_On_A_Terminal_Asks_And_Shows_How_Far_It_Is() {
  sample
  local update="$programs/rivelt-cli --root msts update Ambrewick"
  command script -qec "$update" /dev/null <<<"no" >out
  expect_part out "Type ok to go on"
  expect_untouched
  command script -qec "$update" /dev/null <<<"ok" >out
  expect_part out "Finished updating"
  expect_part out "12 of 14 files"
}

Ctrl_C_At_The_Question_Ends_The_Program() {
  sample
  : >out
  status=0
  {
    until grep -q "Type ok" out; do sleep 0.05; done
    printf '\003'
  } | command script -qefc "exec $programs/rivelt-cli --root msts update Ambrewick" out >shown ||
    status=$?
  expect_status 130
  expect_untouched
}

Wrong_Usage_Says_What_Is_Wrong_And_Touches_Nothing() {
  "$programs/rivelt-sample" msts
  # A route whose name differs from another's in letter case only.
  cp -r msts/Routes/AMBREWICK msts/Routes/Other
  iconv -f UTF-16 -t UTF-8 msts/Routes/Other/AMBREWICK.trk | sed 's/( Ambrewick/( AMBREWICK/' |
    iconv -f UTF-8 -t UTF-16 >msts/Routes/Other/Other.trk
  rm msts/Routes/Other/AMBREWICK.trk
  cp -r msts before
  refuses() {
    local message=$1
    shift
    cli "$@"
    expect_status 2
    expect_part err "$message"
    expect_untouched
  }
  refuses 'There is no single route "Nowhere". The routes are:' check Nowhere
  expect_line err "  Dörnquell"
  refuses 'There is no single route "ambrewick"' check ambrewick
  refuses 'is not of the form OLD=NEW' check Hestbeck --replace A3t1000r5d
  refuses 'is not of the form OLD=NEW' check Hestbeck --replace =A1t10mStrt.s
  refuses 'needs the name of a shape' update Hestbeck --yes --delete ""
  refuses 'The catalogue has no single shape "A1t10mStr"' check Hestbeck --replace X=A1t10mStr
  expect_line err "  A1t10mStrt.s"
  refuses 'No more than five' check Hestbeck --delete A --delete B --delete C --delete D --delete E \
    --replace F=A1t10mStrt.s
  refuses 'subcommand' --
  refuses 'ROUTE' check
  refuses 'yes' check Hestbeck --yes
  refuses 'Cannot read no.txt' script no.txt
  cli check AMBREWICK
  expect_status 0
}

Fatal_Errors_Are_Told_On_The_Output_And_Change_Nothing() {
  sample
  local catalogue=msts/Global/tsection.dat
  dies() {
    cp -r msts before
    cli check Ambrewick
    expect_status 1
    expect_line out "$1"
    expect_line out "Rivelt needs to run on a computer with MSTS installed!"
    expect_empty err
    expect_untouched
    cli routes
    expect_status 1
    expect_empty out
    expect_line err "$1"
    rm -rf msts before
    "$programs/rivelt-sample" msts
  }
  rm -rf before
  rm -r msts/Routes && dies "Could not read installed routes!"
  utf16 <<<'Tr_RouteFile ( )' >msts/Routes/Hestbeck/Hestbeck.trk && dies "Could not read installed routes!"
  rm $catalogue && dies "Could not read installed track sections!"
  : >$catalogue && dies "Could not read installed track sections!"
  head -c 3000 /dev/urandom >$catalogue && dies "Could not read installed track sections!"
  truncate -s 200 $catalogue && dies "Could not read installed track sections!"
}

A_Cut_World_File_Ends_The_Check_And_No_Update_Moves_Anything() {
  sample
  local world=msts/Routes/AMBREWICK/World/w-005354+014850.w
  local name_at
  name_at=$(iconv -f UTF-16 -t UTF-8 $world | grep -ob 'FileName (' | sed -n '3s/:.*//p')
  truncate -s $((2 * name_at + 24)) $world
  rm -rf before && cp -r msts before
  cli check Ambrewick --all
  expect_status 1
  expect_line out "Had problems reading route w-files!"
  expect_routes_untouched
  cli update Ambrewick --all --yes --log log.txt
  expect_status 1
  expect_line err "Rivelt: Had problems updating this route!"
  expect_line err "The log of a stopped program cannot be saved."
  expect_routes_untouched
}

No_Place_To_Stage_Ends_In_A_Message_Box() {
  sample
  : >msts/Quenby
  cp msts/Quenby before
  cli check Ambrewick
  expect_status 1
  expect_line out "Had problems in Do_Check!"
  expect_line err "Rivelt: Had problems checking this route!"
  expect_untouched
}

# Root may write everywhere, so another account checks.
A_Staging_Folder_Without_Write_Access_Ends_The_Check() {
  sample
  mkdir -p msts/Quenby/tmp
  cp "$programs/rivelt-cli" .
  local as=()
  if [ "$(id -u)" -eq 0 ]; then
    chmod 755 .
    as=(setpriv --reuid=65534 --regid=65534 --clear-groups)
  fi
  chmod 555 msts/Quenby/tmp
  run "${as[@]}" ./rivelt-cli --root msts update Ambrewick --all --yes
  chmod 755 msts/Quenby/tmp
  expect_status 1
  expect_line out "Had problems reading route w-files!"
  expect_line err "Rivelt: Had problems updating this route!"
  expect_empty <(ls -A msts/Quenby/tmp)
  expect_routes_untouched
}

A_Full_Disk_Leaves_Whole_Copies_And_The_Route() {
  sample --objects 200
  cli check Ambrewick --all
  cp -r msts/Quenby/tmp whole
  # No file may grow past 64 KB; some of the copies are larger.
  run bash -c 'trap "" XFSZ; ulimit -f 64; exec "$@"' - "$programs/rivelt-cli" --root msts \
    update Ambrewick --all --yes
  expect_status 1
  expect_line err "Rivelt: Had problems updating this route!"
  expect_staged_whole whole
  expect_routes_untouched
}

A_Closed_Output_Ends_The_Check_Between_Two_Files() {
  sample --world-files 400 --routes 1
  cli check Ambrewick --all
  mv msts/Quenby/tmp whole
  status=0
  "$programs/rivelt-cli" --root msts check Ambrewick --all >/dev/full 2>err || status=$?
  expect_status 1
  expect_empty err
  set +e
  "$programs/rivelt-cli" --root msts check Ambrewick --all 2>err | head -n 40 >out
  status=${PIPESTATUS[0]}
  set -e
  expect_status 1
  [ "$(count_files msts/Quenby/tmp)" -lt "$(count_files whole)" ] || fail "it went on"
  expect_staged_whole whole
  expect_routes_untouched
}

Ctrl_C_Ends_The_Check_Between_Two_Files() {
  sample --world-files 400 --routes 1
  cli check Ambrewick --all
  mv msts/Quenby/tmp whole
  set -m # so that the process does not start with the signal ignored
  "$programs/rivelt-cli" --root msts check Ambrewick --all >out 2>err &
  local process=$!
  until ls msts/Quenby/tmp/w* >/dev/null 2>&1 || ! kill -0 $process; do sleep 0.01; done
  kill -INT $process
  status=0
  wait $process || status=$?
  set +m
  expect_status 130
  [ "$(count_files msts/Quenby/tmp)" -lt "$(count_files whole)" ] || fail "it went on"
  expect_staged_whole whole
  expect_routes_untouched
}

Script_Presses_The_Controls_And_Prints_What_It_Is_Asked_For() {
  sample
  script '# nothing' '' 'echo  two blanks ' log state
  expect_status 0
  expect_line out " two blanks "
  expect_line out "Select a route above for check/update"
  expect_line out $'cmbRoutes\tenabled\t'
  expect_line out $'optDynamic(0)\tenabled\tTrue'
  expect_line out $'cmdCheck\tdisabled\t&Check'
  [ "$(grep -c $'\tenabled\t\\|\tdisabled\t' out)" -eq 26 ] || fail "not 26 controls"
  script 'route Dörnquell' 'option all' 'old 0 A3t1000r5d' 'new 0  -delete-' 'old 4  x ' state
  expect_status 0
  expect_line out $'cmbRoutes\tenabled\tDörnquell'
  expect_line out $'cmbTracks(0)\tenabled\t -delete-'
  expect_line out $'txtTrack(4)\tenabled\t x '
  expect_line out $'cmdUpdate\tenabled\t&Update'
  script 'route Ambrewick' 'answer cancel' update 'echo cancelled' 'answer ok' update log \
    'save log.txt' quit 'echo behind'
  expect_status 0
  expect_line out cancelled
  expect_line out "Finished updating "
  expect_no_part out behind
  expect_same <(sed 1d out) <(tr -d '\r' <log.txt)
}

Script_Comes_From_A_File_Or_The_Input_With_Either_Line_End() {
  sample
  printf '\xef\xbb\xbfroute Ambrewick\r\n\r\n# x\r\ncheck\r\necho y\r\nlog\r\n' >script.txt
  cli script script.txt
  expect_status 0
  expect_line out "y"
  expect_part out "updated files are in"
  expect_no_part out $'\r'
  for file in "" -; do
    # shellcheck disable=SC2086 # no argument at all, or one
    printf 'echo from input' | "$programs/rivelt-cli" --root msts script $file >out
    expect_line out "from input"
  done
}

Script_Stops_At_A_Line_That_Cannot_Be_Carried_Out() {
  sample
  stops() {
    script 'echo first' "$1" 'echo behind'
    expect_status 1
    expect_line err "line 2: $2"
    expect_same <(echo first) out
  }
  stops 'check' 'cmdCheck is disabled'
  stops 'update' 'cmdUpdate is disabled'
  stops 'old 0 A' 'txtTrack(0) is disabled'
  stops 'new 0 A' 'cmbTracks(0) is disabled'
  stops 'route ambrewick' 'cmbRoutes has no entry "ambrewick"'
  stops 'route  Ambrewick' 'cmbRoutes has no entry " Ambrewick"'
  stops 'route' 'cmbRoutes has no entry ""'
  stops 'option both' 'option is dynamic or all'
  stops 'answer yes' 'answer is ok or cancel'
  stops 'old 5 A' 'a row is a number from 0 to 4'
  stops 'old A' 'a row is a number from 0 to 4'
  stops 'log now' 'nothing may follow this command'
  stops 'save' 'save needs a file'
  stops 'Check' 'unknown command "Check"'
  stops ' check' 'unknown command ""'
  expect_untouched
  rm -r msts/Global
  script state save 'echo behind'
  expect_line out $'cmdQuit\tenabled\t&Quit'
  script log 'save log.txt'
  expect_line err 'line 2: cmdSave is disabled'
  script log
  expect_status 1
  expect_line out "Could not read installed track sections!"
}

An_Update_Can_Be_Restored_And_The_Restore_Taken_Back() {
  sample
  cli update Ambrewick --all --yes
  cp -r msts/Routes updated
  cli backups ambrewick
  expect_status 0
  expect_part out "7 files"
  cli restore Ambrewick
  expect_same updated msts/Routes
  cli restore Ambrewick --backup "$(cli backups; cut -f 2 out)" --yes
  expect_status 0
  expect_same before/Routes msts/Routes
  cli restore Ambrewick --yes
  expect_status 0
  expect_same updated msts/Routes
  cli restore Ambrewick --backup never --yes
  expect_status 2
  expect_line err "There is no such backup."
}

Manual_Page_Has_Every_Option_And_No_Fault() {
  expect_empty <(groff -man -Tutf8 -ww -z "$manual" 2>&1)
  sed 's/\\//g' "$manual" >plain
  for option in $(for command in update restore; do "$programs/rivelt-cli" $command --help; done |
    grep -oh -- '--[a-z]*') --root; do
    expect_part plain "$option"
  done
}

"$2"
finish
