#!/bin/bash
# The built program, in front of somebody with a keyboard: a file is opened, typed into, saved by Ctrl+S, and the program
# closed. What lies on the disk then is what was typed, to the byte, in the file that was there before.
# shellcheck source=driving.bash
. "$(dirname "$0")/driving.bash"

letter="$scratch/a letter.txt"
holdsWhatWasTyped() { cmp -s "$scratch/expected.txt" "$letter"; }

printf '\xef\xbb\xbffirst line\r\ngr\xc3\xbc\xc3\x9fe\nthird\r\n' >"$letter"
printf '\xef\xbb\xbfHello world\r\nfirst line\r\ngr\xc3\xbc\xc3\x9fe\nthird\r\n' >"$scratch/expected.txt"
inode=$(stat -c %i "$letter")

startProgram "$letter"
waitFor 60 windowOf 'a letter\.txt' || fail "no window showed the file"
focusWindow
press ctrl+Home
xdotool type --delay 30 'Hello world'
press Return ctrl+s
waitFor 30 holdsWhatWasTyped || { od -c "$letter" >&2; fail "the file does not hold what was typed"; }
[[ $(stat -c %i "$letter") == "$inode" ]] || fail "the file was replaced, not written in place"

press alt+F4
expectEnd
holdsWhatWasTyped || fail "the file changed on closing"
