#!/bin/bash
# The built program, killed with unsaved changes: the next start has them in a changed document with its bar, whatever became
# of the file, and only one instance has them. Kept they are saved, discarded they are gone, untouched they stay.
# shellcheck source=driving.bash
. "$(dirname "$0")/driving.bash"

export XDG_STATE_HOME=$scratch/state
file=$scratch/file.txt journals=$XDG_STATE_HOME/quillmark/recovery
# holds FILE TEXT
holds() { printf '%s' "$2" | cmp -s - "$1"; }
# expectFile TEXT WHERE
expectFile() { waitFor 30 holds "$file" "$1" || { cat "$file" >&2; fail "the file holds another text $2"; }; }
journalHolds() { grep -aqs "$1" "$journals"/*.journal; }
noJournal() { ! compgen -G "$journals/*" >/dev/null; }
# picture NAME: of the screen, for who wants to look (PICTURES=FOLDER).
picture() { [[ -z ${PICTURES-} ]] || import -silent -window root "$PICTURES/$1.png"; }

showFile() {
    startProgram "$@"
    waitFor 60 windowOf 'file\.txt' || fail "no window showed the file"
    focusWindow
}
killProgram() {
    kill -KILL "$running"
    wait "$running" 2>/dev/null || true
    running=''
}
# typeAndDie TEXT: is typed before the file's text; killed once it is on the disk.
typeAndDie() {
    showFile "$file"
    xdotool type --delay 30 "$1"
    waitFor 30 journalHolds "$1" || fail "what was typed is not in a journal"
    killProgram
}
# The bar has the first keys of F6 from the text backwards.
toBar() { press shift+F6; }
quit() {
    press alt+F4
    expectEnd
}
# expectQuestion: the program is asked to end, and asks itself.
expectQuestion() {
    press alt+F4
    settle
    kill -0 "$running" 2>/dev/null || fail "the changed document did not ask $1"
}

printf 'text\n' >"$file"
typeAndDie 'one '
expectFile $'text\n' "after the kill"
showFile
picture recovered
press alt+k
settle
picture kept
expectQuestion "though its changes were kept"
press Return
expectEnd
expectFile $'one text\n' "after keeping and saving"
noJournal || fail "a journal is left after the save"

printf 'text\n' >"$file"
typeAndDie 'two '
showFile
press alt+d
settle
picture discarded
waitFor 30 noJournal || fail "a journal is left after discarding"
quit
expectFile $'text\n' "after discarding"

typeAndDie 'three '
for turn in first second; do
    showFile
    quit
    journalHolds 'three ' || fail "the untouched changes are gone after the $turn start"
done
showFile
xdotool type --delay 30 'more '
press ctrl+s
expectFile $'more three text\n' "after typing into the recovered text"
waitFor 30 noJournal || fail "a journal is left after the save of the recovered text"
quit

# While one instance has them, another one does not.
printf 'text\n' >"$file"
typeAndDie 'four '
showFile
first=$running
startProgram ''
second=$running
waitFor 60 windowOf 'Document1' || fail "no window of the second instance"
settle
[[ $(xdotool search --onlyvisible --name 'file\.txt' | wc -l) == 1 ]] || fail "two instances have the same changes"
kill "$second"
wait "$second" 2>/dev/null || true
running=$first
killProgram
showFile
press alt+k ctrl+s
expectFile $'four text\n' "after a second kill"
quit

# Changed meanwhile: the text is whole, and saving asks first.
printf 'text\n' >"$file"
typeAndDie 'five '
printf 'of somebody else\n' >"$file"
showFile
picture changed
press alt+k ctrl+s
settle
picture asked
expectFile $'of somebody else\n' "before the answer"
press Return
settle
expectFile $'of somebody else\n' "after a No"
press ctrl+s
settle
press alt+y
expectFile $'five text\n' "after a Yes"
quit

# Gone meanwhile.
typeAndDie 'six '
rm "$file"
showFile
picture gone
press alt+k ctrl+s
expectFile $'six five text\n' "after its file was gone"
quit

# A character that the encoding of the file cannot hold: it is back, and the file keeps its bytes.
printf 'caf\xe9\n' >"$file"
showFile "$file"
# No key has this character: one is given it for a moment, which a busy program may miss.
for try in 1 2 3; do
    xdotool type --delay 30 'ж'
    waitFor 10 journalHolds 'ж' && break
    ((try < 3)) || fail "the character is not in a journal"
done
killProgram
showFile
press alt+k ctrl+s
settle
picture unsaved
expectFile $'caf\xe9\n' "which it cannot hold"
press Return
killProgram
showFile
journalHolds 'ж' || fail "the character is gone"
press alt+d
waitFor 30 noJournal || fail "a journal is left after discarding the character"
quit
expectFile $'caf\xe9\n' "after discarding the character"

# Without a file, ended by a signal.
startProgram ''
waitFor 60 windowOf 'Document1' || fail "no window of a new document"
focusWindow
xdotool type --delay 30 'seven'
kill -TERM "$running"
wait "$running" 2>/dev/null || true
journalHolds 'seven' || fail "a signal did not write what was typed"
startProgram ''
waitFor 60 windowOf 'Document1' || fail "no window of the recovered document"
focusWindow
picture untitled
press alt+k ctrl+a ctrl+c alt+F4
settle
kill -0 "$running" 2>/dev/null || fail "the recovered document without a file did not ask"
press alt+n
expectEnd
waitFor 1 noJournal || noJournal || fail "a journal is left after a No"
