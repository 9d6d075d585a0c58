#include "workspace/panel/ucExplorer.h"

#include "settings/files/OwnTextFile.h"
#include "widgets/Icons.h"
#include "workspace/files/ucFileExplorer.h"
#include "workspace/host/WorkspaceHost.h"
#include "workspace/panel/BandArea.h"
#include "workspace/panel/BandTitle.h"
#include "workspace/panel/ExplorerBand.h"
#include "workspace/panel/ucOpen.h"
#include "workspace/project/ProjectFile.h"
#include "workspace/project/ucProject.h"

#include <QAction>
#include <QPointer>
#include <QToolBar>
#include <QVBoxLayout>

namespace {

struct PanelButton {
    const char* key;
    const char* tip;
    const char* icon;
};

/// Those of the tabs are last, in the order of the tabs.
constexpr PanelButton Buttons[] = {
    {"close", "Close Quillmark Explorer", "panelclose"},
    {"resize", "Open all tabs", "tabsall"},
    {"project", "Open project tab", "projects"},
    {"explorer", "Open file explorer tab", "explorer"},
    {"open", "Open file tab", "openfiles"},
};
constexpr int FirstTabButton = 2;

/// Made before the tabs, so that the Tab key comes to it first.
QToolBar& makeToolBar(QWidget* panel) {
    auto* bar = new QToolBar(panel);
    bar->setObjectName(u"tbToolBar"_qs);
    bar->setAccessibleName(u"Quillmark Explorer"_qs);
    bar->setIconSize(QSize(16, 16));
    for (const PanelButton& each : Buttons) {
        QAction* action = bar->addAction(Icons::named(each.icon), QString::fromLatin1(each.tip));
        QWidget* button = bar->widgetForAction(action);
        button->setObjectName(u"tbToolBar."_qs + QLatin1String(each.key));
        button->setFocusPolicy(Qt::TabFocus);  // no menu has these commands
    }
    return *bar;
}

}  // namespace

ucExplorer::ucExplorer(const WorkspaceServices& services, QWidget* parent)
    : QWidget(parent),
      m_services(services),
      m_toolBar(makeToolBar(this)),
      m_area(*new BandArea(this)),
      m_project(*new ucProject(services, &m_area.addBand(Icons::named("projects"), u"Project"_qs))),
      m_files(*new ucFileExplorer(services, &m_area.addBand(Icons::named("explorer"), u"File Explorer"_qs))),
      m_open(*new ucOpen(services.prompts, &m_area.addBand(Icons::named("openfiles"), u"Open Files"_qs))) {
    setObjectName(u"ucExplorer1"_qs);
    setAccessibleName(u"Quillmark Explorer"_qs);
    m_area.band(Project).setContent(&m_project);
    m_area.band(Files).setContent(&m_files);
    m_area.band(Open).setContent(&m_open);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    rows->addWidget(&m_toolBar);
    rows->addWidget(&m_area, 1);
    connectButtons();
    connectTabs();
}

ucExplorer::~ucExplorer() = default;

/// In the order of the table of buttons.
void ucExplorer::connectButtons() {
    const QList<QAction*> actions = m_toolBar.actions();
    connect(actions.at(0), &QAction::triggered, this, [this] { m_services.host.hidePanel(); });
    connect(actions.at(1), &QAction::triggered, this, [this] { OpenAllTabs(); });
    for (int tab = 0; tab < TabCount(); ++tab)
        connect(buttonOf(tab), &QAction::triggered, this, [this, tab] { openAndEnter(tab); });
}

QAction* ucExplorer::buttonOf(int tab) const {
    return m_toolBar.actions().at(FirstTabButton + tab);
}

void ucExplorer::connectTabs() {
    WorkspaceHost& host = m_services.host;
    const auto openFile = [&host](const QString& path) { host.openFile(path); };
    connect(&m_area, &BandArea::enlargeWanted, this, &ucExplorer::enlarge);
    connect(&m_area, &BandArea::closeWanted, this, &ucExplorer::CloseTab);

    connect(&m_project, &ucProject::openFile, this, openFile);
    connect(&m_project, &ucProject::gotoFolder, this, &ucExplorer::GotoPath);
    connect(&m_project, &ucProject::gotoFile, this, &ucExplorer::gotoFilePath);

    connect(&m_files, &ucFileExplorer::openFile, this, openFile);
    connect(&m_files, &ucFileExplorer::addToProject, this, &ucExplorer::AddProjectItem);
    connect(&m_files, &ucFileExplorer::dragStarted, this, [this] { setBusy(true); });
    connect(&m_files, &ucFileExplorer::dragEnded, this, [this] { setBusy(false); });

    connect(&m_open, &ucOpen::activateFile, this, [&host](const QString& key) { host.selectDocument(key); });
    connect(&m_open, &ucOpen::closeFile, this, [&host] { host.closeDocument(); });
    connect(&m_open, &ucOpen::saveFile, this, [&host] { host.saveDocument(); });
    connect(&m_open, &ucOpen::gotoFolder, this, &ucExplorer::gotoFilePath);
}

void ucExplorer::setBusy(bool busy) {
    m_busy = busy;
    if (busy)
        m_services.host.dragStarts();
    else
        m_services.host.dragEnds();
}

void ucExplorer::InitObjects() {
    if (!m_initialised)
        OpenTab(Open);
    m_initialised = true;
}

bool ucExplorer::isTabOpen(int pTab) const {
    return m_area.places().isOpen(pTab);
}

void ucExplorer::OpenTab(int pTab) {
    m_area.places().OpenTab(pTab);
    ResizeBar();
}

void ucExplorer::enlarge(int tab) {
    m_area.places().enlarge(tab);
    ResizeBar();
}

void ucExplorer::CloseTab(int pTab) {
    m_area.places().CloseTab(pTab);
    ResizeBar();
}

void ucExplorer::OpenAllTabs(bool) {
    m_area.places().OpenAllTabs();
    ResizeBar();
}

void ucExplorer::SetTab(const QString& pLine) {
    m_area.places().SetTab(pLine);
    ResizeBar();
}

void ucExplorer::RestoreItem(const QString& pLine) {
    m_area.places().RestoreItem(pLine);
    ResizeBar();
}

void ucExplorer::ResizeBar() {
    keepKeyboard();
    m_area.layOut();
    for (int tab = 0; tab < TabCount(); ++tab)
        buttonOf(tab)->setVisible(!isTabOpen(tab));
}

/// The keyboard leaves a tab that is closed for the title of the next one, of the one before, or else for the buttons.
/// Qt would pass it to any widget, a document included, which that would activate.
void ucExplorer::keepKeyboard() {
    const QWidget* focused = window()->focusWidget();
    for (int tab = 0; tab < TabCount(); ++tab) {
        if (isTabOpen(tab) || !m_area.band(tab).isAncestorOf(focused))
            continue;
        const BandPlaces& places = m_area.places();
        const int heir = places.nextOpen(tab) >= 0 ? places.nextOpen(tab) : places.previousOpen(tab);
        if (heir >= 0)
            m_area.band(heir).title().setFocus(Qt::TabFocusReason);
        else
            enterToolBar();
    }
}

void ucExplorer::enterToolBar() {
    m_toolBar.widgetForAction(m_toolBar.actions().constFirst())->setFocus(Qt::TabFocusReason);
}

void ucExplorer::openAndEnter(int tab) {
    OpenTab(tab);
    m_area.band(tab).setFocus();
}

void ucExplorer::ClearExplorer() {
    const QPointer<ucExplorer> self(this);
    m_files.ClearFileExplorer();
    if (!self)
        return;
    m_open.ClearOpen();
    m_project.ClearProject();
}

void ucExplorer::SetProjectName(const QString& pPath, const QString& pName) {
    m_area.band(Project).title().setText(pName, pPath);
}

void ucExplorer::AddProjectItem(const QString& pName, const QString& pType) {
    m_project.AddProjectItem(pName, pType);
}

void ucExplorer::PjtItem(int pIndex, QString& pName, QString& pType) const {
    m_project.PjtItem(pIndex, pName, pType);
}

int ucExplorer::PjtItemCount() const {
    return m_project.PjtItemCount();
}

QStringList ucExplorer::SaveItem(bool pIsProject) const {
    QStringList lines;
    if (pIsProject) {
        lines << ProjectFile::marker(ProjectFile::Section::ProjectItems);
        for (int item = 1; item <= PjtItemCount(); ++item) {
            QString name;
            QString type;
            PjtItem(item, name, type);
            if (const auto line = ProjectFile::itemLine({type, name}))
                lines << *line;
        }
    }
    const QString key = m_files.selectedKey();
    lines << ProjectFile::marker(ProjectFile::Section::Explorer) << (OwnTextFile::isOneField(key) ? key : QString());
    lines << ProjectFile::marker(ProjectFile::Section::TabPosition) << m_area.places().positionLine();
    return lines;
}

void ucExplorer::showFiles() {
    if (!isTabOpen(Files))
        OpenTab(Files);
}

void ucExplorer::GotoPath(const QString& pKey) {
    showFiles();
    m_files.GotoPath(pKey);
}

void ucExplorer::gotoFilePath(const QString& path) {
    showFiles();
    m_files.GotoFilePath(path);
}

void ucExplorer::OpenSelectedFiles() {
    m_files.OpenSelectedFiles();
}

void ucExplorer::AddFile(const QString& caption, const QString& key) {
    m_open.AddFile(caption, key);
}

void ucExplorer::SetFile(const QString& file, const QString& key, int image) {
    m_open.SetFile(file, key, image);
}

void ucExplorer::RemoveFile(const QString& key) {
    m_open.RemoveFile(key);
}

void ucExplorer::FileSelected(const QString& key) {
    m_open.FileSelected(key);
}

void ucExplorer::setDefaultSysIcon(bool on) {
    m_systemIcons = on;
    m_project.setDefaultSysIcon(on);
    m_files.setDefaultSysIcon(on);
    m_open.setDefaultSysIcon(on);
}

/// To the first open tab; without one to the tool bar.
void ucExplorer::focusInEvent(QFocusEvent*) {
    const int first = m_area.places().nextOpen(-1);
    if (first >= 0)
        m_area.band(first).setFocus(Qt::TabFocusReason);
    else
        enterToolBar();
}
