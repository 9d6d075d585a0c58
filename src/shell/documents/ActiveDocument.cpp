#include "shell/documents/ActiveDocument.h"

#include "document/frmDocument.h"
#include "shell/documents/MdiChildren.h"
#include "shell/documents/SystemClose.h"
#include "shell/start/IgnoringErrors.h"

#include <QPointer>

ActiveDocument::ActiveDocument(MdiChildren& children, SystemClose& systemClose)
    : m_children(children), m_systemClose(systemClose) {
    connect(&children, &MdiChildren::activated, this, &ActiveDocument::activated);
}

frmDocument* ActiveDocument::get() const {
    return m_children.active();
}

void ActiveDocument::activate(frmDocument* document) {
    if (document != get())
        m_children.bringToFront(document);
}

void ActiveDocument::add(frmDocument* document) {
    const auto report = [this](Changes what) {
        return [this, what](frmDocument* changed) { reportChange(changed, what); };
    };
    connect(document, &frmDocument::FileChange, this, report(State));
    connect(document, &frmDocument::PositionChange, this, report(Caret));
    connect(document, &frmDocument::ViewChange, this, report(View));
    connect(document, &frmDocument::LimitationsChange, this, report(Limits));
    connect(document, &frmDocument::RepeatCountChange, this, report(Repeat));
    connect(document, &frmDocument::Notice, this, &ActiveDocument::noticed);
    connect(document, &frmDocument::PassingNotice, this, &ActiveDocument::noticedInPassing);
    connect(document, &frmDocument::AfterFind, this, &ActiveDocument::searched);
    m_children.add(document);
    Q_EMIT added(document);
}

void ActiveDocument::remove(frmDocument* document) {
    m_children.remove(document);
    Q_EMIT removed(document);
}

void ActiveDocument::ActiveFormChange(frmDocument* document) {
    Q_EMIT activated(document);
}

void ActiveDocument::ChangeReadOnly() {
    frmDocument* document = get();
    if (document == nullptr)
        return;
    document->ChangeToReadOnly();
    reportChange(document, Mode);
}

void ActiveDocument::SwitchHex(bool hex) {
    const QPointer<frmDocument> document = get();
    if (!document)
        return;
    m_systemClose.enable(false);
    ignoringErrors("SwitchHex", [&] {
        if (document->TextEdit() == hex)
            document->setTextEdit(!hex);
    });
    m_systemClose.enable(true);
    if (document)
        reportChange(document, Loaded);
}
