#include "shell/commands/ViewToggles.h"

#include "document/frmDocument.h"

#include <algorithm>
#include <cstring>

namespace {

using Document = frmDocument;

constexpr ViewToggle Table[] = {
    {"mnuShowTabSpace", "ShowSpace", &Document::DisplayWhitespace, &Document::setDisplayWhitespace},
    {"mnuShowLeftMargin", "ShowLeftMargin", &Document::DisplayLeftMargin, &Document::setDisplayLeftMargin},
    {"mnuShowLineNumber", "ShowLineNumber", &Document::LineNumbering, &Document::setLineNumbering},
    {"mnuHighlightRow", "", &Document::RowHighlight, &Document::setRowHighlight},
    {"mnuBraceMatching", "BraceMatching", &Document::BraceMatching, &Document::setBraceMatching},
};

}  // namespace

std::span<const ViewToggle> viewToggles() {
    return Table;
}

const ViewToggle& viewToggle(const char* entry) {
    return *std::ranges::find_if(Table,
                                 [entry](const ViewToggle& each) { return std::strcmp(each.entry, entry) == 0; });
}
