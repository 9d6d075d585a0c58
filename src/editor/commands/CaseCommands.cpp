#include "editor/commands/CaseCommands.h"

#include "editor/control/KeptBookmarks.h"
#include "editor/control/ScintillaCalls.h"

#include <algorithm>
#include <vector>

using ScintillaCalls::ask;

namespace {

QString textOf(const TextControl& control, Span span) {
    return QString::fromUtf8(control.bytes(span.from, span.to));
}

/// Puts the changed form in place and gives its length in bytes. A text that has that form already is left alone.
qint64 putForm(TextControl& control, Span span, TextCase::Change change) {
    const QString before = textOf(control, span);
    const QString after = change(before);
    if (after == before)
        return span.to - span.from;
    const QByteArray utf8 = after.toUtf8();
    ScintillaCalls::replace(control, span, utf8);
    return utf8.size();
}

struct Part {
    Span span;
    bool backward = false;
    qint64 length = 0;  ///< of its new form
};

std::vector<Part> selectedParts(const TextControl& control) {
    std::vector<Part> parts;
    const qint64 count = ask(control, TextControl::SCI_GETSELECTIONS);
    for (qint64 number = 0; number < count; ++number) {
        const qint64 anchor = ask(control, TextControl::SCI_GETSELECTIONNANCHOR, number);
        const qint64 caret = ask(control, TextControl::SCI_GETSELECTIONNCARET, number);
        parts.push_back({{std::min(anchor, caret), std::max(anchor, caret)}, caret < anchor, 0});
    }
    std::ranges::sort(parts, {}, [](const Part& part) { return part.span.from; });
    return parts;
}

void selectParts(TextControl& control, const std::vector<Part>& parts) {
    ask(control, TextControl::SCI_CLEARSELECTIONS);
    qint64 grown = 0;
    for (const Part& part : parts) {
        const qint64 from = part.span.from + grown;
        const qint64 to = from + part.length;
        grown += part.length - (part.span.to - part.span.from);
        const unsigned message =
            &part == &parts.front() ? TextControl::SCI_SETSELECTION : TextControl::SCI_ADDSELECTION;
        ask(control, message, part.backward ? from : to, part.backward ? to : from);
    }
}

}  // namespace

namespace CaseCommands {

void changeWord(TextControl& control, TextCase::Change change) {
    const Span word = TextSpans::wordAtCaret(control);
    if (word.empty())
        return;
    const QString passed = change(textOf(control, {word.from, ScintillaCalls::caret(control)}));
    putForm(control, word, change);
    const qint64 caret = word.from + passed.toUtf8().size();
    ScintillaCalls::select(control, caret, caret);
}

void changeSelection(TextControl& control, TextCase::Change change) {
    const KeptBookmarks kept(control);
    std::vector<Part> parts = selectedParts(control);
    if (std::ranges::all_of(parts, [](const Part& part) { return part.span.empty(); }))
        return;
    for (auto part = parts.rbegin(); part != parts.rend(); ++part)
        part->length = putForm(control, part->span, change);
    selectParts(control, parts);
}

}  // namespace CaseCommands
