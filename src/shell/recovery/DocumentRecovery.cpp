#include "shell/recovery/DocumentRecovery.h"

#include "document/frmDocument.h"
#include "platform/BackgroundWork.h"
#include "platform/Paths.h"
#include "recovery/journals/FoundJournal.h"
#include "recovery/journals/Journals.h"
#include "shell/documents/ActiveDocument.h"
#include "shell/documents/DocumentOpening.h"
#include "shell/documents/MdiChildren.h"
#include "shell/documents/SystemClose.h"
#include "shell/start/IgnoringErrors.h"

#include <QPointer>

#include <algorithm>
#include <iterator>
#include <utility>

namespace {

QString nameOf(const JournalBase& base) {
    return base.path.isEmpty() ? base.caption : FileNameOf(base.path);
}

}  // namespace

/// One journal at a time, shared with the thread that reads it.
struct DocumentRecovery::Restoring {
    std::unique_ptr<FoundJournal> found;
    JournalOutcome outcome = JournalOutcome::Failed;
};

DocumentRecovery::DocumentRecovery(Journals* journals, MdiChildren& children, ActiveDocument& active,
                                   DocumentOpening& opening, SystemClose& systemClose, BringBack bringBack)
    : m_journals(journals),
      m_children(children),
      m_active(active),
      m_opening(opening),
      m_systemClose(systemClose),
      m_bringBack(std::move(bringBack)) {}

DocumentRecovery::~DocumentRecovery() = default;

void DocumentRecovery::start() {
    if (m_journals == nullptr || isAtWork())
        return;
    std::ranges::move(m_journals->takeAbandoned(), std::back_inserter(m_waiting));
    restoreNext();
}

void DocumentRecovery::stop() {
    m_waiting.clear();
    m_work.reset();
    m_restoring.reset();
}

void DocumentRecovery::restoreNext() {
    m_work.reset();
    m_restoring.reset();
    if (m_waiting.empty())
        return;
    m_restoring = std::make_shared<Restoring>();
    m_restoring->found = std::move(m_waiting.front());
    m_waiting.pop_front();
    m_work = std::make_unique<BackgroundWork>(
        [restoring = m_restoring](const std::atomic<bool>&) { restoring->outcome = restoring->found->restore(); });
    connect(m_work.get(), &BackgroundWork::finished, this, &DocumentRecovery::settleWhenFree);
}

/// A document that came up in the middle of another operation could become the one that the operation is about.
void DocumentRecovery::settleWhenFree() {
    if (!isAtWork())
        return;
    if (m_systemClose.isGreyed())
        m_systemClose.whenFree([this] { settleWhenFree(); });
    else if (m_opening.isBusy())
        m_opening.whenIdle([this] { settleWhenFree(); });
    else
        settle();
}

void DocumentRecovery::settle() {
    std::unique_ptr<FoundJournal> found = std::move(m_restoring->found);
    switch (m_restoring->outcome) {
        case JournalOutcome::Restored:
            bringBack(std::move(found));
            break;
        case JournalOutcome::SameAsFile:
            found->discard();
            break;
        case JournalOutcome::Lost:
            if (found->setAside())
                reportSetAside(nameOf(found->base()));
            break;
        case JournalOutcome::Failed:
            reportKept(nameOf(found->base()));
            break;
    }
    if (isAtWork())
        restoreNext();
}

void DocumentRecovery::reportSetAside(const QString& name) {
    Q_EMIT noticed(
        u"The unsaved changes of '%1' can't be brought back without its file; quillmark-recover has them."_qs.arg(
            name));
}

void DocumentRecovery::reportKept(const QString& name) {
    Q_EMIT noticed(u"The unsaved changes of '%1' could not be brought back now. They are kept."_qs.arg(name));
}

/// A document of the same file takes its changes over, because two documents of one file would overwrite each other. An
/// untitled document that nobody has touched is used as in opening a file.
void DocumentRecovery::bringBack(std::unique_ptr<FoundJournal> found) {
    const QPointer<frmDocument> before = m_active.get();
    const QString path = found->base().path;
    const QString name = nameOf(found->base());
    QPointer<frmDocument> document = unchangedDocumentOf(path);
    if (!document)
        document = untouchedDocument();
    const bool isMade = !document;
    if (isMade) {
        m_opening.NewDocument();
        document = m_active.get();
    }
    m_opening.hold();
    m_systemClose.enable(false);
    RecoveryOutcome outcome = RecoveryOutcome::Failed;
    ignoringErrors("bringBack", [&] { outcome = m_bringBack(*document, std::move(found)); });
    m_systemClose.enable(true);
    m_opening.release();
    if (outcome == RecoveryOutcome::Failed)
        reportKept(name);
    if (document && outcome == RecoveryOutcome::Shown) {
        if (!path.isEmpty()) {
            document->setCaption(m_opening.captionFor(path));
            m_active.reportOpened(document, path);
        }
        m_active.reportChange(document, ActiveDocument::State | ActiveDocument::Loaded);
    } else if (document && isMade) {
        m_children.unload(document);
    }
    if (before && before != document)
        m_active.activate(before);
}

frmDocument* DocumentRecovery::unchangedDocumentOf(const QString& path) const {
    const QList<frmDocument*>& documents = m_children.documents();
    const auto found = std::ranges::find_if(documents, [&path](const frmDocument* document) {
        return !path.isEmpty() && document->filename == path && !document->isChange;
    });
    return found == documents.end() ? nullptr : *found;
}

frmDocument* DocumentRecovery::untouchedDocument() const {
    frmDocument* active = m_active.get();
    return active != nullptr && active->isNew && !active->isChange ? active : nullptr;
}
