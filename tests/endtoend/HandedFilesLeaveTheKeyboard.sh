#!/bin/bash
# The built program, while its user works in another window: a file that is handed over opens there, one that is open comes
# to the front there, one that is missing is reported there, and the keyboard stays in the window in which it was.
# shellcheck source=driving.bash
. "$(dirname "$0")/driving.bash"

one=$scratch/one.txt two=$scratch/two.txt
printf 'one\n' >"$one"
printf 'two\n' >"$two"
startProgram "$one"
waitFor 60 windowOf 'one\.txt' || fail "no window showed the file"
focusWindow
frame=$(head -n 1 "$scratch/window")

# Another program with a window that takes the keyboard: the same one, in a session of its own.
mkdir -m 700 "$scratch/run2"
XDG_RUNTIME_DIR=$scratch/run2 XDG_CONFIG_HOME=$scratch/config2 XDG_DATA_HOME=$scratch/data2 "$QUILLMARK" 2>/dev/null &
other=$!
trap 'kill "$other" 2>/dev/null || true; cleanUp' EXIT
waitFor 60 windowOf 'Document1' || fail "the other window did not come up"
away=$(head -n 1 "$scratch/window")
xdotool windowfocus --sync "$away"
settle

# expectAway WHAT: for a while, because a window takes the keyboard late if it does.
expectAway() {
    for ((i = 0; i < 15; i++)); do
        [[ $(xdotool getwindowfocus) == "$away" ]] || fail "$1 took the keyboard"
        sleep 0.1
    done
}
titleHas() { [[ $(xdotool getwindowname "$frame") == *"$1"* ]]; }

"$QUILLMARK" "$two" || fail "the start with a new file failed"
waitFor 30 titleHas two.txt || fail "the new file is not shown"
expectAway "a new file"
"$QUILLMARK" "$one" || fail "the start with an open file failed"
waitFor 30 titleHas one.txt || fail "the open file did not come to the front"
expectAway "an open file"
"$QUILLMARK" "$scratch/missing.txt" || fail "the start with a missing file failed"
waitFor 30 windowOf '^Quillmark$' || fail "nothing was told about a missing file"
expectAway "the message about a missing file"

# Back in the window the message has the keys first, and then the document.
xdotool windowactivate --sync "$frame" || true
settle
press Return
waitFor 30 noWindowOf '^Quillmark$' || fail "the message did not take the key"
settle
xdotool type --delay 30 'x'
press ctrl+s
saved() { printf 'xone\n' | cmp -s - "$one"; }
waitFor 30 saved || { cat "$one" >&2; fail "the keys did not go to the document in front"; }
press alt+F4
expectEnd
kill "$other" 2>/dev/null
wait "$other" 2>/dev/null || true
