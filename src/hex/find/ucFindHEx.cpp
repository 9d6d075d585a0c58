#include "hex/find/ucFindHEx.h"

namespace {

constexpr HexFindRules Rules{
    .name = "ucFindHex1",
    .isText = false,
    .label = "Byte sequence:",
    .findHistory = "hex_findhex.txt",
    .replaceHistory = nullptr,
    .counted = "\"%1\" was found %2 times",
    .marked = "\"%1\" was marked %2 times",
    .replacedAll = nullptr,
    .fillsBeforeSearch = false,
    .cutsForAll = false,
};

}  // namespace

ucFindHEx::ucFindHEx(const HexFindDesk& desk, QWidget* parent) : HexFindPanel(Rules, desk, parent) {}
