#!/bin/bash
# The built program is killed while somebody types. What was typed up to a second before a pause, and up to five seconds
# before the kill while typing went on, is there again at the next start, as an unsaved change; the file is untouched.
# shellcheck source=driving.bash
. "$(dirname "$0")/driving.bash"

letter="$scratch/letter.txt"
recovery=$HOME/.local/state/quillmark/recovery
holds() { cmp -s "$1" "$letter"; }
killProgram() {
    kill -9 "$running"
    wait "$running" 2>/dev/null || true
    running=''
}
journals() { find "$recovery" -name '*.journal' 2>/dev/null | wc -l; }
noJournals() { [[ $(journals) == 0 ]]; }
# openLetter: the program shows the letter, and the caret is at its start.
openLetter() {
    startProgram "$@"
    waitFor 60 windowOf 'letter\.txt' || fail "no window shows the letter"
    focusWindow
}

printf 'first line\nsecond\n' >"$letter"
cp "$letter" "$scratch/before"
openLetter "$letter"
noJournals || fail "there is a journal before the first edit"
press ctrl+Home
xdotool type --delay 20 'Unsaved. '
settle
sleep 1.2
killProgram
holds "$scratch/before" || fail "the file was changed by a program that was killed"
[[ $(journals) == 1 ]] || fail "there is no journal of what was typed"
[[ $(stat -c %a "$recovery") == 700 && $(stat -c %a "$recovery"/*.journal) == 600 ]] || fail "others may read the journal"

printf 'Unsaved. first line\nsecond\n' >"$scratch/expected"
openLetter
press ctrl+s
waitFor 30 holds "$scratch/expected" || { od -c "$letter" >&2; fail "what was typed did not come back"; }
waitFor 30 noJournals || fail "the journal is still there after the save"

# Typing that goes on: each second of it a digit, for longer than the journal waits.
press ctrl+Home
typed=''
for ((second = 0; second < 9; ++second)); do
    xdotool type "$second"
    typed+=$second
    sleep 1
done
killProgram
[[ $(journals) == 1 ]] || fail "there is no journal of typing that went on"
openLetter
press ctrl+s
isSaved() { ! holds "$scratch/expected"; }
waitFor 30 isSaved || fail "nothing of what was typed last came back"
sleep 0.5
kept=$(head -n 1 "$letter")
kept=${kept%Unsaved*}
[[ $typed == "$kept"* && ${#kept} -ge 3 ]] || fail "of $typed only '$kept' came back"
press alt+F4
expectEnd
