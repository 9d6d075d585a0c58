#include "workspace/files/ucFileExplorer.h"

#include "platform/SystemError.h"
#include "settings/Settings.h"
#include "widgets/Prompts.h"
#include "workspace/files/Disk.h"
#include "workspace/files/FileListModel.h"
#include "workspace/files/FileListView.h"
#include "workspace/files/FolderSplitter.h"
#include "workspace/files/FolderTree.h"
#include "workspace/files/FolderTreeModel.h"
#include "workspace/files/FolderTreeView.h"
#include "workspace/lists/FolderKey.h"

#include <QFocusEvent>
#include <QHeaderView>
#include <QMenu>
#include <QTimer>
#include <QVBoxLayout>

#include <utility>

namespace {

constexpr int DefaultNameWidth = 180;

bool isOn(Settings& settings, const QString& key) {
    return settings.forFrame(key) == QLatin1String("1");
}

}  // namespace

ucFileExplorer::ucFileExplorer(const WorkspaceServices& services, QWidget* parent)
    : ucFileExplorer(services, Disk::system(), parent) {}

ucFileExplorer::ucFileExplorer(const WorkspaceServices& services, std::shared_ptr<const Disk> disk, QWidget* parent)
    : QWidget(parent),
      m_services(services),
      m_splitter(new FolderSplitter(this)),
      m_treeView(new FolderTreeView(m_splitter)),
      m_list(new FileListView(m_splitter)),
      m_tree(new FolderTree(*m_treeView, services.prompts, disk, this)),
      m_files(new FileListModel(std::move(disk), this)),
      m_nameWidth(DefaultNameWidth) {
    setObjectName(u"ucFileExplorer1"_qs);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_splitter);
    m_splitter->handle(1)->setObjectName(u"Picture2"_qs);
    setTabOrder(m_treeView, m_splitter->handle(1));
    setTabOrder(m_splitter->handle(1), m_list);
    connectTree();
    buildList();
    buildMenus();
    connect(m_treeView->selectionModel(), &QItemSelectionModel::currentChanged, this, &ucFileExplorer::followState);
    connect(&m_tree->model(), &QAbstractItemModel::modelReset, this, &ucFileExplorer::followState);
    restoreLayout();
}

ucFileExplorer::~ucFileExplorer() = default;

void ucFileExplorer::connectTree() {
    m_treeView->setObjectName(u"t1"_qs);
    m_treeView->setAccessibleName(u"Folders"_qs);
    connect(m_treeView, &FolderTreeView::nodeClicked, this, &ucFileExplorer::clickNode);
    connect(m_treeView, &FolderTreeView::menuWanted, this, &ucFileExplorer::showFolderMenu);
}

void ucFileExplorer::buildList() {
    m_list->setObjectName(u"lvOpen"_qs);
    m_list->setAccessibleName(u"Files"_qs);
    m_list->setModel(m_files);
    connect(m_list, &QAbstractItemView::doubleClicked, this,
            [this](const QModelIndex& index) { openFiles({m_files->pathOf(index.row())}); });
    connect(m_list, &FileListView::openRequested, this, &ucFileExplorer::OpenSelectedFiles);
    connect(m_list, &FileListView::renameRequested, this, &ucFileExplorer::renameFile);
    connect(m_list, &FileListView::deleteRequested, this, &ucFileExplorer::DeleteSelectedFiles);
    connect(m_list, &FileListView::dragStarted, this, &ucFileExplorer::dragStarted);
    connect(m_list, &FileListView::dragEnded, this, &ucFileExplorer::dragEnded);
    connect(m_list, &FileListView::menuWanted, this, &ucFileExplorer::showFileMenu);
    connect(m_list->header(), &QHeaderView::sectionClicked, this, &ucFileExplorer::sortBy);
    connect(m_files, &FileListModel::loaded, this, &ucFileExplorer::selectLoaded);
}

void ucFileExplorer::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    // Later, because nothing may run the event loop while a window is being shown.
    if (!m_isInitialised)
        QTimer::singleShot(0, this, &ucFileExplorer::fillOnce);
}

void ucFileExplorer::focusInEvent(QFocusEvent* event) {
    m_treeView->setFocus(event->reason());
}

void ucFileExplorer::fillOnce() {
    if (!m_isInitialised)
        InitObjects();
}

void ucFileExplorer::InitObjects() {
    m_isInitialised = true;
    const QPointer<ucFileExplorer> self(this);
    RefreshView();
    if (!self || !isOn(m_services.settings, u"LoadLastFolder"_qs))
        return;
    const QString last = m_services.settings.forFrame(u"LastFolderName"_qs);
    if (!last.isEmpty())
        GotoPath(last);
}

void ucFileExplorer::RefreshView() {
    m_isInitialised = true;
    m_tree->RefreshView();
}

void ucFileExplorer::clickNode(const QModelIndex& index) {
    if (m_tree->isWalking())
        return;
    const QString key = m_tree->model().keyOf(index);
    const QPointer<ucFileExplorer> self(this);
    fillList(index);
    if (self && !key.isEmpty() && isOn(m_services.settings, u"LoadLastFolder"_qs))
        m_services.settings.write(u"LastFolderName"_qs, key);
}

void ucFileExplorer::fillList(const QModelIndex& index) {
    const QString key = index.isValid() ? m_tree->model().keyOf(index) : QString();
    const QPointer<ucFileExplorer> self(this);
    if (key.isEmpty() || !m_tree->checkReady(index) || !self)
        return;
    m_listed = DecodeFolderKey(key);
    refillList();
}

void ucFileExplorer::refillList() {
    if (!m_listed.isEmpty())
        m_files->load(m_listed, m_filter);
}

void ucFileExplorer::GotoPath(const QString& pKey) {
    m_isInitialised = true;
    const QPointer<ucFileExplorer> self(this);
    if (!m_tree->GotoPath(pKey) || !self)
        return;
    // A node that could not be opened has been reported already.
    if (m_tree->model().isRead(m_tree->selected()))
        fillList(m_tree->selected());
    if (self)
        m_treeView->setFocus();
}

void ucFileExplorer::GotoFilePath(const QString& pFile) {
    const qsizetype end = pFile.lastIndexOf(u'/');
    if (end >= 0)
        GotoPath(folderKey(end == 0 ? u"/"_qs : pFile.left(end)));
}

QString ucFileExplorer::selectedKey() const {
    return m_tree->selectedKey();
}

void ucFileExplorer::ClearFileExplorer() {
    m_files->clear();
    m_listed.clear();
    const QPointer<ucFileExplorer> self(this);
    RefreshView();
    if (self)
        restoreLayout();
}

void ucFileExplorer::restoreLayout() {
    m_nameWidth = DefaultNameWidth;
    m_list->header()->resizeSection(FileListModel::NameColumn, m_nameWidth);
    m_splitter->setSizes({1, 1});
}

void ucFileExplorer::mySetFocus() {}

void ucFileExplorer::myLostFocus() {}

bool ucFileExplorer::hasDefaultSysIcon() const {
    return m_files->hasSystemIcons();
}

void ucFileExplorer::setDefaultSysIcon(bool on) {
    m_files->setSystemIcons(on);
}

void ucFileExplorer::sortBy(int column) {
    const Qt::SortOrder order = m_directions.click(column);
    m_files->sort(column, order);
    ShowSortIcon(*m_list->header(), column, order);
}
