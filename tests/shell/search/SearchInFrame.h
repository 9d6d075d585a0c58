#pragma once

#include "search/engine/SearchRequest.h"
#include "shell/FrameFixture.h"
#include "shell/bars/SearchPanel.h"

#include <QDialog>
#include <QDir>
#include <QLabel>
#include <QTimer>
#include <QTreeView>

#include <functional>
#include <utility>
#include <vector>

/// A side panel with the items of a project.
class ItemsPanel : public NotedExplorer {
 public:
    std::vector<std::pair<QString, QString>> items;  ///< names and types

    int PjtItemCount() const override { return static_cast<int>(items.size()); }
    void PjtItem(int index, QString& name, QString& type) const override {
        name = items.at(static_cast<std::size_t>(index) - 1).first;
        type = items.at(static_cast<std::size_t>(index) - 1).second;
    }
};

/// A frame that searches across the files of its folder.
class SearchInFrame : public FrameFixture {
 protected:
    SearchInFrame() {
        m_makePanel = [this](const WorkspaceServices&) -> PanelLink& { return m_items; };
        QObject::connect(&m_timer, &QTimer::timeout, [this] {
            if (m_action && m_action())
                m_action = nullptr;
        });
    }

    /// Runs at each yield until it returns true.
    void atYields(std::function<bool()> action) {
        m_action = std::move(action);
        m_timer.start(0);
    }
    bool allActionsWereDone() const { return !m_action; }

    SearchRequest find(const QString& text) const {
        SearchRequest request;
        request.directories = m_folder.path();
        request.patterns = u"*"_qs;
        request.text = text;
        return request;
    }
    SearchRequest replace(const QString& text, const QString& by) const {
        SearchRequest request = find(text);
        request.replaces = true;
        request.replacement = by;
        return request;
    }
    static SearchRequest in(SearchIn scope, SearchRequest request) {
        request.in = scope;
        return request;
    }
    static SearchRequest expression(SearchRequest request) {
        request.flags.regExp = true;
        return request;
    }
    /// By the public operation of the frame.
    void search(const SearchRequest& request) {
        const SearchFlags& flags = request.flags;
        m_frame->StartSearch(request.directories, request.patterns, request.subDirectories, request.text, flags.regExp,
                             flags.caseSensitive, request.preserveCase, flags.wholeWord, static_cast<int>(request.in),
                             !request.replaces, request.replacement, request.listsResults);
    }
    int searched() const { return m_frame->FilesSearched(); }
    int found() const { return m_frame->FilesFound(); }

    SearchPanel& panel() { return house().searchPanel; }
    QString title() { return panel().title(); }
    QDialog* window() { return m_frame->findChild<QDialog*>(u"frmSearching"_qs); }
    QString status() { return window()->findChild<QLabel*>(u"lbStatus"_qs)->text(); }
    static QString statusOf(const QString& path, int searched, int found) {
        return u"Searching '%1'\r\nTotal Files Searched : %2\r\nTotal Files Found : %3\r\n"_qs.arg(path)
            .arg(searched)
            .arg(found);
    }

    QTreeView& view() { return *m_frame->findChild<QTreeView*>(u"t1"_qs); }
    QAbstractItemModel& model() { return *view().model(); }
    QModelIndex node(int file) { return model().index(file, 0); }
    QModelIndex node(int file, int match) { return model().index(match, 0, node(file)); }
    /// The paths of the nodes of files.
    QStringList files() { return columnOf({}, Qt::UserRole); }
    QStringList texts(int file) { return columnOf(node(file), Qt::DisplayRole); }
    QStringList tags(int file) { return columnOf(node(file), Qt::UserRole + 1); }
    QString textOf(const QModelIndex& index) { return index.data().toString(); }

    QString folder(const QString& name) const {
        EXPECT_TRUE(QDir(m_folder.path()).mkpath(name));
        return path(name);
    }
    void makeFiles(int count, const QByteArray& bytes) {
        for (int i = 0; i < count; ++i)
            fileOf(bytes, u"%1.txt"_qs.arg(i, 6, 10, QChar(u'0')));
    }

    ItemsPanel m_items;

 private:
    QStringList columnOf(const QModelIndex& parent, int role) {
        QStringList values;
        for (int row = 0; row < model().rowCount(parent); ++row)
            values << model().index(row, 0, parent).data(role).toString();
        return values;
    }

    QTimer m_timer;
    std::function<bool()> m_action;
};
