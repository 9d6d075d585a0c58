#!/bin/bash
# The built program ends by a signal wherever it is: idle, in a question, in a dialog, in a menu, in a search, with its terminal
# gone. Nobody is asked, files keep their bytes, session and lists are written, and the starter sees the signal.
# shellcheck source=driving.bash
. "$(dirname "$0")/driving.bash"

file=$scratch/file.txt own=$XDG_DATA_HOME/quillmark
printf 'text\n' >"$file"

# startWithFile: the file is open, and the keyboard is there. Signals that a shell ignores for its background are as usual.
startWithFile() {
    rm -f "$own/lastopen.idx" "$own/lastfiles.idx"
    env --default-signal=INT,HUP,TERM "$QUILLMARK" "$file" 2>"$scratch/errors" &
    running=$!
    waitFor 60 windowOf 'file\.txt' || fail "no window showed the file"
    focusWindow
}
# expectEndBy SIGNAL WHERE: within half a minute.
expectEndBy() {
    local tries=300 code=0
    while ((tries-- > 0)) && kill -0 "$running" 2>/dev/null; do
        sleep 0.1
    done
    kill -0 "$running" 2>/dev/null && fail "the program did not end $2"
    wait "$running" || code=$?
    running=''
    ((code == 128 + $(kill -l "$1"))) || fail "the program ended with $code $2"
    [[ $(<"$file") == text ]] || fail "the file was changed $2"
    grep -q "^$file	" "$own/lastopen.idx" || fail "the session was not written $2"
    grep -q "^$file" "$own/lastfiles.idx" || fail "the lists were not written $2"
    [[ ! -e $XDG_RUNTIME_DIR/QuillmarkOpen ]] || fail "the endpoint is left $2"
}

for signal in TERM HUP INT; do
    startWithFile
    kill -s "$signal" "$running"
    expectEndBy "$signal" "by $signal while idle"
done

startWithFile
kill -s TERM "$running"
kill -s TERM "$running" 2>/dev/null || true
expectEndBy TERM "by two signals"

startWithFile
xdotool type --delay 30 'changed'
kill -s TERM "$running"
expectEndBy TERM "with a changed document"

startWithFile
xdotool type --delay 30 'changed'
press alt+F4
waitFor 30 windowOf '^Quillmark$' || true
settle
kill -s TERM "$running"
expectEndBy TERM "in the question whether to save"

startWithFile
press ctrl+o
waitFor 30 windowOf '^Open' || fail "no dialog to open a file"
kill -s HUP "$running"
expectEndBy HUP "in a file dialog"

startWithFile
press alt+f
settle
kill -s TERM "$running"
expectEndBy TERM "in a menu"

# A search in all files, long enough not to have ended by itself.
startWithFile
press alt+f Right Right Down Down Down Down Down Down Return
waitFor 30 windowOf 'Find in Files' || fail "no dialog asked what to search"
focusWindow
xdotool type --delay 30 'needle'
press alt+d ctrl+a
xdotool type --delay 5 "$(printf '/usr;%.0s' {1..20})"
press alt+e ctrl+a
xdotool type --delay 30 '*'
press alt+s
settle
press Return
waitFor 20 windowOf 'Searching' || fail "nothing shows how far the search has come"
kill -s TERM "$running"
expectEndBy TERM "during a search"

# Its terminal is closed: what it wrote there would fail, and the system sends the signal by itself.
rm -f "$own/lastopen.idx" "$own/lastfiles.idx"
python3 - "$QUILLMARK" "$file" <<'PYTHON' &
import os, pty, subprocess, sys, time
child, terminal = pty.fork()
if child == 0:
    os.execv(sys.argv[1], sys.argv[1:])
for attempt in range(600):
    found = subprocess.run(["xdotool", "search", "--onlyvisible", "--name", r"file\.txt"], capture_output=True)
    if found.returncode == 0:
        break
    time.sleep(0.1)
time.sleep(2)
os.close(terminal)
_, status = os.waitpid(child, 0)
os.kill(os.getpid(), os.WTERMSIG(status)) if os.WIFSIGNALED(status) else sys.exit(os.WEXITSTATUS(status))
PYTHON
running=$!
expectEndBy HUP "with its terminal closed"
