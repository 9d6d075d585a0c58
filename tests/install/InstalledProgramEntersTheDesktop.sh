#!/bin/bash
# The installed program enters itself into the desktop and leaves it again: without a display, in a home of its own, judged by
# what the tools of the desktop say.
set -eu

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
fail() {
    echo "$*" >&2
    exit 1
}
home=$scratch/home
mkdir -p "$home/.config/quillmark" "$scratch/run"
chmod 700 "$scratch/run"
inHome() {
    env -i PATH="$PATH" HOME="$home" XDG_RUNTIME_DIR="$scratch/run" \
        ${ASAN_OPTIONS+ASAN_OPTIONS="$ASAN_OPTIONS"} ${UBSAN_OPTIONS+UBSAN_OPTIONS="$UBSAN_OPTIONS"} "$@"
}
program=$scratch/prefix/bin/quillmark
# order OPTION EXPECTED: what the program writes to standard error.
order() {
    inHome "$program" "$1" >"$scratch/output" 2>"$scratch/errors" || fail "$1: exit code $?: $(<"$scratch/errors")"
    [[ ! -s $scratch/output ]] || fail "$1 wrote: $(<"$scratch/output")"
    [[ $(<"$scratch/errors") == "$2" ]] || fail "$1 reported '$(<"$scratch/errors")', not '$2'"
}
stored() {
    inHome "$scratch/prefix/bin/quillmark-reg" query "$@"
}
# what the home has but for the settings, with checksums
state() {
    (cd "$home" && find . -path ./.config/quillmark -prune -o -type f -exec sha256sum {} + | sort)
}

cmake --install "$QUILLMARK_BUILD" --prefix "$scratch/prefix" >/dev/null
# The tools count a program only when it has an entry.
mkdir -p "$home/.local/share/applications"
printf '[Desktop Entry]\nType=Application\nName=Mine\nExec=true %%f\nMimeType=text/plain;\n' \
    >"$home/.local/share/applications/mine.desktop"
printf '# mine\n[Default Applications]\ntext/plain=mine.desktop' >"$home/.config/mimeapps.list"
before=$(state)

order -r 8
[[ $(stored HKCU/Software/Quillmark --name register_handle) == Failed ]] || fail "without a handler the state is wrong"
[[ $(stored HKCR/.qmp --default) == Quillmark.qmp ]] || fail "projects are not registered in the store"
[[ $(inHome xdg-mime query default application/x-quillmark-project) == Quillmark.desktop ]] ||
    fail "projects do not open in the program"
[[ $(inHome xdg-mime query default text/plain) == mine.desktop ]] || fail "another program's type was taken"
entry=$home/.local/share/applications/Quillmark.desktop
grep -qx "Exec=$program %f" "$entry" || fail "the entry starts something else: $(<"$entry")"
said=$(desktop-file-validate "$entry" || true)
[[ -z $said ]] || fail "the entry is not valid: $said"
cmp "$home/.local/share/mime/packages/quillmark-qmp.xml" "$scratch/prefix/share/mime/packages/Quillmark.xml" ||
    fail "the type of projects is installed and registered in two forms"

# A second time changes nothing.
registered=$(state)
order -r 8
[[ $(state) == "$registered" ]] || fail "registering again changed files"

order -u ''
[[ $(stored HKCU/Software/Quillmark --name register_handle) == Unregistered ]] || fail "the state after -u is wrong"
[[ $(inHome xdg-mime query default application/x-quillmark-project) == Quillmark.desktop ]] || fail "-u took the projects away"
! grep -q 'text/plain=.*Quillmark' "$home/.config/mimeapps.list" || fail "-u left the context menu"

# With a handler of context menus.
inHome "$scratch/prefix/bin/quillmark-reg" add 'HKCR/CLSID/{1}' --default --data "Quillmark's Helper Menu Handler"
order -r ''
[[ $(stored HKCU/Software/Quillmark --name register_handle) == Registered ]] || fail "with a handler the state is wrong"
for key in '*' Folder lnkfile; do
    [[ $(stored "HKCR/$key/shellex/ContextMenuHandlers/Quillmark" --default) == '{1}' ]] || fail "no handler for $key"
done
order -u ''
! stored 'HKCR/*/shellex/ContextMenuHandlers/Quillmark' 2>/dev/null || fail "-u left the handlers"

[[ $before != "$(state)" ]] || fail "projects are no longer registered"

# A home that cannot be made is no reason to fail.
home=/proc/nowhere
order -r 8
order -u ''
