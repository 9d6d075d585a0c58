#include "editor/commands/CaseCommands.h"

#include "editor/control/KeptBookmarks.h"
#include "editor/control/ScintillaCalls.h"
#include "editor/control/TextSpans.h"

#include <algorithm>
#include <vector>

using ScintillaCalls::ask;

namespace {

QString textOf(const EditView& view, Span span) {
    return QString::fromUtf8(view.bytes(span.from, span.to));
}

/// Inserts the changed form in place of the text and returns its length in bytes. A text that has that form already is
/// left unchanged.
qint64 putForm(EditView& view, Span span, TextCase::Change change) {
    const QString before = textOf(view, span);
    const QString after = change(before);
    if (after == before)
        return span.to - span.from;
    const QByteArray utf8 = after.toUtf8();
    ScintillaCalls::replace(view, span, utf8);
    return utf8.size();
}

struct Part {
    Span span;
    bool backward = false;
    qint64 length = 0;  ///< of its new form
};

std::vector<Part> selectedParts(const EditView& view) {
    std::vector<Part> parts;
    const qint64 count = ask(view, EditView::SCI_GETSELECTIONS);
    for (qint64 number = 0; number < count; ++number) {
        const qint64 anchor = ask(view, EditView::SCI_GETSELECTIONNANCHOR, number);
        const qint64 caret = ask(view, EditView::SCI_GETSELECTIONNCARET, number);
        parts.push_back({{std::min(anchor, caret), std::max(anchor, caret)}, caret < anchor, 0});
    }
    std::ranges::sort(parts, {}, [](const Part& part) { return part.span.from; });
    return parts;
}

void selectParts(EditView& view, const std::vector<Part>& parts) {
    ask(view, EditView::SCI_CLEARSELECTIONS);
    qint64 grown = 0;
    for (const Part& part : parts) {
        const qint64 from = part.span.from + grown;
        const qint64 to = from + part.length;
        grown += part.length - (part.span.to - part.span.from);
        const unsigned message = &part == &parts.front() ? EditView::SCI_SETSELECTION : EditView::SCI_ADDSELECTION;
        ask(view, message, part.backward ? from : to, part.backward ? to : from);
    }
}

}  // namespace

namespace CaseCommands {

void changeWord(EditView& view, TextCase::Change change) {
    const Span word = TextSpans::wordAtCaret(view);
    if (word.empty())
        return;
    const QString passed = change(textOf(view, {word.from, ScintillaCalls::caret(view)}));
    putForm(view, word, change);
    const qint64 caret = word.from + passed.toUtf8().size();
    ScintillaCalls::select(view, caret, caret);
}

void changeSelection(EditView& view, TextCase::Change change) {
    const KeptBookmarks kept(view);
    std::vector<Part> parts = selectedParts(view);
    if (std::ranges::all_of(parts, [](const Part& part) { return part.span.empty(); }))
        return;
    for (auto part = parts.rbegin(); part != parts.rend(); ++part)
        part->length = putForm(view, part->span, change);
    selectParts(view, parts);
}

}  // namespace CaseCommands
