#include "shell/frame/LoadSequence.h"

#include "document/DocumentServices.h"
#include "document/EditorGlobals.h"
#include "editor/control/ControlLook.h"
#include "platform/Paths.h"
#include "platform/Yield.h"
#include "settings/Options.h"
#include "settings/Settings.h"
#include "shell/bars/CoolBar.h"
#include "shell/bars/DocumentTabs.h"
#include "shell/bars/FindBar.h"
#include "shell/bars/StatusPanels.h"
#include "shell/commands/CommandEntries.h"
#include "shell/commands/LanguageMenu.h"
#include "shell/commands/MacroMenu.h"
#include "shell/commands/RoomsToCome.h"
#include "shell/commands/SearchToggles.h"
#include "shell/documents/MdiChildren.h"
#include "shell/documents/PanelLink.h"
#include "shell/frame/FrameParts.h"
#include "shell/frame/frmMain.h"
#include "widgets/BusyPointer.h"

#include <QDir>

namespace {

using Step = FrameStep<LoadSequence>;

}  // namespace

LoadSequence::LoadSequence(frmMain& frame, FrameParts& parts, const QString& tail)
    : m_frame(frame),
      m_parts(parts),
      m_order(CommandLine::readForLoad(
          tail, {[](const QString& path) { return IsFolderPath(path); }, QDir::currentPath()})) {}

std::span<const Step> LoadSequence::steps() {
    static constexpr Step List[] = {
        {"putStatusPictures", &LoadSequence::putStatusPictures},
        {"prepareMenuPictures", &LoadSequence::prepareMenuPictures},
        {"loadOpenCheck", &LoadSequence::loadOpenCheck},
        {"hookOpenCheck", &LoadSequence::hookOpenCheck},
        {"readFirstSettings", &LoadSequence::readFirstSettings},
        {"createEditorGlobals", &LoadSequence::createEditorGlobals},
        {"loadMacroFiles", &LoadSequence::loadMacroFiles},
        {"PropertiesLoad", &LoadSequence::PropertiesLoad},
        {"LoadOptions", &LoadSequence::LoadOptions},
        {"loadLanguages", &LoadSequence::loadLanguages},
        {"loadLists", &LoadSequence::loadLists},
        {"setLoaded", &LoadSequence::setLoaded},
        {"placeSearchBox", &LoadSequence::placeSearchBox},
        {"buildCoolBar", &LoadSequence::buildCoolBar},
        {"startNewDocument", &LoadSequence::startNewDocument},
        {"layOutPanels", &LoadSequence::layOutPanels},
        {"followCommandLine", &LoadSequence::followCommandLine},
        {"UpdateMacroMenu", &LoadSequence::UpdateMacroMenu},
        {"restoreSession", &LoadSequence::restoreSession},
        {"markViewParts", &LoadSequence::markViewParts},
        {"setCommandStates", &LoadSequence::setCommandStates},
        {"makeTabMenu", &LoadSequence::makeTabMenu},
        {"setCaption", &LoadSequence::setCaption},
    };
    return List;
}

void LoadSequence::putStatusPictures() {
    BusyPointer::show();
    m_parts.status->putPictures();
    yieldOnce();
}

void LoadSequence::prepareMenuPictures() {
    // The entries got their pictures from the command table when they were made; each is drawn when it is first seen.
}

void LoadSequence::loadOpenCheck() {
    m_frame.loadOpenCheck();
}

void LoadSequence::hookOpenCheck() {
    if (m_order.hooked)
        m_frame.hookOpenCheck();
    yieldOnce();
}

void LoadSequence::readFirstSettings() {
    const QFont font = ControlLook::defaultFont();
    m_parts.options->FontName = font.family();
    m_parts.options->FontSize = static_cast<qint16>(font.pointSize());
    loadFirstOptions(*m_parts.settings, *m_parts.options);
    m_parts.searchToggles->showOptions();
}

void LoadSequence::createEditorGlobals() {
    // Made with the frame, since documents are given it by reference.
}

void LoadSequence::loadMacroFiles() {
    m_parts.documentServices->globals.macros.LoadMacros();
}

void LoadSequence::PropertiesLoad() {
    EditorGlobals& globals = m_parts.documentServices->globals;
    globals.profile.load();
    globals.theme.load();
    globals.hotKeys.load(*m_parts.registry);
}

void LoadSequence::LoadOptions() {
    ::LoadOptions(*m_parts.settings, *m_parts.options);
    m_parts.explorer->setDefaultSysIcon(m_parts.options->UseFileIcon);
}

void LoadSequence::loadLanguages() {
    m_parts.documentServices->globals.languages.LoadLanguageIndex();
}

void LoadSequence::loadLists() {
    m_parts.languageMenu->LoadLanguageMenu(m_parts.documentServices->globals.languages.loadedNames());
    m_parts.rooms->LoadRecentFiles();
    m_parts.rooms->LoadRecentProjects();
    m_parts.rooms->LoadFavProjects();
    m_parts.findBar->LoadSearchKeys();
}

void LoadSequence::setLoaded() {
    m_frame.setLoaded();
    m_parts.rooms->resetSplitters();
}

void LoadSequence::placeSearchBox() {
    m_parts.findBar->placeIn(*m_parts.commands->searchPlace());
}

void LoadSequence::buildCoolBar() {
    m_parts.tabs->clear();
    m_frame.buildCoolBar();
}

void LoadSequence::startNewDocument() {
    if (!m_parts.settings->StartNewDocument())
        return;
    m_frame.NewDocument();
    m_parts.children->maximise(m_parts.children->active());
}

void LoadSequence::layOutPanels() {
    BusyPointer::restore();
    m_parts.rooms->ArrangePanels();
    m_parts.explorer->InitObjects();
    m_parts.rooms->layOutSearchPanel();
}

void LoadSequence::followCommandLine() {
    using Kind = CommandLine::LoadOrder::Kind;
    switch (m_order.kind) {
        case Kind::Nothing:
            break;
        case Kind::Document:
            m_frame.OpenFileFromCmd(m_order.text);
            break;
        case Kind::Project:
            m_parts.rooms->OpenProject(m_order.text);
            break;
        case Kind::SearchFolders:
            m_parts.rooms->ShowSearchInFiles(m_order.text);
            break;
    }
}

void LoadSequence::UpdateMacroMenu() {
    m_parts.macroMenu->UpdateMacroMenu();
}

void LoadSequence::restoreSession() {
    if (m_order.sessionMayReturn && m_parts.settings->LoadLastFiles())
        m_parts.rooms->RestoreSession();
}

void LoadSequence::markViewParts() {
    m_parts.commands->RefreshCheckedItems();
}

void LoadSequence::setCommandStates() {
    m_parts.commands->SetDocumentEnv(m_parts.children->active());
    m_frame.SetProjectMenus(false);
}

void LoadSequence::makeTabMenu() {
    m_frame.makeTabMenu();
}

void LoadSequence::setCaption() {
    BusyPointer::restore();
    m_frame.setWindowTitle(u"Quillmark"_qs);
}
