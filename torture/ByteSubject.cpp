#include "ByteSubject.h"

#include "Contents.h"
#include "platform/FileState.h"
#include "recovery/journals/FoundJournal.h"
#include "recovery/journals/Journal.h"
#include "src/document/HexPlayer.h"

#include <QFile>

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <utility>

namespace {

constexpr std::size_t MostLength = 3'000;

qint64 below(std::mt19937& random, qint64 limit) {
    return static_cast<qint64>(random() % static_cast<quint64>(limit));
}

void append(std::string& text, qint64 number) {
    text += std::to_string(number) + ' ';
}

std::string describe(const QByteArray& bytes, const HexEdits& edits) {
    const HexEdits::State state = edits.state();
    std::string text = bytes.toStdString() + "\nundo ";
    for (const HexUndoEntry& entry : state.undo) {
        for (const qint64 number : {entry.pointer.number(), qint64(entry.cell.row), qint64(entry.cell.col)})
            append(text, number);
        append(text, entry.value);
    }
    text += "\nmarks ";
    for (const auto& [at, byte] : state.marks) {
        append(text, at.number());
        append(text, byte);
    }
    return text;
}

}  // namespace

JournalBase ByteSubject::begin(std::mt19937& random, const QString& document) {
    m_bytes.bytes = noise(1 + below(random, MostLength), random());
    m_edits.clear();
    m_isUndoKept = true;
    written();
    putBytes(QFile::encodeName(document), m_bytes.bytes);
    JournalBase base;
    base.view = JournalBase::View::Hex;
    base.path = document;
    base.state = FileState::of(document);
    return base;
}

void ByteSubject::edit(std::mt19937& random, Journal& journal) {
    switch (below(random, 8)) {
        case 0:
            return takeBack(journal);
        case 1:
            return overwrite(random, journal);
        case 2:
            return fill(random, journal);
        default:
            return type(random, journal);
    }
}

FilePosition ByteSubject::anyPosition(std::mt19937& random) const {
    return FilePosition(1 + below(random, m_bytes.length()));
}

/// On the page that begins a number of rows before the byte. While the bytes are copied, undo and mark of it are not
/// kept.
void ByteSubject::type(std::mt19937& random, Journal& journal) {
    const FilePosition at = anyPosition(random);
    const qint64 offset = Offset(at).number();
    const qint64 row = offset / HexPaging::BytesPerRow;
    const qint64 rowOnPage = std::min(row, below(random, HexPaging::PageRows));
    const HexCell cell{static_cast<int>(rowOnPage), static_cast<int>(offset % HexPaging::BytesPerRow)};
    const FilePosition page((row - rowOnPage) * HexPaging::BytesPerRow + 1);
    const auto byte = static_cast<quint8>(below(random, 256));
    const char now = static_cast<char>(byte);
    if (m_handle >= 0)
        put(at, {&now, 1});
    else
        mustWork(!m_edits.overwrite(page, cell, byte), "cannot type a byte");
    journal.type(page.number(), cell.row, cell.col, byte);
}

/// As the journal of a document does it: the log of the journal is not that of the view once the bytes were passed on.
void ByteSubject::takeBack(Journal& journal) {
    if (m_edits.state().undo.empty())
        return;
    const HexUndoEntry entry = m_edits.state().undo.back();
    if (!m_isUndoKept) {
        const char byte = static_cast<char>(entry.value);
        return write(HexPaging::positionOf(entry.pointer, entry.cell), {&byte, 1}, journal);
    }
    SystemError error;
    m_edits.takeBack(error);
    mustWork(!error, "cannot undo");
    journal.takeBack();
}

void ByteSubject::overwrite(std::mt19937& random, Journal& journal) {
    const FilePosition at = anyPosition(random);
    const qint64 room = m_bytes.length() - Offset(at).number();
    const QByteArray bytes = noise(1 + below(random, std::min<qint64>(room, 40)), random());
    write(at, {bytes.constData(), static_cast<std::size_t>(bytes.size())}, journal);
}

void ByteSubject::write(FilePosition at, std::string_view bytes, Journal& journal) {
    put(at, bytes);
    journal.overwrite(Offset(at).number(), bytes);
}

void ByteSubject::fill(std::mt19937& random, Journal& journal) {
    const auto [first, last] = std::minmax({anyPosition(random), anyPosition(random)});
    const auto byte = static_cast<quint8>(below(random, 256));
    put(first, std::string(static_cast<std::size_t>(last - first + 1), static_cast<char>(byte)));
    journal.fill(Offset(first).number(), last - first + 1, byte);
}

void ByteSubject::put(FilePosition at, std::string_view bytes) {
    m_bytes.write(at, bytes);
    if (m_handle < 0)
        return;
    const ssize_t count = ::pwrite(m_handle, bytes.data(), bytes.size(), Offset(at).number());
    mustWork(count == ssize_t(bytes.size()), "cannot write the working copy");
}

void ByteSubject::setWhole(Journal& journal) {
    written();
    putBytes(m_workingCopy, m_bytes.bytes);
    m_handle = ::open(m_workingCopy.constData(), O_RDWR | O_CLOEXEC);
    mustWork(m_handle >= 0, "cannot open the working copy");
    journal.setWhole(m_handle);
    m_edits.clear();
    m_isUndoKept = false;
}

void ByteSubject::written() {
    if (m_handle >= 0)
        ::close(std::exchange(m_handle, -1));
}

std::string ByteSubject::state() const {
    return describe(m_bytes.bytes, m_edits);
}

std::optional<std::string> ByteSubject::stateOf(const FoundJournal& found) const {
    const std::optional<QByteArray> base = bytesOf(QFile::encodeName(found.basePath()));
    if (!base)
        return std::nullopt;
    MemoryBytes bytes(*base);
    HexEdits edits(bytes);
    HexReplay replay(edits, bytes);
    HexPlayer player(replay);
    return found.visit(player) ? std::optional(describe(bytes.bytes, edits)) : std::nullopt;
}
