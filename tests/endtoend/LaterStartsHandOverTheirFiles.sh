#!/bin/bash
# The built program: files of later starts open in the instance that runs already, in the order of their arrival, and each
# of these starts ends by itself. They need no display.
# shellcheck source=driving.bash
. "$(dirname "$0")/driving.bash"

# handOver ARGUMENT...: a later start, which must end without a fault.
handOver() { env -u DISPLAY -u QT_QPA_PLATFORM timeout 60 "$QUILLMARK" "$@"; }
files=()
# newFile NAME: in a folder of its own, noted in $files.
newFile() {
    mkdir -p "$scratch/files"
    echo "$1" >"$scratch/files/$1"
    files+=("$scratch/files/$1")
}
shows() { windowOf "${1//./\\.}\\]"; }

newFile one.txt
startProgram "${files[0]}"
waitFor 60 shows one.txt || fail "the first start does not show its file"
[[ $(stat -c %a:%F "$XDG_RUNTIME_DIR/QuillmarkOpen") == 600:socket ]] || fail "the endpoint is not for its owner alone"

newFile 'a relative name.txt'
(cd "$scratch/files" && handOver 'a relative name.txt') || fail "the second start ended with a fault"
waitFor 30 shows 'a relative name.txt' || fail "a file of the second start is not shown"

# Each of these four waits its second while the next one starts.
later=()
for name in 1.txt 2.txt 3.txt 4.txt; do
    newFile "$name"
    handOver "$scratch/files/$name" &
    later+=($!)
    sleep 0.2
done
for start in "${later[@]}"; do
    wait "$start" || fail "a later start ended with a fault"
done
waitFor 30 shows 4.txt || fail "the last of four files is not shown"

# Several files in one start; the shell gives each as an argument of its own.
for name in 'x y.txt' z.txt; do
    newFile "$name"
done
handOver "$scratch/files/x y.txt" "$scratch/files/z.txt" || fail "a start with two files ended with a fault"
waitFor 30 shows z.txt || fail "the second of two files is not shown"

handOver "${files[0]}" || fail "a start with an open file ended with a fault"
waitFor 30 shows one.txt || fail "a file that is open did not come to the front"

focusWindow
settle  # while a file is being opened the window does not close
press alt+F4
expectEnd
printf '%s\r\n' '<FILE>' "${files[@]}" >"$scratch/expected"
tr -d '\r' <"$XDG_DATA_HOME/quillmark/lastopen.idx" | cut -f 1 | diff - <(tr -d '\r' <"$scratch/expected") >&2 ||
    fail "other files were open, or in another order"
[[ -e $XDG_RUNTIME_DIR/QuillmarkOpen ]] && fail "the endpoint stayed"

# Without an instance the same call opens the files itself.
startProgram "$scratch/files/x y.txt" "$scratch/files/z.txt"
waitFor 60 shows z.txt || fail "two files did not open in a first start"
focusWindow
settle  # while a file is being opened the window does not close
press alt+F4
expectEnd
[[ $(grep -c '^/' "$XDG_DATA_HOME/quillmark/lastopen.idx") == 2 ]] || fail "not two files were open"
