#include "shell/documents/DocumentClosing.h"

#include "document/KeptChanges.h"
#include "document/frmDocument.h"
#include "document/rtCM.h"
#include "platform/Yield.h"
#include "shell/documents/ActiveDocument.h"
#include "shell/documents/DocumentOpening.h"
#include "shell/documents/DocumentSaving.h"
#include "shell/documents/MdiChildren.h"
#include "shell/start/IgnoringErrors.h"
#include "widgets/Prompts.h"

DocumentClosing::DocumentClosing(QWidget& window, Prompts& prompts, MdiChildren& children, ActiveDocument& active,
                                 DocumentOpening& opening, DocumentSaving& saving)
    : m_window(window),
      m_prompts(prompts),
      m_children(children),
      m_active(active),
      m_opening(opening),
      m_saving(saving) {}

void DocumentClosing::CloseActive() {
    m_children.unload(m_active.get());
}

/// Each document is activated for its turn. Others may have ended while the user was asked about its changes.
void DocumentClosing::CloseAll(const frmDocument* except) {
    const QString kept = except == nullptr ? QString() : except->fIdx;
    for (qsizetype i = m_children.documents().size() - 1; i >= 0; --i) {
        if (i < m_children.documents().size())
            m_active.activate(m_children.documents().at(i));
        yieldOnce();
        frmDocument* document = m_active.get();
        if (document != nullptr && document->fIdx != kept)
            m_children.unload(document);
        yieldOnce();
    }
}

void DocumentClosing::DocClose(frmDocument* document) {
    const QPointer<frmDocument> alive(document);
    m_opening.hold();
    ignoringErrors("finishRecording", [&] { alive->GetEditor()->finishRecording(); });
    ignoringErrors("DocClose", [&] { settleChanges(alive); });
    m_opening.release();
    if (alive)
        m_active.reportClosing(document);
}

/// Yes saves the active document, which while the frame closes need not be the one that asks. When it is, and the save
/// does not succeed, the question comes again: the changes are not lost unless the user says so.
void DocumentClosing::settleChanges(const QPointer<frmDocument>& document) {
    if (m_programEnds && document->isUntouchedRecovery())
        return;
    while (document && document->isChange) {
        if (!m_prompts.askYesNo(&m_window, u"Save %1 ?"_qs.arg(document->Caption()))) {
            if (document)
                document->forgetChanges();
            return;
        }
        const bool savesTheAsking = m_active.is(document);
        m_saving.SaveActive();
        if (!savesTheAsking)
            return reportKept(document);
    }
}

/// The journal of a document that closes while it is changed stays for the next start.
void DocumentClosing::reportKept(const QPointer<frmDocument>& document) {
    if (document && document->isChange)
        Q_EMIT noticed(keptChangesSentence(document->Caption()));
}

void DocumentClosing::DelTab(frmDocument* document) {
    m_active.remove(document);
}
