#include "recovery/journals/JournalEntry.h"

#include "recovery/journals/Payload.h"

#include <algorithm>
#include <limits>

namespace {

constexpr int LargestCell = std::numeric_limits<int>::max();

/// The parts of an entry behind its kind.
enum class Part { At, Length, Row, Col, Byte, Bytes, LeadingLength, Base };

struct Form {
    EntryKind kind;
    std::array<Part, 4> parts;
    int count;
};

constexpr Form Forms[] = {
    {EntryKind::Insert, {Part::At, Part::Bytes}, 2},
    {EntryKind::Remove, {Part::At, Part::Length}, 2},
    {EntryKind::Whole, {Part::LeadingLength}, 1},
    {EntryKind::Type, {Part::At, Part::Row, Part::Col, Part::Byte}, 4},
    {EntryKind::TakeBack, {}, 0},
    {EntryKind::Overwrite, {Part::At, Part::Bytes}, 2},
    {EntryKind::Fill, {Part::At, Part::Length, Part::Byte}, 3},
    {EntryKind::Base, {Part::Base}, 1},
};

const Form* formOf(quint8 kind) {
    const auto* found =
        std::find_if(std::begin(Forms), std::end(Forms), [&](const Form& form) { return quint8(form.kind) == kind; });
    return found != std::end(Forms) ? found : nullptr;
}

void writeBase(PayloadWriter& writer, std::string& payload, const StoredBase& base) {
    writer.byte(static_cast<quint8>((base.hasCopy ? 1 : 0) | (base.replaces ? 2 : 0)));
    writer.number(base.number);
    writer.number(base.size);
    payload.append(base.hash.data(), base.hash.size());
}

StoredBase readBase(PayloadReader& reader) {
    StoredBase base;
    const quint8 flags = reader.byte();
    base.hasCopy = (flags & 1) != 0;
    base.replaces = (flags & 2) != 0;
    base.number = reader.offset();
    base.size = reader.offset();
    for (char& each : base.hash)
        each = static_cast<char>(reader.byte());
    return base;
}

void writePart(Part part, PayloadWriter& writer, std::string& payload, const JournalEntry& entry) {
    switch (part) {
        case Part::At:
            return writer.number(entry.at);
        case Part::Length:
        case Part::LeadingLength:
            return writer.number(entry.length);
        case Part::Row:
            return writer.number(qint64(entry.row));
        case Part::Col:
            return writer.number(qint64(entry.col));
        case Part::Byte:
            return writer.byte(entry.byte);
        case Part::Bytes:
            return writer.bytes(entry.bytes);
        case Part::Base:
            return writeBase(writer, payload, entry.base);
    }
}

void readPart(Part part, PayloadReader& reader, JournalEntry& entry) {
    switch (part) {
        case Part::At:
            entry.at = reader.offset();
            break;
        case Part::Length:
            entry.length = reader.offset();
            break;
        case Part::Row:
            entry.row = static_cast<int>(reader.numberUpTo(LargestCell));
            break;
        case Part::Col:
            entry.col = static_cast<int>(reader.numberUpTo(LargestCell));
            break;
        case Part::Byte:
            entry.byte = reader.byte();
            break;
        case Part::Bytes:
        case Part::LeadingLength:
            entry.bytes = reader.bytes();
            entry.length = static_cast<qint64>(entry.bytes.size());
            break;
        case Part::Base:
            entry.base = readBase(reader);
            break;
    }
}

}  // namespace

void appendEntry(std::string& payload, const JournalEntry& entry) {
    PayloadWriter writer(payload);
    const Form& form = *formOf(static_cast<quint8>(entry.kind));
    writer.byte(static_cast<quint8>(entry.kind));
    for (int i = 0; i < form.count; ++i)
        writePart(form.parts[static_cast<std::size_t>(i)], writer, payload, entry);
}

std::optional<JournalEntry> readEntry(PayloadReader& reader) {
    if (reader.atEnd())
        return std::nullopt;
    const Form* form = formOf(reader.byte());
    if (form == nullptr)
        return std::nullopt;
    JournalEntry entry;
    entry.kind = form->kind;
    for (int i = 0; i < form->count; ++i)
        readPart(form->parts[static_cast<std::size_t>(i)], reader, entry);
    return reader.isValid() ? std::optional(entry) : std::nullopt;
}
