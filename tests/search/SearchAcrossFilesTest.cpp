#include "search/SearchAcrossFiles.h"
#include "search/engine/SearchRequest.h"
#include "search/host/SearchHost.h"
#include "search/results/ucSearchResults.h"
#include "support/ScriptedPrompts.h"

#include <QFile>
#include <QModelIndex>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTreeView>
#include <QWidget>

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>

namespace {

/// Without documents and without a project.
class EmptyScope : public SearchScope {
 public:
    std::vector<std::unique_ptr<SearchableText>> openDocuments() override { return {}; }
    HiddenEditor& hiddenEditor() override { throw std::logic_error("no editor is needed"); }
    bool hasProject() const override { return false; }
    int projectItemCount() const override { return 0; }
    ProjectItem projectItem(int) const override { return {}; }
};

class NotedHost : public SearchHost {
 public:
    QString title;
    QString lastNotice;
    bool mayClose = true;
    std::function<void(const QString&)> onTitle;

    void showResults() override {}
    void setResultsTitle(const QString& text) override {
        title = text;
        if (onTitle)
            onTitle(text);
    }
    void enableClose(bool on) override { mayClose = on; }
    void notice(const QString& sentence) override { lastNotice = sentence; }
};

/// A search across the files of a folder, without a frame.
class AcrossFiles : public testing::Test {
 protected:
    QString fileOf(const QString& name, const QByteArray& bytes) {
        QFile file(m_folder.filePath(name));
        EXPECT_TRUE(file.open(QFile::WriteOnly) && file.write(bytes) == bytes.size());
        return file.fileName();
    }
    static QByteArray bytesOf(const QString& path) {
        QFile file(path);
        return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray("(no such file)");
    }
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
    QWidget* window() { return m_window.findChild<QWidget*>(u"frmSearching"_qs); }
    /// The matches under each file of the list.
    QList<int> listed() {
        const QAbstractItemModel& model = *m_window.findChild<QTreeView*>(u"t1"_qs)->model();
        QList<int> counts;
        for (int row = 0; row < model.rowCount(); ++row)
            counts << model.rowCount(model.index(row, 0));
        return counts;
    }

    QTemporaryDir m_folder;
    ScriptedPrompts m_prompts;
    NotedHost m_host;
    EmptyScope m_scope;
    QWidget m_window;
    ucSearchResults m_results{m_prompts, &m_window};
    SearchAcrossFiles m_search{{m_host, m_scope, m_results, m_prompts, m_window, 5}};
};

}  // namespace

TEST_F(AcrossFiles, AFailureInTheMiddleIsReportedAndTheWindowStaysUntilItIsCancelled) {
    fileOf(u"a.txt"_qs, "foo");
    m_host.onTitle = [](const QString&) { throw std::runtime_error("the panel is not ready"); };
    m_search.StartSearch(find(u"foo"_qs));
    EXPECT_EQ(m_prompts.messages, QStringList(u"the panel is not ready"_qs));
    EXPECT_TRUE(m_host.mayClose);
    EXPECT_FALSE(m_search.isRunning());
    EXPECT_TRUE(m_search.AbortFlag());
    ASSERT_TRUE(window()->isVisible());
    window()->findChild<QPushButton*>(u"cmdCancel"_qs)->click();
    EXPECT_FALSE(window()->isVisible());
    m_host.onTitle = nullptr;
    m_search.StartSearch(find(u"foo"_qs));
    EXPECT_EQ(m_host.title, u"Search completed, files found : 1"_qs);
}

TEST_F(AcrossFiles, TooManyMatchesEndASearch) {
    for (const auto& name : {u"a"_qs, u"b"_qs, u"c"_qs})
        fileOf(name, "foo foo foo");
    m_search.StartSearch(find(u"foo"_qs));
    EXPECT_EQ(m_search.FilesFound(), 2);
    EXPECT_EQ(listed(), QList<int>({3, 3}));
    EXPECT_EQ(m_host.lastNotice, u"The search was ended at 5 matches."_qs);
}

TEST_F(AcrossFiles, TooManyMatchesDoNotEndAReplacementHalfway) {
    QStringList files;
    for (const auto& name : {u"a"_qs, u"b"_qs, u"c"_qs})
        files << fileOf(name, "foo foo foo");
    m_search.StartSearch(replace(u"foo"_qs, u"bar"_qs));
    for (const QString& file : files) {
        EXPECT_EQ(bytesOf(file), "bar bar bar");
    }
    EXPECT_EQ(m_search.FilesFound(), 3);
    EXPECT_EQ(listed(), QList<int>({3, 3}));
    EXPECT_EQ(m_host.lastNotice, u"Only the first 5 matches are listed."_qs);
}
