// Part of ucFileExplorer: its two context menus and those of their commands that concern folders and the list as a
// whole.

#include "platform/SpecialFolders.h"
#include "widgets/MenuStyle.h"
#include "widgets/OpenOutside.h"
#include "widgets/Prompts.h"
#include "workspace/files/FileListModel.h"
#include "workspace/files/FileListView.h"
#include "workspace/files/FolderPlaces.h"
#include "workspace/files/FolderTree.h"
#include "workspace/files/FolderTreeView.h"
#include "workspace/files/ucFileExplorer.h"
#include "workspace/lists/FolderKey.h"
#include "workspace/lists/frmFileProperties.h"

#include <QAction>
#include <QHeaderView>
#include <QMenu>

#include <span>

/// One entry; the entries are in the order of the menus.
struct ucFileExplorer::Entry {
    const char* menu;     ///< key of the menu
    const char* subMenu;  ///< empty: the menu itself
    const char* name;     ///< also the entry's object name; empty: a separator
    const char* caption;
    enum Kind { Command, Checked, Place, SubMenu, Heading, Gap } kind;
    void (ucFileExplorer::*run)() = nullptr;
    int folder = 0;  ///< of a place: the code of the special folder

    static std::span<const Entry> all();
};

namespace {

constexpr int DesktopFolder = 0;
constexpr int DocumentsFolder = 5;
constexpr int ProgramsFolder = 1;
constexpr int SystemFolder = -1;

QString textOf(const char* text) {
    return QString::fromLatin1(text);
}

}  // namespace

std::span<const ucFileExplorer::Entry> ucFileExplorer::Entry::all() {
    using Explorer = ucFileExplorer;
    static constexpr Entry Entries[] = {
        {"Folder", "", "mnuRefresh", "Refresh", Command, &Explorer::RefreshView},
        {"Folder", "", "mnuSetAsRoot", "Set Directory as Root", Command, &Explorer::setAsRoot},
        {"Folder", "", "mnuOpenFolder", "Open Folder in File Explorer", Command, &Explorer::openFolder},
        {"Folder", "", "", "", Gap},
        {"Folder", "", "mnuProperties", "Properties", Command, &Explorer::showFolderProperties},
        {"Folder", "", "mnuShowModifiedDate", "Show Modified Date", Checked, &Explorer::flipModifiedDate},
        {"Folder", "", "mnuAddToProject", "Add Folder to Project", Command, &Explorer::addFolderToProject},
        {"Folder", "", "mnuFavorites", "Favorites", SubMenu},
        {"Folder", "mnuFavorites", "mnuAddFavFolders", "Add Folder to Favorites", Command, &Explorer::addFavorite},
        {"Folder", "mnuFavorites", "mnuDelFavFolders", "Delete Folder from Favorites", Command,
         &Explorer::removeFavorite},
        {"Folder", "mnuFavorites", "mnuFavFolders", "Folder(s)", Heading},
        {"Folder", "", "mnuRecent", "Recent", SubMenu},
        {"Folder", "mnuRecent", "mnuRecentFolder", "Folder(s)", Heading},
        {"Folder", "", "mnuWndowDirectory", "Windows Directory", Place, nullptr, ProgramsFolder},
        {"Folder", "", "mnuSystemDirectory", "System Directory", Place, nullptr, SystemFolder},
        {"Folder", "", "mnuDesktop", "Desktop", Place, nullptr, DesktopFolder},
        {"Folder", "", "mnuMyDocuments", "My Documents", Place, nullptr, DocumentsFolder},
        {"File", "", "mnuOpenFile", "Open Selected Files", Command, &Explorer::OpenSelectedFiles},
        {"File", "", "mnuRenameFile", "Rename File", Command, &Explorer::renameFile},
        {"File", "", "mnuDuplicateFile", "Duplicate File", Command, &Explorer::duplicateFile},
        {"File", "", "mnuDeleteSelectedFile", "Delete Selected File(s)", Command, &Explorer::DeleteSelectedFiles},
        {"File", "", "mnuFileFiltering", "File Filtering", SubMenu},
        {"File", "mnuFileFiltering", "mnuSetFilter", "Set Filter", Checked, &Explorer::setFilter},
        {"File", "mnuFileFiltering", "mnuClearFilter", "Clear Filter", Command, &Explorer::clearFilter},
        {"File", "", "mnuAddFileToProject", "Add Files(s) to Project", Command, &Explorer::addFilesToProject},
        {"File", "", "mnuOpenFolder", "Open Folder in File Explorer", Command, &Explorer::openFolder},
        {"File", "", "mnuProperties", "Properties", Command, &Explorer::showFileProperties},
        {"File", "", "mnuShowModifiedDate", "Show Modified Date", Checked, &Explorer::flipModifiedDate},
        {"File", "", "mnuWndowDirectory", "Windows Directory", Place, nullptr, ProgramsFolder},
        {"File", "", "mnuSystemDirectory", "System Directory", Place, nullptr, SystemFolder},
        {"File", "", "mnuDesktop", "Desktop", Place, nullptr, DesktopFolder},
        {"File", "", "mnuMyDocuments", "My Documents", Place, nullptr, DocumentsFolder},
    };
    return Entries;
}

void ucFileExplorer::buildMenus() {
    m_folderMenu = buildMenu(u"Folder"_qs);
    m_fileMenu = buildMenu(u"File"_qs);
    m_places = new FolderPlaces(*m_folderMenu->findChild<QMenu*>(u"mnuFavorites"_qs),
                                *m_folderMenu->findChild<QMenu*>(u"mnuRecent"_qs), this);
    connect(m_places, &FolderPlaces::chosen, this, &ucFileExplorer::GotoPath);
    LoadFavorites();
    LoadRecent();
}

QMenu* ucFileExplorer::buildMenu(const QString& key) {
    auto* menu = new QMenu(this);
    menu->setObjectName(key);
    MenuStyle::giveTo(*menu);
    for (const Entry& entry : Entry::all()) {
        if (key == QLatin1String(entry.menu))
            addEntry(*entry.subMenu == '\0' ? *menu : *menu->findChild<QMenu*>(textOf(entry.subMenu)), entry);
    }
    return menu;
}

void ucFileExplorer::addEntry(QMenu& menu, const Entry& entry) {
    if (entry.kind == Entry::Gap) {
        menu.addSeparator();
        return;
    }
    if (entry.kind == Entry::SubMenu) {
        QMenu* added = menu.addMenu(textOf(entry.caption));
        MenuStyle::giveTo(*added);
        added->setObjectName(textOf(entry.name));
        added->menuAction()->setObjectName(textOf(entry.name));
        return;
    }
    QAction* action = menu.addAction(textOf(entry.caption));
    action->setObjectName(textOf(entry.name));
    action->setCheckable(entry.kind == Entry::Checked);
    action->setEnabled(entry.kind != Entry::Heading);
    const auto gotoPlace = [this, code = entry.folder] { GotoPath(folderKey(specialFolder(code))); };
    if (entry.run != nullptr)
        connect(action, &QAction::triggered, this, entry.run);
    else if (entry.kind == Entry::Place)
        connect(action, &QAction::triggered, this, gotoPlace);
}

void ucFileExplorer::showFolderMenu(const QPoint& place) {
    followState();
    m_folderMenu->popup(place);
}

void ucFileExplorer::showFileMenu(const QPoint& place) {
    followState();
    m_fileMenu->popup(place);
}

void ucFileExplorer::followState() {
    const bool isFavorite = m_places->isFavorite(selectedKey());
    m_folderMenu->findChild<QAction*>(u"mnuAddFavFolders"_qs)->setEnabled(!isFavorite);
    m_folderMenu->findChild<QAction*>(u"mnuDelFavFolders"_qs)->setEnabled(isFavorite);
    m_fileMenu->findChild<QAction*>(u"mnuSetFilter"_qs)->setChecked(!m_filter.isEmpty());
    for (const QMenu* menu : {m_folderMenu, m_fileMenu})
        menu->findChild<QAction*>(u"mnuShowModifiedDate"_qs)->setChecked(m_files->isModifiedShown());
}

void ucFileExplorer::LoadFavorites() {
    m_places->loadFavorites();
    followState();
}

void ucFileExplorer::LoadRecent() {
    m_places->loadRecent();
}

void ucFileExplorer::addFavorite() {
    m_places->addFavorite(selectedKey());
    followState();
}

void ucFileExplorer::removeFavorite() {
    m_places->removeFavorite(selectedKey());
    followState();
}

void ucFileExplorer::setAsRoot() {
    const QPointer<ucFileExplorer> self(this);
    if (m_tree->setAsRoot() && self)
        fillList(m_tree->selected());
}

void ucFileExplorer::openFolder() {
    const QString key = selectedKey();
    if (!key.isEmpty())
        OpenOutside::folder(DecodeFolderKey(key));
}

void ucFileExplorer::showFolderProperties() {
    const QString key = selectedKey();
    if (!key.isEmpty())
        ShowProperties(DecodeFolderKey(key), m_services.prompts, this);
}

void ucFileExplorer::addFolderToProject() {
    const QString key = selectedKey();
    if (!key.isEmpty())
        Q_EMIT addToProject(key, u"FOLDER"_qs);
}

void ucFileExplorer::flipModifiedDate() {
    QHeaderView& header = *m_list->header();
    const bool on = !m_files->isModifiedShown();
    const bool wasSorted = m_files->sortColumn() == FileListModel::ModifiedColumn;
    if (!on)
        m_nameWidth = header.sectionSize(FileListModel::NameColumn);
    m_files->setModifiedShown(on);
    if (on)
        header.resizeSection(FileListModel::NameColumn, m_nameWidth);
    else if (wasSorted)
        ShowSortIcon(header, FileListModel::NameColumn, Qt::AscendingOrder);
    followState();
    refillList();
}

void ucFileExplorer::setFilter() {
    const QPointer<ucFileExplorer> self(this);
    const std::optional<QString> answer =
        m_services.prompts.askText(this, u"File Filtering"_qs, u"Enter Filter:"_qs, m_filter);
    if (!self)
        return;
    if (!answer) {
        followState();
        return;
    }
    applyFilter(answer->trimmed());
}

void ucFileExplorer::clearFilter() {
    applyFilter({});
}

void ucFileExplorer::applyFilter(const QString& filter) {
    m_filter = filter;
    followState();
    refillList();
}
