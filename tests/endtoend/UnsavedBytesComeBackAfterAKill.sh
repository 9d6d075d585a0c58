#!/bin/bash
# The built program is killed with bytes that were typed and not saved, the last one with its first digit only. The next
# start brings them back as they were, with their undo; a save writes them and leaves nothing behind.
# shellcheck source=driving.bash
. "$(dirname "$0")/driving.bash"

export TMPDIR=$scratch/tmp XDG_STATE_HOME=$scratch/state
mkdir "$TMPDIR"
journals=$XDG_STATE_HOME/quillmark/recovery
file=$scratch/bytes.bin

# The journal has not been written to for some seconds, which is longer than a change waits for the disk.
isKept() { [[ -n $(find "$journals" -name '*.journal' ! -newermt '-3 seconds' 2>/dev/null) ]]; }
# What is brought back is there some time after the window: until then a save has nothing to write.
isSaved() {
    press ctrl+s
    cmp -s "$scratch/expected" "$file"
}
isGone() { [[ -z $(ls -A "$journals") ]]; }

typeThreeBytes "$file"
press ctrl+z Right
xdotool type --delay 30 '7'
waitFor 60 isKept || fail "no journal was kept"
cp "$file" "$scratch/before"
kill -9 "$running"
wait "$running" 2>/dev/null || true
cmp -s "$scratch/before" "$file" || fail "the file was changed without a save"
printf '\001one two\377\000end' | cmp -s - "$file" || fail "the file was changed before a save"

startProgram "$file"
waitFor 60 windowOf 'bytes\.bin' || fail "no window showed the file again"
focusWindow
printf 'A\376n\007 two\377\000end' >"$scratch/expected"
waitFor 30 isSaved || { od -c "$file" >&2; fail "the file does not hold what was typed"; }

# Two steps back: the byte of one digit, and the one before it.
press ctrl+z ctrl+z
xdotool type --delay 30 '42'
printf 'ABne two\377\000end' >"$scratch/expected"
waitFor 30 isSaved || { od -c "$file" >&2; fail "what was typed was not undone"; }
waitFor 30 isGone || fail "a journal stayed behind"
press alt+F4
expectEnd
