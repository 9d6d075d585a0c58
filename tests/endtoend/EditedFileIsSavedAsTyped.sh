#!/bin/bash
# The built program, in front of somebody with a keyboard: a file is opened, typed into, saved by Ctrl+S, and the program
# closed. What lies on the disk then is what was typed, to the byte, in the file that was there before.
set -eu

scratch=$(mktemp -d)
running=''
cleanUp() {
    [[ -n $running ]] && kill "$running" 2>/dev/null && wait "$running" 2>/dev/null
    rm -rf "$scratch"
}
trap cleanUp EXIT
fail() {
    echo "$*" >&2
    [[ -s $scratch/errors ]] && cat "$scratch/errors" >&2
    exit 1
}

# waitFor SECONDS COMMAND...: until the command succeeds.
waitFor() {
    local tries=$(($1 * 10))
    shift
    while ((tries-- > 0)); do
        "$@" && return
        kill -0 "$running" 2>/dev/null || return 1
        sleep 0.1
    done
    return 1
}
windowOf() { xdotool search --onlyvisible --name "$1" >"$scratch/window" 2>/dev/null && [[ -s $scratch/window ]]; }
holdsWhatWasTyped() { cmp -s "$scratch/expected.txt" "$scratch/a letter.txt"; }
hasEnded() { ! kill -0 "$running" 2>/dev/null; }

export HOME=$scratch XDG_RUNTIME_DIR=$scratch/run XDG_CONFIG_HOME=$scratch/config XDG_DATA_HOME=$scratch/data QT_QPA_PLATFORM=xcb
mkdir -m 700 "$XDG_RUNTIME_DIR"
printf '\xef\xbb\xbffirst line\r\ngr\xc3\xbc\xc3\x9fe\nthird\r\n' >"$scratch/a letter.txt"
printf '\xef\xbb\xbfHello world\r\nfirst line\r\ngr\xc3\xbc\xc3\x9fe\nthird\r\n' >"$scratch/expected.txt"
inode=$(stat -c %i "$scratch/a letter.txt")

"$QUILLMARK" "$scratch/a letter.txt" 2>"$scratch/errors" &
running=$!
waitFor 60 windowOf 'a letter\.txt' || fail "no window showed the file"
xdotool windowfocus --sync "$(head -n 1 "$scratch/window")"
xdotool key --delay 30 ctrl+Home
xdotool type --delay 30 'Hello world'
xdotool key --delay 30 Return ctrl+s
waitFor 30 holdsWhatWasTyped || { od -c "$scratch/a letter.txt" >&2; fail "the file does not hold what was typed"; }
[[ $(stat -c %i "$scratch/a letter.txt") == "$inode" ]] || fail "the file was replaced, not written in place"

xdotool key --delay 30 alt+F4
for ((i = 0; i < 300; i++)); do
    hasEnded && break
    sleep 0.1
done
hasEnded || fail "the program did not close"
wait "$running" || fail "the program ended with a fault"
running=''
holdsWhatWasTyped || fail "the file changed on closing"
