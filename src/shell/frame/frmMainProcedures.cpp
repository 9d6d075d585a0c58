// The reports of documents to the frame, and single steps that are called by name; each is done by the part it
// concerns.

#include "document/frmDocument.h"
#include "shell/bars/DocumentTabs.h"
#include "shell/bars/FindBar.h"
#include "shell/bars/StatusPanels.h"
#include "shell/frame/House.h"
#include "shell/frame/frmMain.h"

void frmMain::AddDocumentTab(frmDocument* pForm) {
    if (pForm != nullptr)
        m_house->tabs.AddDocumentTab(pForm);
}

void frmMain::SelChange(frmDocument* pForm) {
    if (pForm != nullptr)
        m_house->active.reportChange(pForm, ActiveDocument::Caret);
}

void frmMain::FileChange(frmDocument* pForm) {
    if (pForm != nullptr)
        m_house->active.reportChange(pForm, ActiveDocument::State);
}

void frmMain::DocChange(frmDocument*) {}

void frmMain::ShowCursorPosition(frmDocument* pForm) {
    if (pForm != nullptr)
        m_house->status.ShowCursorPosition(pForm);
}

void frmMain::ShowDocumentInfo(frmDocument* pForm) {
    if (pForm != nullptr)
        m_house->status.ShowDocumentInfo(pForm);
}

void frmMain::CheckLangMenu(frmDocument* pForm) {
    if (pForm != nullptr)
        m_house->languageMenu.CheckLangMenu(pForm);
}

void frmMain::SetTabCaption(frmDocument* document, bool) {
    FileChange(document);
}

void frmMain::SetEditModeIcon(frmDocument* document) {
    if (m_house->active.is(document))
        m_house->entries.SetEditModeIcon(document);
}

void frmMain::EnableSystemClose(QWidget* pForm, bool pEnable) {
    if (pForm == this)
        m_house->systemClose.enable(pEnable);
    else if (auto* document = qobject_cast<frmDocument*>(pForm))
        document->setCloseGreyed(!pEnable);
}

void frmMain::CheckMenuItem(const QString& pMenu, bool pChecked) {
    m_house->entries.CheckMenuItem(pMenu.toLatin1(), pChecked);
}

void frmMain::SetWholeWordOption(bool pOn) {
    m_house->searchToggles.SetWholeWordOption(pOn);
}

void frmMain::SetRegExpOption(bool pOn) {
    m_house->searchToggles.SetRegExpOption(pOn);
}

void frmMain::SetCaseOption(bool pOn) {
    m_house->searchToggles.SetCaseOption(pOn);
}

void frmMain::SetContinueSearchOption(bool pOn) {
    m_house->searchToggles.SetContinueSearchOption(pOn);
}

void frmMain::AddSearchKey(const QString& pText, bool pMoveToTop) {
    m_house->findBar.AddSearchKey(pText, pMoveToTop);
}

void frmMain::ShowSearchInFiles(const QString& pDir) {
    m_house->searches.ShowSearchInFiles(pDir);
}

void frmMain::StartSearch(const QString& pPath, const QString& pFilter, bool pSubDir, const QString& pSearch,
                          bool pRegExpOn, bool pCaseSensitiveOn, bool pPreserveCase, bool pWholeWordOn, int pOption,
                          bool pSearchOnly, const QString& pReplaceText, bool pListResults) {
    m_house->searches.StartSearch({pPath,
                                   pFilter,
                                   pSubDir,
                                   static_cast<SearchIn>(pOption),
                                   pSearch,
                                   {pCaseSensitiveOn, pRegExpOn, pWholeWordOn},
                                   !pSearchOnly,
                                   pReplaceText,
                                   pPreserveCase,
                                   pListResults});
}

void frmMain::AbortSearch() {
    m_house->searches.search().AbortSearch();
}

bool frmMain::AbortFlag() const {
    return m_house->searches.search().AbortFlag();
}

int frmMain::FilesFound() const {
    return m_house->searches.search().FilesFound();
}

int frmMain::FilesSearched() const {
    return m_house->searches.search().FilesSearched();
}
