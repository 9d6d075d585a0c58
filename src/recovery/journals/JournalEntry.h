#pragma once

#include <QtGlobal>

#include <array>
#include <optional>
#include <string>
#include <string_view>

class PayloadReader;

/// The checksum of a base: XXH3, 128 bits.
using BaseHash = std::array<char, 16>;

/// What was found out about the base when it was stored.
struct StoredBase {
    bool hasCopy = false;   ///< there is a file with its bytes beside the journal
    bool replaces = false;  ///< it is the present contents: base and entries before it do not count any more
    qint64 number = 0;      ///< part of the name of that file
    qint64 size = 0;        ///< bytes
    BaseHash hash{};
};

enum class EntryKind : quint8 {
    // Of a text
    Insert = 1,
    Remove = 2,
    Whole = 3,  ///< the contents, in place of base and entries before
    // Of a hex document
    Type = 16,
    TakeBack = 17,
    Overwrite = 18,
    Fill = 19,
    // Of both
    Base = 32
};

/// One entry of a journal. A plain value, of which the kind says what is used; `bytes` lies in the payload it was read
/// from. Offsets and lengths are bytes.
struct JournalEntry {
    EntryKind kind = EntryKind::Insert;
    qint64 at = 0;  ///< of Type: the page
    qint64 length = 0;
    int row = 0;
    int col = 0;
    quint8 byte = 0;
    std::string_view bytes{};
    StoredBase base{};

    /// Whether it is an edit, and not a note about the base.
    bool isEdit() const { return kind != EntryKind::Base; }
};

/// Appends the entry. Of Whole the bytes are left out: they follow behind it as `length` bytes.
void appendEntry(std::string& payload, const JournalEntry& entry);
/// Nothing when it is damaged, of a kind that is not known, or the payload is at its end.
std::optional<JournalEntry> readEntry(PayloadReader& reader);
