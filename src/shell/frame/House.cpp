#include "shell/frame/House.h"

#include "document/frmDocument.h"
#include "recovery/journals/FoundJournal.h"
#include "shell/bars/CoolBar.h"
#include "shell/bars/DocumentTabs.h"
#include "shell/bars/FindBar.h"
#include "shell/bars/SearchPanel.h"
#include "shell/bars/SidePanel.h"
#include "shell/bars/StatusPanel.h"
#include "shell/bars/StatusPanels.h"
#include "shell/bars/TabStrip.h"
#include "shell/commands/CommandTable.h"
#include "shell/commands/WindowMenu.h"
#include "shell/documents/MdiChildren.h"
#include "shell/frame/FrameServices.h"
#include "workspace/host/WorkspaceServices.h"
#include "workspace/panel/PanelLink.h"

#include <QMainWindow>
#include <QMenuBar>
#include <QStatusBar>
#include <QToolBar>
#include <QVBoxLayout>

#include <utility>

namespace {

/// The central widget of the window, created at the first call: rows, one below the other.
QVBoxLayout& rowsOf(QMainWindow& window) {
    if (window.centralWidget() == nullptr) {
        auto* inner = new QWidget(&window);
        auto* rows = new QVBoxLayout(inner);
        rows->setContentsMargins(0, 0, 0, 0);
        rows->setSpacing(0);
        window.setCentralWidget(inner);
    }
    return static_cast<QVBoxLayout&>(*window.centralWidget()->layout());
}

/// Adds a widget below the others, with this share of the remaining height.
template <typename Row, typename... Given>
Row& addRow(QMainWindow& window, int stretch, Given&... given) {
    QVBoxLayout& rows = rowsOf(window);
    auto* row = new Row(given..., window.centralWidget());
    rows.addWidget(row, stretch);
    return *row;
}

QToolBar& makeToolBar(CoolBar& coolBar) {
    auto* bar = new QToolBar(&coolBar);
    bar->setObjectName(u"tbToolBar"_qs);
    bar->setIconSize(QSize(16, 16));
    return *bar;
}

/// Tab leads from the find bar, which F6 reaches, to the panels of the status bar, from the first to the last.
void orderByTab(QWidget* findBar, const QStatusBar& statusBar) {
    QWidget* before = findBar;
    const QList<StatusPanel*> panels = statusBar.findChildren<StatusPanel*>();
    for (StatusPanel* panel : panels) {
        QWidget::setTabOrder(before, panel);
        before = panel;
    }
}

RecoveryOutcome bringBack(frmDocument& document, std::unique_ptr<FoundJournal> found, RecoveredAs as) {
    return document.bringBack(std::move(found), as);
}

}  // namespace

House::House(QMainWindow& window, DocumentHost& host, QString& projectFilename, const FrameServices& services,
             CommandEntries::Runner run)
    : prompts(services.prompts),
      registry(services.registry),
      settings(registry),
      globals(prompts, registry, services.programFolder, services.shareFolder, services.printDialogs),
      documentServices{prompts, options, globals, hexFind, {}, DictionaryList::searchFolders(), services.journals},
      help(services.programFolder, services.shareFolder),
      coolBar(addRow<CoolBar>(window, 0)),
      toolBar(makeToolBar(coolBar)),
      strip(*new TabStrip(&coolBar)),
      sidePanel(addRow<SidePanel>(window, 1)),
      searchPanel(addRow<SearchPanel>(window, 0, sidePanel.area())),
      children(*new MdiChildren(sidePanel.area())),
      status(*new StatusPanels(*window.statusBar())),
      tabs(*new DocumentTabs(strip, children)),
      systemClose(&window),
      lookup(services.fileExists),
      active(children, systemClose),
      opening(host, window, documentServices, children, active, systemClose, lookup),
      saving(window, documentServices, registry, children, active, systemClose, opening),
      closing(window, prompts, children, active, opening, saving),
      diskCheck(children, active, opening, options),
      queue(window, prompts, children, active, opening),
      recovery(services.journals, children, active, opening, systemClose, bringBack),
      recentFiles(KeptList::RecentFiles, services.programFolder),
      projectLists(services.programFolder),
      documentRecords(children, active, opening),
      session(services.programFolder, projectFilename, documentRecords, systemClose,
              [this](const QString& path) { projects.OpenProject(path); }),
      findBar(*new FindBar(window, active, options)),
      entries(commandTable(), coolBar, sidePanel, searchPanel, *window.menuBar(), toolBar, std::move(run)),
      menuSlots(entries, SlotCommands::table(),
                [this](const SlotArray& array, int number) { (slotCommands.*array.chosen)(number); }),
      listMenus(entries, menuSlots, recentFiles, projectLists),
      searchToggles(options, entries),
      languageMenu(entries, active),
      macroMenu(window, prompts, settings, globals, help, entries, menuSlots),
      fileCommands(window, prompts, registry, systemClose, active, opening, saving, closing),
      viewCommands(entries, coolBar, sidePanel, searchPanel, children, active),
      programProperties(window, documentServices, options, settings, registry, help, macroMenu),
      frameCommands(window, documentServices, help, registry, findBar, searchToggles, macroMenu, programProperties),
      outsideCommands(window, prompts, help, services.programFolder, services.shareFolder),
      favoriteCommands(window, prompts, projectFilename, projectLists),
      panelRequests(children, active, opening, fileCommands, sidePanel),
      panel(services.makePanel({prompts, settings, panelRequests})),
      projects(window, projectFilename, prompts, systemClose, lookup, closing, documentRecords, projectLists, panel,
               sidePanel, entries),
      searches({window, projectFilename, documentServices, children, active, opening, systemClose, status, searchPanel,
                panel, projects}),
      slotCommands(menuSlots, projects, children, active, opening),
      drops(window, panel, opening) {
    sidePanel.hold(panel.widget());
    new WindowMenu(*entries.menu("mnuWindow"), children);
    orderByTab(findBar.widget(), *window.statusBar());
}
