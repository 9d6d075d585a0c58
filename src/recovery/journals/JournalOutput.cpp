#include "recovery/journals/JournalOutput.h"

#include "recovery/journals/BaseThreads.h"
#include "recovery/journals/JournalHead.h"
#include "recovery/journals/Payload.h"
#include "recovery/journals/RestoredJournal.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <iterator>
#include <new>
#include <utility>

using namespace JournalFormat;

namespace {

qint64 lengthOf(const JournalBase& base) {
    return base.textLength >= 0 ? base.textLength : base.state ? base.state->size : 0;
}

constexpr qint64 BytesOfARow = 16;

/// The same bytes without undo and marks: repeated, they have no other effect than once.
JournalBatch asOverwrites(const JournalBatch& batch) {
    JournalBatch result{{std::string()}, batch.time};
    for (const std::string& part : batch.parts) {
        PayloadReader reader(part);
        while (auto entry = readEntry(reader)) {
            const char byte = static_cast<char>(entry->byte);
            if (entry->kind == EntryKind::Type) {
                entry->kind = EntryKind::Overwrite;
                entry->at += entry->row * BytesOfARow + entry->col - 1;
                entry->bytes = {&byte, 1};
            }
            appendEntry(result.parts.front(), *entry);
        }
    }
    return result;
}

std::string joined(const std::vector<std::string_view>& pieces, qint64 length) {
    std::string text;
    text.reserve(static_cast<std::size_t>(length));
    for (const std::string_view piece : pieces)
        text += piece;
    return text;
}

}  // namespace

JournalOutput::JournalOutput(FileSystemCalls& calls, BaseThreads& threads, QString folder, const JournalLimits& limits,
                             JournalBase base, std::shared_ptr<JournalStream> stream)
    : m_calls(calls),
      m_threads(threads),
      m_folder(std::move(folder)),
      m_limits(limits),
      m_base(std::move(base)),
      m_stream(std::move(stream)),
      m_isBaseSettled(!m_base.state),
      m_baseNumber(-1),
      m_bytesDelay(limits.whileEditing, limits.longestRetry),
      m_textLength(lengthOf(m_base)),
      m_compactFrom(limits.compacted) {
    reportDependence();
}

JournalOutput::JournalOutput(FileSystemCalls& calls, BaseThreads& threads, const JournalLimits& limits,
                             JournalBase base, std::shared_ptr<JournalStream> stream, Continued continued)
    : m_calls(calls),
      m_threads(threads),
      m_folder(continued.file->folder()),
      m_limits(limits),
      m_base(std::move(base)),
      m_stream(std::move(stream)),
      m_file(std::move(continued.file)),
      m_isPublished(true),
      m_awaitsWhole(continued.isPartial),
      m_stored(continued.base),
      m_isBaseSettled(continued.base || continued.hasWhole || !m_base.state),
      m_baseNumber(continued.base ? continued.base->number : -1),
      m_bytesDelay(limits.whileEditing, limits.longestRetry),
      m_textLength(continued.textLength),
      m_hasWhole(continued.hasWhole),
      m_wholeLength(continued.hasWhole ? continued.textLength : 0),
      m_compactFrom(limits.compacted) {
    reportDependence();
}

JournalOutput::~JournalOutput() {
    dropCopy();
    if (m_wholeFile >= 0)
        ::close(m_wholeFile);
}

std::optional<JournalOutput::Clock::time_point> JournalOutput::dueAt() const {
    const auto due = m_stream->dueAt({m_limits.afterLast, m_limits.whileEditing});
    // Of a continued journal, for one: nothing has to be edited before its base is stored.
    if (!due && !m_retryAt && awaitsBase())
        return Clock::time_point::min();
    const bool isEnded = due == Clock::time_point::min();
    if (isEnded && !m_stream->isDiscarded() && (m_retryAt || m_storing != nullptr))
        return m_retryAt;
    if (due && m_retryAt)
        return std::min(*due, *m_retryAt);
    return due ? due : m_retryAt;
}

bool JournalOutput::isClean() const {
    return m_isFinished || (m_backlog.empty() && !m_awaitsWhole && m_wholeFile < 0 && !isCopyingBase());
}

void JournalOutput::write() {
    if (m_isFinished)
        return;
    if (m_stream->isDiscarded())
        return end();
    const bool isReleased = m_stream->isReleased();
    takeBatch();
    if (m_wholeFile >= 0 && m_storing == nullptr && Clock::now() >= m_bytesDue)
        storeBytes();
    setRetry(writeBacklog());
    if (!m_backlog.empty() || m_wholeFile >= 0)
        return;
    if (awaitsBase())
        storeBase();
    if (isReleased && m_storing == nullptr)
        m_isFinished = true;
}

/// Nothing of it is to be found again.
void JournalOutput::end() {
    dropCopy();
    m_isRemoved = m_file != nullptr;
    if (m_file != nullptr && m_isPublished)
        m_file->remove();
    else if (m_file != nullptr)
        m_file->giveUp();
    m_file.reset();
    m_isFinished = true;
}

void JournalOutput::takeBatch() {
    if (const int handle = m_stream->takeWholeFile(); handle >= 0) {
        if (m_wholeFile >= 0)
            ::close(m_wholeFile);
        m_wholeFile = handle;
    }
    JournalBatch batch = m_stream->take();
    if (batch.isEmpty())
        return;
    if (m_wholeFile >= 0)
        return takeWhole(batch);
    if (batch.isWhole) {
        m_backlog.clear();
        m_awaitsWhole = false;
        dropCopy();
        m_isBaseSettled = true;
    }
    if (m_awaitsWhole)
        return;
    m_backlog.push_back(std::move(batch));
}

/// The bytes that are about to be copied have these edits in them. While they are copied, nobody knows.
void JournalOutput::takeWhole(const JournalBatch& batch) {
    if (isStoringBytes())
        m_sinceBytes.push_back(asOverwrites(batch));
}

void JournalOutput::setRetry(bool isWritten) {
    m_retryAt.reset();
    if (!isWritten)
        m_retryAt = Clock::now() + m_limits.whileEditing;
    else if (m_wholeFile >= 0 && m_storing == nullptr)
        m_retryAt = m_bytesDue;
}

bool JournalOutput::writeBacklog() {
    if (m_backlog.empty())
        return true;
    if (m_file != nullptr && m_isPublished && m_file->isGone() && noteGone())
        return true;
    if ((m_file == nullptr && !makeFile()) || !append())
        return false;
    noteWritten();
    checkFile();
    if (isTooLong())
        compact();
    return true;
}

bool JournalOutput::makeFile() {
    m_file = JournalFile::create(m_calls, m_folder);
    m_isPublished = false;
    if (m_file == nullptr)
        return false;
    const std::string head = payloadOf(m_base);
    JournalEnd end{sizeof Magic, FirstSeed};
    if (!writeExactly(m_calls, m_file->handle(), {Magic, sizeof Magic}, 0) &&
        !writeFrame(m_calls, m_file->handle(), end, HeadTag, m_stream->time(), {&head, 1})) {
        m_file->end = end;
        return true;
    }
    m_file->giveUp();
    m_file.reset();
    return false;
}

/// After an error everything behind the old end is written again: what the system could not flush may be lost.
bool JournalOutput::append() {
    JournalEnd end = m_file->end;
    const int handle = m_file->handle();
    const bool isWritten = std::none_of(m_backlog.begin(), m_backlog.end(), [&](const JournalBatch& batch) {
        return bool(writeFrame(m_calls, handle, end, EntriesTag, batch.time, batch.parts));
    });
    const bool isFlushed =
        isWritten && (m_isPublished ? uninterrupted([&] { return m_calls.fsync(handle); }) == 0 : m_file->publish());
    if (isFlushed) {
        m_isPublished = true;
        m_file->end = end;
        return true;
    }
    if (m_isPublished)
        uninterrupted([&] { return m_calls.ftruncate(handle, m_file->end.offset); });
    else
        giveUpFile();
    return false;
}

/// Before it has its name. A copy of the bytes that was made for it bears its name, and is made again for the next one.
void JournalOutput::giveUpFile() {
    const bool hasCopy = m_stored && m_stored->hasCopy;
    if (hasCopy)
        m_file->removeBase(m_stored->number);
    m_file->giveUp();
    m_file.reset();
    if (!hasCopy)
        return;
    m_stored.reset();
    m_backlog.clear();
    m_awaitsWhole = true;
    m_stream->askForWhole();
}

void JournalOutput::noteWritten() {
    m_stream->noteWritten();
    for (const JournalBatch& batch : m_backlog) {
        m_textLength = batch.isWhole ? batch.growth : m_textLength + batch.growth;
        if (!batch.isWhole)
            continue;
        m_wholeLength = batch.growth;
        m_hasWhole = true;
        if (m_stored && m_stored->hasCopy)
            m_file->removeBase(m_stored->number);
        m_stored.reset();
    }
    m_backlog.clear();
    reportDependence();
}

/// Somebody removed the file: without what was in it, edits are of no use. Contents that are whole go into a new one.
bool JournalOutput::noteGone() {
    dropCopy();
    m_isBaseSettled = true;
    m_file.reset();
    m_isPublished = false;
    m_stored.reset();
    m_wholeLength = 0;
    m_hasWhole = false;
    if (m_backlog.front().isWhole)
        return false;
    m_backlog.clear();
    m_awaitsWhole = true;
    m_stream->askForWhole();
    return true;
}

/// Whether the edits are of no use when the file is changed.
bool JournalOutput::dependsOnFile() const {
    return m_base.state && !m_hasWhole && (!m_stored || !m_stored->hasCopy);
}

/// A whole that waits to be written counts when it is written.
void JournalOutput::reportDependence() {
    m_stream->setDependsOnFile(dependsOnFile());
}

/// Whether there is a copy of the base, or will never be one.
bool JournalOutput::isBaseKnown() const {
    return m_storing != nullptr ? m_storing->isOnlyRead() : m_isBaseSettled;
}

bool JournalOutput::start(BaseStoring::Of of, std::unique_ptr<BaseCopy> copy, quint64 device) {
    m_storing = std::make_shared<BaseStoring>(of, std::move(copy), [stream = m_stream] { stream->wake(); });
    const bool isStarted = m_threads.start(device, [storing = m_storing] { storing->run(); });
    if (!isStarted)
        m_storing.reset();
    return isStarted;
}

void JournalOutput::storeBase() {
    auto copy = std::make_unique<BaseCopy>(m_calls, m_base.path, *m_base.state, m_file->basePath(++m_baseNumber),
                                           m_limits.copied);
    // Otherwise the file is the base as long as it is as it was.
    if (!start(BaseStoring::Of::File, std::move(copy), m_base.state->device))
        m_isBaseSettled = true;
}

void JournalOutput::storeBytes() {
    m_sinceBytes.clear();
    if (!startBytes())
        putOffBytes();
}

bool JournalOutput::startBytes() {
    const std::optional<FileState> state = FileState::of(m_wholeFile);
    if (!state || (m_file == nullptr && !makeFile()))
        return false;
    auto copy =
        std::make_unique<BaseCopy>(m_calls, ::fcntl(m_wholeFile, F_DUPFD_CLOEXEC, 0), m_file->basePath(++m_baseNumber));
    return start(BaseStoring::Of::Bytes, std::move(copy), state->device);
}

/// A disk that is full now is so for a while, and a copy may be of gigabytes.
void JournalOutput::putOffBytes() {
    m_bytesDue = Clock::now() + m_bytesDelay.next();
    m_retryAt = m_bytesDue;
}

void JournalOutput::takeFindings() {
    if (m_storing != nullptr && m_storing->outcome()) {
        // Of the edits that wait it is not known either whether they are in a copy of the bytes.
        if (isStoringBytes())
            takeBatch();
        const std::shared_ptr<BaseStoring> storing = std::exchange(m_storing, nullptr);
        if (storing->of() == BaseStoring::Of::File)
            takeBase(*storing);
        else
            takeBytes(*storing);
    }
    if (m_isCheckPending == nullptr || *m_isCheckPending)
        return;
    m_isCheckPending.reset();
    if (std::exchange(m_isCheckedAgain, false))
        checkFile();
}

void JournalOutput::takeBase(BaseStoring& storing) {
    m_isBaseSettled = true;
    if (storing.outcome() == BaseCopy::Progress::Done)
        noteBase(storing.result(), false);
    else
        m_stream->askForWhole();
    write();
}

/// Edits that came meanwhile may be in the copy or not: they are repeated on it.
void JournalOutput::takeBytes(BaseStoring& storing) {
    m_backlog.clear();
    if (storing.outcome() != BaseCopy::Progress::Done || !noteBase(storing.result(), true)) {
        putOffBytes();
        return storing.cancel();
    }
    m_bytesDelay.reset();
    m_awaitsWhole = false;
    m_isBaseSettled = true;
    ::close(std::exchange(m_wholeFile, -1));
    write();
}

/// The name of the copy is on the disk before the journal says so. False: it is not, and nothing has changed.
bool JournalOutput::noteBase(const StoredBase& base, bool replaces) {
    if (base.hasCopy && !m_file->flushFolder())
        return false;
    const std::optional<StoredBase> before = std::exchange(m_stored, base);
    m_stored->number = m_baseNumber;
    m_stored->replaces = replaces;
    JournalEntry entry;
    entry.kind = EntryKind::Base;
    entry.base = *m_stored;
    JournalBatch batch;
    appendEntry(batch.parts.emplace_back(), entry);
    batch.time = m_stream->time();
    m_backlog.push_back(std::move(batch));
    std::ranges::move(std::exchange(m_sinceBytes, {}), std::back_inserter(m_backlog));
    if (before && before->hasCopy && before->number != m_stored->number && writeBacklog())
        m_file->removeBase(before->number);
    return true;
}

void JournalOutput::leaveOut() {
    if (m_storing == nullptr || !m_storing->isOnlyRead())
        return;
    dropCopy();
    m_isBaseSettled = true;
}

void JournalOutput::checkFile() {
    if (!dependsOnFile() || !isBaseKnown())
        return;
    m_isCheckedAgain = m_isCheckPending != nullptr;
    if (m_isCheckedAgain)
        return;
    m_isCheckPending = std::make_shared<std::atomic<bool>>(true);
    const auto check = [path = m_base.path, before = *m_base.state, stream = m_stream, pending = m_isCheckPending] {
        if (!before.isStillAt(path))
            stream->askForWhole();
        *pending = false;
        stream->wake();
    };
    if (!m_threads.start(m_base.state->device, check))
        m_isCheckPending.reset();
}

/// The entries of a hex document are its undo log too.
bool JournalOutput::isTooLong() const {
    const qint64 entries = m_file->end.offset - m_wholeLength;
    return m_base.view == JournalBase::View::Text && entries > std::max(m_compactFrom, m_textLength);
}

/// Replays the journal, and puts one in its place that begins with the result. Its base is read for that: one without a
/// copy could take for ever, so that the document is asked for its text instead.
void JournalOutput::compact() {
    if (!isBaseKnown())
        return;
    if (dependsOnFile())
        return m_stream->askForWhole();
    bool isDone = false;
    try {
        isDone = tryToCompact();
    } catch (const std::bad_alloc&) {
        // It stays as long as it is.
    }
    // Otherwise it would be tried again with each batch.
    m_compactFrom = isDone ? m_limits.compacted : 2 * m_file->end.offset;
}

bool JournalOutput::tryToCompact() {
    RestoredJournal restored(m_calls, m_file->handle(), m_file->stemPath());
    const bool isRestored = restored.readHead() == JournalContents::Reading::Done &&
                            restored.replay() == JournalOutcome::Restored && !restored.isPartial();
    std::unique_ptr<JournalFile> target = isRestored ? JournalFile::createFor(*m_file) : nullptr;
    if (target == nullptr)
        return false;
    const ReplayedText& text = restored.text();
    if (!writeCompacted(*target, text)) {
        target->giveUp();
        return false;
    }
    m_wholeLength = text.length();
    m_hasWhole = true;
    m_textLength = text.length();
    dropCopy();
    m_isBaseSettled = true;
    m_file = std::move(target);
    if (m_stored && m_stored->hasCopy)
        m_file->removeBase(m_stored->number);
    m_stored.reset();
    return true;
}

void JournalOutput::dropCopy() {
    if (m_storing != nullptr)
        m_storing->cancel();
    m_storing.reset();
}

bool JournalOutput::writeCompacted(JournalFile& target, const ReplayedText& text) {
    const std::string head = payloadOf(m_base);
    JournalEntry whole;
    whole.kind = EntryKind::Whole;
    whole.length = text.length();
    std::vector<std::string> parts(1);
    appendEntry(parts.front(), whole);
    parts.push_back(joined(text.pieces(), text.length()));
    const qint64 time = m_stream->time();
    JournalEnd end{sizeof Magic, FirstSeed};
    if (writeExactly(m_calls, target.handle(), {Magic, sizeof Magic}, 0) ||
        writeFrame(m_calls, target.handle(), end, HeadTag, time, {&head, 1}) ||
        writeFrame(m_calls, target.handle(), end, EntriesTag, time, parts) || !target.publish())
        return false;
    target.end = end;
    return true;
}
