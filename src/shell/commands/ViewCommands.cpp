#include "shell/commands/ViewCommands.h"

#include "document/frmDocument.h"
#include "shell/bars/CoolBar.h"
#include "shell/bars/SearchPanel.h"
#include "shell/bars/SidePanel.h"
#include "shell/commands/CommandEntries.h"
#include "shell/commands/ViewToggles.h"
#include "shell/documents/ActiveDocument.h"
#include "shell/documents/MdiArrange.h"
#include "shell/documents/MdiChildren.h"

#include <QAction>

namespace {

void toggleBand(CoolBar& coolBar, CoolBar::Band band, CommandEntries& entries, const char* entry) {
    coolBar.setBandVisible(band, !coolBar.isBandVisible(band));
    entries.CheckMenuItem(entry, coolBar.isBandVisible(band));
}

}  // namespace

ViewCommands::ViewCommands(CommandEntries& entries, CoolBar& coolBar, SidePanel& sidePanel, SearchPanel& searchPanel,
                           MdiChildren& children, ActiveDocument& active)
    : m_entries(entries),
      m_coolBar(coolBar),
      m_sidePanel(sidePanel),
      m_searchPanel(searchPanel),
      m_children(children),
      m_active(active) {}

/// The button shows the new mode while the document still asks about its changes.
void ViewCommands::ToggleHex() {
    if (m_active.get() == nullptr)
        return;
    QAction* button = m_entries.button("ShowHex");
    const bool hex = !button->isChecked();
    button->setChecked(hex);
    m_active.SwitchHex(hex);
}

void ViewCommands::ToggleLineNumber() {
    toggleView("mnuShowLineNumber");
}

void ViewCommands::ToggleLeftMargin() {
    toggleView("mnuShowLeftMargin");
}

void ViewCommands::ToggleTabSpace() {
    toggleView("mnuShowTabSpace");
}

void ViewCommands::ToggleBraceMatching() {
    toggleView("mnuBraceMatching");
}

void ViewCommands::ToggleRowHighlight() {
    toggleView("mnuHighlightRow");
}

void ViewCommands::toggleView(const char* entry) {
    frmDocument* document = m_active.get();
    if (document == nullptr)
        return;
    const ViewToggle& option = viewToggle(entry);
    (document->*option.turn)(!(document->*option.isOn)());
    m_entries.showViewToggle(option, *document);
}

void ViewCommands::ToggleExplorer() {
    m_sidePanel.setShown(!m_sidePanel.isShown());
}

void ViewCommands::ToggleSearchPanel() {
    m_searchPanel.setShown(!m_searchPanel.isShown());
}

void ViewCommands::ToggleToolBand() {
    toggleBand(m_coolBar, CoolBar::Tool, m_entries, "mnuShowEditToolbar");
}

void ViewCommands::ToggleTabBand() {
    toggleBand(m_coolBar, CoolBar::Tab, m_entries, "mnuShowFilesTab");
}

void ViewCommands::Cascade() {
    MdiArrange::arrange(m_children, MdiArrange::Cascade);
}

void ViewCommands::TileHorizontal() {
    MdiArrange::arrange(m_children, MdiArrange::Horizontal);
}

void ViewCommands::TileVertical() {
    MdiArrange::arrange(m_children, MdiArrange::Vertical);
}

void ViewCommands::ArrangeIcons() {
    MdiArrange::arrange(m_children, MdiArrange::Icons);
}
