#include "recovery/journals/FoundJournal.h"

#include "platform/Paths.h"
#include "recovery/journals/HexEntryVisitor.h"
#include "recovery/journals/Journal.h"
#include "recovery/journals/JournalFile.h"
#include "recovery/journals/JournalThread.h"
#include "recovery/journals/PassedJournals.h"
#include "recovery/journals/RestoredJournal.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <new>
#include <utility>

namespace {

constexpr mode_t FileMode = 0600;
/// Small pieces are collected into parts of this size.
constexpr std::size_t PartSize = 1'048'576;

QByteArray nameOf(const QString& path) {
    return localName(path).value_or(QByteArray());
}

bool isEmptyFile(FileSystemCalls& calls, int handle) {
    struct stat status {};
    return calls.fstat(handle, &status) == 0 && status.st_size == 0;
}

SystemError writePieces(FileSystemCalls& calls, int handle, const std::vector<std::string_view>& pieces,
                        qint64& length) {
    std::string part;
    length = 0;
    SystemError error;
    const auto writeOut = [&](std::string_view bytes) {
        if (!error)
            error = writeExactly(calls, handle, bytes, length);
        length += static_cast<qint64>(bytes.size());
    };
    for (const std::string_view piece : pieces) {
        if (part.size() + piece.size() > PartSize) {
            writeOut(part);
            part.clear();
        }
        if (piece.size() >= PartSize)
            writeOut(piece);
        else
            part += piece;
    }
    writeOut(part);
    return error;
}

}  // namespace

std::unique_ptr<FoundJournal> FoundJournal::take(const std::shared_ptr<JournalThread>& thread, const QString& folder,
                                                 const QString& name, PassedJournals& passed) {
    FileSystemCalls& calls = thread->calls();
    JournalFile::Opening opening = JournalFile::Opening::Missing;
    std::unique_ptr<JournalFile> file = JournalFile::open(calls, folder, name, opening);
    if (file == nullptr)
        return nullptr;
    auto content = std::make_unique<RestoredJournal>(calls, file->handle(), file->stemPath());
    const JournalContents::Reading reading = content->readHead();
    if (reading == JournalContents::Reading::Done)
        return std::unique_ptr<FoundJournal>(new FoundJournal(thread, std::move(file), std::move(content)));
    passed.ofAnother += reading == JournalContents::Reading::OfAnother ? 1 : 0;
    // One that could not be removed was emptied instead.
    if (reading == JournalContents::Reading::Damaged && isEmptyFile(calls, file->handle()))
        file->remove();
    else if (reading == JournalContents::Reading::Damaged && file->setAside())
        ++passed.damaged;
    return nullptr;
}

FoundJournal::FoundJournal(std::shared_ptr<JournalThread> thread, std::unique_ptr<JournalFile> file,
                           std::unique_ptr<RestoredJournal> content)
    : m_thread(std::move(thread)), m_file(std::move(file)), m_content(std::move(content)) {}

FoundJournal::~FoundJournal() {
    if (!m_textPath.isEmpty())
        m_thread->calls().unlink(nameOf(m_textPath).constData());
}

const JournalBase& FoundJournal::base() const {
    return m_content->base();
}

/// A text may be too large for the memory that is left.
FoundJournal::Outcome FoundJournal::restore() {
    try {
        return restoreAll();
    } catch (const std::bad_alloc&) {
        m_content->forgetText();
        return Outcome::Failed;
    }
}

FoundJournal::Outcome FoundJournal::restoreAll() {
    Outcome outcome = m_content->restore();
    m_isSameAsFile = outcome == Outcome::SameAsFile;
    m_file->end = m_content->contents().end();
    if (outcome == Outcome::Restored) {
        const auto& stored = m_content->contents().storedBase();
        m_file->removeLeftovers(stored && stored->hasCopy ? stored->number : -1);
        if (base().view == JournalBase::View::Text)
            outcome = writeText();
    }
    m_content->forgetText();
    return outcome;
}

FoundJournal::Outcome FoundJournal::writeText() {
    FileSystemCalls& calls = m_thread->calls();
    const QString path = m_file->textPath();
    const int handle =
        calls.open(nameOf(path).constData(), O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, FileMode);
    if (handle < 0)
        return Outcome::Failed;
    m_textPath = path;
    const SystemError error = writePieces(calls, handle, m_content->text().pieces(), m_textLength);
    calls.close(handle);
    return error ? Outcome::Failed : Outcome::Restored;
}

QDateTime FoundJournal::time() const {
    return QDateTime::fromMSecsSinceEpoch(m_content->contents().time());
}

FoundJournal::File FoundJournal::file() const {
    return m_content->file();
}

bool FoundJournal::isSameAsFile() const {
    return m_isSameAsFile;
}

QString FoundJournal::textPath() const {
    return m_textPath;
}

QString FoundJournal::basePath() const {
    return m_content->basePath();
}

bool FoundJournal::isBaseUnchanged() const {
    return m_content->isBaseUnchanged();
}

bool FoundJournal::visit(HexEntryVisitor& visitor) const {
    return m_content->visit(visitor);
}

std::unique_ptr<Journal> FoundJournal::continueAs() {
    const JournalContents& contents = m_content->contents();
    JournalOutput::Continued continued;
    continued.base = contents.storedBase();
    continued.textLength = m_textLength;
    continued.hasWhole = contents.hasWhole();
    continued.isPartial = m_content->isPartial();
    continued.file = std::move(m_file);
    return m_thread->goOn(contents.base(), std::move(continued), contents.time());
}

bool FoundJournal::discard() {
    const bool isDone = m_file != nullptr && m_file->remove();
    if (isDone)
        m_file->flushFolder();
    return isDone;
}

bool FoundJournal::setAside() {
    return m_file != nullptr && m_file->setAside() && m_file->flushFolder();
}
