#include "shell/documents/DocumentClosing.h"

#include "document/frmDocument.h"
#include "platform/Yield.h"
#include "shell/bars/DocumentTabs.h"
#include "shell/bars/StatusPanels.h"
#include "shell/documents/DocumentSaving.h"
#include "shell/documents/MdiChildren.h"
#include "shell/documents/PanelLink.h"
#include "shell/frame/FrameParts.h"
#include "shell/start/IgnoringErrors.h"
#include "widgets/Prompts.h"

DocumentClosing::DocumentClosing(FrameParts& parts, DocumentSaving& saving) : m_parts(parts), m_saving(saving) {}

void DocumentClosing::CloseActive() {
    m_parts.children->unload(m_parts.children->active());
}

void DocumentClosing::CloseAll(const frmDocument* except) {
    const QString kept = except == nullptr ? QString() : except->fIdx;
    for (int i = m_parts.tabs->count() - 1; i >= 0; --i) {
        m_parts.tabs->select(i);
        yieldOnce();
        frmDocument* document = m_parts.children->active();
        if (document != nullptr && document->fIdx != kept)
            m_parts.children->unload(document);
        yieldOnce();
    }
}

void DocumentClosing::DocClose(frmDocument* document) {
    ignoringErrors([&] { askToSave(*document); });
    ignoringErrors([&] { m_parts.explorer->RemoveFile(document->fIdx); });
}

void DocumentClosing::askToSave(const frmDocument& document) {
    if (!document.isChange)
        return;
    // Yes saves the active document, which while the frame closes need not be the one that asks.
    if (m_parts.prompts->askYesNo(m_parts.frame, u"Save %1 ?"_qs.arg(document.Caption())))
        m_saving.SaveActive();
}

void DocumentClosing::DelTab(frmDocument* document) {
    m_parts.tabs->DelTab(document);
    m_parts.children->remove(document);
    if (m_parts.children->documents().isEmpty())
        m_parts.status->clear();
}
