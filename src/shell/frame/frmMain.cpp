#include "shell/frame/frmMain.h"

#include "document/frmDocument.h"
#include "shell/bars/DocumentTabs.h"
#include "shell/bars/FindBar.h"
#include "shell/bars/FocusRound.h"
#include "shell/bars/SearchPanel.h"
#include "shell/bars/SidePanel.h"
#include "shell/bars/StatusPanels.h"
#include "shell/bars/TabStrip.h"
#include "shell/commands/CommandRow.h"
#include "shell/documents/MdiChildren.h"
#include "shell/frame/House.h"
#include "shell/recovery/DocumentDifferences.h"
#include "shell/recovery/SaveNotices.h"
#include "shell/start/FrameSteps.h"
#include "shell/start/IgnoringErrors.h"
#include "widgets/Icons.h"
#include "widgets/Prompts.h"
#include "workspace/panel/PanelLink.h"

#include <QDropEvent>
#include <QMimeData>
#include <QShortcut>

#include <utility>

namespace {

constexpr QSize StartSize(1000, 700);

/// Connects those who show documents. One that fails does not keep the next from being called.
class Listeners {
 public:
    Listeners(const ActiveDocument& source, QObject& context) : m_source(source), m_context(context) {}

    template <typename Signal, typename Call>
    void on(Signal signal, const char* step, Call call) const {
        QObject::connect(&m_source, signal, &m_context,
                         [step, call](auto&&... values) { ignoringErrors(step, [&] { call(values...); }); });
    }

    /// Calls with each document of which one of these has changed.
    template <typename Call>
    void onChange(ActiveDocument::Changes any, const char* step, Call call) const {
        on(&ActiveDocument::changed, step, [any, call](frmDocument* document, ActiveDocument::Changes what) {
            if (any & what)
                call(document);
        });
    }

    /// Calls with the active document alone: when it has become active, and when one of these has changed.
    template <typename Call>
    void onActive(ActiveDocument::Changes any, const char* step, Call call) const {
        const auto ifActive = [&source = m_source, call](frmDocument* document) {
            if (source.is(document))
                call(document);
        };
        on(&ActiveDocument::activated, step, ifActive);
        onChange(any, step, ifActive);
    }

 private:
    const ActiveDocument& m_source;
    QObject& m_context;
};

}  // namespace

frmMain::frmMain(const FrameServices& services)
    : m_services(services),
      m_house(std::make_unique<House>(*this, *this, ProjectFilename, m_services,
                                      [this](const CommandTarget& target) { run(target); })) {
    setObjectName(u"frmMain"_qs);
    setWindowIcon(Icons::named("quillmark"));
    setAcceptDrops(true);
    resize(StartSize);
    connectListeners();
    addKeys();
}

frmMain::~frmMain() {
    // Documents call their host when they are destroyed, so that happens while it still exists.
    delete takeCentralWidget();
}

/// The receivers of each signal, each with the step that it does. They are called in the order of this list; the tabs
/// are last where they run the event loop.
void frmMain::connectListeners() {
    using Active = ActiveDocument;
    House& h = *m_house;
    const Listeners of(h.active, *this);

    of.on(&Active::added, "AddFile", [&h](frmDocument* d) { h.panel.AddFile(d->Caption(), d->fIdx); });
    of.on(&Active::added, "answerRequests", [&h](frmDocument* d) { h.frameCommands.answerRequests(*d); });
    of.on(&Active::added, "answerDifferencesRequest", [this](frmDocument* d) {
        connect(d, &frmDocument::DifferencesRequest, this,
                [this](const frmDocument* document) { DocumentDifferences::show(*document, *this); });
    });
    of.on(&Active::added, "AddDocumentTab", [&h](frmDocument* d) { h.tabs.AddDocumentTab(d); });

    // The language removes all other marks from the menus, and the commands restore them.
    of.onActive(Active::Language, "CheckLangMenu", [&h](frmDocument* d) { h.languageMenu.CheckLangMenu(d); });
    of.onActive(Active::Caret, "ShowCursorPosition", [&h](frmDocument* d) { h.status.ShowCursorPosition(d); });
    of.onActive(Active::File, "ShowDocumentInfo", [&h](frmDocument* d) { h.status.ShowDocumentInfo(d); });
    of.onActive(Active::File | Active::Limits, "ShowLimitations",
                [&h](frmDocument* d) { h.status.ShowLimitations(d); });
    of.onActive(Active::Repeat | Active::Mode, "ShowRepeatCount",
                [&h](frmDocument* d) { h.status.ShowRepeatCount(d); });
    of.onActive(Active::Mode | Active::View, "SetDocumentEnv", [&h](frmDocument* d) { h.entries.SetDocumentEnv(d); });
    of.on(&Active::activated, "selectKey", [&h](frmDocument* d) { h.tabs.selectKey(d->fIdx); });

    of.onChange(Active::State, "SetTabCaption", [&h](frmDocument* d) { h.tabs.SetTabCaption(d); });
    of.onChange(Active::State, "SetFile",
                [&h](frmDocument* d) { h.panel.SetFile(d->filename, d->fIdx, DocumentTabs::imageFor(d)); });

    of.on(&Active::opened, "SetFile",
          [&h](frmDocument* d, const QString& path) { h.panel.SetFile(path, d->fIdx, DocumentTabs::imageFor(d)); });
    of.on(&Active::opened, "AddLRUFile", [&h](frmDocument*, const QString& path) { h.recentFiles.add(path); });
    of.on(&Active::saved, "AddLRUFile", [&h](frmDocument*, const QString& path) { h.recentFiles.add(path); });

    of.on(&Active::closing, "RemoveFile", [&h](frmDocument* d) { h.panel.RemoveFile(d->fIdx); });
    of.on(&Active::removed, "DelTab", [&h](frmDocument* d) { h.tabs.DelTab(d); });
    of.on(&Active::removed, "clear", [&h](frmDocument*) {
        if (h.children.documents().isEmpty())
            h.status.clear();
    });

    connect(&h.active, &Active::noticed, &h.status, &StatusPanels::ShowNotice);
    connect(&h.active, &Active::noticedInPassing, &h.status, &StatusPanels::ShowPassingNotice);
    connect(&h.closing, &DocumentClosing::noticed, &h.status, &StatusPanels::ShowPassingNotice);
    connect(&h.recovery, &DocumentRecovery::noticed, &h.status, &StatusPanels::ShowPassingNotice);
    if (m_services.saveNotices != nullptr)
        connect(m_services.saveNotices, &SaveNotices::noticed, &h.status, &StatusPanels::ShowPassingNotice);
    connect(&h.active, &Active::searched, &h.findBar, &FindBar::AfterFind);
    connect(&h.findBar, &FindBar::searched, this, [&h] { h.searchToggles.showOptions(); });
    connect(&h.macroMenu, &MacroMenu::recordingChanged, &h.status, &StatusPanels::ShowRecording);
    connect(&h.status, &StatusPanels::textWanted, this,
            [this, &h](const QString& text) { h.prompts.message(this, text); });
    connect(&h.status, &StatusPanels::left, this, [&h] {
        if (frmDocument* document = h.active.get())
            document->setFocus();
    });
    connect(&h.tabs, &DocumentTabs::chosen, this,
            [&h](const QString& key) { ignoringErrors("FileSelected", [&] { h.panel.FileSelected(key); }); });
    connect(&h.sidePanel, &SidePanel::shownChanged, this,
            [&h](bool shown) { h.entries.CheckMenuItem("mnuEditExplorer", shown); });
    connect(&h.searchPanel, &SearchPanel::shownChanged, this,
            [&h](bool shown) { h.entries.CheckMenuItem("mnulFindReplacePanel", shown); });
    connect(&h.strip, &TabStrip::menuWanted, this, [&h](const QPoint& place) {
        if (h.tabMenu)
            h.tabMenu->showAt(place);
    });
}

void frmMain::run(const CommandTarget& target) {
    House& h = *m_house;
    if (target.file != nullptr)
        (h.fileCommands.*target.file)();
    else if (target.view != nullptr)
        (h.viewCommands.*target.view)();
    else if (target.frame != nullptr)
        (h.frameCommands.*target.frame)();
    else if (target.outside != nullptr)
        (h.outsideCommands.*target.outside)();
    else if (target.favorite != nullptr)
        (h.favoriteCommands.*target.favorite)();
    else if (target.project != nullptr)
        (h.projects.*target.project)();
    else if (target.search != nullptr)
        (h.searches.*target.search)();
    else if (frmDocument* document = h.active.get())
        (document->*target.document)();
}

void frmMain::addKeys() {
    House& h = *m_house;
    addKey("Ctrl+F4", [&h] { h.fileCommands.Close(); });
    for (const char* key : {"Ctrl+F6", "Ctrl+Tab"})
        addKey(key, [&h] { h.children.activateNeighbour(1); });
    for (const char* key : {"Ctrl+Shift+F6", "Ctrl+Shift+Tab"})
        addKey(key, [&h] { h.children.activateNeighbour(-1); });
    const auto walk = [&h](int step) {
        frmDocument* document = h.active.get();
        QWidget* recovered = document == nullptr ? nullptr : document->recoveredBar();
        FocusRound::go(
            {recovered, document, h.findBar.widget(), &h.strip, h.sidePanel.held(), h.searchPanel.entrance()}, step);
    };
    addKey("F6", [walk] { walk(1); });
    addKey("Shift+F6", [walk] { walk(-1); });
}

void frmMain::addKey(const char* key, std::function<void()> action) {
    const QKeySequence sequence(QString::fromLatin1(key), QKeySequence::PortableText);
    connect(new QShortcut(sequence, this), &QShortcut::activated, this,
            [key, action = std::move(action)] { ignoringErrors(key, action); });
}

void frmMain::dragEnterEvent(QDragEnterEvent* event) {
    if (FrameDrops::carriesFiles(*event->mimeData()))
        event->acceptProposedAction();
}

void frmMain::dropEvent(QDropEvent* event) {
    event->acceptProposedAction();
    m_house->drops.take(*event->mimeData());
}

void frmMain::OpenFileFromCmd(const QString& pFile) {
    m_house->queue.OpenFileFromCmd(pFile);
}

void frmMain::NewDocument() {
    m_house->opening.NewDocument();
}

void frmMain::SaveAll() {
    m_house->saving.SaveAll();
}

void frmMain::CheckFileUpdate() {
    m_house->diskCheck.CheckFileUpdate();
}

bool frmMain::FindOpenDocument(const QString& pFile) {
    return m_house->opening.FindOpenDocument(pFile);
}

void frmMain::CloseAll(frmDocument* pExcept) {
    m_house->closing.CloseAll(pExcept);
}

void frmMain::ActiveFormChange(frmDocument* pForm) {
    if (pForm != nullptr)
        m_house->active.ActiveFormChange(pForm);
}

void frmMain::AfterFind(const QString& pText, bool pCaseSensitive, bool pRegExp, bool pWholeWord) {
    m_house->findBar.AfterFind(pText, pCaseSensitive, pRegExp, pWholeWord);
}

void frmMain::SetDocumentEnv(frmDocument* pForm) {
    m_house->entries.SetDocumentEnv(pForm);
}

void frmMain::SetProjectMenus(bool pFlag) {
    m_house->entries.SetProjectMenus(ProjectFilename, pFlag);
}

void frmMain::RefreshCheckedItems() {
    m_house->entries.RefreshCheckedItems();
}

void frmMain::UpdateMacroMenu() {
    m_house->macroMenu.UpdateMacroMenu();
}

void frmMain::OpenFile(const QString& path, int flags, bool checkBinary, bool openTextMode) {
    m_house->opening.OpenFile(path, flags, checkBinary, openTextMode);
}

void frmMain::SaveDocument(frmDocument* document, bool activeTab, int format) {
    if (document != nullptr)
        m_house->saving.SaveDocument(document, activeTab, format);
}

void frmMain::ChangeReadOnly() {
    m_house->active.ChangeReadOnly();
}

void frmMain::DocClose(frmDocument* document) {
    if (document != nullptr)
        m_house->closing.DocClose(document);
}

void frmMain::DelTab(frmDocument* document) {
    if (document != nullptr)
        m_house->closing.DelTab(document);
}
