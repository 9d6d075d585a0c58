#!/bin/bash
# The built program without a mouse: F6 leads to the find bar, Return finds, a menu without a letter of its own is reached
# by the arrow keys and finds the next one; what is typed takes the place of what was found; a bookmark brings the cursor
# back. What was searched for is written when the program ends.
# shellcheck source=driving.bash
. "$(dirname "$0")/driving.bash"

list=$scratch/list.txt
searched=$XDG_DATA_HOME/quillmark/lastsearchkeys.idx
holdsWhatWasTyped() { cmp -s "$scratch/expected.txt" "$list"; }

printf 'one\ntwo\none\ntwo\n' >"$list"
printf 'top one\ntwo\none\nnew\n' >"$scratch/expected.txt"

startProgram "$list"
waitFor 60 windowOf 'list\.txt' || fail "no window showed the file"
focusWindow
press ctrl+F2 F6
xdotool type --delay 30 'two'
press Return Escape
press alt+e Right Down Return
xdotool type --delay 30 'new'
press F2
xdotool type --delay 30 'top '
press ctrl+s
waitFor 30 holdsWhatWasTyped || { cat "$list" >&2; fail "the file does not hold what was typed"; }

press alt+F4
expectEnd
printf 'two\r\n' | cmp -s - "$searched" || fail "what was searched for is not kept"
