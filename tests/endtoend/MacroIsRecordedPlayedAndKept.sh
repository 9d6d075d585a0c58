#!/bin/bash
# The built program: a macro is recorded from the menu, gets a hot key of two strokes, is played by it, and taken back by
# one undo. After the next start the same strokes play it again.
# shellcheck source=driving.bash
. "$(dirname "$0")/driving.bash"

list=$scratch/list.txt
holds() { printf '%s' "$1" | cmp -s - "$list"; }
# expectFile TEXT WHAT: saved, the file holds the text.
expectFile() {
    press ctrl+s
    waitFor 30 holds "$1" || { cat "$list" >&2; fail "$2"; }
}
# The menu to the left of the one that Alt+W opens; its third entry.
recordMarco() { press alt+w Left Down Down Return; }

printf 'alpha\nbeta\ngamma\n' >"$list"
startProgram "$list"
waitFor 60 windowOf 'list\.txt' || fail "no window showed the file"
focusWindow
press ctrl+Home
recordMarco
xdotool type --delay 30 -- '- '
press Down Home
recordMarco
waitFor 30 windowOf '^Record Marco$' || fail "nobody asked for the hot key"
focusWindow
press ctrl+k m Return
waitFor 30 noWindowOf '^Record Marco$' || fail "the hot key was not taken"
[[ -s $XDG_DATA_HOME/quillmark/macros/0.dem ]] || fail "the macro was not saved when it was kept"
waitFor 30 windowOf 'list\.txt' || fail "the window went with the question"
focusWindow
expectFile $'- alpha\nbeta\ngamma\n' "what was recorded did not happen"

press ctrl+k m
expectFile $'- alpha\n- beta\ngamma\n' "the hot key did not play the macro"
press ctrl+z
expectFile $'- alpha\nbeta\ngamma\n' "one undo did not take the macro back"
press ctrl+k Escape m
expectFile $'- alpha\nmbeta\ngamma\n' "Escape did not leave the first stroke"
press BackSpace

press ctrl+s alt+F4
expectEnd
[[ -s $XDG_DATA_HOME/quillmark/macros/0.dem ]] || fail "the macro was not kept"

startProgram "$list"
waitFor 60 windowOf 'list\.txt' || fail "no window showed the file again"
focusWindow
press ctrl+Home Down Down ctrl+k m
expectFile $'- alpha\nbeta\n- gamma\n' "after a new start the hot key did not play the macro"
press alt+F4
expectEnd
