#!/bin/bash
# The built program, at whose endpoint others send what is no message, nothing at all, or without end: no window shows it,
# and the files of a thousand senders at once are all opened.
# shellcheck source=driving.bash
. "$(dirname "$0")/driving.bash"

senders=$(dirname "$0")/senders.py
startProgram ''
waitFor 60 windowOf 'Document1' || fail "no window"
focusWindow

python3 "$senders" malformed "$XDG_RUNTIME_DIR/QuillmarkOpen" || fail "a sender was not dropped"
python3 "$senders" held "$XDG_RUNTIME_DIR/QuillmarkOpen" &
held=$!
python3 "$senders" endless "$XDG_RUNTIME_DIR/QuillmarkOpen" &
endless=$!
sleep 1
[[ $(xdotool search --onlyvisible --name . 2>/dev/null | wc -l) == 1 ]] || fail "a window showed what was sent"
mkdir "$scratch/files"
for ((i = 0; i < 50; i++)); do
    echo "$i" >"$scratch/files/$i.txt"
done
python3 "$senders" crowd "$XDG_RUNTIME_DIR/QuillmarkOpen" "$scratch/files" || fail "a sender was refused"
kill "$held" "$endless"
allOpened() { [[ $(xdotool search --onlyvisible --name 'Quillmark - \[' getwindowname 2>/dev/null) == */files/* ]]; }
waitFor 60 allOpened || fail "no file was opened"

# While a file is being opened the window does not close, and on a busy machine fifty of them take their time.
for ((i = 0; i < 12; i++)); do
    settle
done
focusWindow
press alt+F4
expectEnd
tr -d '\r' <"$XDG_DATA_HOME/quillmark/lastopen.idx" | cut -f 1 | grep '^/' | sort >"$scratch/opened"
find "$scratch/files" -type f | sort | diff - "$scratch/opened" >"$scratch/differences" ||
    { head "$scratch/differences" >&2; fail "files of senders were lost, or others opened"; }
