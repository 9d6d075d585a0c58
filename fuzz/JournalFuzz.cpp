// Any bytes as a journal of unsaved changes: what of it is valid counts and the rest does not, no entry reaches beyond
// the text or the bytes, and memory stays in proportion to the journal.

#include "FuzzEntry.h"
#include "recovery/journals/HexEntryVisitor.h"
#include "recovery/journals/JournalFormat.h"
#include "recovery/journals/JournalHead.h"
#include "recovery/journals/RestoredJournal.h"

#include <QByteArray>

#include <sys/mman.h>
#include <unistd.h>

namespace {

using namespace JournalFormat;

/// A file in memory; closed when the object is destroyed.
class MemoryFile {
 public:
    MemoryFile() : m_handle(::memfd_create("journal", MFD_CLOEXEC)) { require(m_handle >= 0); }
    ~MemoryFile() { ::close(m_handle); }
    Q_DISABLE_COPY_MOVE(MemoryFile)
    int handle() const { return m_handle; }

 private:
    int m_handle;
};

/// Follows the undo, as the view does.
class Counter : public HexEntryVisitor {
 public:
    explicit Counter(qint64 size) : m_size(size) {}
    bool typed(qint64 page, int row, int col, quint8 /*byte*/) override {
        require(page >= 0 && row >= 0 && col >= 0);
        return true;
    }
    bool tookBack() override { return true; }
    bool overwrote(qint64 at, std::string_view bytes) override { return inside(at, qint64(bytes.size())); }
    bool filled(qint64 at, qint64 length, quint8 /*byte*/) override { return inside(at, length); }

 private:
    bool inside(qint64 at, qint64 length) const {
        require(at >= 0 && length >= 0 && at <= m_size && length <= m_size - at);
        return true;
    }
    qint64 m_size;
};

void check(int handle, qint64 size) {
    RestoredJournal journal(FileSystemCalls::system(), handle, u"/nonexistent/stem"_qs);
    if (journal.readHead() != JournalContents::Reading::Done)
        return;
    const JournalOutcome outcome = journal.restore();
    require(outcome != JournalOutcome::Failed);
    require(journal.contents().end().offset <= size);
    if (outcome == JournalOutcome::Lost)
        return;
    if (journal.base().view == JournalBase::View::Hex) {
        Counter counter(0);
        require(journal.visit(counter));
        return;
    }
    qint64 length = 0;
    for (const std::string_view piece : journal.text().pieces())
        length += qint64(piece.size());
    require(length == journal.text().length() && length <= size);
}

/// The bytes as the entries behind a right head, in right frames, so that more than the checksum is tried. The first
/// byte says of what kind the document is.
void checkFramed(QByteArrayView input) {
    const char first = input.isEmpty() ? '\0' : input.front();
    JournalBase base;
    base.view = (first & 1) != 0 ? JournalBase::View::Hex : JournalBase::View::Text;
    const std::string head = payloadOf(base);
    const std::string_view rest(input.data(), std::size_t(input.size()));
    const std::string entries[] = {std::string(rest.substr(std::min<std::size_t>(1, rest.size()), rest.size() / 2)),
                                   std::string(rest.substr(std::min(rest.size(), rest.size() / 2 + 1)))};
    const MemoryFile file;
    FileSystemCalls& calls = FileSystemCalls::system();
    JournalEnd end{sizeof Magic, FirstSeed};
    require(!writeExactly(calls, file.handle(), {Magic, sizeof Magic}, 0));
    require(!writeFrame(calls, file.handle(), end, HeadTag, 0, {&head, 1}));
    require(!writeFrame(calls, file.handle(), end, EntriesTag, 1, {&entries[0], 1}));
    require(!writeFrame(calls, file.handle(), end, EntriesTag, 2, {&entries[1], 1}));
    check(file.handle(), end.offset);
}

/// The bytes as the head.
void checkHead(QByteArrayView input) {
    const auto base = baseOf({input.data(), std::size_t(input.size())});
    if (base)
        require(baseOf(payloadOf(*base)).has_value());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const QByteArrayView input = viewOf(data, size);
    const MemoryFile file;
    const std::string_view bytes(input.data(), std::size_t(input.size()));
    require(!writeExactly(FileSystemCalls::system(), file.handle(), bytes, 0));
    check(file.handle(), qint64(size));
    checkFramed(input);
    checkHead(input);
    return 0;
}
