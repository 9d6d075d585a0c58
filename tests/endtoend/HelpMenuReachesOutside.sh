#!/bin/bash
# The built program, with a desktop's opener and a calculator of this script's own and a session bus that is not there: the
# commands that lead out of it start what they name, each with one argument; without them they do nothing and say nothing.
# The About box and the system information are reached and left by the keyboard.
# shellcheck source=driving.bash
. "$(dirname "$0")/driving.bash"

export DBUS_SESSION_BUS_ADDRESS=unix:path=$scratch/no-bus
programs=$scratch/programs
mkdir -p "$programs" "$HOME/Desktop" "$HOME/Documents"
# Each notes the number of its arguments and the first of them.
# shellcheck disable=SC2016 # expanded by the programs
for name in xdg-open xcalc; do
    printf '#!/bin/bash\nprintf "%%s %%s %%s\\n" "${0##*/}" "$#" "${1-}" >>"%s"\n' "$scratch/started" >"$programs/$name"
    chmod +x "$programs/$name"
done
: >"$scratch/started"

# ofBuild NAME: what the build was given.
ofBuild() { sed -n "s/^$1:STRING=//p" "$QUILLMARK_BUILD/CMakeCache.txt"; }
web=$(ofBuild QUILLMARK_WEB_ADDRESS) mail=$(ofBuild QUILLMARK_MAIL_ADDRESS)
[[ -n $web && -n $mail ]] || fail "the build has no addresses"

lastStarted() { [[ $(tail -n 1 "$scratch/started") == "$1" ]]; }
# expectStart LINE WHAT
expectStart() { waitFor 30 lastStarted "$1" || { cat "$scratch/started" >&2; fail "$2"; }; }
# choose NUMBER KEY...: the keys open a menu on its first entry; the entry of that number is chosen.
choose() {
    local number=$1
    shift
    press "$@"
    for ((; number > 1; number--)); do
        press Down
    done
    press Return
}
helpEntry() { choose "$1" alt+h; }
toolsEntry() { choose "$1" alt+w Left Left Left; }

# shellcheck disable=SC2119  # without a file
PATH=$programs:$PATH startProgram
waitFor 60 windowOf 'Document1' || fail "no window"
focusWindow
helpEntry 1
waitFor 30 test -s "$scratch/started" || fail "the help was not opened"
grep -q '^xdg-open 1 file://.*/share/quillmark/help/main\.html$' "$scratch/started" || {
    cat "$scratch/started" >&2
    fail "not the help"
}
helpEntry 2
expectStart "xdg-open 1 $web" "the web site was not opened"
helpEntry 3
expectStart "xdg-open 1 mailto:$mail?subject=Quillmark%20Support" "no mail was begun"
toolsEntry 3
expectStart 'xcalc 0 ' "no calculator was started"
toolsEntry 5
expectStart 'xdg-open 1 file:///usr' "the folder of the programs was not opened"
toolsEntry 6
expectStart 'xdg-open 1 file:///etc' "the folder of the settings was not opened"
toolsEntry 7
expectStart "xdg-open 1 file://$HOME/Desktop" "the desktop's folder was not opened"
toolsEntry 8
expectStart "xdg-open 1 file://$HOME/Documents" "the documents' folder was not opened"

helpEntry 4
waitFor 30 windowOf '^About Quillmark$' || fail "no About box"
focusWindow
press alt+s
waitFor 30 windowOf '^System Information$' || fail "no system information"
focusWindow
press Escape
waitFor 30 noWindowOf '^System Information$' || fail "the system information did not close"
waitFor 30 windowOf '^About Quillmark$' || fail "the About box closed too early"
focusWindow
press Return
waitFor 30 noWindowOf '^About Quillmark$' || fail "the About box did not close"
waitFor 30 windowOf 'Document1' || fail "the window went with the box"
focusWindow
press alt+F4
expectEnd

# A desktop that has none of these: only the directories of this script are looked in.
rm "$programs"/*
: >"$scratch/started"
# shellcheck disable=SC2119  # without a file
PATH=$programs startProgram
waitFor 60 windowOf 'Document1' || fail "no window without programs"
focusWindow
for entry in 1 2 3; do helpEntry "$entry"; done
for entry in 3 5 6 7 8; do toolsEntry "$entry"; done
settle
[[ $(xdotool search --onlyvisible --name . | wc -l) == 1 ]] || fail "something was told"
xdotool type --delay 30 'typed'
press alt+F4
waitFor 30 windowOf '^Quillmark$' || fail "what was typed did not arrive"
focusWindow
press n
expectEnd
