#include "recovery/journals/Journal.h"

#include "recovery/journals/JournalEntry.h"
#include "recovery/journals/JournalStream.h"

#include <utility>

Journal::~Journal() {
    m_stream->setWholeNeeded({});
    m_stream->release();
}

void Journal::insert(qint64 at, std::string_view bytes) {
    m_stream->insert(at, bytes);
}

void Journal::remove(qint64 at, qint64 length) {
    m_stream->remove(at, length);
}

void Journal::type(qint64 page, int row, int col, quint8 byte) {
    JournalEntry entry;
    entry.kind = EntryKind::Type;
    entry.at = page;
    entry.row = row;
    entry.col = col;
    entry.byte = byte;
    m_stream->add(entry);
}

void Journal::takeBack() {
    JournalEntry entry;
    entry.kind = EntryKind::TakeBack;
    m_stream->add(entry);
}

void Journal::overwrite(qint64 at, std::string_view bytes) {
    JournalEntry entry;
    entry.kind = EntryKind::Overwrite;
    entry.at = at;
    entry.bytes = bytes;
    m_stream->add(entry);
}

void Journal::fill(qint64 at, qint64 length, quint8 byte) {
    JournalEntry entry;
    entry.kind = EntryKind::Fill;
    entry.at = at;
    entry.length = length;
    entry.byte = byte;
    m_stream->add(entry);
}

bool Journal::needsWhole() const {
    return m_stream->needsWhole();
}

bool Journal::dependsOnFile() const {
    return m_stream->dependsOnFile();
}

void Journal::setWholeNeeded(std::function<void()> notify) {
    m_stream->setWholeNeeded(std::move(notify));
}

void Journal::setWhole(std::vector<std::string> parts) {
    m_stream->setWhole(std::move(parts));
}

void Journal::setWhole(int handle) {
    m_stream->setWhole(handle);
}

void Journal::discard() {
    m_stream->discard();
}

void Journal::replaceBy(const Journal& next) {
    m_stream->replaceBy(next.m_stream);
}
