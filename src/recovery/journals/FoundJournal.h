#pragma once

#include "recovery/journals/JournalBase.h"
#include "recovery/journals/JournalOutcome.h"

#include <QDateTime>
#include <QString>

#include <memory>

class HexEntryVisitor;
class Journal;
class JournalFile;
class JournalThread;
class RestoredJournal;
struct PassedJournals;

/// A journal that an earlier process left, with what it holds. Owned by the code that brings it back; it is locked as
/// long as this object or the journal made by continueAs() exists. Made by Journals::takeAbandoned().
///
/// Only restore() does work that takes long. It may run in any thread; nothing else is called meanwhile. Everything but
/// base() is valid after it alone. Destroyed without anything else, the journal stays for the next start.
class FoundJournal {
 public:
    using File = JournalFileNow;
    using Outcome = JournalOutcome;

    /// Null: it belongs to a living process, is none of this user's own, or was counted in `passed`. `name` is that of
    /// the file in the folder.
    static std::unique_ptr<FoundJournal> take(const std::shared_ptr<JournalThread>& thread, const QString& folder,
                                              const QString& name, PassedJournals& passed);
    ~FoundJournal();
    Q_DISABLE_COPY_MOVE(FoundJournal)

    const JournalBase& base() const;

    Outcome restore();

    /// Of the last edit.
    QDateTime time() const;
    File file() const;
    bool isSameAsFile() const;

    /// A file with the recovered text in UTF-8, without a mark; private, and removed with this object. For
    /// texts only.
    QString textPath() const;
    /// A file with the bytes from which the entries of a hex document start: a copy, or the document's file itself,
    /// whose bytes were compared with the recorded checksum. Empty: the document was empty.
    QString basePath() const;
    /// Whether the file at basePath() has not been changed since restore(): ask it when it was read.
    bool isBaseUnchanged() const;
    /// Passes the edits of a hex document to the visitor. False: the visitor ended it early.
    bool visit(HexEntryVisitor& visitor) const;

    /// Goes on as the journal of the document that now holds what was recovered. Call it once, after a successful
    /// restore(). textPath() stays valid.
    std::unique_ptr<Journal> continueAs();

    /// Removes the journal from the disk. False: it could not be removed.
    bool discard();
    /// Renames it, so that no start takes it any more, for quillmark-recover.
    bool setAside();

 private:
    FoundJournal(std::shared_ptr<JournalThread> thread, std::unique_ptr<JournalFile> file,
                 std::unique_ptr<RestoredJournal> content);
    Outcome restoreAll();
    Outcome writeText();

    std::shared_ptr<JournalThread> m_thread;
    std::unique_ptr<JournalFile> m_file;  ///< null: somebody else has it now
    std::unique_ptr<RestoredJournal> m_content;
    QString m_textPath;  ///< empty: not written
    qint64 m_textLength = 0;
    bool m_isSameAsFile = false;
};
