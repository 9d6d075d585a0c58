#include "workspace/project/ucProject.h"

#include "widgets/MenuStyle.h"
#include "widgets/OpenOutside.h"
#include "widgets/Prompts.h"
#include "widgets/RowInput.h"
#include "workspace/lists/FolderKey.h"

#include <QFileInfo>
#include <QHeaderView>
#include <QMenu>
#include <QPointer>
#include <QTreeView>
#include <QVBoxLayout>

#include <algorithm>

/// The entries in the order of the menu; an empty key is a separator.
struct ucProject::MenuEntry {
    const char* key;
    const char* caption;
    void (ucProject::*command)(int row);
};

const ucProject::MenuEntry ucProject::MenuEntries[] = {
    {"mnuOpen", "Open", &ucProject::open},
    {"", "", nullptr},
    {"mnuGotoPath", "Goto Path", &ucProject::gotoPath},
    {"mnuOpenInExplorer", "Open Folder in File Explorer", &ucProject::openFolder},
    {"", "", nullptr},
    {"mnuRemoveFromProject", "Remove From Project", &ucProject::removeRow},
    {"mnuRemoveAll", "Remove All Items", &ucProject::removeAll},
};

namespace {

bool isFile(const ProjectItem& item) {
    return item.type == u"FILE";
}

/// The folder of a file, or the folder itself.
QString folderOf(const ProjectItem& item) {
    return isFile(item) ? QFileInfo(item.key).path() : DecodeFolderKey(item.key);
}

}  // namespace

ucProject::ucProject(const WorkspaceServices& services, QWidget* parent)
    : QWidget(parent), m_services(services), m_list(new QTreeView(this)), m_menu(new QMenu(this)) {
    setObjectName(u"ucProject1"_qs);
    m_list->setObjectName(u"lvProject"_qs);
    m_list->setAccessibleName(u"Project"_qs);
    m_list->setModel(&m_items);
    m_list->setRootIsDecorated(false);
    m_list->setUniformRowHeights(true);
    m_list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_list->header()->setStretchLastSection(true);
    auto* input = new RowInput(*m_list);
    input->onKeys({Qt::Key_Return, Qt::Key_Enter}, [this] { run(&ucProject::open); });
    input->onKeys({Qt::Key_Delete}, [this] { run(&ucProject::removeRow); });
    connect(input, &RowInput::menuWanted, this, &ucProject::showMenu);
    connect(m_list, &QTreeView::doubleClicked, this, [this](const QModelIndex& index) { open(index.row()); });
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(m_list);
    setFocusProxy(m_list);
    buildMenu();
}

// The view uses the model, so it is destroyed first.
ucProject::~ucProject() {
    delete m_list;
}

void ucProject::buildMenu() {
    m_menu->setObjectName(u"Project"_qs);
    MenuStyle::giveTo(*m_menu);
    for (const MenuEntry& entry : MenuEntries) {
        if (*entry.key == '\0') {
            m_menu->addSeparator();
            continue;
        }
        QAction* action = m_menu->addAction(QString::fromLatin1(entry.caption));
        action->setObjectName(QString::fromLatin1(entry.key));
        connect(action, &QAction::triggered, this, [this, &entry] { run(entry.command); });
    }
}

void ucProject::AddProjectItem(const QString& pName, const QString& pType) {
    if (m_items.add(pName, pType) == ProjectItems::Added::KnownKey)
        m_services.prompts.message(this, u"Key is not unique in collection"_qs);
}

void ucProject::PjtItem(int pIndex, QString& pName, QString& pType) const {
    const bool isRow = pIndex >= 1 && pIndex <= m_items.rowCount();
    const ProjectItem item = isRow ? m_items.item(pIndex - 1) : ProjectItem();
    pName = item.key;
    pType = item.type;
}

int ucProject::PjtItemCount() const {
    return m_items.rowCount();
}

void ucProject::ClearProject() {
    m_items.clear();
}

void ucProject::setDefaultSysIcon(bool on) {
    m_items.setDefaultSysIcon(on);
}

void ucProject::run(void (ucProject::*command)(int row)) {
    const QModelIndex current = m_list->currentIndex();
    if (current.isValid() || command == &ucProject::removeAll)
        (this->*command)(current.row());
}

void ucProject::open(int row) {
    const ProjectItem item = m_items.item(row);
    if (isFile(item))
        emit openFile(item.key);
    else
        emit gotoFolder(item.key);
}

void ucProject::gotoPath(int row) {
    const ProjectItem item = m_items.item(row);
    if (isFile(item))
        emit gotoFile(item.key);
    else
        emit gotoFolder(item.key);
}

void ucProject::openFolder(int row) {
    OpenOutside::folder(folderOf(m_items.item(row)));
}

// The question runs the event loop, and another project may be open after it.
void ucProject::removeRow(int row) {
    const QPersistentModelIndex index(m_items.index(row));
    const QPointer<ucProject> alive(this);
    if (!m_services.prompts.askYesNo(this, u"Remove '%1' from project ?"_qs.arg(m_items.text(row))))
        return;
    if (alive && index.isValid())
        m_items.removeAt(index.row());
}

void ucProject::removeAll(int) {
    const QPointer<ucProject> alive(this);
    if (m_services.prompts.askYesNo(this, u"Remove all items from project ?"_qs) && alive)
        m_items.clear();
}

void ucProject::showMenu(const QPoint& globalPosition) {
    if (m_items.rowCount() == 0)
        return;
    const bool hasCurrent = m_list->currentIndex().isValid();
    for (QAction* action : m_menu->actions())
        action->setEnabled(hasCurrent || action->objectName() == u"mnuRemoveAll");
    m_menu->popup(globalPosition);
}
