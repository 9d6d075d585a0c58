#include "document/HexDocumentFixture.h"

#include <QProgressBar>
#include <QScrollBar>
#include <QSignalSpy>

#include <sys/resource.h>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <limits>

using documenttest::readFile;
using documenttest::writeFile;

/// Files that a document in hex mode must cope with: sizes around the edges of rows and pages, paths that are no files,
/// files that change while they are read or written, and events that are handled in between.
class HexLoading : public HexDocumentFixture {
 protected:
    using HexDocumentFixture::HexDocumentFixture;

    static QByteArray bytesOfSize(qsizetype size) {
        QByteArray bytes;
        for (qsizetype i = 0; i < size; ++i)
            bytes += static_cast<char>(i * 7 % 251);
        return bytes;
    }
    static QString description(int error) { return QString::fromLocal8Bit(std::strerror(error)); }
    QString sparse(qint64 size) const {
        QString file = path(u"sparse.bin"_qs);
        QFile made(file);
        EXPECT_TRUE(made.open(QIODevice::WriteOnly) && made.resize(size));
        return file;
    }
    /// Called in each pass of the event loop, until it returns true.
    void whileYielding(std::function<bool()> look) {
        auto* timer = new QTimer(&m_timers);
        QObject::connect(timer, &QTimer::timeout, timer, [timer, look = std::move(look)] {
            if (look())
                timer->stop();
        });
        timer->start(0);
    }
    /// Between two blocks.
    bool isLoading() { return hex().findChild<QProgressBar*>()->isVisible() && !hex().FileOpen(); }
    void expectUsable() {
        const QString file = fileOf("sound", u"sound.bin"_qs);
        EXPECT_TRUE(openHex(file));
        EXPECT_EQ(m_document.filename, file);
        EXPECT_EQ(shown(), QByteArray("736F756E64"));
        press(u"41"_qs);
        EXPECT_TRUE(m_document.SaveFile(file));
        EXPECT_EQ(readFile(file), QByteArray("Aound"));
    }

    QObject m_timers;
};

/// The same with files of several small blocks, each of which is read and written by itself.
class HexLoadingInBlocks : public HexLoading {
 protected:
    static constexpr qsizetype BlockSize = 1'000;
    static constexpr qsizetype SeveralBlocks = 7 * BlockSize + 300;

    HexLoadingInBlocks() : HexLoading(BlockSize) {
        for (const SystemCall call : {SystemCall::Clone, SystemCall::CopyRange})
            m_given.hexCalls.fail(call, 0, EOPNOTSUPP);
    }
    void failAt(SystemCall call, int fromNow, int error) {
        m_given.hexCalls.fail(call, m_given.hexCalls.count(call) + fromNow, error);
    }
};

TEST_F(HexLoading, FilesAroundTheEdgesOfRowsAndPagesAreShownEditedAndSavedWhole) {
    for (const int size : {1, 2, 15, 16, 17, 319, 320, 321, 335, 336, 337, 640, 641}) {
        QByteArray bytes = bytesOfSize(size);
        ASSERT_TRUE(openHexOf(bytes)) << size;
        EXPECT_EQ(shown(), bytes.left(320).toHex().toUpper()) << size;
        EXPECT_EQ(hex().findChild<QScrollBar*>(u"VScroll1"_qs)->isEnabled(), size > 320) << size;
        EXPECT_TRUE(m_document.GetCursorPos().endsWith(u"Pos 0/%1"_qs.arg(size - 1))) << size;
        pressKey(Qt::Key_End, Qt::ControlModifier);
        EXPECT_EQ(cursor(), size) << size;
        press(u"FE"_qs);
        bytes[size - 1] = '\xFE';
        ASSERT_TRUE(m_document.SaveFile(m_document.filename)) << size;
        EXPECT_EQ(readFile(m_document.filename).toHex(), bytes.toHex()) << size;
    }
}

TEST_F(HexLoading, AnEmptyFileIsNotTakenAndNothingIsSaid) {
    EXPECT_FALSE(openHexOf(""));
    EXPECT_EQ(m_document.filename, QString());
    EXPECT_TRUE(m_prompts.messages.isEmpty());
    expectUsable();
}

TEST_F(HexLoading, TheLargestFileOpensAndIsWrittenInItsLastByte) {
    constexpr qint64 Most = std::numeric_limits<qint32>::max();
    const QString file = sparse(Most);
    ASSERT_TRUE(openHex(file));
    EXPECT_TRUE(m_document.GetCursorPos().endsWith(u"Pos 0/2147483646"_qs));
    pressKey(Qt::Key_End, Qt::ControlModifier);
    EXPECT_EQ(cursor(), Most);
    m_document.ToggleBookmark();
    press(u"5A"_qs);
    EXPECT_TRUE(m_document.isChange);
    m_document.Undo();
    EXPECT_TRUE(m_prompts.messages.isEmpty());
}

TEST_F(HexLoading, AFileOfOneByteMoreIsRefusedWithABox) {
    EXPECT_FALSE(openHex(sparse(qint64{std::numeric_limits<qint32>::max()} + 1)));
    EXPECT_EQ(m_prompts.messages, QStringList(description(EFBIG)));
    EXPECT_EQ(m_document.filename, QString());
    EXPECT_TRUE(m_document.isNew);
    expectUsable();
}

TEST_F(HexLoading, WhatIsNoFileIsToldAndTheDocumentStaysUsable) {
    const QString fifo = path(u"fifo"_qs);
    ASSERT_EQ(mkfifo(QFile::encodeName(fifo).constData(), 0600), 0);
    for (const QString& each : {fifo, m_folder.path(), u"/dev/null"_qs, path(u"missing"_qs)}) {
        m_prompts.messages.clear();
        EXPECT_FALSE(openHex(each)) << each.toStdString();
        EXPECT_EQ(m_prompts.messages.size(), 1) << each.toStdString();
        EXPECT_EQ(m_document.filename, QString());
        EXPECT_FALSE(hex().FileOpen());
    }
    expectUsable();
}

TEST_F(HexLoading, AFileOfTheSystemThatClaimsToBeEmptyIsNotTaken) {
    EXPECT_FALSE(openHex(u"/proc/self/status"_qs));
    EXPECT_EQ(m_document.filename, QString());
    expectUsable();
}

TEST_F(HexLoading, AFailedLoadLeavesTheFieldsOfTheFileBefore) {
    ASSERT_TRUE(openHexOf("one"));
    const QString file = m_document.filename;
    press(u"41"_qs);
    EXPECT_FALSE(openHex(path(u"missing"_qs)));
    EXPECT_EQ(m_document.filename, file);
    EXPECT_TRUE(m_document.isChange);
    EXPECT_FALSE(m_document.isNew);
}

TEST_F(HexLoadingInBlocks, AFileThatGrowsWhileItIsReadIsShownAsItWasOrIs) {
    const QByteArray bytes = bytesOfSize(SeveralBlocks);
    const QString file = fileOf(bytes);
    bool grown = false;
    whileYielding([&] {
        if (!isLoading())
            return false;
        QFile more(file);
        grown = more.open(QIODevice::Append) && more.write("more") == 4;
        return true;
    });
    ASSERT_TRUE(openHex(file));
    ASSERT_TRUE(grown);
    EXPECT_TRUE((bytes + "more").startsWith(readFile(hex().TempFileName())));
    EXPECT_GE(QFile(hex().TempFileName()).size(), bytes.size());
    EXPECT_EQ(readFile(file), bytes + "more");
}

TEST_F(HexLoadingInBlocks, AFileThatShrinksWhileItIsReadIsShownAsFarAsItWent) {
    const QByteArray bytes = bytesOfSize(SeveralBlocks);
    const QString file = fileOf(bytes);
    bool cut = false;
    whileYielding([&] {
        cut = cut || (isLoading() && QFile::resize(file, SeveralBlocks / 2));
        return cut;
    });
    ASSERT_TRUE(openHex(file));
    ASSERT_TRUE(cut);
    const QByteArray copy = readFile(hex().TempFileName());
    EXPECT_TRUE(bytes.startsWith(copy));
    EXPECT_TRUE(m_document.GetCursorPos().endsWith(u"/%1"_qs.arg(copy.size() - 1)));
    EXPECT_EQ(shown(), bytes.left(320).toHex().toUpper());
}

TEST_F(HexLoadingInBlocks, AFileThatVanishesWhileItIsReadIsWholeOnTheScreen) {
    const QByteArray bytes = bytesOfSize(SeveralBlocks);
    const QString file = fileOf(bytes);
    bool gone = false;
    whileYielding([&] {
        gone = gone || (isLoading() && QFile::remove(file));
        return gone;
    });
    ASSERT_TRUE(openHex(file));
    ASSERT_TRUE(gone);
    EXPECT_EQ(readFile(hex().TempFileName()), bytes);
    press(u"41"_qs);
    EXPECT_TRUE(m_document.SaveFile(file));
    EXPECT_EQ(readFile(file), 'A' + bytes.mid(1));
}

TEST_F(HexLoading, ASaveThatFailsOnTheWayIsToldAndTheBytesCanBeSavedElsewhere) {
    const QByteArray bytes = bytesOfSize(2000);
    ASSERT_TRUE(openHexOf(bytes));
    const QString file = m_document.filename;
    press(u"41"_qs);
    // A limit on the size of files simulates a full disk.
    rlimit before{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &before), 0);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small{1000, before.rlim_max};
    const QString larger = path(u"larger.bin"_qs);
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    const bool saved = m_document.SaveFile(larger, SaveFormats::AsLoaded, true);
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &before), 0);
    std::signal(SIGXFSZ, handler);
    EXPECT_FALSE(saved);
    ASSERT_EQ(m_prompts.messages.size(), 1);
    EXPECT_EQ(m_prompts.messages.first(), u"%1\n%2"_qs.arg(EFBIG).arg(description(EFBIG)));
    EXPECT_EQ(m_document.filename, file);
    EXPECT_TRUE(m_document.isChange);
    EXPECT_TRUE(hex().Modified());
    EXPECT_EQ(readFile(file), bytes);
    EXPECT_TRUE(m_document.SaveFile(file));
    EXPECT_EQ(readFile(file), 'A' + bytes.mid(1));
}

TEST_F(HexLoadingInBlocks, AReadThatFailsOnTheWayIsToldAndNothingIsLost) {
    const QByteArray bytes = bytesOfSize(SeveralBlocks);
    const QString file = fileOf(bytes, u"worn.bin"_qs);
    failAt(SystemCall::ReadAt, 3, EIO);
    EXPECT_FALSE(openHex(file));
    EXPECT_EQ(m_prompts.messages, QStringList(description(EIO)));
    EXPECT_FALSE(hex().FileOpen());
    EXPECT_FALSE(hex().findChild<QProgressBar*>()->isVisible());
    EXPECT_EQ(m_document.filename, QString());
    EXPECT_TRUE(m_document.isNew);
    EXPECT_FALSE(QFile::exists(hex().TempFileName()));
    EXPECT_EQ(readFile(file), bytes);
    ASSERT_TRUE(openHex(file));
    EXPECT_EQ(readFile(hex().TempFileName()), bytes);
    expectUsable();
}

TEST_F(HexLoadingInBlocks, AReadThatFailsWhileAnotherFileIsShownLeavesThatFileAsItWas) {
    ASSERT_TRUE(openHexOf("one"));
    const QString before = m_document.filename;
    const QString file = fileOf(bytesOfSize(SeveralBlocks), u"worn.bin"_qs);
    failAt(SystemCall::ReadAt, 2, EIO);
    EXPECT_FALSE(openHex(file));
    EXPECT_EQ(m_prompts.messages, QStringList(description(EIO)));
    EXPECT_EQ(m_document.filename, before);
    EXPECT_EQ(readFile(before), QByteArray("one"));
    ASSERT_TRUE(openHex(before));
    EXPECT_EQ(shown(), QByteArray("6F6E65"));
}

TEST_F(HexLoadingInBlocks, AReadOfTheCopyThatFailsWhileItIsSavedIsToldAndTheBytesAreSavedByTheNext) {
    QByteArray bytes = bytesOfSize(SeveralBlocks);
    ASSERT_TRUE(openHexOf(bytes));
    press(u"41"_qs);
    failAt(SystemCall::ReadAt, 3, EIO);
    EXPECT_FALSE(m_document.SaveFile(m_document.filename));
    EXPECT_EQ(m_prompts.messages, QStringList(u"%1\n%2"_qs.arg(EIO).arg(description(EIO))));
    EXPECT_TRUE(m_document.isChange);
    EXPECT_EQ(readFile(m_document.filename).size(), bytes.size());
    EXPECT_TRUE(m_document.SaveFile(m_document.filename));
    bytes[0] = 'A';
    EXPECT_EQ(readFile(m_document.filename), bytes);
    EXPECT_FALSE(m_document.isChange);
}

// Events between the blocks

TEST_F(HexLoadingInBlocks, WhileItLoadsItStaysAndTakesNoByte) {
    const QByteArray bytes = bytesOfSize(SeveralBlocks);
    const QString file = fileOf(bytes);
    int looks = 0;
    whileYielding([&] {
        if (!isLoading())
            return false;
        EXPECT_FALSE(m_document.close());
        EXPECT_FALSE(m_document.FileNeedToReload());
        m_document.setTextEdit(true);
        EXPECT_FALSE(m_document.TextEdit());
        EXPECT_FALSE(m_document.SaveFile(path(u"other"_qs)));
        EXPECT_FALSE(QFile::exists(path(u"other"_qs)));
        EXPECT_FALSE(openHex(file));
        QTest::keyClicks(&pane(1), u"41"_qs);
        for (void (frmDocument::*command)() :
             {&frmDocument::Undo, &frmDocument::Copy, &frmDocument::GotoPage, &frmDocument::GotoOffset,
              &frmDocument::SelectBlock, &frmDocument::ToggleBookmark, &frmDocument::NextBookmark})
            (m_document.*command)();
        return ++looks == 3;
    });
    ASSERT_TRUE(openHex(file));
    EXPECT_GE(looks, 1);
    EXPECT_EQ(readFile(hex().TempFileName()), bytes);
    EXPECT_EQ(m_document.filename, file);
    EXPECT_FALSE(m_document.isChange);
    EXPECT_TRUE(m_document.close());
}

TEST_F(HexLoadingInBlocks, AReloadAsTextInBetweenIsTheOneThatCounts) {
    const QString file = fileOf(bytesOfSize(SeveralBlocks));
    const QString other = fileOf("other text", u"other.txt"_qs);
    bool opened = false;
    whileYielding([&] {
        opened = opened || (isLoading() && open(other));
        if (opened)
            type(u"x"_qs);
        return opened;
    });
    openHex(file);
    ASSERT_TRUE(opened);
    EXPECT_TRUE(m_document.TextEdit());
    EXPECT_EQ(m_document.filename, other);
    EXPECT_EQ(view().Text(), u"xother text"_qs);
    EXPECT_TRUE(m_document.isChange);
}

TEST_F(HexLoadingInBlocks, ADocumentThatGoesBetweenTwoBlocksIsNotTouchedAgain) {
    auto* document = new frmDocument(&m_host, m_services);
    document->show();
    const QString file = fileOf(bytesOfSize(SeveralBlocks));
    const auto* loading = document->findChild<ucHex*>(u"ucHex1"_qs);
    whileYielding([&, document] {
        if (loading->TempFileName().isEmpty())
            return false;
        delete document;
        return true;
    });
    EXPECT_FALSE(document->OpenFile(file, false, false, false));
    EXPECT_TRUE(m_host.calls.isEmpty());
}

TEST_F(HexLoadingInBlocks, WhileItSavesItStaysAndAByteTypedThenStaysAChange) {
    QByteArray bytes = bytesOfSize(SeveralBlocks);
    ASSERT_TRUE(openHexOf(bytes));
    const QString file = m_document.filename;
    press(u"41"_qs);
    bool tried = false;
    whileYielding([&] {
        tried = true;
        EXPECT_FALSE(m_document.close());
        m_document.setTextEdit(true);
        EXPECT_FALSE(m_document.TextEdit());
        EXPECT_FALSE(m_document.FileNeedToReload());
        QTest::keyClicks(&pane(1), u"42"_qs);
        return true;
    });
    EXPECT_TRUE(m_document.SaveFile(file));
    ASSERT_TRUE(tried);
    EXPECT_EQ(m_asked, 0);
    EXPECT_TRUE(m_document.isChange);
    EXPECT_EQ(m_document.DocIcon(), 1);
    bytes[0] = 'A';
    EXPECT_EQ(readFile(file), bytes);
    EXPECT_TRUE(m_document.SaveFile(file));
    bytes[0] = 'B';
    EXPECT_EQ(readFile(file), bytes);
    EXPECT_FALSE(m_document.isChange);
}

/// In front of the bytes that are written at that moment, and behind them.
TEST_F(HexLoadingInBlocks, TheFileGetsTheBytesOfTheBeginningOfItsSave) {
    QByteArray bytes = bytesOfSize(SeveralBlocks);
    ASSERT_TRUE(openHexOf(bytes));
    const QString file = m_document.filename;
    press(u"41"_qs);
    bytes[0] = 'A';
    int turns = 0;
    whileYielding([&] {
        const Offset at(turns * BlockSize);
        hex().fillBlock(at, Offset(at.number() + 1), static_cast<quint8>(turns));
        hex().ReplaceBytes(u"EE "_qs, SeveralBlocks - turns);
        return ++turns == 7;
    });
    EXPECT_TRUE(m_document.SaveFile(file));
    ASSERT_GE(turns, 3);
    EXPECT_EQ(readFile(file), bytes);
    EXPECT_NE(readFile(hex().TempFileName()), bytes);
    EXPECT_EQ(m_document.limitations(), u"Save As writes what was replaced or filled."_qs);
    EXPECT_TRUE(m_document.SaveFile(file, SaveFormats::AsLoaded, true));
    EXPECT_EQ(readFile(file), readFile(hex().TempFileName()));
    EXPECT_EQ(m_document.limitations(), QString());
}

TEST_F(HexLoadingInBlocks, WhatWasReplacedBeforeASaveThatFailsIsStillSaidToNeedSaveAs) {
    ASSERT_TRUE(openHexOf(bytesOfSize(SeveralBlocks)));
    hex().ReplaceBytes(u"EE "_qs, 1);
    failAt(SystemCall::ReadAt, 3, EIO);
    EXPECT_FALSE(m_document.SaveFile(m_document.filename, SaveFormats::AsLoaded, true));
    EXPECT_EQ(m_document.limitations(), u"Save As writes what was replaced or filled."_qs);
}

TEST_F(HexLoadingInBlocks, ADocumentThatGoesWhileItSavesHasSavedAllOfIt) {
    const QByteArray bytes = bytesOfSize(SeveralBlocks);
    auto* document = new frmDocument(&m_host, m_services);
    const QString file = fileOf(bytes);
    ASSERT_TRUE(document->OpenFile(file, false, false, false));
    writeFile(file, QByteArray(SeveralBlocks, 'z'));
    whileYielding([document] {
        delete document;
        return true;
    });
    EXPECT_FALSE(document->SaveFile(file, SaveFormats::AsLoaded, true));
    EXPECT_EQ(readFile(file), bytes);
}

TEST_F(HexLoadingInBlocks, WhileItSavesAnotherSaveIsRefusedWithANotice) {
    ASSERT_TRUE(openHexOf(bytesOfSize(SeveralBlocks)));
    const QString file = m_document.filename;
    press(u"41"_qs);
    QSignalSpy notices(&m_document, &frmDocument::Notice);
    bool tried = false;
    whileYielding([&] {
        tried = true;
        EXPECT_FALSE(m_document.SaveFile(file));
        EXPECT_EQ(notices.count(), 1);
        EXPECT_EQ(notices.last().first().toString(), u"Not saved: the file is still being read or written."_qs);
        return true;
    });
    EXPECT_TRUE(m_document.SaveFile(file));
    ASSERT_TRUE(tried);
    EXPECT_EQ(notices.count(), 2);
    EXPECT_EQ(notices.last().first().toString(), QString());
    EXPECT_FALSE(m_document.isChange);
    EXPECT_TRUE(m_prompts.messages.isEmpty());
}
