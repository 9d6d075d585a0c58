#include "recovery/journals/ReplayedText.h"

bool ReplayedText::apply(const JournalEntry& entry) {
    switch (entry.kind) {
        case EntryKind::Insert:
            return insert(entry.at, entry.bytes);
        case EntryKind::Remove:
            return remove(entry.at, entry.length);
        case EntryKind::Whole:
            m_text = PieceList({entry.bytes});
            return true;
        case EntryKind::Base:
            return true;
        default:
            return false;
    }
}

bool ReplayedText::insert(qint64 at, std::string_view bytes) {
    if (at > m_text.length())
        return false;
    m_text.insert(at, bytes);
    return true;
}

bool ReplayedText::remove(qint64 at, qint64 length) {
    if (at > m_text.length() || length > m_text.length() - at)
        return false;
    m_text.remove(at, length);
    return true;
}
