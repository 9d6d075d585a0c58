#include "hex/find/ucReplaceHex.h"

namespace {

constexpr HexFindRules Rules{
    .name = "ucReplaceHex1",
    .isText = false,
    .label = "Byte sequence:",
    .findHistory = "hex_findhex.txt",
    .replaceHistory = "hex_replacehex.txt",
    .counted = "\"%1\" Found: %2",
    .marked = "\"%1\" was marked %2",
    .replacedAll = "Replaced: %1",
    .fillsBeforeSearch = true,
    .cutsForAll = false,
};

}  // namespace

ucReplaceHex::ucReplaceHex(const HexFindDesk& desk, QWidget* parent) : HexReplacePanel(Rules, desk, parent) {}
