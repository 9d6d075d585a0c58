#!/bin/bash
# The built program, given what is no file to open, on a settings store that is none: it tells, takes what is typed next,
# asks before that is lost, and ends without a fault.
# shellcheck source=driving.bash
. "$(dirname "$0")/driving.bash"

box='^Quillmark$'

mkdir -p "$XDG_CONFIG_HOME/quillmark"
echo "no store at all" >"$XDG_CONFIG_HOME/quillmark/registry.db"
mkfifo "$scratch/fifo"
long=/$(head -c 90000 /dev/zero | tr '\0' x)

for path in "$scratch/missing.txt" "$scratch/fifo" /dev/zero "$scratch/"$'\xff\xfe' "$long"; do
    what=${path:0:60}
    startProgram "$path"
    waitFor 60 windowOf 'Document1' || fail "no window for $what"
    waitFor 30 windowOf "$box" || fail "nothing was told about $what"
    focusWindow
    press Return
    waitFor 30 noWindowOf "$box" || fail "the box about $what did not go"
    waitFor 30 windowOf '^Quillmark - ' || fail "the window went with the box about $what"
    focusWindow
    xdotool type --delay 30 'typed'
    press alt+F4
    waitFor 30 windowOf "$box" || fail "nobody asked about what was typed after $what"
    focusWindow
    press n
    expectEnd
done
[[ -f $XDG_CONFIG_HOME/quillmark/registry.db.damaged-1 ]] || fail "the damaged store was not set aside"
