#include "editor/control/TextControl.h"
#include "search/results/ucSearchResults.h"
#include "shell/search/SearchInFrame.h"

/// A search for "foo" in two files, none of them open at first.
class ItemAction : public SearchInFrame {
 protected:
    void searchTwo() {
        start();
        m_one = fileOf("x foo\nbar\nfoo foo\n", u"one.txt"_qs);
        m_two = fileOf("\n\nfoo", u"two.txt"_qs);
        search(find(u"foo"_qs));
        ASSERT_EQ(files(), QStringList({m_one, m_two}));
        ASSERT_EQ(tags(0), QStringList({u"1,2,3"_qs, u"3,10,3"_qs, u"3,14,3"_qs}));
    }
    void act(const QString& file, const QString& tag, const QString& flag = u"OPEN"_qs) {
        house().searches.ItemAction(file, tag, flag);
    }
    ucSearchResults& results() { return *m_frame->findChild<ucSearchResults*>(u"ucSearchResults1"_qs); }
    void press(const QModelIndex& index, Qt::Key key) {
        view().setCurrentIndex(index);
        view().setFocus();
        QTest::keyClick(&view(), key);
    }
    /// The line counts from 1.
    bool isMarked(qint64 line) { return isBookmarked(line - 1); }
    QString selection() { return text().mid(active()->SelStart(), active()->SelLength()); }

    QString m_one;
    QString m_two;
};

TEST_F(ItemAction, OpensAFileThatIsNotOpenAndSelectsTheMatch) {
    searchTwo();
    act(m_one, u"3,10,3"_qs);
    EXPECT_EQ(active()->filename, m_one);
    EXPECT_EQ(active()->SelStart(), 10);
    EXPECT_EQ(active()->SelLength(), 3);
    EXPECT_EQ(active()->GetEditor()->CurrentLine(), 2);  // from 0
}

TEST_F(ItemAction, BringsADocumentThatIsOpenToTheFront) {
    searchTwo();
    open(m_one);
    open(m_two);
    const qsizetype count = documents().size();
    ASSERT_EQ(active()->filename, m_two);
    act(m_one, u"3,14,3"_qs);
    EXPECT_EQ(active()->filename, m_one);
    EXPECT_EQ(documents().size(), count);
    EXPECT_EQ(active()->SelStart(), 14);
    EXPECT_EQ(selection(), u"foo"_qs);
}

TEST_F(ItemAction, AFileThatIsGoneIsReportedAndTheActiveDocumentTakesTheRest) {
    searchTwo();
    open(m_one);
    ASSERT_TRUE(QFile::remove(m_two));
    act(m_two, u"3,10,3"_qs, u"BOOKMARK"_qs);
    EXPECT_EQ(m_prompts.messages, QStringList(m_two + u"\nFile not found!"_qs));
    EXPECT_EQ(active()->filename, m_one);
    EXPECT_EQ(active()->SelStart(), 10);
    EXPECT_TRUE(isMarked(3));
}

TEST_F(ItemAction, AFileThatIsGoneIsReportedAlsoWithoutAnyDocument) {
    searchTwo();
    run("mnuFileClose");
    ASSERT_TRUE(documents().isEmpty());
    ASSERT_TRUE(QFile::remove(m_two));
    act(m_two, u"3,10,3"_qs, u"BOOKMARK"_qs);
    EXPECT_EQ(m_prompts.messages, QStringList(m_two + u"\nFile not found!"_qs));
    EXPECT_TRUE(documents().isEmpty());
}

TEST_F(ItemAction, ATagWithoutAMatchLeavesTheSelection) {
    searchTwo();
    open(m_one);
    select(2, 5);
    ASSERT_EQ(selection(), u"foo"_qs);
    act(m_one, u"-1"_qs);
    act(m_one, {});
    EXPECT_EQ(active()->SelStart(), 2);
    EXPECT_EQ(selection(), u"foo"_qs);
    act(m_two, {});
    EXPECT_EQ(active()->filename, m_two);
    EXPECT_EQ(active()->SelStart(), 0);
}

TEST_F(ItemAction, AnEmptyTagSetsNoBookmark) {
    searchTwo();
    open(m_one);
    act(m_one, {}, u"BOOKMARK"_qs);
    for (int line = 1; line < 5; ++line) {
        EXPECT_FALSE(isMarked(line)) << line;
    }
}

TEST_F(ItemAction, PlacesThatTheFileNoLongerHasDoNoHarm) {
    searchTwo();
    fileOf("f", u"one.txt"_qs);
    act(m_one, u"3,14,3"_qs, u"BOOKMARK"_qs);
    EXPECT_EQ(active()->filename, m_one);
    EXPECT_EQ(text(), u"f"_qs);
    EXPECT_LE(active()->SelStart() + active()->SelLength(), 1);
    act(m_one, u"99999999999999999999,-5,abc"_qs, u"BOOKMARK"_qs);
    EXPECT_EQ(text(), u"f"_qs);
}

// By the tree

TEST_F(ItemAction, EnterOpensTheMatch) {
    searchTwo();
    press(node(0, 2), Qt::Key_Return);
    EXPECT_EQ(active()->filename, m_one);
    EXPECT_EQ(active()->SelStart(), 14);
    EXPECT_EQ(selection(), u"foo"_qs);
}

TEST_F(ItemAction, TheMenuOpensOneFileAndAllFiles) {
    searchTwo();
    view().setCurrentIndex(node(1));
    results().runCommand(u"mnuOpenFile"_qs);
    EXPECT_EQ(active()->filename, m_two);
    EXPECT_EQ(active()->SelLength(), 0);
    m_prompts.answerYes();
    results().runCommand(u"mnuOpenAllFiles"_qs);
    EXPECT_EQ(m_prompts.questions, QStringList(u"Open all files ?"_qs));
    QStringList names;
    for (const frmDocument* document : documents())
        names << document->filename;
    EXPECT_TRUE(names.contains(m_one));
    EXPECT_EQ(names.count(m_two), 1);
    EXPECT_EQ(active()->filename, m_two);
}

TEST_F(ItemAction, TheMenuMarksTheLineOfAMatch) {
    searchTwo();
    view().setCurrentIndex(node(0, 1));
    results().runCommand(u"mnuBookLines"_qs);
    EXPECT_EQ(active()->filename, m_one);
    EXPECT_TRUE(isMarked(3));
    EXPECT_FALSE(isMarked(1));
}

TEST_F(ItemAction, TheMenuMarksTheLinesOfAFile) {
    searchTwo();
    view().setCurrentIndex(node(0));
    results().runCommand(u"mnuBookLines"_qs);
    EXPECT_EQ(active()->filename, m_one);
    EXPECT_TRUE(isMarked(1));
    EXPECT_FALSE(isMarked(2));
    EXPECT_TRUE(isMarked(3));
}

TEST_F(ItemAction, AfterAReplaceTheSelectionIsAsLongAsTheReplacement) {
    start();
    const QString file = fileOf("a foo b foo");
    search(replace(u"foo"_qs, u"longer"_qs));
    press(node(0, 1), Qt::Key_Return);
    EXPECT_EQ(active()->filename, file);
    EXPECT_EQ(selection(), u"longer"_qs);
    EXPECT_EQ(active()->SelStart(), 11);
}

TEST_F(ItemAction, ADocumentInHexIsBroughtToTheFrontAndStaysInHex) {
    searchTwo();
    open(m_one);
    run("mnuToggleHex");
    ASSERT_TRUE(entry("mnuToggleHex")->isChecked());
    open(m_two);
    const qsizetype count = documents().size();
    act(m_one, u"3,10,3"_qs);
    EXPECT_EQ(active()->filename, m_one);
    EXPECT_TRUE(entry("mnuToggleHex")->isChecked());
    EXPECT_EQ(documents().size(), count);
    EXPECT_TRUE(m_prompts.messages.isEmpty());
}

TEST_F(ItemAction, TheEventLoopRunsNowAndThenWhileManyLinesAreMarked) {
    constexpr int Lines = 5'000;
    start();
    m_one = fileOf(QByteArray("foo\n").repeated(Lines), u"one.txt"_qs);
    search(find(u"foo"_qs));
    view().setCurrentIndex(node(0));
    int passes = 0;
    atYields([&] { return ++passes > 10 * Lines; });
    results().runCommand(u"mnuBookLines"_qs);
    EXPECT_TRUE(isMarked(1));
    EXPECT_TRUE(isMarked(Lines));
    EXPECT_GT(passes, 0);
    EXPECT_LT(passes, Lines / 2);
}

/// Where a match stands in its line, and how long the line is.
class ItemActionInALongLine : public ItemAction, public testing::WithParamInterface<std::pair<int, int>> {
 protected:
    /// Whether both ends of the selection are in the view.
    void expectSelectionInView() {
        TextControl& control = active()->GetEditor()->control();
        const auto ask = [&control](int message, qint64 byte) {
            return static_cast<int>(control.send(message, 0, byte));
        };
        const int left = static_cast<int>(control.send(QsciScintillaBase::SCI_GETMARGINLEFT));
        for (const int end : {QsciScintillaBase::SCI_GETSELECTIONSTART, QsciScintillaBase::SCI_GETSELECTIONEND}) {
            const qint64 byte = control.send(end);
            const int x = ask(QsciScintillaBase::SCI_POINTXFROMPOSITION, byte);
            EXPECT_GE(x, left) << byte;
            EXPECT_LE(x, control.viewport()->width()) << byte;
            const int y = ask(QsciScintillaBase::SCI_POINTYFROMPOSITION, byte);
            EXPECT_GE(y, 0) << byte;
            EXPECT_LT(y, control.viewport()->height()) << byte;
        }
    }
};

TEST_P(ItemActionInALongLine, TheMatchIsInView) {
    const auto [column, length] = GetParam();
    start();
    m_frame->resize(900, 700);
    m_frame->show();
    QByteArray line(length, 'x');
    line.replace(column, 3, "foo");
    m_one = fileOf(QByteArray("first\n").repeated(300) + line + "\nlast\n", u"one.txt"_qs);
    search(find(u"foo"_qs));
    ASSERT_EQ(tags(0).size(), 1);
    for (const bool isOpen : {false, true}) {
        act(m_one, tags(0).first());
        QTest::qWait(0);
        EXPECT_EQ(selection(), u"foo"_qs);
        expectSelectionInView();
        select(0, 0);
        QTest::qWait(0);
        SCOPED_TRACE(isOpen);
    }
}

INSTANTIATE_TEST_SUITE_P(Columns, ItemActionInALongLine,
                         testing::Values(std::pair(500, 600), std::pair(500, 60'000), std::pair(30'000, 60'000),
                                         std::pair(59'990, 60'000), std::pair(4'090, 70'000), std::pair(4'093, 70'000),
                                         std::pair(4'096, 70'000), std::pair(4'097, 70'000),
                                         std::pair(69'997, 70'000)));
