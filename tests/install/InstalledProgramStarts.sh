#!/bin/bash
# The installed tree is whole, and the program in it comes up and stays up with nothing but that tree.
set -eu

scratch=$(mktemp -d)
running=''
cleanUp() {
    if [[ -n $running ]]; then
        kill "$running" 2>/dev/null || true
        wait "$running" 2>/dev/null || true
    fi
    rm -rf "$scratch"
}
trap cleanUp EXIT
fail() {
    echo "$*" >&2
    exit 1
}

cmake --install "$QUILLMARK_BUILD" --prefix "$scratch/prefix" >/dev/null
for file in bin/quillmark share/quillmark/languages share/quillmark/help/main.html share/quillmark/help/style.css share/quillmark/icons/new.svg \
    share/applications/Quillmark.desktop share/icons/hicolor/scalable/apps/quillmark.svg share/man/man1/quillmark.1 \
    share/metainfo/Quillmark.metainfo.xml share/mime/packages/Quillmark.xml share/doc/quillmark/README.md; do
    [[ -e $scratch/prefix/$file ]] || fail "not installed: $file"
done

mkdir -m 700 "$scratch/run"
# Nothing of this machine's user, and nothing of the build folder.
env -i PATH="$PATH" HOME="$scratch" XDG_RUNTIME_DIR="$scratch/run" QT_QPA_PLATFORM=offscreen \
    ${ASAN_OPTIONS+ASAN_OPTIONS="$ASAN_OPTIONS"} ${UBSAN_OPTIONS+UBSAN_OPTIONS="$UBSAN_OPTIONS"} \
    "$scratch/prefix/bin/quillmark" 2>"$scratch/errors" &
running=$!
for ((i = 0; i < 20; i++)); do
    sleep 0.1
    if ! kill -0 "$running" 2>/dev/null; then
        cat "$scratch/errors" >&2
        fail "the installed program ended by itself"
    fi
done
