#include "editor/control/SelectedTexts.h"

#include "editor/control/KeptBookmarks.h"
#include "editor/control/ScintillaCalls.h"
#include "editor/control/SelectedRanges.h"

#include <QStringList>

#include <algorithm>
#include <cstddef>
#include <utility>

using ScintillaCalls::ask;
using Sci = QsciScintillaBase;

namespace {

/// A selected range, which may be empty.
struct Part {
    Span span;
    qint64 beyondFrom = 0;  ///< how far behind the end of the line its ends lie, in a rectangle
    qint64 beyondTo = 0;
    bool backward = false;
    bool main = false;
    QString text;  ///< the new one while it is changed
};

Part partOf(const EditView& view, qint64 range) {
    const qint64 anchor = ask(view, Sci::SCI_GETSELECTIONNANCHOR, range);
    const qint64 caret = ask(view, Sci::SCI_GETSELECTIONNCARET, range);
    qint64 from = ask(view, Sci::SCI_GETSELECTIONNANCHORVIRTUALSPACE, range);
    qint64 to = ask(view, Sci::SCI_GETSELECTIONNCARETVIRTUALSPACE, range);
    if (caret < anchor || (caret == anchor && to < from))
        std::swap(from, to);
    const Span span{std::min(anchor, caret), std::max(anchor, caret)};
    return {span,
            from,
            to,
            caret < anchor,
            range == ask(view, Sci::SCI_GETMAINSELECTION),
            QString::fromUtf8(view.bytes(span.from, span.to))};
}

/// From the top.
std::vector<Part> selectedParts(const EditView& view) {
    std::vector<Part> parts;
    for (qint64 range = 0; range < ask(view, Sci::SCI_GETSELECTIONS); ++range)
        parts.push_back(partOf(view, range));
    std::ranges::sort(parts, {}, [](const Part& part) { return part.span.from; });
    return parts;
}

bool isEmpty(const Part& part) {
    return part.span.empty();
}

void changeEach(std::vector<Part>& parts, const SelectedTexts::Change& change) {
    for (Part& part : parts) {
        if (!isEmpty(part))
            part.text = change(part.text);
    }
}

/// False when the lines would not fit the parts any more.
bool changeAsLines(std::vector<Part>& parts, const SelectedTexts::Change& change) {
    QStringList lines;
    for (const Part& part : parts) {
        if (!isEmpty(part))
            lines << part.text;
    }
    const QStringList changed = change(lines.join(u'\n')).split(u'\n');
    if (changed.size() != lines.size())
        return false;
    auto next = changed.begin();
    for (Part& part : parts) {
        if (!isEmpty(part))
            part.text = *next++;
    }
    return true;
}

/// From the last to the first, so that no replacement moves a span that is still to come.
void replaceAll(EditView& view, std::vector<Part>& parts) {
    // The library would cut a rectangle anew in the midst of it.
    ScintillaCalls::select(view, parts.front().span.from, parts.front().span.from);
    for (auto part = parts.rbegin(); part != parts.rend(); ++part) {
        if (!isEmpty(*part))
            ScintillaCalls::replace(view, part->span, part->text.toUtf8());
    }
    qint64 grown = 0;
    for (Part& part : parts) {
        const qint64 length = part.text.toUtf8().size();
        const qint64 from = part.span.from + grown;
        grown += length - (part.span.to - part.span.from);
        part.span = {from, from + length};
    }
}

void selectParts(EditView& view, const std::vector<Part>& parts, SelectedTexts::Direction direction) {
    std::vector<ByteSelection> ranges;
    std::size_t main = parts.size() - 1;
    for (const Part& part : parts) {
        const bool backward = part.backward && direction == SelectedTexts::Direction::Kept;
        if (part.main)
            main = ranges.size();
        ranges.push_back(backward ? ByteSelection{part.span.to, part.span.from}
                                  : ByteSelection{part.span.from, part.span.to});
    }
    SelectedRanges::set(view, ranges, main);
}

/// From the corner in the first line to the one in the last.
void selectRectangle(EditView& view, const std::vector<Part>& parts) {
    ask(view, Sci::SCI_SETRECTANGULARSELECTIONANCHOR, parts.front().span.from);
    ask(view, Sci::SCI_SETRECTANGULARSELECTIONANCHORVIRTUALSPACE, parts.front().beyondFrom);
    ask(view, Sci::SCI_SETRECTANGULARSELECTIONCARET, parts.back().span.to);
    ask(view, Sci::SCI_SETRECTANGULARSELECTIONCARETVIRTUALSPACE, parts.back().beyondTo);
}

}  // namespace

namespace SelectedTexts {

std::vector<QString> of(const EditView& view) {
    std::vector<QString> texts;
    for (Part& part : selectedParts(view)) {
        if (!isEmpty(part))
            texts.push_back(std::move(part.text));
    }
    return texts;
}

qint64 lineCount(const EditView& view) {
    const TextMap& map = view.map();
    std::vector<LineRange> touched;
    for (qint64 range = 0; range < ask(view, Sci::SCI_GETSELECTIONS); ++range) {
        const qint64 from = ask(view, Sci::SCI_GETSELECTIONNSTART, range);
        const qint64 to = ask(view, Sci::SCI_GETSELECTIONNEND, range);
        if (from < to)
            touched.push_back({map.lineOf(from), map.lineOf(to)});
    }
    std::ranges::sort(touched, {}, &LineRange::first);
    qint64 count = 0;
    qint64 counted = -1;
    for (const LineRange& lines : touched) {
        count += std::max<qint64>(lines.last - std::max(lines.first, counted + 1) + 1, 0);
        counted = std::max(counted, lines.last);
    }
    return count;
}

void change(EditView& view, const Change& change, Direction direction) {
    const bool rectangle = ask(view, Sci::SCI_SELECTIONISRECTANGLE) != 0;
    std::vector<Part> parts = selectedParts(view);
    if (std::ranges::all_of(parts, isEmpty))
        return;
    if (!rectangle)
        changeEach(parts, change);
    else if (!changeAsLines(parts, change))
        return;
    const KeptBookmarks kept(view);
    replaceAll(view, parts);
    rectangle ? selectRectangle(view, parts) : selectParts(view, parts, direction);
}

}  // namespace SelectedTexts
