// The load sequence of the frame, as named steps in their order.

#include "editor/control/ControlLook.h"
#include "platform/Paths.h"
#include "platform/Yield.h"
#include "shell/bars/CoolBar.h"
#include "shell/bars/DocumentTabs.h"
#include "shell/bars/FindBar.h"
#include "shell/bars/SearchPanel.h"
#include "shell/bars/SidePanel.h"
#include "shell/bars/StatusPanels.h"
#include "shell/bars/TabStrip.h"
#include "shell/documents/MdiChildren.h"
#include "shell/frame/House.h"
#include "shell/frame/frmMain.h"
#include "shell/start/CommandLine.h"
#include "shell/start/FrameSteps.h"
#include "widgets/BusyPointer.h"
#include "workspace/panel/PanelLink.h"

#include <QDir>
#include <QFont>
#include <QTimer>
#include <QToolBar>

namespace {

void readFirstSettings(House& house) {
    const QFont font = ControlLook::defaultFont();
    house.options.FontName = font.family();
    house.options.FontSize = static_cast<qint16>(font.pointSize());
    loadFirstOptions(house.settings, house.options);
    house.searchToggles.showOptions();
}

void loadProfile(House& house) {
    house.globals.profile.load();
    house.globals.theme.load();
    house.globals.hotKeys.load(house.registry);
}

void loadLists(House& house) {
    house.languageMenu.LoadLanguageMenu(house.globals.languages.loadedNames());
    house.recentFiles.load();
    house.projectLists.recent().load();
    house.projectLists.favorites().load();
    house.findBar.LoadSearchKeys();
}

void buildCoolBar(House& house) {
    house.tabs.clear();
    house.coolBar.setBand(CoolBar::Tool, &house.toolBar);
    house.coolBar.setBand(CoolBar::Tab, &house.strip);
}

void startNewDocument(House& house) {
    if (!house.settings.StartNewDocument())
        return;
    house.opening.NewDocument();
    house.children.maximise(house.active.get());
}

void layOutPanels(House& house) {
    BusyPointer::restore();
    house.sidePanel.ArrangePanels();
    house.panel.InitObjects();
    house.searchPanel.ArrangePanels();
}

void followCommandLine(House& house, const CommandLine::LoadOrder& order) {
    using Kind = CommandLine::LoadOrder::Kind;
    switch (order.kind) {
        case Kind::Nothing:
            break;
        case Kind::Document:
            for (const QString& path : order.texts)
                house.queue.OpenFileFromCmd(path);
            break;
        case Kind::Project:
            house.projects.OpenProject(order.texts.value(0));
            break;
        case Kind::SearchFolders:
            house.searches.searchAfterLoad(order.texts.value(0));
            break;
    }
}

}  // namespace

void frmMain::Load() {
    runSteps(loadSteps(), m_services.noted);
    m_isComplete = true;
}

std::vector<FrameStep> frmMain::loadSteps() {
    House& house = *m_house;
    const CommandLine::LoadOrder order = CommandLine::readForLoad(
        m_services.tail, {IsFolderPath, QDir::currentPath(), ::fileExists, m_services.arguments});
    return {
        {"putStatusPictures",
         [&house] {
             BusyPointer::show();
             house.status.putPictures();
             yieldOnce();
         }},
        {"loadOpenCheck",
         [&house, lock = m_services.instanceLock, hooked = order.hooked] {
             using Kind = HandOverEndpoint::Kind;
             house.openCheck = std::make_unique<frmOpenCheck>(lock, hooked ? Kind::Takes : Kind::StaysApart);
         }},
        {"hookOpenCheck",
         [&house, hooked = order.hooked] {
             const auto activated = [&house] { house.diskCheck.applicationActivated(); };
             const auto arrived = [&house](const QString& path) { house.queue.OpenFileFromCmd(path); };
             if (hooked)
                 house.openCheck->Hook(activated, arrived);
             yieldOnce();
         }},
        {"readFirstSettings", [&house] { readFirstSettings(house); }},
        {"loadMacroFiles", [&house] { house.globals.macros.LoadMacros(); }},
        {"PropertiesLoad", [&house] { loadProfile(house); }},
        {"LoadOptions",
         [&house] {
             LoadOptions(house.settings, house.options);
             house.panel.setDefaultSysIcon(house.options.UseFileIcon);
         }},
        {"loadLanguages", [&house] { house.globals.languages.LoadLanguageIndex(); }},
        {"loadLists", [&house] { loadLists(house); }},
        {"setLoaded",
         [this, &house] {
             m_loaded = true;
             house.sidePanel.resetSplitter();
             house.searchPanel.resetSplitter();
         }},
        {"placeSearchBox", [&house] { house.findBar.placeIn(*house.entries.searchPlace()); }},
        {"buildCoolBar", [&house] { buildCoolBar(house); }},
        {"startNewDocument", [&house] { startNewDocument(house); }},
        {"layOutPanels", [&house] { layOutPanels(house); }},
        {"followCommandLine", [&house, order] { followCommandLine(house, order); }},
        {"UpdateMacroMenu", [&house] { house.macroMenu.UpdateMacroMenu(); }},
        {"restoreSession",
         [&house, mayReturn = order.sessionMayReturn] {
             if (mayReturn && house.settings.LoadLastFiles())
                 house.session.RestoreSession();
         }},
        {"markViewParts", [&house] { house.entries.RefreshCheckedItems(); }},
        {"setCommandStates",
         [this, &house] {
             house.entries.SetDocumentEnv(house.active.get());
             SetProjectMenus(false);
         }},
        {"makeTabMenu",
         [this, &house] { house.tabMenu = std::make_unique<TabMenu>(house.active, house.fileCommands, this); }},
        {"setCaption",
         [this] {
             BusyPointer::restore();
             setWindowTitle(u"Quillmark"_qs);
         }},
        {"recoverDocuments",
         [&house] { QTimer::singleShot(0, &house.recovery, [&house] { house.recovery.start(); }); }},
    };
}
