#pragma once

#include "recovery/journals/JournalEntry.h"
#include "recovery/journals/PieceList.h"

#include <string_view>
#include <vector>

/// The text that results from a base and the entries of its journal, in UTF-8. The base and the payloads of the entries
/// outlive it; no byte is copied. Offsets are bytes.
class ReplayedText {
 public:
    ReplayedText() = default;
    explicit ReplayedText(std::string_view base) : m_text({base}) {}

    /// False: the entry does not fit the text, which is as before.
    bool apply(const JournalEntry& entry);

    qint64 length() const { return m_text.length(); }
    std::vector<std::string_view> pieces() const { return m_text.pieces(); }

 private:
    bool insert(qint64 at, std::string_view bytes);
    bool remove(qint64 at, qint64 length);

    PieceList m_text;
};
