#include "document/DocumentFixture.h"

#include <QFileInfo>
#include <QGuiApplication>

#include <sys/resource.h>
#include <unistd.h>

using documenttest::readFailure;
using documenttest::readFile;
using documenttest::setMode;
using documenttest::setTime;
using documenttest::SomeTime;
using documenttest::writeFailure;

class DocumentSaving : public DocumentFixture {
 protected:
    /// Opens a file whose text can be written in every encoding.
    QString openUmlaut() {
        QString file = fileOf("\xC3\xA4\n");
        EXPECT_TRUE(open(file));
        return file;
    }

    bool save(int format = SaveFormats::AsLoaded) { return m_document.SaveFile(m_document.filename, format, false); }
};

TEST_F(DocumentSaving, SavingAnUntitledDocumentNamesIt) {
    type(u"abc"_qs);
    const QString file = path(u"new.txt"_qs);
    EXPECT_TRUE(m_document.SaveFile(file, 1, false));
    EXPECT_EQ(readFile(file), "abc");
    EXPECT_EQ(m_document.filename, file);
    EXPECT_FALSE(m_document.isChange);
    EXPECT_FALSE(m_document.isNew);
    EXPECT_FALSE(view().FileChanged);
    EXPECT_EQ(m_document.DocIcon(), 0);
    EXPECT_FALSE(m_document.LastUpdate.isEmpty());
    EXPECT_EQ(m_document.KnownUpdate, m_document.LastUpdate);
}

TEST_F(DocumentSaving, SavingAnUntouchedDocumentWritesAnEmptyFile) {
    const QString file = path(u"new.txt"_qs);
    EXPECT_TRUE(m_document.SaveFile(file, 1, false));
    EXPECT_EQ(readFile(file), QByteArray());
    EXPECT_FALSE(m_document.isNew);
    EXPECT_EQ(m_document.filename, file);
}

TEST_F(DocumentSaving, SavingAnEditedFileClearsTheChange) {
    const QString file = fileOf("one");
    ASSERT_TRUE(open(file));
    type(u"x"_qs);
    m_host.calls.clear();
    EXPECT_TRUE(save());
    EXPECT_EQ(readFile(file), "xone");
    EXPECT_FALSE(m_document.isChange);
    EXPECT_FALSE(view().FileChanged);
    EXPECT_EQ(m_document.DocIcon(), 0);
    EXPECT_EQ(m_host.calls, QStringList(u"SetTabCaption 1"_qs));
}

TEST_F(DocumentSaving, ASaveUnderANewNameTakesThatName) {
    const QString first = fileOf("one");
    ASSERT_TRUE(open(first));
    type(u"x"_qs);
    const QString second = path(u"b.txt"_qs);
    EXPECT_TRUE(m_document.SaveFile(second, 1, true));
    EXPECT_EQ(m_document.filename, second);
    EXPECT_EQ(readFile(first), "one");
    EXPECT_EQ(readFile(second), "xone");
}

TEST_F(DocumentSaving, ASaveLeavesTheIconOfAReadOnlyDocumentNormalUntilTheNextToggle) {
    ASSERT_TRUE(open(fileOf("one"), true));
    ASSERT_EQ(m_document.DocIcon(), 2);
    EXPECT_TRUE(save());
    EXPECT_EQ(m_document.DocIcon(), 0);
    EXPECT_TRUE(m_document.isReadOnly);
    m_document.ChangeToReadOnly();
    m_document.ChangeToReadOnly();
    EXPECT_EQ(m_document.DocIcon(), 2);
}

TEST_F(DocumentSaving, ThePointerIsBusyWhileItSaves) {
    ASSERT_TRUE(open(fileOf("one")));
    bool busy = false;
    m_host.during[u"SetTabCaption"_qs] = [&] {
        busy = QGuiApplication::overrideCursor() && QGuiApplication::overrideCursor()->shape() == Qt::WaitCursor;
    };
    EXPECT_TRUE(save());
    EXPECT_TRUE(busy);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST_F(DocumentSaving, EachFormatWritesItsBytes) {
    const QString file = openUmlaut();
    EXPECT_TRUE(save(SaveFormats::Ansi));
    EXPECT_EQ(readFile(file), "\xE4\n");
    EXPECT_TRUE(save(SaveFormats::Utf8));
    EXPECT_EQ(readFile(file), "\xEF\xBB\xBF\xC3\xA4\n");
    EXPECT_TRUE(save(SaveFormats::Unicode));
    EXPECT_EQ(readFile(file), QByteArray("\xFF\xFE\xE4\0\n\0", 6));
    EXPECT_TRUE(save(SaveFormats::NoByteOrderMark));
    EXPECT_EQ(readFile(file), "\xC3\xA4\n");
}

TEST_F(DocumentSaving, EachFormatComesBackFromTheReloadAsTheSameText) {
    const QString file = openUmlaut();
    for (const int format : {2, 3, 4, 5}) {
        ASSERT_TRUE(save(format));
        m_document.ReloadTextFile(file, format);
        EXPECT_EQ(view().Text(), u"\u00e4\n"_qs) << format;
        ASSERT_TRUE(open(file));
        EXPECT_EQ(view().Text(), u"\u00e4\n"_qs) << format;
    }
}

TEST_F(DocumentSaving, APlainSaveKeepsTheFormatOfTheFile) {
    for (const QByteArray& bytes :
         {QByteArray("\xE4\n"), QByteArray("\xEF\xBB\xBF\xC3\xA4\n"), QByteArray("\xFF\xFE\xE4\0\n\0", 6),
          QByteArray("\xFE\xFF\0\xE4\0\n", 6), QByteArray("\xC3\xA4\r\nb\nc\rd")}) {
        const QString file = fileOf(bytes);
        ASSERT_TRUE(open(file));
        ASSERT_TRUE(save());
        EXPECT_EQ(readFile(file).toHex(' '), bytes.toHex(' '));
    }
}

TEST_F(DocumentSaving, APlainSaveKeepsTheFormatOfAReloadedFile) {
    const QString file = openUmlaut();
    ASSERT_TRUE(save(SaveFormats::Unicode));
    m_document.ReloadTextFile(file, SaveFormats::Unicode);
    ASSERT_TRUE(save());
    EXPECT_EQ(readFile(file), QByteArray("\xFF\xFE\xE4\0\n\0", 6));
}

TEST_F(DocumentSaving, AFormatThatDoesNotExistCountsAsLoaded) {
    const QString file = fileOf("\xE4");
    ASSERT_TRUE(open(file));
    EXPECT_TRUE(save(0));
    EXPECT_EQ(readFile(file), "\xE4");
    EXPECT_TRUE(save(77));
    EXPECT_EQ(readFile(file), "\xE4");
}

TEST_F(DocumentSaving, TheReloadTakesTheEncodingThatWasWrittenAndDoesNotGuess) {
    // Saved as ANSI these two characters are the very bytes of an a with dots in UTF-8.
    const QString file = fileOf("\xC3\x83\xC2\xA4");
    ASSERT_TRUE(open(file));
    ASSERT_EQ(view().Text(), u"\u00c3\u00a4"_qs);
    ASSERT_TRUE(save(SaveFormats::Ansi));
    ASSERT_EQ(readFile(file), "\xC3\xA4");
    m_document.ReloadTextFile(file, SaveFormats::Ansi);
    EXPECT_EQ(view().Text(), u"\u00c3\u00a4"_qs);
    m_document.ReloadFile();
    EXPECT_EQ(view().Text(), u"\u00e4"_qs);
}

TEST_F(DocumentSaving, TheReloadAfterASaveDropsTheUndoHistoryEvenWithTheSettingOff) {
    const QString file = openUmlaut();
    m_options.ClearRedoAfterSave = false;
    type(u"x"_qs);
    ASSERT_TRUE(save(SaveFormats::Utf8));
    ASSERT_TRUE(canUndo());
    m_document.ReloadTextFile(file, SaveFormats::Utf8);
    EXPECT_FALSE(canUndo());
    EXPECT_FALSE(canRedo());
}

TEST_F(DocumentSaving, TheReloadAfterASaveTouchesNoFlagOfTheDocument) {
    const QString file = openUmlaut();
    type(u"x"_qs);
    m_document.SetDocIcon(2);
    const QString loadedAt = m_document.LastUpdate;
    setTime(file, SomeTime + 60);
    m_host.calls.clear();
    m_document.ReloadTextFile(file, SaveFormats::Utf8);
    EXPECT_TRUE(m_document.isChange);
    EXPECT_EQ(m_document.DocIcon(), 2);
    EXPECT_EQ(m_document.LastUpdate, loadedAt);
    EXPECT_FALSE(view().FileChanged);
    EXPECT_TRUE(m_host.calls.isEmpty());
}

TEST_F(DocumentSaving, ASaveKeepsTheHistoryUnlessTheSettingDropsIt) {
    ASSERT_TRUE(open(fileOf("one")));
    type(u"x"_qs);
    m_options.ClearRedoAfterSave = false;
    ASSERT_TRUE(save());
    EXPECT_TRUE(canUndo());
    m_options.ClearRedoAfterSave = true;
    ASSERT_TRUE(save());
    EXPECT_FALSE(canUndo());
    EXPECT_FALSE(canRedo());
    EXPECT_EQ(view().Text(), u"xone"_qs);
}

TEST_F(DocumentSaving, EveryFormatDropsTheHistoryWhenTheSettingSaysSo) {
    ASSERT_TRUE(open(fileOf("one")));
    m_options.ClearRedoAfterSave = true;
    for (const int format : {1, 2, 3, 4, 5}) {
        type(u"x"_qs);
        ASSERT_TRUE(canUndo());
        ASSERT_TRUE(save(format));
        EXPECT_FALSE(canUndo()) << format;
    }
}

TEST_F(DocumentSaving, TheLanguageFollowsTheNameOfTheSaveButNotTheReload) {
    m_given.globals.languages.LoadLanguageIndex();
    const QString code = fileOf("one", u"a.cpp"_qs);
    ASSERT_TRUE(open(code));
    EXPECT_EQ(m_document.GetLang(), u"C++"_qs);
    ASSERT_TRUE(m_document.SaveFile(path(u"b.html"_qs), SaveFormats::Utf8, false));
    EXPECT_EQ(m_document.GetLang(), u"HTML"_qs);
    m_document.ReloadTextFile(code, SaveFormats::Utf8);
    EXPECT_EQ(m_document.GetLang(), u"HTML"_qs);
}

TEST_F(DocumentSaving, ADocumentHoldsTheFileThatItLoadedOrSaved) {
    EXPECT_FALSE(m_document.holdsFile());
    ASSERT_TRUE(m_document.SaveFile(path(u"new.txt"_qs), 1, false));
    EXPECT_TRUE(m_document.holdsFile());
    const QString file = fileOf("one");
    ASSERT_TRUE(open(file));
    EXPECT_TRUE(m_document.holdsFile());
    EXPECT_FALSE(m_document.SaveFile(path(u"missing/new.txt"_qs), 1, true));
    EXPECT_TRUE(m_document.holdsFile());
}

TEST_F(DocumentSaving, ADocumentWhoseReloadFailedHoldsItsFileNoMoreUntilItIsLoadedOrSaved) {
    const QString file = fileOf("one");
    ASSERT_TRUE(open(file));
    for (const bool saved : {false, true}) {
        ASSERT_TRUE(QFile::remove(file));
        m_document.ReloadFile();
        EXPECT_EQ(m_document.filename, file);
        EXPECT_FALSE(m_document.holdsFile());
        if (saved) {
            EXPECT_TRUE(save());
        } else {
            fileOf("two");
            EXPECT_TRUE(open(file));
        }
        EXPECT_TRUE(m_document.holdsFile());
    }
    EXPECT_EQ(readFile(file), "two");
}

// Failures

TEST_F(DocumentSaving, AFailedSaveLeavesTheDocumentChangedAndTheFileWhole) {
    const QString file = fileOf("one");
    ASSERT_TRUE(open(file));
    const QString loadedAt = m_document.LastUpdate;
    type(u"x"_qs);
    setMode(file, 0444);
    setTime(file, SomeTime + 60);
    m_host.calls.clear();

    EXPECT_FALSE(save());
    EXPECT_EQ(m_prompts.messages, QStringList(writeFailure(file, EACCES)));
    EXPECT_EQ(readFile(file), "one");
    EXPECT_EQ(view().Text(), u"xone"_qs);
    EXPECT_EQ(m_document.filename, file);
    EXPECT_TRUE(m_document.isChange);
    EXPECT_TRUE(view().FileChanged);
    EXPECT_EQ(m_document.DocIcon(), 1);
    EXPECT_NE(m_document.LastUpdate, loadedAt);
    EXPECT_EQ(m_document.KnownUpdate, m_document.LastUpdate);
    EXPECT_EQ(m_host.calls, QStringList(u"SetTabCaption 1"_qs));
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST_F(DocumentSaving, ASaveThatHasNoRoomLeavesTheOldFileWholeAndTheTextChanged) {
    const QString file = fileOf("one");
    ASSERT_TRUE(open(file));
    view().setText(QString(9'000'000, u'x'));
    rlimit before{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
    const rlimit room{8'000'000, before.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &room), 0);
    const bool saved = save();
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &before), 0);
    EXPECT_FALSE(saved);
    EXPECT_EQ(m_prompts.messages, QStringList(writeFailure(file, EFBIG)));
    EXPECT_EQ(readFile(file), "one");
    EXPECT_TRUE(m_document.isChange);
    EXPECT_TRUE(view().FileChanged);
    EXPECT_EQ(view().TotalChars(), 9'000'000);
    EXPECT_TRUE(save());
    EXPECT_EQ(readFile(file).size(), 9'000'000);
    EXPECT_FALSE(m_document.isChange);
}

TEST_F(DocumentSaving, ASaveKeepsInodeLinksAndMode) {
    const QString file = fileOf("one");
    const QString hard = path(u"hard.txt"_qs);
    const QString soft = path(u"soft.txt"_qs);
    ASSERT_EQ(::link(QFile::encodeName(file).constData(), QFile::encodeName(hard).constData()), 0);
    ASSERT_TRUE(QFile::link(file, soft));
    setMode(file, 0640);
    struct stat before {};
    ASSERT_EQ(::stat(QFile::encodeName(file).constData(), &before), 0);
    ASSERT_TRUE(open(soft));
    for (const int format : {1, 2, 3, 4, 5}) {
        type(u"x"_qs);
        ASSERT_TRUE(save(format));
    }
    struct stat after {};
    ASSERT_EQ(::lstat(QFile::encodeName(file).constData(), &after), 0);
    EXPECT_EQ(after.st_ino, before.st_ino);
    EXPECT_EQ(after.st_nlink, 2U);
    EXPECT_EQ(after.st_mode, before.st_mode);
    EXPECT_EQ(readFile(hard), "xxxxxone");
    EXPECT_TRUE(QFileInfo(soft).isSymLink());
}

TEST_F(DocumentSaving, AFailedSaveOfAnUntitledDocumentLeavesItUntitled) {
    const QString file = path(u"missing/new.txt"_qs);
    EXPECT_FALSE(m_document.SaveFile(file, 1, false));
    EXPECT_TRUE(m_document.isNew);
    EXPECT_EQ(m_document.filename, QString());
    EXPECT_EQ(m_document.LastUpdate, QString());
    type(u"abc"_qs);
    EXPECT_FALSE(m_document.SaveFile(file, 1, false));
    EXPECT_TRUE(m_document.isChange);
    EXPECT_FALSE(m_document.isNew);
    EXPECT_EQ(m_document.filename, QString());
    EXPECT_EQ(m_prompts.messages, QStringList({writeFailure(file, ENOENT), writeFailure(file, ENOENT)}));
}

TEST_F(DocumentSaving, AFailedSaveUnderANewNameKeepsTheOldOne) {
    m_given.globals.languages.LoadLanguageIndex();
    const QString file = fileOf("one", u"a.cpp"_qs);
    ASSERT_TRUE(open(file));
    QDir(m_folder.path()).mkdir(u"b.html"_qs);
    EXPECT_FALSE(m_document.SaveFile(path(u"b.html"_qs), 1, true));
    EXPECT_EQ(m_document.filename, file);
    EXPECT_EQ(m_document.GetLang(), u"C++"_qs);
    EXPECT_EQ(m_prompts.messages.size(), 1);
}

TEST_F(DocumentSaving, WhatAnsiCannotHoldIsToldWithItsPlaceAndNotWritten) {
    const QString file = fileOf("one\ntw\xD0\x96");
    ASSERT_TRUE(open(file));
    type(u"x"_qs);
    EXPECT_FALSE(save(SaveFormats::Ansi));
    ASSERT_EQ(m_prompts.messages.size(), 1);
    EXPECT_TRUE(m_prompts.messages.front().contains(QLatin1Char('2'))) << m_prompts.messages.front().toStdString();
    EXPECT_TRUE(m_prompts.messages.front().contains(QLatin1Char('3'))) << m_prompts.messages.front().toStdString();
    EXPECT_EQ(readFile(file), "one\ntw\xD0\x96");
    EXPECT_TRUE(m_document.isChange);
}

TEST_F(DocumentSaving, AReloadThatFailsAfterASaveIsTold) {
    const QString file = openUmlaut();
    ASSERT_TRUE(QFile::remove(file));
    m_document.ReloadTextFile(file, SaveFormats::Utf8);
    EXPECT_EQ(m_prompts.messages, QStringList(readFailure(file, ENOENT)));
    EXPECT_EQ(view().Text(), u"\u00e4\n"_qs);
    EXPECT_EQ(m_document.filename, file);
}

TEST_F(DocumentSaving, ADocumentThatGoesWhileItsErrorIsShownIsNotTouchedAgain) {
    auto* document = new frmDocument(&m_host, m_services);
    m_prompts.whileShown([&] { delete document; });
    EXPECT_FALSE(document->SaveFile(path(u"missing/new.txt"_qs), 1, false));
    EXPECT_TRUE(m_host.calls.isEmpty());
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}
