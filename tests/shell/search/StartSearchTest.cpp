#include "shell/search/SearchInFrame.h"

#include <QPointer>

class StartSearch : public SearchInFrame {};

TEST_F(StartSearch, CountsTheFilesAndListsTheMatches) {
    start();
    const QString one = fileOf("x foo foo\nnothing\nFoo\n", u"one.txt"_qs);
    const QString two = fileOf("foo", u"two.txt"_qs);
    fileOf("nothing", u"three.txt"_qs);
    search(find(u"foo"_qs));
    EXPECT_EQ(searched(), 3);
    EXPECT_EQ(found(), 2);
    EXPECT_EQ(title(), u"Search completed, files found : 2"_qs);
    EXPECT_EQ(files(), QStringList({one, two}));
    EXPECT_EQ(textOf(node(0)), u"Find      3 'foo'  in '"_qs + one + u"'"_qs);
    EXPECT_EQ(texts(0), QStringList({u"   1 : x foo foo"_qs, u"   1 : x foo foo"_qs, u"   3 : Foo"_qs}));
    EXPECT_EQ(tags(0), QStringList({u"1,2,3"_qs, u"1,6,3"_qs, u"3,18,3"_qs}));
    EXPECT_EQ(tags(1), QStringList(u"1,0,3"_qs));
}

TEST_F(StartSearch, BeginsWithNewCountersAndEndsWithTheFlagSet) {
    start();
    fileOf("foo");
    search(find(u"foo"_qs));
    EXPECT_TRUE(m_frame->AbortFlag());
    int searchedAtStart = -1;
    int foundAtStart = -1;
    bool aborted = true;
    atYields([&] {
        searchedAtStart = searched();
        foundAtStart = found();
        aborted = m_frame->AbortFlag();
        return true;
    });
    search(find(u"nowhere"_qs));
    EXPECT_TRUE(allActionsWereDone());
    EXPECT_EQ(searchedAtStart, 0);
    EXPECT_EQ(foundAtStart, 0);
    EXPECT_FALSE(aborted);
    EXPECT_TRUE(m_frame->AbortFlag());
    EXPECT_EQ(searched(), 1);
    EXPECT_EQ(found(), 0);
}

TEST_F(StartSearch, ItsWindowIsShownOverTheFrameOnlyWhileItRuns) {
    start();
    EXPECT_EQ(window(), nullptr);
    bool wasVisible = false;
    bool wasModal = true;
    atYields([&] {
        wasVisible = window()->isVisible();
        wasModal = window()->isModal();
        return true;
    });
    search(find(u"foo"_qs));
    EXPECT_TRUE(wasVisible);
    EXPECT_FALSE(wasModal);
    EXPECT_FALSE(window()->isVisible());
    EXPECT_EQ(window()->parentWidget(), m_frame.get());
    const QPointer<QDialog> first = window();
    search(find(u"foo"_qs));
    EXPECT_EQ(window(), first);
    EXPECT_FALSE(window()->isVisible());
}

TEST_F(StartSearch, ShowsThePanelWithItsMarkAlsoWhenNothingMatches) {
    start();
    EXPECT_FALSE(panel().isShown());
    QAction* const mark = entry("mnulFindReplacePanel");
    ASSERT_NE(mark, nullptr);
    EXPECT_FALSE(mark->isChecked());
    fileOf("bar");
    search(find(u"foo"_qs));
    EXPECT_TRUE(panel().isShown());
    EXPECT_TRUE(mark->isChecked());
    EXPECT_EQ(title(), u"Search completed, files found : 0"_qs);
    EXPECT_TRUE(files().isEmpty());
}

TEST_F(StartSearch, TheTreeIsEmptyWhenTheSearchBegins) {
    start();
    const QString file = fileOf("foo");
    search(find(u"foo"_qs));
    ASSERT_EQ(files(), QStringList(file));
    QStringList atStart{u"not asked"_qs};
    atYields([&] {
        atStart = files();
        return true;
    });
    search(find(u"foo"_qs));
    EXPECT_TRUE(atStart.isEmpty());
    EXPECT_EQ(files(), QStringList(file));
}

TEST_F(StartSearch, WithoutAListTreeAndPanelStayAsTheyWere) {
    start();
    const QString file = fileOf("foo foo");
    search(find(u"foo"_qs));
    const QString before = textOf(node(0));
    panel().setShown(false);
    SearchRequest request = replace(u"foo"_qs, u"bar"_qs);
    request.listsResults = false;
    search(request);
    EXPECT_EQ(bytesOf(file), "bar bar");
    EXPECT_EQ(files(), QStringList(file));
    EXPECT_EQ(textOf(node(0)), before);
    EXPECT_EQ(tags(0), QStringList({u"1,0,3"_qs, u"1,4,3"_qs}));
    EXPECT_FALSE(panel().isShown());
    EXPECT_EQ(title(), u"Replace completed, changed files : 1"_qs);
}

TEST_F(StartSearch, TheTitleOfAReplaceSpeaksOfChangedFiles) {
    start();
    const QString file = fileOf("foo\nfoo\n");
    fileOf("bar", u"b.txt"_qs);
    search(replace(u"foo"_qs, u"more"_qs));
    EXPECT_EQ(title(), u"Replace completed, changed files : 1"_qs);
    EXPECT_EQ(textOf(node(0)), u"Find      2 'foo'  in '"_qs + file + u"'"_qs);
    EXPECT_EQ(tags(0), QStringList({u"1,0,4"_qs, u"2,5,4"_qs}));
    EXPECT_EQ(texts(0), QStringList({u"   1 : more"_qs, u"   2 : more"_qs}));
}

TEST_F(StartSearch, AnotherNumberOfScopeSearchesNothing) {
    start();
    fileOf("foo");
    for (const int option : {3, -1, 77}) {
        m_frame->StartSearch(m_folder.path(), u"*"_qs, true, u"foo"_qs, false, false, false, false, option, true, {},
                             true);
        EXPECT_EQ(searched(), 0) << option;
        EXPECT_EQ(title(), u"Search completed, files found : 0"_qs) << option;
        EXPECT_FALSE(window()->isVisible());
    }
}

// Progress

TEST_F(StartSearch, TheLastPathShownIsTheLastOneSearched) {
    start();
    makeFiles(700, "foo");
    QStringList titles;
    atYields([&] {
        if (window()->isVisible() && titles.value(titles.size() - 1) != title())
            titles << title();
        return false;
    });
    search(find(u"foo"_qs));
    const QString last = path(u"000699.txt"_qs);
    EXPECT_EQ(status(), statusOf(last, 700, 700));
    EXPECT_EQ(titles.value(titles.size() - 1), u"Searching '"_qs + last + u"'"_qs);
    EXPECT_EQ(title(), u"Search completed, files found : 700"_qs);
}

TEST_F(StartSearch, TheProgressIsWrittenInThreeLines) {
    start();
    const QString file = fileOf("bar");
    search(find(u"foo"_qs));
    EXPECT_EQ(status(), u"Searching '"_qs + file + u"'\r\nTotal Files Searched : 1\r\nTotal Files Found : 0\r\n"_qs);
}

TEST_F(StartSearch, AFileThatDoesNotMatchIsTheLastPathTooWhenItStandsLast) {
    start();
    fileOf("foo", u"a.txt"_qs);
    const QString last = fileOf("bar", u"b.txt"_qs);
    search(find(u"foo"_qs));
    EXPECT_EQ(status(), statusOf(last, 2, 1));
}

// Order

TEST_F(StartSearch, TheDirectoriesAreTheOuterLoop) {
    start();
    const QString one = folder(u"one"_qs);
    const QString two = folder(u"two"_qs);
    QStringList expected;
    for (const char* name : {"one/a.h", "one/b.cpp", "two/a.h", "two/b.cpp"})
        fileOf("foo", QString::fromLatin1(name));
    for (const char* name : {"one/b.cpp", "one/a.h", "two/b.cpp", "two/a.h"})
        expected << path(QString::fromLatin1(name));
    SearchRequest request = find(u"foo"_qs);
    request.directories = u" "_qs + one + u"/ ;  ; "_qs + two;
    request.patterns = u" *.cpp ;; *.h "_qs;
    search(request);
    EXPECT_EQ(files(), expected);
    EXPECT_TRUE(m_prompts.messages.isEmpty());
}

TEST_F(StartSearch, TwoOverlappingPatternsListAndCountAFileTwice) {
    start();
    const QString file = fileOf("foo foo");
    SearchRequest request = find(u"foo"_qs);
    request.patterns = u"*.txt;a*"_qs;
    search(request);
    EXPECT_EQ(searched(), 2);
    EXPECT_EQ(found(), 2);
    EXPECT_EQ(files(), QStringList(file));
    EXPECT_EQ(tags(0), QStringList({u"1,0,3"_qs, u"1,4,3"_qs, u"1,0,3"_qs, u"1,4,3"_qs}));
    EXPECT_EQ(textOf(node(0)), u"Find      2 'foo'  in '"_qs + file + u"'"_qs);
    EXPECT_EQ(title(), u"Search completed, files found : 2"_qs);
}

TEST_F(StartSearch, TheTextOfANodeIsThatOfTheLastPass) {
    start();
    const QString file = fileOf("aaaa");
    SearchRequest request = replace(u"aa"_qs, u"a"_qs);
    request.patterns = u"*.txt;a*"_qs;
    search(request);
    EXPECT_EQ(bytesOf(file), "a");
    EXPECT_EQ(found(), 2);
    EXPECT_EQ(textOf(node(0)), u"Find      1 'aa'  in '"_qs + file + u"'"_qs);
    EXPECT_EQ(tags(0), QStringList({u"1,0,1"_qs, u"1,1,1"_qs, u"1,0,1"_qs}));
}

TEST_F(StartSearch, EnteredDirectoriesAreRealOnesThatAreNeitherHiddenNorReadOnly) {
    start();
    for (const char* name : {"plain", ".hidden", "locked", "plain/inner"})
        folder(QString::fromLatin1(name));
    const QString inner = fileOf("foo", u"plain/inner/a.txt"_qs);
    fileOf("foo", u".hidden/a.txt"_qs);
    fileOf("foo", u"locked/a.txt"_qs);
    fileOf("foo", u".a.txt"_qs);
    ASSERT_TRUE(QFile::link(path(u"plain"_qs), path(u"zlink"_qs)));
    ASSERT_TRUE(QFile::link(m_folder.path(), path(u"plain/circle"_qs)));
    ASSERT_EQ(::chmod(QFile::encodeName(path(u"locked"_qs)).constData(), 0555), 0);
    SearchRequest request = find(u"foo"_qs);
    request.subDirectories = true;
    search(request);
    ::chmod(QFile::encodeName(path(u"locked"_qs)).constData(), 0755);
    EXPECT_EQ(files(), QStringList(inner));
    EXPECT_EQ(searched(), 1);
    request.subDirectories = false;
    search(request);
    EXPECT_EQ(searched(), 0);
}

// Close

TEST_F(StartSearch, CloseIsDisabledWhileItRuns) {
    start();
    bool wasClosed = true;
    bool wasGreyed = false;
    atYields([&] {
        wasGreyed = house().systemClose.isGreyed();
        wasClosed = m_frame->close();
        return true;
    });
    search(find(u"foo"_qs));
    EXPECT_TRUE(wasGreyed);
    EXPECT_FALSE(wasClosed);
    EXPECT_TRUE(m_frame->isVisible());
    EXPECT_FALSE(house().systemClose.isGreyed());
    EXPECT_TRUE(m_frame->close());
}

TEST_F(StartSearch, ExitWaitsForItsEnd) {
    start();
    fileOf("foo");
    bool visibleAfterExit = false;
    atYields([&] {
        run("mnuFileExit");
        visibleAfterExit = m_frame->isVisible();
        return true;
    });
    search(find(u"foo"_qs));
    EXPECT_TRUE(visibleAfterExit);
    EXPECT_TRUE(m_frame->isVisible());
    EXPECT_EQ(found(), 1);
    QCoreApplication::processEvents();
    EXPECT_FALSE(m_frame->isVisible());
}

// Another one meanwhile

TEST_F(StartSearch, ASecondOneBringsTheWindowOfTheFirstToTheFront) {
    start();
    const QString file = fileOf("foo bar");
    bool stillClear = false;
    bool visible = false;
    atYields([&] {
        window()->hide();
        search(find(u"bar"_qs));
        stillClear = !m_frame->AbortFlag();
        visible = window()->isVisible();
        return true;
    });
    search(find(u"foo"_qs));
    EXPECT_TRUE(stillClear);
    EXPECT_TRUE(visible);
    EXPECT_EQ(tags(0), QStringList(u"1,0,3"_qs));
    EXPECT_EQ(textOf(node(0)), u"Find      1 'foo'  in '"_qs + file + u"'"_qs);
    EXPECT_EQ(searched(), 1);
}

TEST_F(StartSearch, TheDialogsAreNotShownWhileItRuns) {
    start();
    fileOf("foo");
    QWidget* modal = nullptr;
    bool asked = false;
    atYields([&] {
        asked = true;
        run("mnuFindInFiles");
        run("mnuReplaceInFiles");
        m_frame->ShowSearchInFiles(m_folder.path());
        modal = QApplication::activeModalWidget();
        return true;
    });
    search(find(u"foo"_qs));
    EXPECT_TRUE(asked);
    EXPECT_EQ(modal, nullptr);
    EXPECT_EQ(found(), 1);
}

TEST_F(StartSearch, AProjectIsOpenedAndClosedAfterItsEnd) {
    start();
    const QString file = fileOf("foo");
    const QString project = fileOf("", u"p.qmp"_qs);
    m_frame->ProjectFilename = project;
    m_items.items = {{file, u"FILE"_qs}};
    QString during;
    atYields([&] {
        house().projects.CloseCurrentProject(true);
        during = m_frame->ProjectFilename;
        return true;
    });
    m_prompts.answerNo();
    search(in(SearchIn::ProjectFiles, find(u"foo"_qs)));
    EXPECT_EQ(during, project);
    EXPECT_EQ(found(), 1);
    EXPECT_EQ(m_frame->ProjectFilename, project);
    QCoreApplication::processEvents();
    EXPECT_TRUE(m_frame->ProjectFilename.isEmpty());
}

TEST_F(StartSearch, TheFrameMayBeDestroyedWhileItRuns) {
    start();
    makeFiles(3, "foo");
    atYields([&] {
        m_frame.reset();
        return true;
    });
    search(find(u"foo"_qs));
    EXPECT_EQ(m_frame, nullptr);
}

// Project

TEST_F(StartSearch, WithoutAProjectNothingIsSearchedAndNothingIsSaid) {
    start();
    m_items.items = {{fileOf("foo"), u"FILE"_qs}};
    search(in(SearchIn::ProjectFiles, find(u"foo"_qs)));
    EXPECT_EQ(searched(), 0);
    EXPECT_TRUE(m_prompts.messages.isEmpty());
    EXPECT_EQ(title(), u"Search completed, files found : 0"_qs);
    EXPECT_TRUE(panel().isShown());
}

TEST_F(StartSearch, FoldersAndMissingFilesOfAProjectAreOnlyCounted) {
    start();
    const QString file = fileOf("foo");
    m_frame->ProjectFilename = path(u"p.qmp"_qs);
    m_items.items = {{m_folder.path(), u"FOLDER"_qs},
                     {file, u"FILE"_qs},
                     {path(u"gone.txt"_qs), u"FILE"_qs},
                     {QString(), u"FILE"_qs},
                     {m_folder.path(), u"FILE"_qs}};
    search(in(SearchIn::ProjectFiles, find(u"foo"_qs)));
    EXPECT_EQ(searched(), 5);
    EXPECT_EQ(found(), 1);
    EXPECT_EQ(files(), QStringList(file));
    EXPECT_TRUE(m_prompts.messages.isEmpty());
    m_items.items = {{m_folder.path(), u"FOLDER"_qs}, {m_folder.path(), u"FOLDER"_qs}};
    search(in(SearchIn::ProjectFiles, find(u"foo"_qs)));
    EXPECT_EQ(searched(), 2);
    EXPECT_EQ(found(), 0);
}

// Directories that cannot be read

TEST_F(StartSearch, AMissingDirectoryIsReportedAndTheOthersAreSearched) {
    start();
    const QString file = fileOf("foo");
    SearchRequest request = find(u"foo"_qs);
    request.directories = path(u"gone"_qs) + u";"_qs + m_folder.path() + u";/nowhere/at/all"_qs;
    request.patterns = u"*.txt;*.c"_qs;
    search(request);
    ASSERT_EQ(m_prompts.messages.size(), 4);
    EXPECT_EQ(m_prompts.messages[0], u"'"_qs + path(u"gone/"_qs) + u"' can't be read: No such file or directory"_qs);
    EXPECT_EQ(m_prompts.messages[1], m_prompts.messages[0]);
    EXPECT_EQ(m_prompts.messages[2], u"'/nowhere/at/all/' can't be read: No such file or directory"_qs);
    EXPECT_EQ(m_prompts.checks, QStringList(4, u"Do not show this again in this search"_qs));
    EXPECT_EQ(files(), QStringList(file));
    EXPECT_EQ(searched(), 1);
}

TEST_F(StartSearch, WhileADirectoryIsReportedThePathShownIsTheLastOneSearched) {
    start();
    makeFiles(3, "foo");
    SearchRequest request = find(u"foo"_qs);
    request.directories = m_folder.path() + u';' + path(u"gone"_qs);
    QString shown;
    m_prompts.whileShown([&] { shown = status(); });
    search(request);
    EXPECT_EQ(shown, statusOf(path(u"000002.txt"_qs), 3, 3));
}

TEST_F(StartSearch, TheTickSilencesTheOthersOfThatSearchAlone) {
    start();
    const QString file = fileOf("foo");
    m_prompts.ticks = true;
    SearchRequest request = find(u"foo"_qs);
    request.directories = path(u"gone"_qs) + u";/nowhere;"_qs + m_folder.path();
    search(request);
    EXPECT_EQ(m_prompts.messages.size(), 1);
    EXPECT_EQ(files(), QStringList(file));
    search(request);
    EXPECT_EQ(m_prompts.messages.size(), 2);
}

TEST_F(StartSearch, AFileInPlaceOfADirectoryIsReported) {
    start();
    SearchRequest request = find(u"foo"_qs);
    request.directories = fileOf("foo");
    search(request);
    EXPECT_EQ(m_prompts.messages, QStringList(u"'"_qs + request.directories + u"/' can't be read: Not a directory"_qs));
    EXPECT_EQ(title(), u"Search completed, files found : 0"_qs);
}

// Texts to find

TEST_F(StartSearch, AnInvalidExpressionFindsNothingAndSaysSo) {
    start();
    fileOf("foo (unclosed");
    search(expression(find(u"(unclosed"_qs)));
    EXPECT_EQ(searched(), 1);
    EXPECT_EQ(found(), 0);
    EXPECT_FALSE(house().status.text(1).isEmpty());
    EXPECT_TRUE(m_prompts.messages.isEmpty());
    search(find(u"(unclosed"_qs));
    EXPECT_EQ(found(), 1);
    EXPECT_TRUE(house().status.text(1).isEmpty());
}

TEST_F(StartSearch, AnEmptyTextIsFoundNowhere) {
    start();
    fileOf("foo");
    search(find({}));
    EXPECT_EQ(searched(), 1);
    EXPECT_EQ(found(), 0);
    search(expression(find({})));
    EXPECT_EQ(found(), 0);
}
