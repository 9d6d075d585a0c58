#pragma once

#include "platform/FileSystemCalls.h"
#include "recovery/journals/JournalLimits.h"

#include <QDateTime>
#include <QString>

#include <chrono>
#include <memory>
#include <vector>

class FoundJournal;
class Journal;
class JournalThread;
struct PassedJournals;
struct JournalBase;

/// The journals of unsaved changes of this process, the thread that writes them, and those that earlier processes left
/// in their folder. Owned by main(), outlives all documents; used in the thread of the window. Does not run the event
/// loop.
///
/// Neither thread nor folder is made before the first journal begins. A document is never disturbed for want of one: on
/// a disk that is full or cannot be written everything stays in memory and is tried again.
class Journals {
 public:
    using Limits = JournalLimits;

    /// `folder`: where journals are; created accessible to this user only.
    explicit Journals(QString folder = journalFolder(), FileSystemCalls& calls = FileSystemCalls::system());
    Journals(QString folder, FileSystemCalls& calls, Limits limits);
    /// Waits until everything is written or could not be, for some seconds at most.
    ~Journals();
    Q_DISABLE_COPY_MOVE(Journals)

    static QString journalFolder();

    /// The journal of a document that is about to be changed for the first time. Never null.
    std::unique_ptr<Journal> begin(JournalBase base);

    /// The journals that no living process owns, the oldest first; from now on this process owns them. Those with a
    /// damaged head are set aside, those of another version of the program stay; both are counted. Those of other
    /// users, links and other kinds of files are passed over. Without any it costs one look-up.
    std::vector<std::unique_ptr<FoundJournal>> takeAbandoned();
    std::vector<std::unique_ptr<FoundJournal>> takeAbandoned(PassedJournals& passed);

    /// Removes what was set aside long ago: see oldAsides().
    void removeOldAsides(const QDateTime& now = QDateTime::currentDateTime());

    /// Writes what is in memory at once, and waits at most so long. Returns whether all of it is on the disk, copies of
    /// bases included, and it was found out whether a file without a copy was changed; a base that is only read for its
    /// checksum is not waited for.
    bool flush(std::chrono::milliseconds limit);

 private:
    QString m_folder;
    FileSystemCalls& m_calls;
    std::shared_ptr<JournalThread> m_thread;
};
