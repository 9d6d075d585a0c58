#include "Scene.h"

namespace {

using Change = Scene::Change;
using Place = Scene::Place;
using Extra = Scene::Extra;
using Owner = Scene::Owner;

constexpr qint64 None = Scene::NoFile;
constexpr qint64 MiB = 1024LL * 1024;

constexpr Scene Scenes[] = {
    {"new and empty", None, 0},
    {"new, one byte", None, 1},
    {"new", None, 5'000},
    {"new, large pieces", None, 300'000},
    {"new, 1 MiB", None, MiB + 3},
    {"new behind a link", None, 5'000, Change::All, 0, true, Place::LinkToNothing},
    {"new from a source", None, 9'000, Change::All, 4'096},
    {"new, with a tail that would be kept", None, 5'000, Change::All, 0, false},
    {"new of several at once", None, 3'000, Change::All, 0, true, Place::Plain, 0644, Extra::None, 4},
    {"empty to empty", 0, 0},
    {"empty to one byte", 0, 1},
    {"empty to text", 0, 6'000},
    {"one byte to nothing", 1, 0},
    {"text to nothing", 6'000, 0},
    {"grows", 5'000, 9'000},
    {"grows much", 700, 400'000},
    {"grows by a byte", 4'096, 4'097},
    {"grows into its last block", 511, 512},
    {"shrinks", 9'000, 5'000},
    {"shrinks much", 400'000, 700},
    {"shrinks by a byte", 4'097, 4'096},
    {"shrinks within a block", 1'000, 600},
    {"same size", 5'000, 5'000},
    {"same size, whole blocks", 8'192, 8'192},
    {"same bytes", 5'000, 5'000, Change::Nothing},
    {"same bytes and shorter", 5'000, 3'000, Change::Nothing},
    {"same bytes and longer", 3'000, 5'000, Change::Nothing},
    {"few blocks", 50'000, 50'000, Change::FewBlocks},
    {"front alone", 50'000, 50'000, Change::Front},
    {"bytes, few blocks", 50'000, 50'000, Change::FewBlocks, 4'096, false},
    {"bytes, front alone", 50'000, 50'000, Change::Front, 4'096, false},
    {"bytes, nothing differs", 20'000, 20'000, Change::Nothing, 4'096, false},
    {"bytes, fewer than before", 20'000, 12'000, Change::All, 4'096, false},
    {"bytes, more than before", 12'000, 20'000, Change::All, 4'096, false},
    {"bytes in odd parts", 20'000, 20'000, Change::FewBlocks, 700, false},
    {"bytes that are cut", 20'000, 12'000, Change::FewBlocks, 4'096},
    {"bytes that are cut only", 20'000, 12'100, Change::Nothing, 4'096},
    {"behind a link", 5'000, 9'000, Change::All, 0, true, Place::Link},
    {"behind a link, shrinks", 9'000, 500, Change::All, 0, true, Place::Link},
    {"hard links", 5'000, 9'000, Change::All, 0, true, Place::HardLinks},
    {"hard links, bytes", 9'000, 9'000, Change::FewBlocks, 4'096, false, Place::HardLinks},
    {"mode 0600", 5'000, 9'000, Change::All, 0, true, Place::Plain, 0600},
    {"mode 0666", 9'000, 5'000, Change::All, 0, true, Place::Plain, 0666},
    {"mode 0755", 5'000, 9'000, Change::All, 0, true, Place::Plain, 0755},
    {"mode 0020", 5'000, 9'000, Change::All, 0, true, Place::Plain, 0020},
    {"mode 0444 is refused", 5'000, 9'000, Change::All, 0, true, Place::Plain, 0444},
    {"mode 0000 is refused", 5'000, 9'000, Change::All, 0, true, Place::Plain, 0000},
    {"extended attribute", 5'000, 9'000, Change::All, 0, true, Place::Plain, 0644, Extra::Attribute},
    {"access list", 5'000, 9'000, Change::All, 0, true, Place::Plain, 0644, Extra::AccessList},
    {"several at once, grow", 2'000, 6'000, Change::All, 0, true, Place::Plain, 0644, Extra::None, 6},
    {"several at once, shrink", 6'000, 2'000, Change::All, 0, true, Place::Plain, 0644, Extra::None, 6},
    {"several at once, few blocks", 20'000, 20'000, Change::FewBlocks, 0, true, Place::Plain, 0644, Extra::None, 3},
    {"project", 4'800, 5'300, Change::Front},
    {"new project", None, 5'300},
    {"macro", 800, 900, Change::All, 0, false},
    {"macro, shorter than before", 900, 300, Change::All, 0, false},
    {"list", 700, 760, Change::All, 0, true, Place::Plain, 0644, Extra::None, 1, Owner::Program},
    {"list, shorter than before", 9'000, 60, Change::All, 0, true, Place::Plain, 0600, Extra::None, 1, Owner::Program},
    {"new list", None, 760, Change::All, 0, true, Place::Plain, 0644, Extra::None, 1, Owner::Program},
    {"empty list", 700, 0, Change::All, 0, true, Place::Plain, 0644, Extra::None, 1, Owner::Program},
    {"list behind a link", 700, 760, Change::All, 0, true, Place::Link, 0644, Extra::None, 1, Owner::Program},
    {"list that may not be written", 700, 760, Change::All, 0, true, Place::Plain, 0444, Extra::None, 1,
     Owner::Program},
    {"lists at once", 700, 760, Change::All, 0, true, Place::Plain, 0644, Extra::None, 6, Owner::Program},
    {"table of languages", 30'000, 31'000, Change::All, 0, true, Place::Plain, 0644, Extra::None, 1, Owner::Program},
    {"1 MiB", MiB, MiB + 1},
    {"1 MiB of bytes", MiB, MiB, Change::FewBlocks, MiB / 4, false},
    {"16 MiB grow", 10 * MiB, 16 * MiB},
    {"64 MiB of bytes", 64 * MiB, 64 * MiB, Change::FewBlocks, MiB, false},
    {"64 MiB of text", 64 * MiB, 64 * MiB - 700},
};

}  // namespace

std::span<const Scene> scenes() {
    return Scenes;
}
