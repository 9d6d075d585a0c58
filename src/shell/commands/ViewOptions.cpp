#include "shell/commands/ViewOptions.h"

#include "document/frmDocument.h"

#include <algorithm>
#include <cstring>

namespace {

using Document = frmDocument;

constexpr ViewOption table[] = {
    {"mnuShowTabSpace", "ShowSpace", &Document::DisplayWhitespace, &Document::setDisplayWhitespace},
    {"mnuShowLeftMargin", "ShowLeftMargin", &Document::DisplayLeftMargin, &Document::setDisplayLeftMargin},
    {"mnuShowLineNumber", "ShowLineNumber", &Document::LineNumbering, &Document::setLineNumbering},
    {"mnuHighlightRow", "", &Document::RowHighlight, &Document::setRowHighlight},
    {"mnuBraceMatching", "BraceMatching", &Document::BraceMatching, &Document::setBraceMatching},
};

}  // namespace

std::span<const ViewOption> viewOptions() {
    return table;
}

const ViewOption& viewOption(const char* entry) {
    return *std::ranges::find_if(table,
                                 [entry](const ViewOption& each) { return std::strcmp(each.entry, entry) == 0; });
}
