#pragma once

#include "editor/held/EditObserver.h"
#include "recovery/journals/JournalBase.h"

#include <QObject>
#include <QString>
#include <QTimer>

#include <functional>
#include <memory>
#include <optional>

class FoundJournal;
class Journal;
class Journals;
class TextControl;
class TextCopy;

/// Keeps the unsaved changes of a document's text in a journal: it begins with the first edit after a load or save and
/// ends with the next one. Owned by the document, used in the thread of the window; destroyed before the control. No
/// function waits for the disk or runs the event loop.
///
/// When the journal needs the whole text, that is copied in parts by a timer, so that no key waits for a large one.
///
/// Destroyed while there is a journal, it leaves it for the next start.
class DocumentJournal : private EditObserver {
 public:
    /// By which names the journal is found again.
    struct About {
        QString caption;
        QString language;
    };
    /// Nothing: the text is not what a save would write, so its edits need no journal.
    using Describe = std::function<std::optional<About>()>;

    /// Both outlive this object.
    DocumentJournal(TextControl& control, Journals& journals, Describe describe);
    ~DocumentJournal() override;
    Q_DISABLE_COPY_MOVE(DocumentJournal)

    /// The changes made so far are not to come back, although the control still holds them.
    void giveUp();
    /// The changes leave the control without having been saved or given up: the journal stays for the next start.
    void leave();
    /// The control now holds what was found, whose journal is continued. After a successful FoundJournal::restore().
    void goOn(FoundJournal& found);
    /// The document's file has been changed on the disk. A journal whose edits are of no use without it gets the whole
    /// text, part by part.
    void noteFileChange();
    /// No further edit follows. The same as noteFileChange() if the file was changed, but at once.
    void complete();
    /// From now on the journal gets the whole text, part by part, and then needs no file to start from. After goOn().
    void keepWhole() { beginCopy(); }

 private:
    void aboutToEdit() override;
    void inserted(qint64 at, std::string_view bytes) override;
    void removed(qint64 at, qint64 length) override;
    void loaded() override;
    void saved() override;

    void begin();
    void beginWith(JournalBase base);
    void end();
    void followNeeds();
    void look();
    bool isBaseLost() const;
    void beginCopy();
    void copyPart();
    void endCopy();
    void passCopy();

    TextControl& m_control;
    Journals& m_journals;
    Describe m_describe;
    QObject m_looks;  ///< in whose thread the journal is looked at when it needs the whole text; outlives the journal
    std::unique_ptr<Journal> m_journal;
    /// The text is the one that was loaded or saved, but for what the journal holds.
    bool m_isBaseHeld = true;
    std::unique_ptr<TextCopy> m_copy;  ///< null: the journal needs none
    JournalBase m_baseOfCopy;          ///< of the journal that begins once the text is copied
    QTimer m_parts;
};
