#!/bin/bash
# The built program: a file comes up again from the menu of recent files, and both open files come back in the next run,
# ready to be edited. Nothing is left to the mouse.
# shellcheck source=driving.bash
. "$(dirname "$0")/driving.bash"

one=$scratch/one.txt two=$scratch/two.txt own=$XDG_DATA_HOME/quillmark
# holds FILE TEXT
holds() { printf '%s' "$2" | cmp -s - "$1"; }
# expectFile FILE TEXT WHAT: saved, the file holds the text.
expectFile() {
    press ctrl+s
    waitFor 30 holds "$1" "$2" || { cat "$1" >&2; fail "$3"; }
}
# The third entry of the File menu from below, and the second file of it.
openOlderFile() { press alt+f Up Up Up Right Down Return; }

printf 'one\n' >"$one"
printf 'two\n' >"$two"
for file in "$one" "$two"; do
    startProgram "$file"
    waitFor 60 windowOf "${file##*/}" || fail "no window showed ${file##*/}"
    focusWindow
    [[ $file == "$one" ]] || { openOlderFile; waitFor 30 windowOf 'one\.txt' || fail "the recent file did not open"; }
    press alt+F4
    expectEnd
done
printf '%s\r\n' "$two" "$one" | cmp -s - "$own/lastfiles.idx" || { cat "$own/lastfiles.idx" >&2; fail "other recent files"; }
[[ $(head -n 1 "$own/lastopen.idx") == $'<FILE>\r' && $(wc -l <"$own/lastopen.idx") == 3 ]] ||
    { cat "$own/lastopen.idx" >&2; fail "the session is another one"; }

"$(dirname "$QUILLMARK")/quillmark-reg" add HKCU/Software/Quillmark/general --name LoadLastFiles --data 1
startProgram
waitFor 60 windowOf 'one\.txt' || fail "the session did not come back"
focusWindow
xdotool type --delay 30 'x'
expectFile "$one" $'xone\n' "the keys did not go to the last file"
press ctrl+Tab
xdotool type --delay 30 'y'
expectFile "$two" $'ytwo\n' "the keys did not go to the other file"
press alt+F4
expectEnd
