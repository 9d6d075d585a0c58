#!/bin/bash
# The built program without a mouse: started with a folder it asks what to search there; Return finds, F6 leads to the
# results, Return opens a match, and what is typed takes its place. The menu of the results marks all found lines of a
# file. Then a text is replaced in all files of the folder, and a search is cancelled in the middle.
# shellcheck source=driving.bash
. "$(dirname "$0")/driving.bash"

tree=$scratch/tree
mkdir -p "$tree/sub"
printf 'one\ntwo needle\nthree\n' >"$tree/a.txt"
printf 'needle one\ntwo needle\n' >"$tree/b.txt"
printf '\xff\xfen\0e\0e\0d\0l\0e\0' >"$tree/sub/c.txt"
# picture NAME: of the screen, for who wants to look (PICTURES=FOLDER).
picture() { [[ -z ${PICTURES-} ]] || import -silent -window root "$PICTURES/$1.png"; }
holds() { [[ $(tr -d '\0' <"$2") == "$1" ]]; }

startProgram "$tree"
waitFor 60 windowOf 'Find in Files' || fail "no dialog asked what to search"
focusWindow
xdotool type --delay 30 'needle'
press alt+e
xdotool type --delay 30 '*.txt'
press alt+s
picture dialog
press Return
waitFor 30 windowOf 'Quillmark' || fail "the search did not end"
focusWindow
picture results

# The third match is the second one of b.txt.
press F6 F6 F6 F6
settle
press Home Down Right Down Down
picture chosen
press Return
waitFor 30 windowOf 'b\.txt' || fail "the match was not opened"
settle
xdotool type --delay 30 'pin'
picture typed
press ctrl+s
waitFor 30 holds $'needle one\ntwo pin' "$tree/b.txt" || fail "what was typed did not take the place of the match"
picture opened

# Both lines of b.txt get a mark; from the top the next one is that of line 2.
press shift+F6 Up Up Menu
settle
picture menu
press Down Down Down Down Down Return
settle
press F6 ctrl+Home F2
xdotool type --delay 30 'x'
press ctrl+s
picture marked
waitFor 30 holds $'needle one\nxtwo pin' "$tree/b.txt" || fail "the line was not marked"

# Replace in Files is the eighth entry of the menu Search.
press alt+f Right Right Down Down Down Down Down Down Down Return
waitFor 30 windowOf 'Replace in Files' || fail "no dialog asked what to replace"
focusWindow
press ctrl+a
xdotool type --delay 30 'needle'
press alt+r
xdotool type --delay 30 'straw'
press alt+s alt+h
settle
picture replace
press Return
waitFor 30 holds $'one\ntwo straw\nthree' "$tree/a.txt" || fail "a.txt was not replaced in"
waitFor 30 holds $'\xff\xfestraw' "$tree/sub/c.txt" || fail "c.txt was not replaced in"
settle
picture replaced

# Long enough to be cancelled.
press alt+f Right Right Down Down Down Down Down Down Return
waitFor 30 windowOf 'Find in Files' || fail "no dialog asked again"
focusWindow
press alt+d ctrl+a
xdotool type --delay 5 "$(printf '/usr;%.0s' {1..20})"
press alt+e ctrl+a
xdotool type --delay 30 '*'
press Return
waitFor 20 windowOf 'Searching' || fail "nothing shows how far the search has come"
picture searching
press Escape
waitFor 20 noWindowOf 'Searching' || fail "the search was not cancelled"
settle
picture cancelled
windowOf 'Quillmark' || fail "the window is gone"
focusWindow
press alt+F4
expectEnd
