#pragma once

#include "document/RecoveryOutcome.h"
#include "recovery/journals/JournalOutcome.h"

#include <QObject>
#include <QString>

#include <deque>
#include <functional>
#include <memory>

class ActiveDocument;
class BackgroundWork;
class DocumentOpening;
class FoundJournal;
class Journals;
class MdiChildren;
class SystemClose;
class frmDocument;

/// Brings back the unsaved changes that earlier processes left, each in a document of its own, after the start. Owned
/// by the frame. Journals are read in another thread, one after the other; the active document stays the same, and
/// nothing is asked. While something else is being opened, or Close is disabled, the documents wait.
class DocumentRecovery : public QObject {
    Q_OBJECT

 public:
    /// Makes a document show what was recovered. May run the event loop.
    using BringBack = std::function<RecoveryOutcome(frmDocument& document, std::unique_ptr<FoundJournal> found)>;

    /// `journals` may be null: then there is nothing to bring back.
    DocumentRecovery(Journals* journals, MdiChildren& children, ActiveDocument& active, DocumentOpening& opening,
                     SystemClose& systemClose, BringBack bringBack);
    ~DocumentRecovery() override;

    /// Takes the journals that no living process owns. Without any it costs one look-up.
    void start();
    /// What was not brought back yet stays for the next start.
    void stop();
    bool isAtWork() const { return m_work != nullptr; }

 Q_SIGNALS:
    /// A sentence for the status bar.
    void noticed(const QString& sentence);

 private:
    struct Restoring;

    void restoreNext();
    void settleWhenFree();
    void settle();
    void bringBack(std::unique_ptr<FoundJournal> found);
    frmDocument* unchangedDocumentOf(const QString& path) const;
    frmDocument* untouchedDocument() const;
    void reportSetAside(const QString& name);
    void reportKept(const QString& name);

    Journals* m_journals;
    MdiChildren& m_children;
    ActiveDocument& m_active;
    DocumentOpening& m_opening;
    SystemClose& m_systemClose;
    BringBack m_bringBack;
    std::deque<std::unique_ptr<FoundJournal>> m_waiting;
    std::shared_ptr<Restoring> m_restoring;
    std::unique_ptr<BackgroundWork> m_work;  ///< none when nothing is being brought back
};
