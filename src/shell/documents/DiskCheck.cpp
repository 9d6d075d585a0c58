#include "shell/documents/DiskCheck.h"

#include "document/frmDocument.h"
#include "settings/Options.h"
#include "shell/documents/ActiveDocument.h"
#include "shell/documents/DocumentOpening.h"
#include "shell/documents/MdiChildren.h"
#include "shell/start/IgnoringErrors.h"

#include <QList>

DiskCheck::DiskCheck(MdiChildren& children, ActiveDocument& active, DocumentOpening& opening, const Options& options)
    : m_children(children), m_active(active), m_opening(opening), m_options(options) {}

void DiskCheck::applicationActivated() {
    if (m_options.FileModifyNotice)
        ignoringErrors("CheckFileUpdate", [this] { CheckFileUpdate(); });
}

void DiskCheck::CheckFileUpdate() {
    if (!m_checking)
        m_opening.whenIdle([this] { checkAll(); });
}

void DiskCheck::checkAll() {
    if (m_checking)
        return;
    m_checking = true;
    const QList<frmDocument*>& open = m_children.documents();
    const QList<QPointer<frmDocument>> documents(open.begin(), open.end());
    for (const QPointer<frmDocument>& document : documents)
        ignoringErrors("CheckFileUpdate", [&] { checkFile(document); });
    m_checking = false;
}

void DiskCheck::checkFile(const QPointer<frmDocument>& document) {
    if (!document || !document->FileNeedToReload() || !m_children.documents().contains(document))
        return;
    m_children.bringToFront(document);
    document->ReloadFile();
    if (document)  // it is shown as text now, whatever the mode was before
        m_active.reportChange(document, ActiveDocument::Loaded);
}
