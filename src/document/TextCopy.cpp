#include "document/TextCopy.h"

#include "recovery/journals/Journal.h"

#include <algorithm>
#include <utility>

void TextCopy::append(std::string part) {
    m_length += static_cast<qint64>(part.size());
    m_parts.push_back(std::move(part));
}

void TextCopy::inserted(qint64 at, std::string_view bytes) {
    if (at >= m_length)
        return;
    m_edits.push_back({at, 0, std::string(bytes)});
    m_length += static_cast<qint64>(bytes.size());
}

/// What is removed may reach beyond the copied beginning.
void TextCopy::removed(qint64 at, qint64 length) {
    const qint64 count = std::min(length, m_length - at);
    if (count <= 0)
        return;
    m_edits.push_back({at, count, {}});
    m_length -= count;
}

void TextCopy::passTo(Journal& journal) {
    journal.setWhole(std::move(m_parts));
    for (const Edit& edit : m_edits) {
        if (edit.removed > 0)
            journal.remove(edit.at, edit.removed);
        else
            journal.insert(edit.at, edit.inserted);
    }
}
