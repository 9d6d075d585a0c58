#!/bin/bash
# The built program: what a killed instance leaves behind stops no start, a later start waits for an instance that is just
# coming up and becomes one itself when that dies, one that stays apart keeps what it is sent to itself, and after the first
# instance the next one receives.
# shellcheck source=driving.bash
. "$(dirname "$0")/driving.bash"

file=$scratch/file.txt endpoint=$XDG_RUNTIME_DIR/QuillmarkOpen
echo text >"$file"
shows() { windowOf 'file\.txt\]'; }
closeProgram() {
    focusWindow
    press alt+F4
    expectEnd
}

startProgram "$file"
waitFor 60 shows || fail "no window showed the file"
kill -KILL "$running"
wait "$running" 2>/dev/null || true
[[ -S $endpoint ]] || fail "a killed program has cleaned up"
startProgram "$file"
waitFor 60 shows || fail "what a killed program left behind stopped the start"
closeProgram

# Whoever has the lock and no endpoint yet is just starting.
exec 9>"$endpoint.lock"
flock 9
startProgram "$file" 9>&-  # the lock is not for the program to inherit
sleep 1
kill -0 "$running" || fail "the start did not wait for the one before"
noWindowOf . || fail "a start that waits showed a window"
exec 9>&-
waitFor 60 shows || fail "the start did not go on when the one before was gone"
closeProgram

startProgram -d
waitFor 60 windowOf 'Document1' || fail "no window of the one that stays apart"
apart=$running
[[ $(stat -c %a:%F "$endpoint") == 600:socket ]] || fail "the one that stays apart has no endpoint"
timeout 60 "$QUILLMARK" "$file" || fail "the start with a file ended with a fault"
sleep 1
noWindowOf 'file\.txt' || fail "the one that stays apart opened a file"

# Beside it a first instance that takes files, and a further one that follows it.
startProgram ''
first=$running
received() { python3 - "$endpoint" <<'PYTHON'
import socket, struct, sys
with socket.socket(socket.AF_UNIX) as one:
    one.connect(sys.argv[1])
    print(struct.unpack("3i", one.getsockopt(socket.SOL_SOCKET, socket.SO_PEERCRED, 12))[0])
PYTHON
}
receivedBy() { [[ $(received) == "$1" ]]; }
waitFor 60 receivedBy "$first" || fail "the one that takes files has no endpoint"
startProgram ''
further=$running
twoMore() { [[ $(xdotool search --onlyvisible --name 'Document1' 2>/dev/null | wc -l) == 3 ]]; }
waitFor 60 twoMore || fail "no window of a further instance"
receivedBy "$first" || fail "a further instance took the endpoint of the first"
kill -KILL "$first"
wait "$first" 2>/dev/null || true
waitFor 30 receivedBy "$further" || fail "the further instance did not follow the first"
timeout 60 "$QUILLMARK" "$file" || fail "the start with a file ended with a fault"
waitFor 30 shows || fail "the further instance did not open the file"
kill "$apart"
wait "$apart" 2>/dev/null || true
receivedBy "$further" || fail "the one that stayed apart took the endpoint with it"
closeProgram
