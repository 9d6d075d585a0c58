#pragma once

#include "document/DocumentServices.h"
#include "document/EditorGlobals.h"
#include "hex/bytes/HexFindState.h"
#include "platform/FileLookup.h"
#include "settings/Options.h"
#include "settings/Settings.h"
#include "shell/commands/CommandEntries.h"
#include "shell/commands/FavoriteCommands.h"
#include "shell/commands/FileCommands.h"
#include "shell/commands/FileSearches.h"
#include "shell/commands/FrameCommands.h"
#include "shell/commands/LanguageMenu.h"
#include "shell/commands/ListMenus.h"
#include "shell/commands/MacroMenu.h"
#include "shell/commands/MenuSlots.h"
#include "shell/commands/OutsideCommands.h"
#include "shell/commands/PanelRequests.h"
#include "shell/commands/ProgramProperties.h"
#include "shell/commands/ProjectCommands.h"
#include "shell/commands/SearchToggles.h"
#include "shell/commands/SlotCommands.h"
#include "shell/commands/TabMenu.h"
#include "shell/commands/ViewCommands.h"
#include "shell/documents/ActiveDocument.h"
#include "shell/documents/DiskCheck.h"
#include "shell/documents/DocumentClosing.h"
#include "shell/documents/DocumentOpening.h"
#include "shell/documents/DocumentSaving.h"
#include "shell/documents/OpenQueue.h"
#include "shell/documents/SystemClose.h"
#include "shell/frame/FrameDrops.h"
#include "shell/outside/HelpPages.h"
#include "shell/recovery/DocumentRecovery.h"
#include "shell/session/DocumentRecords.h"
#include "shell/session/KeptList.h"
#include "shell/session/ProjectLists.h"
#include "shell/session/SessionKeeper.h"
#include "shell/start/frmOpenCheck.h"

#include <memory>

class CoolBar;
class DocumentHost;
class DocumentTabs;
class FindBar;
class MdiChildren;
class PanelLink;
class QMainWindow;
class QToolBar;
class SearchPanel;
class SidePanel;
class StatusPanels;
class TabStrip;
struct FrameServices;

/// The parts of the frame, in the order of their creation. Each part gets what it uses by its constructor; only the
/// frame, which owns this object, has access to all of it. The widgets are owned by the window.
struct House {
    /// `window` and `host` are the frame, and `projectFilename` is its own; `run` carries out a command.
    House(QMainWindow& window, DocumentHost& host, QString& projectFilename, const FrameServices& services,
          CommandEntries::Runner run);

    // Passed to the frame
    Prompts& prompts;
    RegistryStore& registry;

    // Shared by all documents
    Options options;
    Settings settings;
    EditorGlobals globals;
    HexFindState hexFind;
    DocumentServices documentServices;
    HelpPages help;

    // The window
    CoolBar& coolBar;
    QToolBar& toolBar;
    TabStrip& strip;
    SidePanel& sidePanel;
    SearchPanel& searchPanel;
    MdiChildren& children;
    StatusPanels& status;
    DocumentTabs& tabs;

    // Documents
    SystemClose systemClose;
    FileLookup lookup;
    ActiveDocument active;
    DocumentOpening opening;
    DocumentSaving saving;
    DocumentClosing closing;
    DiskCheck diskCheck;
    OpenQueue queue;
    DocumentRecovery recovery;

    // What is kept from run to run
    KeptList recentFiles;
    ProjectLists projectLists;
    DocumentRecords documentRecords;
    SessionKeeper session;

    // Commands
    FindBar& findBar;
    CommandEntries entries;
    MenuSlots menuSlots;
    ListMenus listMenus;
    SearchToggles searchToggles;
    LanguageMenu languageMenu;
    MacroMenu macroMenu;
    FileCommands fileCommands;
    ViewCommands viewCommands;
    ProgramProperties programProperties;
    FrameCommands frameCommands;
    OutsideCommands outsideCommands;
    FavoriteCommands favoriteCommands;

    // The side panel, and what works with it
    PanelRequests panelRequests;
    PanelLink& panel;
    ProjectCommands projects;
    FileSearches searches;
    SlotCommands slotCommands;
    FrameDrops drops;

    // Created when the frame is loaded, and destroyed when it ends
    std::unique_ptr<frmOpenCheck> openCheck;
    std::unique_ptr<TabMenu> tabMenu;
};
