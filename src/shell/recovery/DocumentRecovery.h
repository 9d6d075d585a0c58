#pragma once

#include "document/RecoveryOutcome.h"
#include "recovery/journals/JournalOutcome.h"

#include <QObject>
#include <QString>
#include <QTimer>

#include <chrono>
#include <deque>
#include <functional>
#include <memory>
#include <vector>

class ActiveDocument;
class BackgroundWork;
class DocumentOpening;
class FoundJournal;
class Journals;
class MdiChildren;
class SystemClose;
class frmDocument;
struct JournalBase;

/// Brings back the unsaved changes that earlier processes left, each in a document of its own, after the start. Owned
/// by the frame. Journals are read in another thread, one after the other; the active document stays the same, and
/// nothing is asked. While something else is being opened, or Close is disabled, the documents wait. A journal whose
/// disk does not answer holds up no other.
///
/// No two documents are of the same file: of several journals of one file the one that was edited last becomes its
/// document, the others become untitled.
class DocumentRecovery : public QObject {
    Q_OBJECT

 public:
    /// Makes a document show what was recovered. May run the event loop.
    using BringBack =
        std::function<RecoveryOutcome(frmDocument& document, std::unique_ptr<FoundJournal> found, RecoveredAs as)>;

    /// After this time without an answer of the disk the next journal is read.
    static constexpr std::chrono::seconds Patience{3};

    /// `journals` may be null: then there is nothing to bring back.
    DocumentRecovery(Journals* journals, MdiChildren& children, ActiveDocument& active, DocumentOpening& opening,
                     SystemClose& systemClose, BringBack bringBack);
    ~DocumentRecovery() override;

    /// Takes the journals that no living process owns. Without any it costs one look-up.
    void start();
    /// What was not brought back yet stays for the next start.
    void stop();
    bool isAtWork() const { return !m_readings.empty() || !m_ready.empty(); }

 Q_SIGNALS:
    /// A sentence for the status bar.
    void noticed(const QString& sentence);

 private:
    struct Restoring;
    /// A journal that is being read.
    struct Reading {
        std::shared_ptr<Restoring> restoring;
        QString path;
        std::unique_ptr<BackgroundWork> work;
    };
    using FoundJournals = std::deque<std::unique_ptr<FoundJournal>>;

    void restoreNext();
    void passOver();
    void takeOutcome(const std::shared_ptr<Restoring>& restoring);
    void settle(Restoring& restoring);
    bool isAwaited(const QString& path) const;
    void makeReady(const QString& path);
    void showReady();
    bool waitsUntilFree();
    void bringBack(std::unique_ptr<FoundJournal> found);
    void reportShown(frmDocument& document);
    frmDocument* documentOf(const QString& path) const;
    frmDocument* untouchedDocument() const;
    void report(const char* sentence, const JournalBase& base);

    Journals* m_journals;
    MdiChildren& m_children;
    ActiveDocument& m_active;
    DocumentOpening& m_opening;
    SystemClose& m_systemClose;
    BringBack m_bringBack;
    FoundJournals m_waiting;
    std::vector<Reading> m_readings;
    const Restoring* m_current = nullptr;  ///< the one after which the next is read; the others did not answer
    QTimer m_patience;
    FoundJournals m_restored;  ///< those of whose file more are being read
    FoundJournals m_ready;     ///< to be shown
};
