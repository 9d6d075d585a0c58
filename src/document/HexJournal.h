#pragma once

#include "document/RecoveryOutcome.h"
#include "hex/bytes/HexEditObserver.h"
#include "recovery/journals/JournalBase.h"

#include <QByteArray>
#include <QObject>

#include <memory>
#include <optional>
#include <vector>

class FoundJournal;
class Journal;
class Journals;
class ucHex;

/// Keeps the changes of the bytes of one hex view in a journal: from the first one after a load or a save until they
/// are saved or given up. Replacements and fills count too, although the view does not count them as modified. Owned by
/// the document; destroyed, it leaves the journal for the next start. It never waits for the disk.
///
/// The journal has what makes the bytes again, the marks of typed bytes, and the undo log as far as it began with the
/// last load or save.
class HexJournal : public HexEditObserver {
 public:
    /// Without journals nothing is kept. Journals and view outlive this object.
    HexJournal(Journals* journals, ucHex& view);
    ~HexJournal() override;
    Q_DISABLE_COPY_MOVE(HexJournal)

    /// The view has loaded this file, whose state was that when it was opened; what was kept before is given up.
    void begin(const QString& path, const std::optional<FileState>& state);
    /// To be called around each save of the view. If it succeeded and had something to write, the file has the bytes
    /// that the view had when the save began; those that were changed since stay in a journal.
    void beginSave();
    void endSave(bool isSaved, const QString& path);
    /// The changes are saved or given up: the journal is removed.
    void discard();
    /// The changes leave the view without having been saved or given up: the journal stays for the next start.
    void leave();
    /// The document's file may have been changed on the disk, or no further change follows: a journal whose edits are
    /// of no use without the file gets all bytes.
    void noteFileChange();

    /// Shows the bytes of a journal that was restored, and goes on with that journal. Otherwise the journal is left as
    /// it was, and the view is closed. Runs the event loop (yields); the view and this object may be destroyed
    /// meanwhile: Failed then.
    RecoveryOutcome bringBack(FoundJournal& found);
    /// From now on the journal holds all bytes, and needs no file to start from. After bringBack().
    void keepWhole();

    void unloaded() override;
    void halfTyped(FilePosition page, HexCell cell, quint8 byte) override;
    void typed(FilePosition page, HexCell cell, quint8 byte) override;
    void tookBack(const HexUndoEntry& entry) override;
    void wrote(FilePosition at, std::string_view bytes) override;
    void filled(const HexBlock& block, quint8 byte) override;

 private:
    /// A byte that has only its first digit yet, as it is in the journal.
    struct Half {
        FilePosition page;
        HexCell cell;
        quint8 byte;
    };
    /// A change made while a save ran: bytes, or the number of equal ones.
    struct Change {
        FilePosition at;
        QByteArray bytes;
        qint64 count = 0;
    };

    Journal& journal();
    void followNeeds();
    void drop();
    void reset();
    void type(FilePosition page, HexCell cell, quint8 byte);
    void write(FilePosition at, std::string_view bytes);
    void cancelHalf();
    bool wouldUnmark(const Half& half) const;
    void note(FilePosition at, std::string_view bytes, qint64 count);
    void repeat(const Change& change);
    void keepWholeIfNeeded();

    Journals* m_journals;
    ucHex& m_view;
    JournalBase m_base;
    QObject m_looks;  ///< in whose thread a journal is looked at that needs the bytes; outlives the journals
    std::unique_ptr<Journal> m_journal;
    std::unique_ptr<Journal> m_unloaded;  ///< of bytes that the view does not hold any more
    std::optional<Half> m_half;
    std::vector<Change> m_sinceSave;
    int m_undoable = 0;        ///< entries that the undo log has when the journal is replayed
    bool m_isUndoKept = true;  ///< false: the journal began with the bytes of the view, so that undo is kept as bytes
    bool m_isBegun = false;    ///< the view holds the bytes of m_base, but for what the journal has
    bool m_isSaving = false;
};
