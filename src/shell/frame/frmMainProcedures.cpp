// What documents tell the frame, and single steps that are called by name; each is carried out by the part it concerns.

#include "document/frmDocument.h"
#include "shell/bars/DocumentTabs.h"
#include "shell/bars/FindBar.h"
#include "shell/bars/StatusPanels.h"
#include "shell/commands/CommandEntries.h"
#include "shell/commands/LanguageMenu.h"
#include "shell/commands/SearchToggles.h"
#include "shell/documents/MdiChildren.h"
#include "shell/documents/SystemClose.h"
#include "shell/frame/FrameParts.h"
#include "shell/frame/frmMain.h"

void frmMain::AddDocumentTab(frmDocument* pForm) {
    if (pForm != nullptr)
        m_parts->tabs->AddDocumentTab(pForm);
}

void frmMain::SelChange(frmDocument* pForm) {
    if (pForm != nullptr && pForm == m_parts->children->active())
        m_parts->status->ShowCursorPosition(pForm);
}

void frmMain::FileChange(frmDocument* pForm) {
    if (pForm != nullptr)
        m_parts->tabs->SetTabCaption(pForm);
}

void frmMain::DocChange(frmDocument*) {}

void frmMain::ShowCursorPosition(frmDocument* pForm) {
    if (pForm != nullptr)
        m_parts->status->ShowCursorPosition(pForm);
}

void frmMain::ShowDocumentInfo(frmDocument* pForm) {
    if (pForm != nullptr)
        m_parts->status->ShowDocumentInfo(pForm);
}

void frmMain::CheckLangMenu(frmDocument* pForm) {
    if (pForm != nullptr)
        m_parts->languageMenu->CheckLangMenu(pForm);
}

void frmMain::SetTabCaption(frmDocument* document, bool) {
    FileChange(document);
}

void frmMain::SetEditModeIcon(frmDocument* document) {
    if (document != nullptr && document == m_parts->children->active())
        m_parts->commands->SetEditModeIcon(document);
}

void frmMain::EnableSystemClose(QWidget* pForm, bool pEnable) {
    if (pForm == this)
        m_parts->systemClose->enable(pEnable);
    else if (auto* document = qobject_cast<frmDocument*>(pForm))
        document->setCloseGreyed(!pEnable);
}

void frmMain::CheckMenuItem(const QString& pMenu, bool pChecked) {
    m_parts->commands->CheckMenuItem(pMenu.toLatin1(), pChecked);
}

void frmMain::SetWholeWordOption(bool pOn) {
    m_parts->searchToggles->SetWholeWordOption(pOn);
}

void frmMain::SetRegExpOption(bool pOn) {
    m_parts->searchToggles->SetRegExpOption(pOn);
}

void frmMain::SetCaseOption(bool pOn) {
    m_parts->searchToggles->SetCaseOption(pOn);
}

void frmMain::SetContinueSearchOption(bool pOn) {
    m_parts->searchToggles->SetContinueSearchOption(pOn);
}

void frmMain::AddSearchKey(const QString& pText, bool pMoveToTop) {
    m_parts->findBar->AddSearchKey(pText, pMoveToTop);
}
