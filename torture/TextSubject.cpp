#include "TextSubject.h"

#include "Contents.h"
#include "platform/FileState.h"
#include "recovery/journals/FoundJournal.h"
#include "recovery/journals/Journal.h"

#include <QFile>

#include <algorithm>

namespace {

constexpr std::size_t MostLetters = 3'000;

std::size_t below(std::mt19937& random, std::size_t limit) {
    return random() % limit;
}

}  // namespace

JournalBase TextSubject::begin(std::mt19937& random, const QString& document) {
    m_text = std::string(below(random, MostLetters), 'O');
    putBytes(QFile::encodeName(document), QByteArray::fromStdString(m_text));
    JournalBase base;
    base.path = document;
    base.state = FileState::of(document);
    return base;
}

/// A text that is the same as before would not be brought back.
void TextSubject::edit(std::mt19937& random, Journal& journal) {
    const std::size_t at = below(random, m_text.size() + 1);
    const std::size_t length = std::min(m_text.size() - at, below(random, 20));
    if (length > 0 && below(random, 3) == 0) {
        journal.remove(static_cast<qint64>(at), static_cast<qint64>(length));
        m_text.erase(at, length);
        return;
    }
    const std::string word(1 + below(random, 40), static_cast<char>('a' + below(random, 26)));
    journal.insert(static_cast<qint64>(at), word);
    m_text.insert(at, word);
}

void TextSubject::setWhole(Journal& journal) {
    journal.setWhole({m_text});
}

std::optional<std::string> TextSubject::stateOf(const FoundJournal& found) const {
    const std::optional<QByteArray> bytes = bytesOf(QFile::encodeName(found.textPath()));
    return bytes ? std::optional(bytes->toStdString()) : std::nullopt;
}
