// Any bytes as a text to be checked and as the head of a dictionary: the words that are found lie in the text in their
// order, in small steps the same as in large ones, and what is refused of a dictionary is named in a short sentence.

#include "FuzzEntry.h"
#include "spelling/dictionary/DictionaryHead.h"
#include "spelling/words/WordScanner.h"

#include <QString>

#include <vector>

namespace {

std::vector<WordSpan> wordsOf(const QString& text, qsizetype step) {
    WordScanner scanner(text);
    std::vector<WordSpan> words;
    while (!scanner.atEnd()) {
        const qsizetype before = scanner.position();
        if (const auto word = scanner.next(step))
            words.push_back(*word);
        require(scanner.position() > before);
    }
    return words;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QByteArrayView bytes = viewOf(data, size);
    const QString text = QString::fromUtf8(bytes);
    const std::vector<WordSpan> words = wordsOf(text, text.size());
    require(words == wordsOf(text, 1));
    qsizetype end = 0;
    for (const WordSpan& word : words) {
        require(word.position >= end && word.length > 1 && word.length <= WordScanner::LongestWord);
        end = word.position + word.length;
    }
    require(end <= text.size());

    constexpr std::size_t LongestFault = 100;
    const std::string_view head(bytes.data(), size);
    require(DictionaryHead::affixFault(head).size() < LongestFault);
    require(DictionaryHead::wordsFault(head, bytes.size()).size() < LongestFault);
    return 0;
}
