#pragma once

#include "search/engine/FileMatches.h"

#include <QModelIndex>
#include <QWidget>

class Prompts;
class QMenu;
class SearchResultsModel;
class SearchResultsView;

/// The results of a search across files: the tree `t1` and its menu "Search". Which document shows a match is not its
/// matter: it asks its owner by ItemAction(), whose slots run the event loop. Nodes may be removed meanwhile, or the
/// control destroyed. Owned by the panel that holds it, which names it.
class ucSearchResults : public QWidget {
    Q_OBJECT

 public:
    /// The prompts outlive it.
    explicit ucSearchResults(Prompts& prompts, QWidget* parent = nullptr);
    ~ucSearchResults() override;

    /// The node of the file; invalid when there is none.
    Q_INVOKABLE QModelIndex GetTreeNode(const QString& pKey) const;
    /// The same as AddItem() for each of the matches.
    void addMatches(const QString& file, FileMatches matches);

 public Q_SLOTS:
    /// Removes all nodes without a question.
    void ClearTree();
    /// Without effect when there is no such node.
    void SetNodeText(const QString& pKey, const QString& pText);
    /// Adds a match, and the node of its file where there is none. `pLineNo` counts from 1, `pStart` is a position from
    /// 0; `pEnd` is the length. Without a file name nothing is added.
    void AddItem(const QString& pFile, qint64 pLineNo, qint64 pStart, int pEnd, const QString& pLine);
    /// A command of the menu by its key. An unknown key is passed over.
    void runCommand(const QString& key);

 Q_SIGNALS:
    /// `pFlag` is "OPEN" or "BOOKMARK". `pTag` is line, start and length of a match with commas between; "-1" for a
    /// file, and empty for one of all files.
    void ItemAction(const QString& pFile, const QString& pTag, const QString& pFlag);

 private:
    struct Command;
    static const Command Commands[];

    void expandAll();
    void collapseAll();
    void openCurrent();
    void openAllFiles();
    void bookmarkLines();
    void removeChecked();
    void clearAll();
    void checkAll();
    void uncheckAll();

    void open(const QModelIndex& node);
    void bookmarkAll(const QModelIndex& file);
    void buildMenus();
    void showMenu(const QPoint& place);

    Prompts& m_prompts;
    SearchResultsModel& m_model;
    SearchResultsView& m_tree;
    QMenu& m_menu;
};
