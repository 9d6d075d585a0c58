#!/bin/bash
# The built program without a mouse: a project of two text files and a folder, with a document in hex mode open beside
# them, is made, saved and left. Started with the project file, the program has everything in its place, ready for use.
# shellcheck source=driving.bash
. "$(dirname "$0")/driving.bash"

work=$scratch/work
project=$work/work.qmp
tab=$'\t'
mkdir -p "$work/folder"
printf 'one\n' >"$work/one.txt"
printf 'two\n' >"$work/two.txt"
printf '\001\002end' >"$work/bytes.bin"

# inProjects KEY...: opens the menu of projects, the fourth to the left of that of windows, for these keys.
inProjects() { press alt+w Left Left Left Left "$@"; settle; }
# The last entry is disabled, and the one before it asks for a name.
saveProject() { inProjects End Up Up Return; }
# enterPanel TABS: to the list of the project, and that many steps further.
enterPanel() {
    press shift+F6
    for ((step = 0; step < $1; step++)); do
        press Tab
    done
}
# choose KEY...: in the menu of the place that has the keyboard.
choose() { press Menu; settle; press "$@"; settle; }
typeName() { settle; xdotool type --delay 30 "$1"; press Return; settle; }
# A document in hex mode has a working copy, which is open as long as the document.
showsBytes() { [[ $(readlink "/proc/$running/fd/"*) == *'~hextemp'* ]]; }
# holds FILE BYTES: as printf takes them.
holds() { printf '%b' "$2" | cmp -s - "$1"; }
# The file of the project without its CRs, and without the place of a tab that is closed, which is not restored.
linesOf() { tr -d '\r' <"$1" | sed -E "/^(True|False)${tab}[0-9]+${tab}/s/False${tab}[0-9]+/False${tab}/g"; }
hasLine() { [[ -e $project ]] && linesOf "$project" | grep -qxF "$1"; }
# expectLine LINE: the file of the project has it.
expectLine() { waitFor 30 hasLine "$1" || { cat "$project" >&2 || true; fail "the project has no line $1"; }; }

cd "$work"
startProgram
waitFor 60 windowOf 'Document1' || fail "no window came up"
focusWindow
inProjects Home Return
waitFor 30 windowOf '^Quillmark$' || fail "nobody asked before a new project"
focusWindow
press y
settle
for name in bytes.bin one.txt two.txt; do
    press ctrl+o
    typeName "$name"
done

# From the list of open files to their folder, from there to the one in it, and back to the files. Both of text are added
# to the project, and the list of open files is closed by its title. The last document is the active one again.
enterPanel 10
choose Up Up Up Up Return
press Down
choose Down Down Down Down Down Down Return
press Up
settle
press Tab Tab o shift+Down
choose Down Down Down Down Down Down Return
press Tab Delete
settle
press ctrl+shift+Tab
settle
saveProject
typeName "$project"
for line in "FOLDER${tab}FOLDER$work/folder" "FILE${tab}$work/one.txt" "FILE${tab}$work/two.txt" "FOLDER$work"; do
    expectLine "$line"
done
linesOf "$project" | grep -qE "^True${tab}[0-9]+${tab}True${tab}[0-9]+${tab}False${tab}${tab}$" || fail "the tabs are not as left"
linesOf "$project" | grep -qF "$work/bytes.bin${tab}False${tab}" || fail "bytes.bin is not in hex mode"
linesOf "$project" | grep -qF "$work/one.txt${tab}True${tab}" || fail "one.txt is not in text mode"
press alt+F4
expectEnd

linesOf "$project" >"$scratch/before"
startProgram "$project"
waitFor 60 showsBytes || fail "the document in hex mode was not opened"
settle
windowOf '^Quillmark$' || fail "no window came up for the project"
focusWindow
rm "$project"
saveProject
expectLine '<<OPEN FILE>>'
linesOf "$project" | diff "$scratch/before" - >&2 || fail "the project came back as another one"

# A row of the project opens its file, and one of a folder shows it.
press ctrl+F4
settle
enterPanel 0
press End Return
settle
xdotool type --delay 30 'x'
press ctrl+s
waitFor 30 holds "$work/two.txt" 'xtwo\n' || fail "the row did not open its file"
enterPanel 0
press Home Return
settle
saveProject
expectLine "FOLDER$work/folder"
press alt+F4
expectEnd
