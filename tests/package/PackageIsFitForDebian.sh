#!/bin/bash
# The Debian package of this build: lintian finds no error and no warning in it, what it tells the desktop is valid, and the
# program in it is found by the desktop. Nothing is installed: the package is unpacked into a folder of its own.
set -eu

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
fail() {
    echo "$*" >&2
    exit 1
}

(cd "$QUILLMARK_BUILD" && cpack -G DEB -B "$scratch/packed" >"$scratch/cpack.log" 2>&1) ||
    fail "not packed: $(<"$scratch/cpack.log")"
package=$(echo "$scratch"/packed/quillmark_*.deb)
dpkg-deb -x "$package" "$scratch/tree"
share=$scratch/tree/usr/share

asRoot=()
((EUID != 0)) || asRoot=(--allow-root)
said=$(TMPDIR=$scratch lintian --no-cfg "${asRoot[@]}" --fail-on error,warning "$package" 2>&1) || fail "lintian: $said"
[[ -z $said ]] || fail "lintian: $said"

# field NAME WORDS: the field of the package has these words.
field() {
    local value
    value=$(dpkg-deb -f "$package" "$1")
    [[ $value == *"$2"* ]] || fail "$1 has no '$2': $value"
}
field Depends libqt6widgets6
field Depends libsqlite3-0
field Recommends 'hunspell-en-us | hunspell-dictionary'
field Description 'A desktop editor for programmers: text, source and bytes.'
version=$(dpkg-deb -f "$package" Version)
[[ $(zcat "$share/doc/quillmark/changelog.Debian.gz" | head -n 1) == "quillmark ($version) "* ]] ||
    fail "the changelog does not begin with $version"
for page in quillmark quillmark-reg; do
    [[ $(zcat "$share/man/man1/$page.1.gz" | head -c 3) == .TH ]] || fail "no manual page of $page"
done

said=$(desktop-file-validate "$share/applications/Quillmark.desktop" 2>&1 || true)
[[ -z $said ]] || fail "desktop entry: $said"
said=$(appstreamcli validate --no-net --no-color "$share/metainfo/Quillmark.metainfo.xml" 2>&1) || fail "metadata: $said"
! grep -E '^[EWI]: ' <<<"$said" || fail "metadata: see above"
grep -q '<screenshot ' "$share/metainfo/Quillmark.metainfo.xml" || fail "the metadata has no picture"
grep -q "<release version=\"${version%-*}\"" "$share/metainfo/Quillmark.metainfo.xml" || fail "the metadata has no release"

# As the desktop sees it when it is installed.
XDG_DATA_DIRS=$share update-mime-database "$share/mime"
update-desktop-database "$share/applications"
mkdir -p "$scratch/home"
inHome() {
    env -i PATH="$PATH" HOME="$scratch/home" XDG_DATA_DIRS="$share:/usr/share" "$@"
}
grep -q ':application/x-quillmark-project:\*\.qmp$' "$share/mime/globs2" || fail "projects have no type"
[[ $(inHome xdg-mime query default application/x-quillmark-project) == Quillmark.desktop ]] ||
    fail "projects do not open in the program"
inHome "$scratch/tree/usr/bin/quillmark" -r 2>"$scratch/errors" || fail "-r failed: $(<"$scratch/errors")"
[[ ! -e $scratch/home/.local/share/applications/Quillmark.desktop ]] || fail "the installed entry was hidden by another one"
[[ $(inHome xdg-mime query default application/x-quillmark-project) == Quillmark.desktop ]] ||
    fail "projects do not open in the program any more"
