#include "shell/documents/DocumentOpening.h"

#include "document/frmDocument.h"
#include "platform/Paths.h"
#include "platform/Yield.h"
#include "settings/Options.h"
#include "shell/bars/DocumentTabs.h"
#include "shell/bars/FindBar.h"
#include "shell/bars/StatusPanels.h"
#include "shell/commands/CommandEntries.h"
#include "shell/commands/LanguageMenu.h"
#include "shell/commands/RoomsToCome.h"
#include "shell/documents/MdiChildren.h"
#include "shell/documents/PanelLink.h"
#include "shell/documents/SystemClose.h"
#include "shell/frame/FrameParts.h"
#include "shell/outside/Calculator.h"
#include "shell/start/IgnoringErrors.h"
#include "widgets/Prompts.h"

#include <QAction>
#include <QTimer>

#include <utility>

namespace {

constexpr int LockFlag = 1;

}  // namespace

DocumentOpening::DocumentOpening(FrameParts& parts) : m_parts(parts) {}

/// What a document asks for that lies outside of it.
void DocumentOpening::answerRequests(const frmDocument& document) {
    QObject::connect(&document, &frmDocument::PropertiesRequest, m_parts.frame,
                     [rooms = m_parts.rooms](const QString& path) { rooms->ShowFileProperties(path); });
    QObject::connect(&document, &frmDocument::CalculatorRequest, m_parts.frame, [] { Calculator::start(); });
    QObject::connect(&document, &frmDocument::LanguageRequest, m_parts.frame,
                     [rooms = m_parts.rooms] { rooms->ChooseLanguage(); });
}

void DocumentOpening::NewDocument() {
    ++m_documentCounter;
    const QPointer<frmDocument> document = new frmDocument(m_parts.host, *m_parts.documentServices);
    document->fIdx = u"F%1"_qs.arg(m_documentCounter);
    document->setCaption(u"Document%1"_qs.arg(m_documentCounter));
    m_parts.explorer->AddFile(document->Caption(), document->fIdx);
    QObject::connect(document, &frmDocument::FileChange, m_parts.tabs,
                     [tabs = m_parts.tabs](frmDocument* changed) { tabs->SetTabCaption(changed); });
    const auto moved = [parts = &m_parts](const frmDocument* changed) {
        if (changed == parts->children->active())
            parts->status->ShowCursorPosition(changed);
    };
    QObject::connect(document, &frmDocument::SelChange, m_parts.status, moved);
    QObject::connect(document, &frmDocument::DocChange, m_parts.status, moved);  // the count of lines is in there too
    QObject::connect(document, &frmDocument::Notice, m_parts.status, &StatusPanels::ShowNotice);
    QObject::connect(document, &frmDocument::AfterFind, m_parts.findBar, &FindBar::AfterFind);
    QObject::connect(document, &frmDocument::ViewChange, m_parts.children, [parts = &m_parts](frmDocument* changed) {
        if (changed == parts->children->active())
            parts->commands->SetDocumentEnv(changed);
    });
    answerRequests(*document);
    m_parts.children->add(document);
    m_parts.tabs->AddDocumentTab(document);
    if (document)
        m_parts.commands->SetDocumentEnv(document);
}

bool DocumentOpening::FindOpenDocument(const QString& path) {
    for (frmDocument* document : m_parts.children->documents()) {
        if (document->filename != path)
            continue;
        m_parts.children->bringToFront(document);
        document->setFocus();  // it may have been in front already
        yieldOnce();
        return true;
    }
    return false;
}

void DocumentOpening::OpenFile(const QString& path, int flags, bool checkBinary, bool openTextMode) {
    if (m_opening) {
        m_waiting.emplace_back([=, this] { OpenFile(path, flags, checkBinary, openTextMode); });
        return;
    }
    if (!fileExists(path)) {
        m_parts.prompts->message(m_parts.frame, path + QLatin1String("\nFile not found!"));
        yieldOnce();
        return;
    }
    if (FindOpenDocument(path)) {
        m_parts.prompts->message(m_parts.frame, u"'%1' already open!"_qs.arg(path));
        return;
    }
    m_opening = true;
    ignoringErrors([&] { openExisting(path, flags, checkBinary, openTextMode); });
    endOpening();
}

void DocumentOpening::openExisting(const QString& path, int flags, bool checkBinary, bool openTextMode) {
    const frmDocument* present = m_parts.children->active();
    if (present == nullptr || !present->isNew)
        NewDocument();
    const QPointer<frmDocument> document = m_parts.children->active();
    if (!document)
        return;
    if ((flags & LockFlag) != 0)
        document->setLocked(true);
    m_parts.systemClose->enable(false);
    ignoringErrors([&] {
        document->OpenFile(path, document->Locked(), checkBinary, openTextMode);
        if (document)
            showOpened(document, path);
    });
    yieldOnce();
    m_parts.systemClose->enable(true);
}

void DocumentOpening::showOpened(frmDocument* document, const QString& path) {
    document->setCaption(captionFor(path));
    m_parts.explorer->SetFile(path, document->fIdx, DocumentTabs::imageFor(document));
    m_parts.tabs->SetTabCaption(document);
    m_parts.rooms->AddLRUFile(path);
    showActive(document);
    if (isActive(document))
        document->setFocus();
}

/// While a document loads in blocks another one may have come to the front.
bool DocumentOpening::isActive(const frmDocument* document) const {
    return document == m_parts.children->active();
}

/// What the frame shows of the active document, when it is that one.
void DocumentOpening::showActive(frmDocument* document) {
    if (!isActive(document))
        return;
    m_parts.languageMenu->CheckLangMenu(document);
    m_parts.status->ShowCursorPosition(document);  // the count of lines is new even where the cursor stayed
    m_parts.status->ShowDocumentInfo(document);
    m_parts.commands->SetDocumentEnv(document);
}

void DocumentOpening::endOpening() {
    m_opening = false;
    if (m_waiting.empty())
        return;
    QTimer::singleShot(0, m_parts.frame, [this] {
        if (m_opening || m_waiting.empty())
            return;
        const std::function<void()> next = std::move(m_waiting.front());
        m_waiting.erase(m_waiting.begin());
        ignoringErrors(next);
        endOpening();
    });
}

void DocumentOpening::CheckFileUpdate() {
    if (m_checking)
        return;
    if (m_opening) {
        m_waiting.emplace_back([this] { CheckFileUpdate(); });
        return;
    }
    m_checking = true;
    QList<QPointer<frmDocument>> documents;
    for (frmDocument* document : m_parts.children->documents())
        documents.append(document);
    for (const QPointer<frmDocument>& document : documents)
        ignoringErrors([&] { checkFile(document); });
    m_checking = false;
}

void DocumentOpening::checkFile(const QPointer<frmDocument>& document) {
    if (!document || !document->FileNeedToReload() || !m_parts.children->documents().contains(document))
        return;
    m_parts.children->bringToFront(document);
    document->ReloadFile();
    if (document)
        showActive(document);  // it comes back as text, whatever it was
}

void DocumentOpening::ChangeReadOnly() {
    frmDocument* document = m_parts.children->active();
    if (document == nullptr)
        return;
    document->ChangeToReadOnly();
    m_parts.tabs->SetTabCaption(document);
    m_parts.commands->SetDocumentEnv(document);
}

void DocumentOpening::SwitchHex(bool hex) {
    const QPointer<frmDocument> document = m_parts.children->active();
    if (!document)
        return;
    m_parts.commands->button("ShowHex")->setChecked(hex);
    m_parts.systemClose->enable(false);
    ignoringErrors([&] {
        if (document->TextEdit() == hex)
            document->setTextEdit(!hex);
    });
    m_parts.systemClose->enable(true);
    if (!document || !isActive(document))
        return;
    m_parts.commands->SetEditModeIcon(document);
    m_parts.commands->CheckMenuItem("mnuToggleHex", !document->TextEdit());
    showActive(document);
}

void DocumentOpening::ActiveFormChange(frmDocument* document) {
    const QPointer<frmDocument> alive(document);
    m_parts.tabs->selectKey(document->fIdx);
    if (alive)
        showActive(document);
}

QString DocumentOpening::captionFor(const QString& path) const {
    return m_parts.options->ShowFullPath ? path : FileNameOf(path);
}
