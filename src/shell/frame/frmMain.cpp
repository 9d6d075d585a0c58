#include "shell/frame/frmMain.h"

#include "document/DocumentServices.h"
#include "document/EditorGlobals.h"
#include "document/frmDocument.h"
#include "hex/bytes/HexFindState.h"
#include "settings/Options.h"
#include "settings/Settings.h"
#include "shell/bars/CoolBar.h"
#include "shell/bars/DocumentTabs.h"
#include "shell/bars/FindBar.h"
#include "shell/bars/FocusRound.h"
#include "shell/bars/StatusPanels.h"
#include "shell/bars/TabStrip.h"
#include "shell/commands/CommandEntries.h"
#include "shell/commands/CommandTable.h"
#include "shell/commands/FrameCommands.h"
#include "shell/commands/LanguageMenu.h"
#include "shell/commands/MacroMenu.h"
#include "shell/commands/MenuSlots.h"
#include "shell/commands/RoomsToCome.h"
#include "shell/commands/SearchToggles.h"
#include "shell/commands/TabMenu.h"
#include "shell/commands/WindowMenu.h"
#include "shell/documents/DocumentClosing.h"
#include "shell/documents/DocumentOpening.h"
#include "shell/documents/DocumentSaving.h"
#include "shell/documents/MdiChildren.h"
#include "shell/documents/OpenQueue.h"
#include "shell/documents/SystemClose.h"
#include "shell/frame/FrameDrops.h"
#include "shell/frame/FrameParts.h"
#include "shell/frame/LoadSequence.h"
#include "shell/frame/ShutDown.h"
#include "shell/outside/HelpPages.h"
#include "shell/start/IgnoringErrors.h"
#include "shell/start/frmOpenCheck.h"
#include "widgets/Icons.h"
#include "widgets/Prompts.h"

#include <QCloseEvent>
#include <QDropEvent>
#include <QMdiArea>
#include <QMenuBar>
#include <QMimeData>
#include <QShortcut>
#include <QStatusBar>
#include <QToolBar>
#include <QVBoxLayout>

#include <utility>

namespace {

constexpr QSize StartSize(1000, 700);

}  // namespace

/// The classes that carry out the frame's procedures, and what is no widget of its own.
struct frmMain::Duties {
    Duties(frmMain& frame, FrameParts& parts)
        : settings(frame.m_services.registry),
          globals(frame.m_services.registry, frame.m_services.programFolder, frame.m_services.shareFolder),
          documentServices{frame.m_services.prompts, options, globals, hexFind},
          help(frame.m_services.programFolder, frame.m_services.shareFolder),
          systemClose(&frame),
          files(parts),
          saving(parts, files),
          closing(parts, saving),
          commands(parts, files, saving, closing),
          languageMenu(parts),
          macroMenu(parts),
          queue(parts, files),
          drops(parts, files) {}

    Options options;
    Settings settings;
    EditorGlobals globals;
    HexFindState hexFind;
    DocumentServices documentServices;
    HelpPages help;
    SystemClose systemClose;
    DocumentOpening files;
    DocumentSaving saving;
    DocumentClosing closing;
    FrameCommands commands;
    LanguageMenu languageMenu;
    MacroMenu macroMenu;
    OpenQueue queue;
    FrameDrops drops;
    QToolBar* toolBar = nullptr;
    TabStrip* strip = nullptr;
    TabMenu* tabMenu = nullptr;
    std::unique_ptr<MenuSlots> menuSlots;
    std::unique_ptr<SearchToggles> searchToggles;
    std::unique_ptr<frmOpenCheck> openCheck;
};

frmMain::frmMain(const FrameServices& services)
    : m_services(services),
      m_parts(std::make_unique<FrameParts>()),
      m_duties(std::make_unique<Duties>(*this, *m_parts)) {
    setObjectName(u"frmMain"_qs);
    setWindowIcon(Icons::named("quillmark"));
    setAcceptDrops(true);
    resize(StartSize);
    buildWindow();
    buildCommands();
    connectParts();
    addKeys();
}

frmMain::~frmMain() {
    // Documents call their host as they go, so they go while it still stands.
    delete takeCentralWidget();
}

void frmMain::buildWindow() {
    auto* inner = new QWidget(this);
    auto* rows = new QVBoxLayout(inner);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    auto* coolBar = new CoolBar(inner);
    auto* area = new QMdiArea(inner);
    rows->addWidget(coolBar);
    rows->addWidget(area, 1);
    setCentralWidget(inner);

    m_duties->toolBar = new QToolBar(coolBar);
    m_duties->toolBar->setObjectName(u"tbToolBar"_qs);
    m_duties->toolBar->setIconSize(QSize(16, 16));
    m_duties->strip = new TabStrip(coolBar);

    m_parts->frame = this;
    m_parts->host = this;
    m_parts->prompts = &m_services.prompts;
    m_parts->registry = &m_services.registry;
    m_parts->settings = &m_duties->settings;
    m_parts->options = &m_duties->options;
    m_parts->documentServices = &m_duties->documentServices;
    m_parts->explorer = &m_services.explorer;
    m_parts->rooms = &m_services.rooms;
    m_parts->help = &m_duties->help;
    m_parts->systemClose = &m_duties->systemClose;
    m_parts->coolBar = coolBar;
    m_parts->children = new MdiChildren(*area);
    m_parts->tabs = new DocumentTabs(*m_duties->strip, *m_parts->children, m_services.explorer);
    m_parts->status = new StatusPanels(*statusBar());
}

void frmMain::buildCommands() {
    m_parts->commands = new CommandEntries(
        *m_parts, *menuBar(), *m_duties->toolBar, [this](const CommandTarget& target) { run(target); }, this);
    m_duties->menuSlots = std::make_unique<MenuSlots>(*m_parts->commands, m_duties->commands);
    m_duties->searchToggles = std::make_unique<SearchToggles>(m_duties->options, *m_parts->commands);
    m_parts->menuSlots = m_duties->menuSlots.get();
    m_parts->searchToggles = m_duties->searchToggles.get();
    m_parts->languageMenu = &m_duties->languageMenu;
    m_parts->macroMenu = &m_duties->macroMenu;
    m_parts->findBar = new FindBar(*m_parts);
    new WindowMenu(*m_parts->commands->menu("mnuWindow"), *m_parts->children);
}

void frmMain::run(const CommandTarget& target) {
    if (target.frame != nullptr)
        (m_duties->commands.*target.frame)();
    else if (target.room != nullptr)
        (m_services.rooms.*target.room)();
    else if (frmDocument* document = m_parts->children->active())
        (document->*target.document)();
}

void frmMain::connectParts() {
    connect(m_parts->children, &MdiChildren::activated, this, &frmMain::ActiveFormChange);
    m_parts->macroMenu->follow();
    connect(m_parts->status, &StatusPanels::textWanted, this,
            [this](const QString& text) { m_services.prompts.message(this, text); });
    connect(m_duties->strip, &TabStrip::menuWanted, this, [this](const QPoint& place) {
        if (m_duties->tabMenu != nullptr)
            m_duties->tabMenu->showAt(place);
    });
}

void frmMain::addKeys() {
    addKey("Ctrl+F4", [this] { m_duties->commands.Close(); });
    for (const char* key : {"Ctrl+F6", "Ctrl+Tab"})
        addKey(key, [this] { m_parts->children->activateNeighbour(1); });
    for (const char* key : {"Ctrl+Shift+F6", "Ctrl+Shift+Tab"})
        addKey(key, [this] { m_parts->children->activateNeighbour(-1); });
    addKey("F6", [this] { FocusRound::go(*m_parts, *m_duties->strip, 1); });
    addKey("Shift+F6", [this] { FocusRound::go(*m_parts, *m_duties->strip, -1); });
}

void frmMain::addKey(const char* key, std::function<void()> action) {
    const QKeySequence sequence(QString::fromLatin1(key), QKeySequence::PortableText);
    connect(new QShortcut(sequence, this), &QShortcut::activated, this,
            [action = std::move(action)] { ignoringErrors(action); });
}

void frmMain::Load() {
    LoadSequence sequence(*this, *m_parts, m_services.tail);
    runSteps(LoadSequence::steps(), sequence, m_services.noted);
}

void frmMain::closeEvent(QCloseEvent* event) {
    if (m_parts->systemClose->isGreyed()) {
        event->ignore();
        return;
    }
    event->accept();
    if (std::exchange(m_unloaded, true))
        return;
    ShutDown sequence(*this, *m_parts);
    runSteps(ShutDown::steps(), sequence, m_services.noted);
}

void frmMain::dragEnterEvent(QDragEnterEvent* event) {
    if (FrameDrops::carriesFiles(*event->mimeData()))
        event->acceptProposedAction();
}

void frmMain::dropEvent(QDropEvent* event) {
    event->acceptProposedAction();
    m_duties->drops.take(*event->mimeData());
}

void frmMain::OpenFileFromCmd(const QString& pFile) {
    m_duties->queue.OpenFileFromCmd(pFile);
}

void frmMain::NewDocument() {
    m_duties->files.NewDocument();
}

void frmMain::SaveAll() {
    m_duties->saving.SaveAll();
}

void frmMain::CheckFileUpdate() {
    m_duties->files.CheckFileUpdate();
}

bool frmMain::FindOpenDocument(const QString& pFile) {
    return m_duties->files.FindOpenDocument(pFile);
}

void frmMain::CloseAll(frmDocument* pExcept) {
    m_duties->closing.CloseAll(pExcept);
}

void frmMain::ActiveFormChange(frmDocument* pForm) {
    if (pForm != nullptr)
        ignoringErrors([&] { m_duties->files.ActiveFormChange(pForm); });
}

void frmMain::AfterFind(const QString& pText, bool pCaseSensitive, bool pRegExp, bool pWholeWord) {
    m_parts->findBar->AfterFind(pText, pCaseSensitive, pRegExp, pWholeWord);
}

void frmMain::SetDocumentEnv(frmDocument* pForm) {
    m_parts->commands->SetDocumentEnv(pForm);
}

void frmMain::SetProjectMenus(bool pFlag) {
    m_parts->commands->SetProjectMenus(ProjectFilename, pFlag);
}

void frmMain::RefreshCheckedItems() {
    m_parts->commands->RefreshCheckedItems();
}

void frmMain::UpdateMacroMenu() {
    m_parts->macroMenu->UpdateMacroMenu();
}

void frmMain::OpenFile(const QString& path, int flags, bool checkBinary, bool openTextMode) {
    m_duties->files.OpenFile(path, flags, checkBinary, openTextMode);
}

void frmMain::SaveDocument(frmDocument* document, bool activeTab, int format) {
    if (document != nullptr)
        m_duties->saving.SaveDocument(document, activeTab, format);
}

void frmMain::ChangeReadOnly() {
    m_duties->files.ChangeReadOnly();
}

void frmMain::DocClose(frmDocument* document) {
    if (document != nullptr)
        m_duties->closing.DocClose(document);
}

void frmMain::DelTab(frmDocument* document) {
    if (document != nullptr)
        m_duties->closing.DelTab(document);
}

void frmMain::loadOpenCheck() {
    m_duties->openCheck = std::make_unique<frmOpenCheck>();
}

void frmMain::hookOpenCheck() {
    m_duties->openCheck->Hook([this] {
        if (m_duties->options.FileModifyNotice)
            ignoringErrors([this] { CheckFileUpdate(); });
    });
}

void frmMain::unhookOpenCheck() {
    if (m_duties->openCheck)
        m_duties->openCheck->Unhook();
}

void frmMain::buildCoolBar() {
    m_parts->coolBar->setBand(CoolBar::Tool, m_duties->toolBar);
    m_parts->coolBar->setBand(CoolBar::Tab, m_duties->strip);
}

void frmMain::makeTabMenu() {
    m_duties->tabMenu = new TabMenu(*m_parts, m_duties->commands, this);
}

void frmMain::releaseTabMenu() {
    delete std::exchange(m_duties->tabMenu, nullptr);
}

void frmMain::unloadForms() {
    m_duties->openCheck.reset();
}
