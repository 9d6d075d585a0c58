#include "editor/commands/CaseCommands.h"

#include "editor/control/ScintillaCalls.h"
#include "editor/control/SelectedRanges.h"
#include "editor/control/SelectedTexts.h"
#include "editor/control/TextSpans.h"

#include <algorithm>
#include <cstddef>
#include <vector>

namespace {

QString textOf(const EditView& view, Span span) {
    return QString::fromUtf8(view.bytes(span.from, span.to));
}

/// Replaces the text by its new form and returns how many bytes longer it is. A text that has that form already is left
/// alone.
qint64 putForm(EditView& view, Span span, TextCase::Change change) {
    const QString before = textOf(view, span);
    const QString after = change(before);
    if (after == before)
        return 0;
    const QByteArray utf8 = after.toUtf8();
    ScintillaCalls::replace(view, span, utf8);
    return utf8.size() - (span.to - span.from);
}

/// A word, and the carets in it or beside it by their distance from its start when it has its new form.
struct Word {
    Span span;
    std::vector<qint64> carets;
};

std::vector<Word> wordsAtCarets(const EditView& view, TextCase::Change change) {
    std::vector<Word> words;
    for (const qint64 caret : TextSpans::carets(view)) {
        const Span word = TextSpans::wordAt(view, caret);
        if (words.empty() || words.back().span != word)
            words.push_back({word, {}});
        words.back().carets.push_back(change(textOf(view, {word.from, caret})).toUtf8().size());
    }
    return words;
}

}  // namespace

namespace CaseCommands {

void changeWords(EditView& view, TextCase::Change change) {
    const std::vector<Word> words = wordsAtCarets(view, change);
    if (std::ranges::all_of(words, [](const Word& word) { return word.span.empty(); }))
        return;
    const std::size_t main = TextSpans::mainCaret(view);
    std::vector<qint64> grown(words.size());
    for (std::size_t word = words.size(); word-- > 0;)
        grown[word] = putForm(view, words[word].span, change);
    std::vector<ByteSelection> carets;
    qint64 moved = 0;
    for (std::size_t word = 0; word < words.size(); ++word) {
        for (const qint64 caret : words[word].carets) {
            const qint64 at = words[word].span.from + moved + caret;
            carets.push_back({at, at});
        }
        moved += grown[word];
    }
    SelectedRanges::set(view, carets, main);
}

void changeSelection(EditView& view, TextCase::Change change) {
    const std::vector<QString> texts = SelectedTexts::of(view);
    if (std::ranges::any_of(texts, [change](const QString& text) { return change(text) != text; }))
        SelectedTexts::change(view, change, SelectedTexts::Direction::Kept);
}

}  // namespace CaseCommands
