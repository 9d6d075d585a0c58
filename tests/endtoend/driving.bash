# What the scripts here share: a home of its own for the program, and somebody in front of it with a keyboard.
set -eu

scratch=$(mktemp -d)
running=''
cleanUp() {
    if [[ -n $running ]] && kill "$running" 2>/dev/null; then
        wait "$running" 2>/dev/null || true
    fi
    rm -rf "$scratch"
}
trap cleanUp EXIT
fail() {
    echo "$*" >&2
    [[ -s $scratch/errors ]] && cat "$scratch/errors" >&2
    exit 1
}

export HOME=$scratch XDG_RUNTIME_DIR=$scratch/run XDG_CONFIG_HOME=$scratch/config XDG_DATA_HOME=$scratch/data QT_QPA_PLATFORM=xcb
mkdir -m 700 "$XDG_RUNTIME_DIR"

# startProgram ARGUMENT...: in the background.
startProgram() {
    "$QUILLMARK" "$@" 2>"$scratch/errors" &
    running=$!
}

# waitFor SECONDS COMMAND...: until the command succeeds.
waitFor() {
    local tries=$(($1 * 10))
    shift
    while ((tries-- > 0)); do
        "$@" && return
        kill -0 "$running" 2>/dev/null || return 1
        sleep 0.1
    done
    return 1
}

# windowOf PATTERN: a window whose title fits is there; its number goes into $scratch/window.
windowOf() { xdotool search --onlyvisible --name "$1" >"$scratch/window" 2>/dev/null && [[ -s $scratch/window ]]; }
noWindowOf() { ! windowOf "$1"; }
# The window has the keyboard, and the program is done with what brought it up.
focusWindow() {
    xdotool windowfocus --sync "$(head -n 1 "$scratch/window")"
    settle
}
# Until the program has used no CPU time for half a second: what is typed before a file stands is lost on a busy machine.
settle() {
    local used before='' quiet=0 tries=300
    while ((tries-- > 0 && quiet < 5)); do
        used=$(awk '{ print $14 + $15 }' "/proc/$running/stat")
        if [[ $used == "$before" ]]; then
            quiet=$((quiet + 1))
        else
            quiet=0
        fi
        before=$used
        sleep 0.1
    done
}
press() { xdotool key --delay 30 "$@"; }

# typeThreeBytes FILE: made with "\001one two\377\000end", named bytes.bin, shown, and begun with the bytes 41, FE and 7A.
typeThreeBytes() {
    printf '\001one two\377\000end' >"$1"
    startProgram "$1"
    waitFor 60 windowOf 'bytes\.bin' || fail "no window showed the file"
    focusWindow
    xdotool type --delay 30 '41'
    press Right
    xdotool type --delay 30 'fE'
    press Right
    xdotool type --delay 30 '7a'
}

# The program ends within half a minute, and without a fault.
expectEnd() {
    local tries=300
    while ((tries-- > 0)) && kill -0 "$running" 2>/dev/null; do
        sleep 0.1
    done
    kill -0 "$running" 2>/dev/null && fail "the program did not close"
    wait "$running" || fail "the program ended with a fault"
    running=''
}
