#include "shell/FrameFixture.h"
#include "shell/commands/LanguageMenu.h"

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
