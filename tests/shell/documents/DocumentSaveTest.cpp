#include "shell/FrameFixture.h"
#include "shell/commands/LanguageMenu.h"

#include <QDir>

#include <cstdio>

using DocumentSave = FrameFixture;

TEST_F(DocumentSave, PlainSaveWritesInPlaceWithoutADialog) {
    start();
    const QString file = fileOf("old");
    open(file);
    type(u"new "_qs);
    m_frame->AddLRUFile(u"/other"_qs);
    run("mnuFileSave");
    EXPECT_EQ(bytesOf(file), "new old");
    EXPECT_EQ(house().tabs.image(0), 1);
    EXPECT_FALSE(active()->isChange);
    EXPECT_EQ(recentFiles(), QStringList({file, u"/other"_qs}));
    EXPECT_EQ(house().status.text(4), u"7"_qs);
}

TEST_F(DocumentSave, AnUntitledDocumentAsksForItsName) {
    start();
    type(u"x"_qs);
    const QString file = path(u"new.txt"_qs);
    m_prompts.answerSavePath(file);
    run("mnuFileSave");
    EXPECT_EQ(m_prompts.fileDialogs.front().title, u"Save"_qs);
    EXPECT_EQ(m_prompts.fileDialogs.front().initialName, u"Document1.txt"_qs);
    EXPECT_FALSE(m_prompts.fileDialogs.front().filters.isEmpty());
    EXPECT_EQ(bytesOf(file), "x");
    EXPECT_EQ(tabs(), QStringList(u"new.txt"_qs));
    EXPECT_EQ(active()->Caption(), file);
    EXPECT_TRUE(m_prompts.questions.isEmpty());
}

TEST_F(DocumentSave, ACancelledDialogSavesNothing) {
    start();
    type(u"x"_qs);
    m_prompts.answerSavePath(QString());
    run("mnuFileSave");
    EXPECT_TRUE(active()->isChange);
    EXPECT_EQ(active()->filename, QString());
    EXPECT_TRUE(recentFiles().isEmpty());
}

TEST_F(DocumentSave, NoToOverwritingShowsTheDialogAgain) {
    start();
    type(u"x"_qs);
    const QString file = fileOf("old");
    m_prompts.answerSavePath(file);
    m_prompts.answerNo();
    m_prompts.answerSavePath(file);
    m_prompts.answerYes();
    run("mnuFileSave");
    const QString asked = file + QLatin1String(" already exist !\nOverwrite it ?");
    EXPECT_EQ(m_prompts.questions, QStringList({asked, asked}));
    EXPECT_EQ(m_prompts.fileDialogs.size(), 2U);
    EXPECT_EQ(bytesOf(file), "x");
}

TEST_F(DocumentSave, EachEncodingHasItsTitleAndItsBytes) {
    struct Case {
        const char* command;
        const char* title;
        QByteArray bytes;
    };
    const Case cases[] = {{"mnuANSI", "Save (ANSI)", "\xFC"},
                          {"mnuUTF8", "Save (UTF-8)", "\xEF\xBB\xBF\xC3\xBC"},
                          {"mnuUnicode", "Save (Unicode)", QByteArray("\xFF\xFE\xFC\0", 4)},
                          {"mnuNoBOM", "Save (No Byte Order Mark)", "\xC3\xBC"}};
    start();
    for (const Case& each : cases) {
        run("mnuFileNew");
        type(u"ü"_qs);
        const QString file = path(QString::fromLatin1(each.command));
        m_prompts.answerSavePath(file);
        run(each.command);
        EXPECT_EQ(m_prompts.fileDialogs.back().title, QString::fromLatin1(each.title));
        EXPECT_EQ(bytesOf(file), each.bytes) << each.command;
        EXPECT_EQ(active()->GetEditor()->Text(), u"ü"_qs) << each.command;
        EXPECT_FALSE(active()->isChange);
    }
}

TEST_F(DocumentSave, AnEncodingOfANamedDocumentRewritesItsFileAndDropsTheUndo) {
    start();
    const QString file = fileOf("a");
    open(file);
    type(u"ü"_qs);
    run("mnuUTF8");
    EXPECT_EQ(bytesOf(file),
              "\xEF\xBB\xBF\xC3\xBC"
              "a");
    EXPECT_FALSE(canUndo());
    EXPECT_TRUE(m_prompts.fileDialogs.empty());
}

TEST_F(DocumentSave, WhatAnsiCannotHoldIsRefusedAndNothingMoves) {
    start();
    const QString file = fileOf("a");
    open(file);
    type(u"漢"_qs);
    m_frame->AddLRUFile(u"/other"_qs);
    run("mnuANSI");
    EXPECT_EQ(m_prompts.messages.size(), 1);
    EXPECT_EQ(bytesOf(file), "a");
    EXPECT_TRUE(active()->isChange);
    EXPECT_EQ(house().tabs.image(0), 2);
    EXPECT_EQ(recentFiles(), QStringList({u"/other"_qs, file}));
}

TEST_F(DocumentSave, SaveAsAsksUnderItsOwnTitleAndMovesTheDocument) {
    start();
    open(fileOf("a"));
    const QString target = path(u"c.txt"_qs);
    m_prompts.answerSavePath(target);
    run("mnuFileSaveAs");
    EXPECT_EQ(m_prompts.fileDialogs.front().title, u"Save As"_qs);
    EXPECT_EQ(m_prompts.fileDialogs.front().initialName, path(u"a.txt"_qs));
    EXPECT_EQ(active()->filename, target);
    EXPECT_EQ(tabs(), QStringList(u"c.txt"_qs));
    EXPECT_EQ(bytesOf(target), "a");
    EXPECT_EQ(recentFiles(), QStringList({target, path(u"a.txt"_qs)}));
}

TEST_F(DocumentSave, TheLanguageIsMarkedAnewByASaveAndNotBySaveAs) {
    m_shareFolder = shareFolder();
    start();
    open(fileOf("a", u"a.cpp"_qs));
    const QAction* code = languageEntry("C++");
    const QAction* html = languageEntry("HTML");
    ASSERT_TRUE(code->isChecked());
    m_prompts.answerSavePath(path(u"b.html"_qs));
    run("mnuFileSaveAs");
    EXPECT_EQ(active()->GetLang(), u"HTML"_qs);
    EXPECT_TRUE(code->isChecked());
    run("mnuFileSave");
    EXPECT_TRUE(html->isChecked());
    EXPECT_FALSE(code->isChecked());
}

TEST_F(DocumentSave, CaptionsCanBeNamesOnlyAfterEverySave) {
    set("ShowFullPath", "0");
    start();
    m_prompts.answerSavePath(path(u"a.txt"_qs));
    run("mnuFileSave");
    EXPECT_EQ(active()->Caption(), u"a.txt"_qs);
    EXPECT_EQ(strip().tabToolTip(0), path(u"a.txt"_qs));
    m_prompts.answerSavePath(path(u"b.txt"_qs));
    run("mnuFileSaveAs");
    EXPECT_EQ(active()->Caption(), u"b.txt"_qs);
    EXPECT_EQ(strip().tabToolTip(0), path(u"b.txt"_qs));
}

TEST_F(DocumentSave, ACancelledSaveAsMovesNothing) {
    start();
    const QString file = fileOf("a");
    open(file);
    type(u"x"_qs);
    const QString taken = fileOf("taken", u"taken.txt"_qs);
    m_prompts.answerSavePath(taken);
    m_prompts.answerNo();
    m_prompts.answerSavePath(QString());
    run("mnuFileSaveAs");
    EXPECT_EQ(active()->filename, file);
    EXPECT_TRUE(active()->isChange);
    EXPECT_EQ(bytesOf(taken), "taken");
    EXPECT_EQ(bytesOf(file), "a");
}

TEST_F(DocumentSave, SaveAllTakesEveryTabAndReturnsToTheFirstChosen) {
    start();
    const QString first = fileOf("1", u"1.txt"_qs);
    open(first);
    type(u"x"_qs);
    open(fileOf("2", u"2.txt"_qs));
    run("mnuReadonly");
    run("mnuFileNew");
    run("mnuFileNew");
    strip().setCurrentIndex(1);
    m_prompts.answerSavePath(path(u"3.txt"_qs));
    m_prompts.answerSavePath(QString());
    run("mnuFileSaveAll");
    EXPECT_EQ(bytesOf(first), "x1");
    EXPECT_EQ(m_prompts.messages, QStringList(path(u"2.txt"_qs) + QLatin1String(" is locked and will not be saved.")));
    EXPECT_EQ(m_prompts.fileDialogs.front().initialName, u"Document3.txt"_qs);
    EXPECT_EQ(bytesOf(path(u"3.txt"_qs)), "");
    EXPECT_EQ(strip().currentIndex(), 1);
    EXPECT_EQ(active()->filename, path(u"2.txt"_qs));
}

TEST_F(DocumentSave, AFailedSaveLeavesCaptionTabAndLists) {
    start();
    const QString file = fileOf("a");
    open(file);
    type(u"x"_qs);
    m_frame->AddLRUFile(u"/other"_qs);
    ASSERT_EQ(chmod(QFile::encodeName(file).constData(), 0400), 0);
    run("mnuFileSave");
    EXPECT_EQ(m_prompts.messages.size(), 1);
    EXPECT_EQ(bytesOf(file), "a");
    EXPECT_TRUE(active()->isChange);
    EXPECT_EQ(recentFiles(), QStringList({u"/other"_qs, file}));
}

// A view that does not hold the document's file

TEST_F(DocumentSave, BytesThatDidNotChangeAreWrittenUnderANameThatWasAskedFor) {
    start();
    open(fileOf("0123456789"));
    run("mnuToggleHex");
    run("mnuToggleHex");
    active()->SelectAll();
    QTest::keyClick(&textWidget(), Qt::Key_Delete);
    run("mnuFileSave");
    ASSERT_EQ(bytesOf(active()->filename), QByteArray());
    run("mnuToggleHex");
    const QString other = fileOf("g", u"g.txt"_qs);
    m_prompts.answerSavePath(other);
    m_prompts.answerYes();
    run("mnuFileSave");
    EXPECT_EQ(bytesOf(other), "0123456789");
}

class UnheldFile : public FrameFixture {
 protected:
    void SetUp() override {
        start();
        m_bytes = QByteArray(1026, '\1');
        m_file = fileOf(m_bytes, u"a.bin"_qs);
        open(m_file);
        ASSERT_FALSE(active()->TextEdit());
    }
    QString away() const { return path(u"away"_qs); }
    void takeAway() { ASSERT_TRUE(QFile::rename(m_file, away())); }
    void bringBack() { ASSERT_TRUE(QFile::rename(away(), m_file)); }

    /// Ctrl+S asks for a name, and a cancelled dialog leaves the file as it is.
    void expectAskedForAName() {
        m_prompts.fileDialogs.clear();
        m_prompts.answerSavePath(QString());
        run("mnuFileSave");
        ASSERT_EQ(m_prompts.fileDialogs.size(), 1U);
        EXPECT_EQ(m_prompts.fileDialogs.front().title, u"Save"_qs);
        EXPECT_EQ(m_prompts.fileDialogs.front().initialName, m_file);
        EXPECT_EQ(bytesOf(m_file), m_bytes);
    }

    QString m_file;
    QByteArray m_bytes;
};

TEST_F(UnheldFile, IsNotOverwrittenByTheViewThatCouldNotBeLoaded) {
    takeAway();
    run("mnuToggleHex");
    ASSERT_TRUE(active()->TextEdit());
    EXPECT_EQ(m_prompts.messages.size(), 1);
    bringBack();
    expectAskedForAName();
    type(u"typed meanwhile"_qs);
    expectAskedForAName();
    m_prompts.answerSavePath(m_file);
    m_prompts.answerNo();
    m_prompts.answerSavePath(path(u"other.txt"_qs));
    run("mnuFileSave");
    EXPECT_EQ(bytesOf(m_file), m_bytes);
    EXPECT_EQ(bytesOf(path(u"other.txt"_qs)), "typed meanwhile");
    EXPECT_EQ(active()->filename, path(u"other.txt"_qs));
    m_prompts.fileDialogs.clear();
    type(u"x"_qs);
    run("mnuFileSave");
    EXPECT_TRUE(m_prompts.fileDialogs.empty());
}

TEST_F(UnheldFile, IsOverwrittenOnlyOnTheWordOfTheUser) {
    takeAway();
    run("mnuToggleHex");
    bringBack();
    m_prompts.answerSavePath(m_file);
    m_prompts.answerYes();
    run("mnuFileSave");
    EXPECT_EQ(bytesOf(m_file), "");
    EXPECT_TRUE(active()->holdsFile());
}

TEST_F(UnheldFile, IsNotOverwrittenByAStaleView) {
    run("mnuToggleHex");
    run("mnuToggleHex");
    QTest::keyClicks(m_frame->focusWidget(), u"41"_qs);
    run("mnuFileSave");
    m_bytes[0] = 'A';
    ASSERT_EQ(bytesOf(m_file), m_bytes);
    takeAway();
    run("mnuToggleHex");
    EXPECT_TRUE(text().startsWith(u'\1')) << "the text of before the edit";
    bringBack();
    expectAskedForAName();
}

TEST_F(UnheldFile, IsHeldAgainOnceTheOtherViewHasLoadedIt) {
    takeAway();
    run("mnuToggleHex");
    bringBack();
    run("mnuToggleHex");
    ASSERT_FALSE(active()->TextEdit());
    QTest::keyClicks(m_frame->focusWidget(), u"41"_qs);
    run("mnuFileSave");
    EXPECT_TRUE(m_prompts.fileDialogs.empty());
    EXPECT_EQ(bytesOf(m_file).at(0), 'A');
}

TEST_F(UnheldFile, IsSafeWhateverStoodInItsPlace) {
    const std::pair<const char*, std::function<void()>> places[] = {
        {"folder", [&] { ASSERT_TRUE(QDir().mkdir(m_file)); }},
        {"fifo", [&] { ASSERT_EQ(mkfifo(QFile::encodeName(m_file).constData(), 0600), 0); }},
        {"socket link", [&] { ASSERT_TRUE(QFile::link(u"/dev/null"_qs, m_file)); }},
        {"link to nothing", [&] { ASSERT_TRUE(QFile::link(path(u"nothing"_qs), m_file)); }},
        {"link to itself", [&] { ASSERT_TRUE(QFile::link(m_file, m_file)); }},
    };
    for (const auto& [what, put] : places) {
        m_prompts.messages.clear();
        takeAway();
        put();
        run("mnuToggleHex");
        ASSERT_TRUE(active()->TextEdit()) << what;
        EXPECT_EQ(m_prompts.messages.size(), 1) << what;
        ASSERT_EQ(std::remove(QFile::encodeName(m_file).constData()), 0) << what;
        bringBack();
        expectAskedForAName();
        run("mnuToggleHex");
        ASSERT_FALSE(active()->TextEdit()) << what;
    }
}

TEST_F(UnheldFile, IsNotOverwrittenBySavesInAnEncodingOrOfAllOrAtClosing) {
    takeAway();
    run("mnuToggleHex");
    bringBack();
    type(u"x"_qs);
    m_prompts.answerSavePath(QString());
    run("mnuUTF8");
    ASSERT_EQ(m_prompts.fileDialogs.size(), 1U);
    EXPECT_EQ(m_prompts.fileDialogs.back().title, u"Save (UTF-8)"_qs);
    m_prompts.answerSavePath(QString());
    run("mnuFileSaveAll");
    m_prompts.answerYes();
    m_prompts.answerSavePath(QString());
    m_prompts.answerNo();
    run("mnuFileClose");
    EXPECT_EQ(m_prompts.fileDialogs.size(), 3U);
    EXPECT_EQ(bytesOf(m_file), m_bytes);
}

TEST_F(UnheldFile, IsNotOverwrittenAfterAReloadThatFailed) {
    const QString file = fileOf("text");
    open(file);
    type(u"x"_qs);
    active()->LastUpdate = active()->KnownUpdate = u"2000/01/01 00:00:00"_qs;
    m_prompts.whileShown([&] { ASSERT_TRUE(QFile::rename(file, away())); });
    m_prompts.answerYes();
    m_frame->CheckFileUpdate();
    ASSERT_EQ(m_prompts.messages.size(), 1);
    ASSERT_TRUE(QFile::rename(away(), file));
    m_prompts.answerSavePath(QString());
    run("mnuFileSave");
    EXPECT_EQ(bytesOf(file), "text");
    EXPECT_EQ(text(), u"xtext"_qs);
    EXPECT_TRUE(active()->isChange);
}

// One spelling

TEST_F(DocumentSave, TheNameFromTheDialogIsSpelledAsEveryPathIs) {
    start();
    type(u"x"_qs);
    const QString file = path(u"new.txt"_qs);
    m_prompts.answerSavePath(m_folder.path() + u"//.///new.txt"_qs);
    run("mnuFileSave");
    EXPECT_EQ(active()->filename, file);
    EXPECT_EQ(active()->Caption(), file);
    EXPECT_EQ(recentFiles().value(0), file);
    open(file);
    EXPECT_EQ(m_prompts.messages, QStringList(u"'%1' already open!"_qs.arg(file)));
    m_prompts.answerSavePath(m_folder.path() + u"/./other.txt"_qs);
    run("mnuFileSaveAs");
    EXPECT_EQ(active()->filename, path(u"other.txt"_qs));
}
