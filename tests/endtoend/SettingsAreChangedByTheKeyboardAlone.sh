#!/bin/bash
# The built program: the settings dialog is opened from the menu, its pages are turned and changed by keys, Escape saves
# nothing and Enter saves all, and the next start follows.
# shellcheck source=driving.bash
. "$(dirname "$0")/driving.bash"

list=$scratch/list.txt
registry=$QUILLMARK_BUILD/bin/quillmark-reg
# stored KEY VALUE: what the settings store holds there; nothing without it.
stored() { "$registry" query "HKCU/Software/Quillmark/$1" --name "$2" 2>/dev/null || true; }
holds() { [[ $(stored "$1" "$2") == *"$3"* ]]; }
openDialog() {
    press alt+f i
    waitFor 30 windowOf '^Properties$' || fail "the dialog did not open"
    focusWindow
}
# A box stays pressed for a moment before it changes, and Escape would take that back.
pressBox() {
    press "$1"
    settle
}
closeDialog() {
    press "$1"
    waitFor 30 noWindowOf '^Properties$' || fail "$1 did not close the dialog"
    waitFor 30 windowOf 'list\.txt' || fail "the window went with the dialog"
    focusWindow
}

printf 'alpha\n' >"$list"
startProgram "$list"
waitFor 60 windowOf 'list\.txt' || fail "no window showed the file"
focusWindow

openDialog
pressBox alt+x
closeDialog Escape
[[ -z $(stored general XPSkin) ]] || fail "Escape saved something"

# What was not saved is still there.
openDialog
pressBox alt+h
press ctrl+Next Home alt+d
xdotool type --delay 30 -- 'Everything'
press ctrl+Prior
closeDialog Return
waitFor 30 holds general XPSkin 0 || fail "Enter did not save the first page"
holds general ShowFullPath 0 || fail "the box of the path was not saved"
holds FilenameFilters/001 desc Everything || fail "the filter was not saved"
holds FilenameFilters/012 filter '*.csv' || fail "the other filters were not saved"
press alt+F4
expectEnd

startProgram "$list"
waitFor 60 windowOf 'list\.txt' || fail "no window showed the file again"
windowOf "$scratch" && fail "the title shows the path"
press alt+F4
expectEnd
