#!/bin/bash
# The built program without a mouse, on a binary file: it comes up as bytes; digits and characters are typed into their
# panes; an undo, a search from the find bar and a bookmark find their places; the file is saved, changed as text, and
# once more as bytes. What a killed process left in the folder of working copies is swept away, and nothing new stays.
# shellcheck source=driving.bash
. "$(dirname "$0")/driving.bash"

export TMPDIR=$scratch/tmp
copies=$TMPDIR/quillmark-$(id -u)
mkdir "$TMPDIR"
mkdir -m 700 "$copies"
abandoned=$copies/~hextemp000000.tmp
echo 'left behind' >"$abandoned"
isSwept() { [[ ! -e $abandoned ]]; }

file=$scratch/bytes.bin
holdsExpected() { cmp -s "$scratch/expected" "$file"; }
# expectFile BYTES: as printf takes them.
expectFile() {
    printf '%b' "$1" >"$scratch/expected"
    waitFor 30 holdsExpected && return
    od -c "$file" >&2
    fail "the file does not hold $1"
}
# "Hex Mode" is the fifth entry from the end of the View menu, which stands before that of macros; this one cannot be
# reached while bytes are shown.
toText() { press alt+w Left Up Up Up Up Up Return; }
toHex() { press alt+w Left Left Up Up Up Up Up Return; }

typeThreeBytes "$file"
press alt+e Return
press Tab Right
xdotool type --delay 30 'Z'
press F6
xdotool type --delay 30 'end'
press Return Escape
xdotool type --delay 30 'E'
press Tab ctrl+F2 ctrl+Home F2 Right
xdotool type --delay 30 '4'
press ctrl+s
expectFile 'A\0376nZ two\0377\0000E\0004d'

toText
xdotool type --delay 30 'text '
press ctrl+s
expectFile 'text A\0376nZ two\0377\0000E\0004d'

toHex
xdotool type --delay 30 '2A'
press ctrl+s
expectFile '*ext A\0376nZ two\0377\0000E\0004d'

waitFor 30 isSwept || fail "the working copy of a killed process is still there"
press alt+F4
expectEnd
[[ -z $(ls -A "$copies") ]] || fail "a working copy stayed behind"
