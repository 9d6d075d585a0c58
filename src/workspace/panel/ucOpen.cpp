#include "workspace/panel/ucOpen.h"

#include "platform/Yield.h"
#include "widgets/MenuStyle.h"
#include "widgets/OpenOutside.h"
#include "workspace/lists/frmFileProperties.h"
#include "workspace/panel/OpenFilesModel.h"
#include "workspace/panel/OpenFilesView.h"

#include <QFileInfo>
#include <QMenu>
#include <QPointer>
#include <QVBoxLayout>

namespace {

struct OpenEntry {
    const char* key;     ///< empty: a separator
    const char* hidden;  ///< its name in the hidden menu; empty: not there
    const char* caption;
    void (ucOpen::*command)();
};

constexpr OpenEntry Entries[] = {
    {"mnuClose", "mnuCloseFiles", "Close Selected File(s)", &ucOpen::CloseSelected},
    {"mnuCloseAll", "", "Close All Files", &ucOpen::CloseAll},
    {"mnuCloseAllExceptThis", "", "Close All Files Except This", &ucOpen::CloseAllExceptThis},
    {"", "", "", nullptr},
    {"mnuSave", "mnuSaveFiles", "Save Selected File(s)", &ucOpen::SaveSelected},
    {"mnuGoto", "mnuGotoFolder", "Goto File Folder", &ucOpen::GotoFolder},
    {"mnuExplorer", "mnuOpenFolder", "Open Folder in File Explorer", &ucOpen::OpenFolder},
    {"", "", "", nullptr},
    {"mnuProperties", "mnuProperties", "Properties", &ucOpen::ShowFileProperties},
    {"mnuShowFile", "mnuShowPath", "Show File Path", &ucOpen::ToggleShowPath},
};

}  // namespace

ucOpen::ucOpen(Prompts& prompts, QWidget* parent)
    : QWidget(parent),
      m_prompts(prompts),
      m_model(*new OpenFilesModel(this)),
      m_list(*new OpenFilesView(this)),
      m_menu(*new QMenu(this)) {
    setObjectName(u"ucOpen1"_qs);
    setFocusProxy(&m_list);
    m_list.setModel(&m_model);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->addWidget(&m_list);
    buildMenus();
    connect(&m_list, &QListView::clicked, this, [this](const QModelIndex& index) { itemClicked(index.row()); });
    connect(&m_list, &OpenFilesView::rowChosen, this, [this](const QModelIndex& index) { activateRow(index.row()); });
    connect(&m_list, &OpenFilesView::deletePressed, this, &ucOpen::CloseSelected);
    connect(&m_list, &OpenFilesView::menuWanted, this, &ucOpen::showMenu);
}

void ucOpen::buildMenus() {
    m_menu.setObjectName(u"Open"_qs);
    MenuStyle::giveTo(m_menu);
    auto* hidden = new QMenu(this);
    hidden->setObjectName(u"mnuOpen"_qs);
    const auto add = [this](QMenu& menu, const char* name, const OpenEntry& entry) {
        QAction* action = menu.addAction(QString::fromLatin1(entry.caption));
        action->setObjectName(QString::fromLatin1(name));
        action->setCheckable(entry.command == &ucOpen::ToggleShowPath);
        connect(action, &QAction::triggered, this, entry.command);
    };
    for (const OpenEntry& entry : Entries) {
        if (*entry.key == '\0') {
            m_menu.addSeparator();
            continue;
        }
        add(m_menu, entry.key, entry);
        if (*entry.hidden != '\0')
            add(*hidden, entry.hidden, entry);
    }
}

void ucOpen::showMenu(const QPoint& place) {
    if (m_model.rowCount() == 0)
        return;
    const bool hasPath = !currentPath().isEmpty();
    for (const char* name : {"mnuProperties", "mnuGoto"})
        m_menu.findChild<QAction*>(QLatin1String(name))->setEnabled(hasPath);
    m_menu.popup(place);
}

void ucOpen::AddFile(const QString& pFile, const QString& pKey) {
    m_model.add(pFile, pKey);
    m_list.clearSelection();
    selectRow(m_model.rowOf(pKey));
}

void ucOpen::SetFile(const QString& pFile, const QString& pKey, int pIcon) {
    m_model.set(pFile, pKey, pIcon);
    selectRow(m_model.rowOf(pKey));
}

void ucOpen::RemoveFile(const QString& pKey) {
    m_model.remove(pKey);
    if (m_activated == pKey)
        m_activated.clear();
}

void ucOpen::FileSelected(const QString& pKey) {
    m_activated = pKey;
    if (m_list.lastButton() != Qt::RightButton)
        selectRow(m_model.rowOf(pKey));
}

void ucOpen::ClearOpen() {
    m_model.clear();
    m_activated.clear();
}

/// A row that is one of several selected ones stays so, together with the others.
void ucOpen::selectRow(int row) {
    if (row < 0)
        return;
    const QModelIndex index = m_model.index(row);
    QItemSelectionModel* selection = m_list.selectionModel();
    const bool kept = selection->isSelected(index) && selection->selectedRows().size() > 1;
    selection->setCurrentIndex(index, kept ? QItemSelectionModel::NoUpdate : QItemSelectionModel::ClearAndSelect);
    m_list.scrollTo(index);
}

void ucOpen::itemClicked(int row) {
    if (m_list.lastButton() != Qt::RightButton && m_model.keyAt(row) != m_activated)
        activateRow(row);
}

void ucOpen::activateRow(int row) {
    m_activated = m_model.keyAt(row);
    Q_EMIT activateFile(m_activated);
}

QStringList ucOpen::selectedKeys() const {
    QStringList keys;
    for (const int row : m_list.selectedRows())
        keys.append(m_model.keyAt(row));
    return keys;
}

QStringList ucOpen::allKeysBut(int row) const {
    QStringList keys;
    for (int each = m_model.rowCount() - 1; each >= 0; --each) {
        if (each != row)
            keys.append(m_model.keyAt(each));
    }
    return keys;
}

/// A document may end while another is worked on, and a step works on the active one: so each key is looked up again
/// before its step.
void ucOpen::forEach(const QStringList& keys, Step step) {
    if (m_atWork)
        return;
    m_atWork = true;
    const QPointer<ucOpen> self(this);
    for (const QString& key : keys) {
        for (const Step each : {&ucOpen::activateFile, step}) {
            if (m_model.rowOf(key) < 0)
                continue;
            Q_EMIT(this->*each)(key);
            yieldOnce();
            if (!self)
                return;
        }
    }
    m_atWork = false;
}

void ucOpen::CloseSelected() {
    forEach(selectedKeys(), &ucOpen::closeFile);
}

void ucOpen::CloseAll() {
    forEach(allKeysBut(-1), &ucOpen::closeFile);
}

void ucOpen::CloseAllExceptThis() {
    if (m_list.currentRow() >= 0)
        forEach(allKeysBut(m_list.currentRow()), &ucOpen::closeFile);
}

void ucOpen::SaveSelected() {
    forEach(selectedKeys(), &ucOpen::saveFile);
}

QString ucOpen::currentPath() const {
    const int row = m_list.currentRow();
    return row < 0 || m_model.isUntitled(row) ? QString() : m_model.tagAt(row);
}

void ucOpen::GotoFolder() {
    if (const QString path = currentPath(); !path.isEmpty())
        Q_EMIT gotoFolder(path);
}

void ucOpen::OpenFolder() {
    if (const QString path = currentPath(); !path.isEmpty())
        OpenOutside::folder(QFileInfo(path).path());
}

void ucOpen::ShowFileProperties() {
    if (const QString path = currentPath(); !path.isEmpty())
        ShowProperties(path, m_prompts, this);
}

void ucOpen::ToggleShowPath() {
    m_model.setShowPath(!ShowPath());
    for (const char* name : {"mnuShowFile", "mnuShowPath"})
        findChild<QAction*>(QLatin1String(name))->setChecked(ShowPath());
}

bool ucOpen::ShowPath() const {
    return m_model.ShowPath();
}

bool ucOpen::DefaultSysIcon() const {
    return m_model.DefaultSysIcon();
}

void ucOpen::setDefaultSysIcon(bool on) {
    m_model.setDefaultSysIcon(on);
}
