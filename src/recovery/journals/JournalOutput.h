#pragma once

#include "recovery/journals/BaseStoring.h"
#include "recovery/journals/JournalBase.h"
#include "recovery/journals/JournalFile.h"
#include "recovery/journals/JournalLimits.h"
#include "recovery/journals/JournalStream.h"
#include "recovery/journals/RetryDelay.h"

#include <atomic>
#include <memory>
#include <optional>
#include <vector>

class BaseThreads;
class ReplayedText;

/// Writes one journal: creates its file, appends what its stream has, has its base stored and compacts it. Owned and
/// used by the thread that writes. What cannot be written stays here and is tried again. The file of the document is
/// never waited for: all work on it is done by BaseThreads. Sizes are bytes.
class JournalOutput {
 public:
    using Clock = JournalStream::Clock;

    /// A journal that is continued where an earlier process left it.
    struct Continued {
        std::unique_ptr<JournalFile> file;
        std::optional<StoredBase> base;
        qint64 textLength = 0;
        bool hasWhole = false;   ///< base and file do not count any more
        bool isPartial = false;  ///< its last entries do not fit: nothing is appended but the whole contents
    };

    /// The threads outlive this object.
    JournalOutput(FileSystemCalls& calls, BaseThreads& threads, QString folder, const JournalLimits& limits,
                  JournalBase base, std::shared_ptr<JournalStream> stream);
    JournalOutput(FileSystemCalls& calls, BaseThreads& threads, const JournalLimits& limits, JournalBase base,
                  std::shared_ptr<JournalStream> stream, Continued continued);
    ~JournalOutput();
    Q_DISABLE_COPY_MOVE(JournalOutput)

    /// When write() is to be called; nothing: when the stream has something new.
    std::optional<Clock::time_point> dueAt() const;
    void write();
    /// What failed is tried again by the next write(), and not only when it is due.
    void tryAgain() { m_bytesDue = {}; }
    /// Takes over what the threads have found out by now.
    void takeFindings();
    /// Whether a copy of the base is being made, without which a changed file could not be made good.
    bool isCopyingBase() const { return m_storing != nullptr && !m_storing->isOnlyRead(); }
    /// Whether it is being found out if the file has been changed.
    bool isCheckingFile() const { return m_isCheckPending != nullptr; }
    /// The process ends: what only saves time later is left out.
    void leaveOut();
    /// Whether everything is on the disk that was ever added.
    bool isClean() const;
    /// Whether its file is to be removed, by write().
    bool isGivenUp() const { return !m_isFinished && m_stream->isDiscarded(); }
    /// Whether nothing is left to be done for it, ever.
    bool isFinished() const { return m_isFinished; }
    /// Whether its file was removed, which the folder has to be flushed for.
    bool isRemoved() const { return m_isRemoved; }

 private:
    void end();
    void takeBatch();
    void takeWhole(const JournalBatch& batch);
    bool writeBacklog();
    void setRetry(bool isWritten);
    bool makeFile();
    bool append();
    void giveUpFile();
    void noteWritten();
    bool noteGone();
    bool awaitsBase() const { return m_isPublished && !m_isBaseSettled && m_storing == nullptr; }
    bool dependsOnFile() const;
    void reportDependence();
    bool isBaseKnown() const;
    void storeBase();
    void storeBytes();
    bool startBytes();
    void putOffBytes();
    bool isStoringBytes() const { return m_storing != nullptr && m_storing->of() == BaseStoring::Of::Bytes; }
    bool start(BaseStoring::Of of, std::unique_ptr<BaseCopy> copy, quint64 device);
    void takeBase(BaseStoring& storing);
    void takeBytes(BaseStoring& storing);
    bool noteBase(const StoredBase& base, bool replaces);
    void checkFile();
    bool isTooLong() const;
    void compact();
    bool tryToCompact();
    void dropCopy();
    bool writeCompacted(JournalFile& target, const ReplayedText& text);

    FileSystemCalls& m_calls;
    BaseThreads& m_threads;
    QString m_folder;
    const JournalLimits m_limits;
    JournalBase m_base;
    std::shared_ptr<JournalStream> m_stream;
    std::unique_ptr<JournalFile> m_file;
    bool m_isPublished = false;
    std::vector<JournalBatch> m_backlog;
    std::optional<Clock::time_point> m_retryAt;
    bool m_awaitsWhole = false;  ///< what was written is of no use, and nothing else is appended

    std::shared_ptr<BaseStoring> m_storing;  ///< what is being stored
    std::optional<StoredBase> m_stored;
    bool m_isBaseSettled = false;
    qint64 m_baseNumber;  ///< of the copy that was begun last
    int m_wholeFile = -1;
    std::vector<JournalBatch> m_sinceBytes;  ///< edits since the copy of the bytes was begun
    RetryDelay m_bytesDelay;
    Clock::time_point m_bytesDue;                         ///< when the bytes may be copied
    std::shared_ptr<std::atomic<bool>> m_isCheckPending;  ///< null: nobody looks at the file
    bool m_isCheckedAgain = false;

    qint64 m_textLength = 0;
    bool m_hasWhole = false;
    qint64 m_wholeLength = 0;  ///< of the contents in the journal itself
    qint64 m_compactFrom;
    bool m_isFinished = false;
    bool m_isRemoved = false;
};
