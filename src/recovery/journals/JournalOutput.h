#pragma once

#include "recovery/journals/BaseCopy.h"
#include "recovery/journals/JournalBase.h"
#include "recovery/journals/JournalFile.h"
#include "recovery/journals/JournalLimits.h"
#include "recovery/journals/JournalStream.h"

#include <memory>
#include <optional>
#include <vector>

class ReplayedText;

/// Writes one journal: creates its file, appends what its stream has, stores its base and compacts it. Owned and used
/// by the thread that writes. What cannot be written stays here and is tried again. Sizes are bytes.
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

    JournalOutput(FileSystemCalls& calls, QString folder, const JournalLimits& limits, JournalBase base,
                  std::shared_ptr<JournalStream> stream);
    JournalOutput(FileSystemCalls& calls, const JournalLimits& limits, JournalBase base,
                  std::shared_ptr<JournalStream> stream, Continued continued);
    ~JournalOutput();
    Q_DISABLE_COPY_MOVE(JournalOutput)

    /// When write() is to be called; nothing: when the stream has something new.
    std::optional<Clock::time_point> dueAt() const;
    void write();
    /// Whether a base is being stored, which step() does part by part.
    bool isStoringBase() const { return m_copy != nullptr; }
    void step();
    /// Whether a copy of it is being made, without which a changed file could not be made good.
    bool isCopyingBase() const { return m_copy != nullptr && !m_copy->isOnlyRead(); }
    /// The process ends: what only saves time later is left out.
    void leaveOut();
    /// Whether everything is on the disk that was ever added.
    bool isClean() const;
    /// Whether nothing is left to be done for it, ever.
    bool isFinished() const { return m_isFinished; }
    /// Whether its file was removed, which the folder has to be flushed for.
    bool isRemoved() const { return m_isRemoved; }

 private:
    void end();
    void takeBatch();
    bool writeBacklog();
    bool makeFile();
    bool append();
    void noteWritten();
    bool noteGone();
    bool awaitsBase() const { return m_isPublished && !m_isBaseSettled && m_copy == nullptr; }
    void beginBase();
    void copyWhole();
    void noteBase(const StoredBase& base);
    void checkFile();
    bool isTooLong() const;
    void compact();
    bool tryToCompact();
    void dropCopy();
    bool writeCompacted(JournalFile& target, const ReplayedText& text);

    FileSystemCalls& m_calls;
    QString m_folder;
    const JournalLimits m_limits;
    JournalBase m_base;
    std::shared_ptr<JournalStream> m_stream;
    std::unique_ptr<JournalFile> m_file;
    bool m_isPublished = false;
    std::vector<JournalBatch> m_backlog;
    std::optional<Clock::time_point> m_retryAt;
    bool m_awaitsWhole = false;  ///< what was written is of no use, and nothing else is appended

    std::unique_ptr<BaseCopy> m_copy;
    std::optional<StoredBase> m_stored;
    bool m_isBaseSettled = false;
    qint64 m_baseNumber = 0;
    int m_wholeFile = -1;
    quint64 m_editsCopied = 0;

    qint64 m_textLength = 0;
    qint64 m_wholeLength = 0;  ///< of the contents in the journal itself
    qint64 m_compactFrom;
    bool m_isFinished = false;
    bool m_isRemoved = false;
};
