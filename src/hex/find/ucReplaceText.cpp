#include "hex/find/ucReplaceText.h"

namespace {

constexpr HexFindRules Rules{
    .name = "ucReplaceText1",
    .isText = true,
    .label = "Find What:",
    .findHistory = "hex_findtext.txt",
    .replaceHistory = "hex_replacetext.txt",
    .counted = "\"%1\" was found %2 times",
    .marked = "\"%1\" was found %2 times",
    .replacedAll = "%1  items are replaced",
    .fillsBeforeSearch = false,
    .cutsForAll = true,
};

}  // namespace

ucReplaceText::ucReplaceText(const HexFindDesk& desk, QWidget* parent) : HexReplacePanel(Rules, desk, parent) {}
