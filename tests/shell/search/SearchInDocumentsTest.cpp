#include "shell/search/SearchInFrame.h"

class SearchInDocuments : public SearchInFrame {
 protected:
    SearchRequest findOpen(const QString& text) const { return in(SearchIn::OpenFiles, find(text)); }
    SearchRequest replaceOpen(const QString& text, const QString& by) const {
        return in(SearchIn::OpenFiles, replace(text, by));
    }
    void openTwo() {
        m_one = fileOf("foo\nfoo", u"one.txt"_qs);
        m_two = fileOf("bar", u"two.txt"_qs);
        open(m_one);
        open(m_two);
    }
    QString textIn(int document) { return documents().at(document)->GetEditor()->Text(); }

    QString m_one;
    QString m_two;
};

TEST_F(SearchInDocuments, ListsWhatTheirTextsHold) {
    start();
    openTwo();
    type(u"foo "_qs);  // not saved
    search(findOpen(u"foo"_qs));
    EXPECT_EQ(searched(), 2);
    EXPECT_EQ(found(), 2);
    EXPECT_EQ(files(), QStringList({m_one, m_two}));
    EXPECT_EQ(tags(0), QStringList({u"1,0,3"_qs, u"2,4,3"_qs}));
    EXPECT_EQ(texts(1), QStringList(u"   1 : foo bar"_qs));
    EXPECT_EQ(textOf(node(0)), u"Find      2 'foo'  in '"_qs + m_one + u"'"_qs);
    EXPECT_EQ(status(), statusOf(m_two, 2, 2));
    EXPECT_EQ(title(), u"Search completed, files found : 2"_qs);
}

TEST_F(SearchInDocuments, ReplacingChangesThemInMemoryAndSavesNothing) {
    start();
    openTwo();
    search(replaceOpen(u"foo"_qs, u"more"_qs));
    EXPECT_EQ(found(), 1);
    EXPECT_EQ(title(), u"Replace completed, changed files : 1"_qs);
    EXPECT_EQ(textIn(0), u"more\nmore"_qs);
    EXPECT_EQ(bytesOf(m_one), "foo\nfoo");
    EXPECT_TRUE(documents()[0]->GetEditor()->FileChanged);
    EXPECT_FALSE(documents()[1]->GetEditor()->FileChanged);
    EXPECT_EQ(tags(0), QStringList({u"1,0,4"_qs, u"2,5,4"_qs}));
    EXPECT_TRUE(m_prompts.questions.isEmpty());
}

TEST_F(SearchInDocuments, UndoBringsBackWhatWasReplaced) {
    start();
    m_one = fileOf("foo\nfoo");
    open(m_one);
    search(replaceOpen(u"foo"_qs, u"more"_qs));
    ASSERT_EQ(text(), u"more\nmore"_qs);
    for (int i = 0; i < 2 && canUndo(); ++i)
        run("mnuEditUndo");
    EXPECT_EQ(text(), u"foo\nfoo"_qs);
}

TEST_F(SearchInDocuments, ADocumentWithoutANameIsCountedAndNotListed) {
    start();
    ASSERT_EQ(documents().size(), 1);
    type(u"foo"_qs);
    search(findOpen(u"foo"_qs));
    EXPECT_EQ(searched(), 1);
    EXPECT_EQ(found(), 1);
    EXPECT_TRUE(files().isEmpty());
    EXPECT_EQ(title(), u"Search completed, files found : 1"_qs);
}

TEST_F(SearchInDocuments, WithoutADocumentNothingIsSearched) {
    start();
    run("mnuFileClose");
    ASSERT_TRUE(documents().isEmpty());
    search(findOpen(u"foo"_qs));
    EXPECT_EQ(searched(), 0);
    EXPECT_EQ(title(), u"Search completed, files found : 0"_qs);
}

TEST_F(SearchInDocuments, OneThatIsClosedAtTheBeginningIsNotSearched) {
    start();
    openTwo();
    atYields([&] {
        run("mnuFileClose");
        return true;
    });
    search(findOpen(u"o"_qs));
    EXPECT_TRUE(allActionsWereDone());
    EXPECT_EQ(searched(), 1);
    EXPECT_EQ(files(), QStringList(m_one));
}

TEST_F(SearchInDocuments, OneThatIsClosedWhileItsTextIsSearchedIsNotListed) {
    start();
    m_one = fileOf(QByteArray("foo\n").repeated(2'000'000), u"one.txt"_qs);
    open(m_one);
    m_two = fileOf("foo", u"two.txt"_qs);
    open(m_two);
    bool wasBusy = false;
    atYields([&] {
        if (searched() != 1)
            return false;
        wasBusy = true;
        house().closing.CloseAll(documents()[1]);
        return true;
    });
    search(findOpen(u"foo"_qs));
    EXPECT_TRUE(wasBusy);
    ASSERT_EQ(documents().size(), 1);
    EXPECT_EQ(searched(), 2);
    EXPECT_EQ(files(), QStringList(m_two));
}

TEST_F(SearchInDocuments, CancelEndsTheSearchInsideOfALargeText) {
    start();
    m_one = fileOf(QByteArray("foo\n").repeated(2'000'000), u"one.txt"_qs);
    open(m_one);
    open(fileOf("foo", u"two.txt"_qs));
    atYields([&] {
        if (searched() != 1)
            return false;
        window()->reject();
        return true;
    });
    search(findOpen(u"foo"_qs));
    EXPECT_TRUE(allActionsWereDone());
    EXPECT_EQ(searched(), 1);
    EXPECT_EQ(found(), 1);
    EXPECT_EQ(files(), QStringList(m_one));
    EXPECT_LT(tags(0).size(), 2'000'000);
    EXPECT_EQ(title(), u"Search completed, files found : 1"_qs);
}

TEST_F(SearchInDocuments, ALockedDocumentIsLeftAsItIs) {
    start();
    m_one = fileOf("foo");
    open(m_one);
    run("mnuReadonly");
    search(replaceOpen(u"foo"_qs, u"bar"_qs));
    EXPECT_EQ(text(), u"foo"_qs);
    EXPECT_EQ(searched(), 1);
}
