#include "shell/commands/FrameCommands.h"

#include "document/SaveFormats.h"
#include "document/frmDocument.h"
#include "properties/fmrLangProperties.h"
#include "settings/FileFilters.h"
#include "shell/bars/CoolBar.h"
#include "shell/bars/DocumentTabs.h"
#include "shell/bars/FindBar.h"
#include "shell/commands/CommandEntries.h"
#include "shell/commands/MacroMenu.h"
#include "shell/commands/MenuSlots.h"
#include "shell/commands/MenuText.h"
#include "shell/commands/RoomsToCome.h"
#include "shell/commands/SearchToggles.h"
#include "shell/commands/ViewToggles.h"
#include "shell/documents/DocumentClosing.h"
#include "shell/documents/DocumentOpening.h"
#include "shell/documents/DocumentSaving.h"
#include "shell/documents/MdiArrange.h"
#include "shell/documents/MdiChildren.h"
#include "shell/documents/SystemClose.h"
#include "shell/frame/FrameParts.h"
#include "shell/outside/Calculator.h"
#include "shell/outside/HelpPages.h"
#include "shell/outside/ToolForms.h"
#include "widgets/Prompts.h"

#include <QAction>
#include <QWidget>

namespace {

void toggleBand(const FrameParts& parts, CoolBar::Band band, const char* entry) {
    parts.coolBar->setBandVisible(band, !parts.coolBar->isBandVisible(band));
    parts.commands->CheckMenuItem(entry, parts.coolBar->isBandVisible(band));
}

}  // namespace

FrameCommands::FrameCommands(FrameParts& parts, DocumentOpening& files, DocumentSaving& saving,
                             DocumentClosing& closing)
    : m_parts(parts), m_files(files), m_saving(saving), m_closing(closing) {}

void FrameCommands::New() {
    m_files.NewDocument();
}

void FrameCommands::Open() {
    const FileQuestion question{u"Open"_qs, m_saving.dialogFolder(), {}, GetFilterString(*m_parts.registry)};
    const OpenAnswer answer = m_parts.prompts->askFilesToOpen(m_parts.frame, question);
    for (const QString& path : answer.files)
        m_files.OpenFile(path, answer.readOnly ? 1 : 0, true, true);
}

void FrameCommands::Close() {
    m_closing.CloseActive();
}

void FrameCommands::CloseAll() {
    m_closing.CloseAll(nullptr);
}

void FrameCommands::CloseExcept() {
    m_closing.CloseAll(m_parts.children->active());
}

void FrameCommands::Save() {
    m_saving.SaveActive();
}

void FrameCommands::SaveAs() {
    m_saving.SaveAs();
}

void FrameCommands::SaveAnsi() {
    saveAs(SaveFormats::Ansi);
}

void FrameCommands::SaveUtf8() {
    saveAs(SaveFormats::Utf8);
}

void FrameCommands::SaveUnicode() {
    saveAs(SaveFormats::Unicode);
}

void FrameCommands::SaveNoBom() {
    saveAs(SaveFormats::NoByteOrderMark);
}

void FrameCommands::saveAs(int format) {
    if (frmDocument* document = m_parts.children->active())
        m_saving.SaveDocument(document, true, format);
}

void FrameCommands::SaveAll() {
    m_saving.SaveAll();
}

void FrameCommands::Exit() {
    m_parts.systemClose->whenFree([frame = m_parts.frame] { frame->close(); });
}

void FrameCommands::ChangeReadOnly() {
    m_files.ChangeReadOnly();
}

void FrameCommands::FindNext() {
    m_parts.findBar->FindNext();
}

void FrameCommands::FindPrevious() {
    m_parts.findBar->FindPrevious();
}

void FrameCommands::FindInFiles() {
    m_parts.rooms->ShowSearchInFiles(QString());
}

void FrameCommands::ToggleWholeWord() {
    m_parts.searchToggles->toggle("mnuWholeWord");
}

void FrameCommands::ToggleCase() {
    m_parts.searchToggles->toggle("mnuCaseSensitive");
}

void FrameCommands::ToggleRegExp() {
    m_parts.searchToggles->toggle("mnuRegExp");
}

void FrameCommands::ToggleContinueSearch() {
    m_parts.searchToggles->toggle("mnuSearchContinue");
}

void FrameCommands::ToggleHex() {
    m_files.SwitchHex(!m_parts.commands->button("ShowHex")->isChecked());
}

void FrameCommands::ToggleLineNumber() {
    toggleView("mnuShowLineNumber");
}

void FrameCommands::ToggleLeftMargin() {
    toggleView("mnuShowLeftMargin");
}

void FrameCommands::ToggleTabSpace() {
    toggleView("mnuShowTabSpace");
}

void FrameCommands::ToggleBraceMatching() {
    toggleView("mnuBraceMatching");
}

void FrameCommands::ToggleRowHighlight() {
    toggleView("mnuHighlightRow");
}

void FrameCommands::toggleView(const char* entry) {
    frmDocument* document = m_parts.children->active();
    if (document == nullptr)
        return;
    const ViewToggle& option = viewToggle(entry);
    (document->*option.turn)(!(document->*option.isOn)());
    m_parts.commands->showViewToggle(option, *document);
}

void FrameCommands::ToggleExplorer() {
    m_parts.rooms->ToggleExplorer();
    m_parts.commands->CheckMenuItem("mnuEditExplorer", m_parts.rooms->isExplorerVisible());
}

void FrameCommands::ToggleSearchPanel() {
    m_parts.rooms->ToggleSearchPanel();
    m_parts.commands->CheckMenuItem("mnulFindReplacePanel", m_parts.rooms->isSearchPanelVisible());
}

void FrameCommands::ToggleToolBand() {
    toggleBand(m_parts, CoolBar::Tool, "mnuShowEditToolbar");
}

void FrameCommands::ToggleTabBand() {
    toggleBand(m_parts, CoolBar::Tab, "mnuShowFilesTab");
}

void FrameCommands::OrganizeLanguages() {
    const auto showHelp = [this](const QString& page) { m_parts.help->show(page); };
    fmrLangProperties(*m_parts.documentServices, showHelp, m_parts.frame).exec();
}

void FrameCommands::OrganizeMacros() {
    m_parts.macroMenu->ShowMacros();
}

void FrameCommands::ResetKey() {
    m_parts.macroMenu->ResetKeys();
}

void FrameCommands::ShowAnsiTable() {
    ToolForms::ShowAnsiTable(m_parts.frame);
}

void FrameCommands::ShowConvertor() {
    ToolForms::ShowConvertor(m_parts.frame);
}

void FrameCommands::StartCalculator() {
    Calculator::start();
}

void FrameCommands::SaveMacros() {
    m_parts.macroMenu->SaveMacros();
}

void FrameCommands::Cascade() {
    arrange(MdiArrange::Cascade);
}

void FrameCommands::TileHorizontal() {
    arrange(MdiArrange::Horizontal);
}

void FrameCommands::TileVertical() {
    arrange(MdiArrange::Vertical);
}

void FrameCommands::ArrangeIcons() {
    arrange(MdiArrange::Icons);
}

void FrameCommands::arrange(int mode) {
    MdiArrange::arrange(*m_parts.children, mode);
}

void FrameCommands::OpenRecentFile(int slot) {
    m_files.OpenFile(MenuText::captionOf(*m_parts.menuSlots->slot("mnuFiles", slot)), 0, true, true);
}

void FrameCommands::OpenRecentProject(int slot) {
    m_parts.rooms->OpenProject(MenuText::captionOf(*m_parts.menuSlots->slot("mnuWorkspaces", slot)));
}

void FrameCommands::OpenFavorite(int slot) {
    m_parts.rooms->OpenProject(m_parts.menuSlots->slot("mnuFavoriteProject", slot)->data().toString());
}

void FrameCommands::ExecMacro(int slot) {
    frmDocument* document = m_parts.children->active();
    if (slot > 0 && document != nullptr)
        document->ExecMacro(slot);
}

void FrameCommands::SelectOpenWindow(int slot) {
    m_parts.tabs->selectKey(m_parts.menuSlots->slot("mnuOpenWindows", slot)->data().toString());
}
