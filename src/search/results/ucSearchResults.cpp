#include "search/results/ucSearchResults.h"

#include "platform/Yield.h"
#include "platform/YieldPace.h"
#include "search/results/SearchResultsModel.h"
#include "search/results/SearchResultsView.h"
#include "widgets/BusyPointer.h"
#include "widgets/MenuStyle.h"
#include "widgets/Prompts.h"

#include <QItemSelectionModel>
#include <QList>
#include <QMenu>
#include <QPersistentModelIndex>
#include <QPointer>
#include <QStringList>
#include <QVBoxLayout>

#include <algorithm>
#include <iterator>
#include <utility>

namespace {

constexpr QStringView Open = u"OPEN";
constexpr QStringView Bookmark = u"BOOKMARK";

enum class Place { None, Menu, HiddenMenu, Both };

bool isIn(Place place, Place menu) {
    return place == menu || place == Place::Both;
}

}  // namespace

/// The commands in the order of the menu; one without a key is a separator.
struct ucSearchResults::Command {
    const char* key;
    const char* caption;
    Place place;
    void (ucSearchResults::*run)();  ///< null: without effect
};

const ucSearchResults::Command ucSearchResults::Commands[] = {
    {"mnuExpandAllNodes", "Expand All Nodes", Place::Both, &ucSearchResults::expandAll},
    {"mnuCollapseAllNodes", "Collapse All Nodes", Place::Both, &ucSearchResults::collapseAll},
    {"", "", Place::Both, nullptr},
    {"mnuOpenFile", "Open File", Place::Both, &ucSearchResults::openCurrent},
    {"mnuOpenAllFiles", "Open All Files", Place::Both, &ucSearchResults::openAllFiles},
    {"", "", Place::Both, nullptr},
    {"mnuBookLines", "Bookmark Line(s)", Place::Both, &ucSearchResults::bookmarkLines},
    {"", "", Place::Both, nullptr},
    {"mnuRemoveSelectedNodes", "Remove Checked Nodes", Place::Both, &ucSearchResults::removeChecked},
    {"mnuClearAllNodes", "Clear All Nodes", Place::Both, &ucSearchResults::clearAll},
    {"", "", Place::Menu, nullptr},
    {"mnuCheckNodes", "Check All Nodes", Place::Menu, &ucSearchResults::checkAll},
    {"mnuUncheckNodes", "Uncheck All Nodes", Place::Menu, &ucSearchResults::uncheckAll},
    {"mnuHighlightKeyword", "Highlight Keywords Found", Place::HiddenMenu, nullptr},
    {"mnuHighLightFound", "", Place::None, nullptr},
};

ucSearchResults::ucSearchResults(Prompts& prompts, QWidget* parent)
    : QWidget(parent),
      m_prompts(prompts),
      m_model(*new SearchResultsModel(this)),
      m_tree(*new SearchResultsView(m_model, this)),
      m_menu(*new QMenu(this)) {
    setFocusProxy(&m_tree);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->addWidget(&m_tree);
    buildMenus();
    connect(&m_tree, &SearchResultsView::matchChosen, this, &ucSearchResults::open);
    connect(&m_tree, &SearchResultsView::menuWanted, this, &ucSearchResults::showMenu);
}

// A command of the menu may have led here, and the menu is used until it returns.
ucSearchResults::~ucSearchResults() {
    m_menu.setParent(nullptr);
    m_menu.deleteLater();
}

void ucSearchResults::buildMenus() {
    m_menu.setObjectName(u"Search"_qs);
    MenuStyle::giveTo(m_menu);
    auto* hidden = new QMenu(this);
    hidden->setObjectName(u"mnuMenu"_qs);
    const auto add = [](QMenu& menu, const Command& command) {
        if (*command.key == '\0')
            menu.addSeparator();
        else
            menu.addAction(QString::fromLatin1(command.caption))->setObjectName(QString::fromLatin1(command.key));
    };
    for (const Command& command : Commands) {
        if (isIn(command.place, Place::Menu))
            add(m_menu, command);
        if (isIn(command.place, Place::HiddenMenu))
            add(*hidden, command);
    }
    for (const QMenu* menu : {&m_menu, hidden})
        connect(menu, &QMenu::triggered, this, [this](const QAction* entry) { runCommand(entry->objectName()); });
}

void ucSearchResults::showMenu(const QPoint& place) {
    if (m_model.rowCount() == 0)
        return;
    const bool hasNode = m_tree.currentIndex().isValid();
    for (const char* key : {"mnuOpenFile", "mnuBookLines"})
        m_menu.findChild<QAction*>(QLatin1String(key))->setEnabled(hasNode);
    m_menu.popup(place);
}

void ucSearchResults::runCommand(const QString& key) {
    const Command* command = std::ranges::find_if(
        Commands, [&](const Command& each) { return each.run != nullptr && key == QLatin1String(each.key); });
    if (command != std::end(Commands))
        (this->*command->run)();
}

QModelIndex ucSearchResults::GetTreeNode(const QString& pKey) const {
    return m_model.find(pKey);
}

void ucSearchResults::addMatches(const QString& file, FileMatches matches) {
    m_model.addMatches(file, std::move(matches));
}

void ucSearchResults::AddItem(const QString& pFile, qint64 pLineNo, qint64 pStart, int pEnd, const QString& pLine) {
    FileMatches matches;
    matches.addLine(pLineNo, pLine);
    FileMatches::Match match;
    match.start = pStart;
    match.length = pEnd;
    match.column = -1;
    matches.addMatch(match);
    addMatches(pFile, std::move(matches));
}

void ucSearchResults::ClearTree() {
    m_model.clear();
}

void ucSearchResults::SetNodeText(const QString& pKey, const QString& pText) {
    m_model.setText(pKey, pText);
}

void ucSearchResults::expandAll() {
    BusyPointer::show();
    m_tree.expandAll();
    BusyPointer::restore();
}

void ucSearchResults::collapseAll() {
    BusyPointer::show();
    m_tree.closeAllFiles();
    BusyPointer::restore();
}

void ucSearchResults::openCurrent() {
    open(m_tree.currentIndex());
}

void ucSearchResults::open(const QModelIndex& node) {
    if (SearchResultsModel::isMatch(node)) {
        const QString file = node.parent().data(SearchResultsModel::Key).toString();
        Q_EMIT ItemAction(file, node.data(SearchResultsModel::Tag).toString(), Open.toString());
    } else if (node.isValid()) {
        Q_EMIT ItemAction(node.data(SearchResultsModel::Key).toString(), u"-1"_qs, Open.toString());
    }
}

/// Files that are removed while others are opened are passed over.
void ucSearchResults::openAllFiles() {
    const QPointer<ucSearchResults> self(this);
    if (!m_prompts.askYesNo(this, u"Open all files ?"_qs) || !self)
        return;
    QList<QPersistentModelIndex> files;
    for (int row = 0; row < m_model.rowCount(); ++row)
        files.append(m_model.index(row, 0));
    BusyPointer::show();
    for (const QPersistentModelIndex& file : files) {
        if (!file.isValid())
            continue;
        Q_EMIT ItemAction(file.data(SearchResultsModel::Key).toString(), QString(), Open.toString());
        yieldOnce();
    }
    BusyPointer::restore();
}

void ucSearchResults::bookmarkLines() {
    const QModelIndex node = m_tree.currentIndex();
    if (SearchResultsModel::isMatch(node)) {
        const QString file = node.parent().data(SearchResultsModel::Key).toString();
        Q_EMIT ItemAction(file, node.data(SearchResultsModel::Tag).toString(), Bookmark.toString());
    } else if (node.isValid()) {
        bookmarkAll(node);
    }
}

/// The tags are taken first, so that matches that are removed or added meanwhile change nothing. When the file is
/// removed the rest of them are left out. There may be very many, so the event loop runs only now and then.
void ucSearchResults::bookmarkAll(const QModelIndex& file) {
    const QPersistentModelIndex node(file);
    const QString key = node.data(SearchResultsModel::Key).toString();
    QStringList tags;
    for (int row = 0; row < m_model.rowCount(file); ++row)
        tags.append(m_model.index(row, 0, file).data(SearchResultsModel::Tag).toString());
    YieldPace pace;
    for (const QString& tag : tags) {
        if (!node.isValid())
            return;
        Q_EMIT ItemAction(key, tag, Bookmark.toString());
        if (pace.due())
            yieldOnce();
    }
}

void ucSearchResults::removeChecked() {
    const QPersistentModelIndex next(m_model.neighbourToRemain(m_tree.currentIndex()));
    m_tree.selectionModel()->clear();
    m_model.removeChecked();
    if (next.isValid())
        m_tree.setCurrentIndex(next);
}

void ucSearchResults::clearAll() {
    const QPointer<ucSearchResults> self(this);
    if (m_prompts.askYesNo(this, u"Clear all nodes ?"_qs) && self)
        ClearTree();
}

void ucSearchResults::checkAll() {
    m_model.checkAll(true);
}

void ucSearchResults::uncheckAll() {
    m_model.checkAll(false);
}
