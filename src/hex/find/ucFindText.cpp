#include "hex/find/ucFindText.h"

namespace {

constexpr HexFindRules Rules{
    .name = "ucFindText1",
    .isText = true,
    .label = "Find What:",
    .findHistory = "hex_findtext.txt",
    .replaceHistory = nullptr,
    .counted = "\"%1\" was found %2 times",
    .marked = "\"%1\" was marked %2 times",
    .replacedAll = nullptr,
    .fillsBeforeSearch = false,
    .cutsForAll = false,
};

}  // namespace

ucFindText::ucFindText(const HexFindDesk& desk, QWidget* parent) : HexFindPanel(Rules, desk, parent) {}
