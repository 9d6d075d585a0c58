#include "settings/files/OwnTextFile.h"
#include "shell/FrameFixture.h"
#include "shell/documents/SystemClose.h"

#include <QMdiArea>

#include <random>
#include <stdexcept>

namespace {

constexpr int Twips = 15;

}  // namespace

/// What a run leaves in its session file, and how the next one opens it.
class Sessions : public FrameFixture {
 protected:
    void putSession(const QStringList& lines) { OwnTextFile::writeLines(ownFile("lastopen.idx"), lines); }
    QStringList session() { return OwnTextFile::readLines(ownFile("lastopen.idx"), 100'000).value_or(QStringList()); }
    /// A run that restores these lines.
    void startWith(const QStringList& lines) {
        putSession(lines);
        set("LoadLastFiles", "1");
        start();
    }
    void end() {
        m_frame->close();
        m_frame.reset();
    }
    QMdiSubWindow* window(int index) { return house().children.windowOf(documents().at(index)); }
    QMdiSubWindow* window() { return house().children.windowOf(active()); }
    static QString record(const QString& file, int state, const QRect& place, bool text = true, bool locked = false) {
        return QStringList{file,
                           text ? u"True"_qs : u"False"_qs,
                           locked ? u"True"_qs : u"False"_qs,
                           QString::number(state),
                           QString::number(place.x() * Twips),
                           QString::number(place.y() * Twips),
                           QString::number(place.width() * Twips),
                           QString::number(place.height() * Twips)}
            .join(u'\t');
    }
    QStringList names() {
        QStringList all;
        for (const frmDocument* document : documents())
            all << document->filename;
        return all;
    }

    const QRect m_place{30, 40, 400, 300};
};

TEST_F(Sessions, HoldEveryDocumentThatHasAFileName) {
    start();
    const QString first = fileOf("1", u"1.txt"_qs);
    const QString second = fileOf(QByteArray("\0\1\2", 3), u"2.bin"_qs);
    open(first);
    run("mnuFileNew");
    type(u"untitled"_qs);
    open(second, 1);
    window(0)->showNormal();
    window(0)->setGeometry(m_place);
    window(2)->showNormal();
    window(2)->setGeometry(QRect(0, 5, 500, 200));
    m_frame->SaveSession();
    EXPECT_EQ(session(), QStringList({u"<FILE>"_qs, record(first, 0, m_place),
                                      record(second, 0, QRect(0, 5, 500, 200), false, true)}));
    EXPECT_TRUE(bytesOf(ownFile("lastopen.idx")).startsWith("<FILE>\r\n"));
}

TEST_F(Sessions, AreWrittenOnEveryExitWhateverTheSettingSays) {
    for (const char* wanted : {"0", "1"}) {
        set("LoadLastFiles", wanted);
        QFile::remove(ownFile("lastopen.idx"));
        start();
        end();
        EXPECT_EQ(session(), QStringList(u"<FILE>"_qs)) << wanted;
    }
}

TEST_F(Sessions, ComeBackInTheNextRun) {
    start();
    const QString text = fileOf("one\n", u"1.txt"_qs);
    const QString locked = fileOf("two\n", u"2.txt"_qs);
    const QString bytes = fileOf("three", u"3.txt"_qs);
    open(text);
    open(locked, 1);
    open(bytes);
    house().entries.button("ShowHex")->trigger();
    ASSERT_FALSE(active()->TextEdit());
    window()->showNormal();
    run("mnuWindowCascade");
    const QList<QRect> places{window(0)->geometry(), window(1)->geometry(), window(2)->geometry()};
    end();
    const QStringList written = session();

    set("LoadLastFiles", "1");
    start();
    EXPECT_EQ(names(), QStringList({text, locked, bytes}));
    EXPECT_EQ(strip().count(), 3);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(window(i)->geometry(), places.at(i)) << i;
        EXPECT_EQ(documents().at(i)->Locked(), i == 1) << i;
        EXPECT_EQ(documents().at(i)->TextEdit(), i != 2) << i;
    }
    EXPECT_EQ(documents().at(0)->GetEditor()->Text(), u"one\n"_qs);
    EXPECT_EQ(recentFiles(), QStringList({bytes, locked, text}));
    EXPECT_TRUE(m_prompts.messages.isEmpty());
    EXPECT_FALSE(house().systemClose.isGreyed());
    end();
    EXPECT_EQ(session(), written);
}

TEST_F(Sessions, KeepTheStateOfEachWindowAndItsNormalPlace) {
    const QString file = fileOf("1");
    for (int state = 0; state < 3; ++state) {
        startWith({u"<FILE>"_qs, record(file, state, m_place)});
        ASSERT_EQ(names(), QStringList(file));
        EXPECT_EQ(window()->isMinimized(), state == 1);
        EXPECT_EQ(window()->isMaximized(), state == 2);
        EXPECT_EQ(window()->geometry() == m_place, state == 0);
        m_frame->SaveSession();
        EXPECT_EQ(session(), QStringList({u"<FILE>"_qs, record(file, state, m_place)}));
        window()->showNormal();
        EXPECT_EQ(window()->geometry(), m_place) << state;
        m_frame.reset();
    }
}

TEST_F(Sessions, RecordTheNormalPlaceThroughEveryChangeOfState) {
    start();
    const QString file = fileOf("1");
    open(file);
    window()->showNormal();
    window()->setGeometry(m_place);
    void (QWidget::*const states[])() = {&QWidget::showNormal, &QWidget::showMinimized, &QWidget::showMaximized};
    for (const int state : {1, 2, 1, 0, 2, 0, 1, 0, 2, 1, 2, 0}) {
        (window()->*states[state])();
        QCoreApplication::processEvents();
        EXPECT_EQ(m_frame->WriteDocRecord(active()).toStdString(), record(file, state, m_place).toStdString());
    }
    window()->showMaximized();
    m_frame->resize(700, 500);
    QCoreApplication::processEvents();
    EXPECT_EQ(m_frame->WriteDocRecord(active()).toStdString(), record(file, 2, m_place).toStdString());
}

TEST_F(Sessions, OfSeveralStatesComeBackAsTheyWere) {
    QStringList lines{u"<FILE>"_qs};
    for (int i = 0; i < 6; ++i)
        lines << record(fileOf("x", u"%1.txt"_qs.arg(i)), i % 3, m_place.translated(i, i));
    startWith(lines);
    EXPECT_EQ(documents().size(), 6);
    for (int i = 0; i < 6; ++i) {
        EXPECT_EQ(window(i)->isMinimized(), i % 3 == 1) << i;
        EXPECT_EQ(window(i)->isMaximized(), i % 3 == 2) << i;
    }
    end();
    EXPECT_EQ(session().join(u'\n').toStdString(), lines.join(u'\n').toStdString());
}

TEST_F(Sessions, AWindowIsWhereItsRecordSaysThoughTheHiddenAreaHadPutItThere) {
    const QString file = fileOf("1");
    const auto projectOf = [&](const QString& line) {
        return fileOf("<<OPEN FILE>>\r\n" + line.toUtf8(), u"work.qmp"_qs);
    };
    const QString project = projectOf(file + u"\tFalse\tFalse\t0"_qs);
    load(project);
    const QRect place = window()->geometry();
    start(project);
    EXPECT_NE(window()->geometry(), place);
    start(projectOf(record(file, 0, place, false)));
    EXPECT_EQ(window()->geometry(), place);
}

TEST_F(Sessions, AProjectOfTheCommandLineHasItsWindowsWhereTheyWere) {
    QStringList lines{u"<<EXPLORER STATUS>>"_qs, u"True\t3300"_qs, u"<<OPEN FILE>>"_qs};
    for (int i = 0; i < 3; ++i)
        lines << record(fileOf("x", u"%1.txt"_qs.arg(i)), i, m_place.translated(10 * i, 20 * i), i > 0);
    start(fileOf(lines.join(u"\r\n"_qs).toUtf8(), u"work.qmp"_qs));
    ASSERT_EQ(documents().size(), 3);
    for (int i = 0; i < 3; ++i) {
        const ChildPlace place = house().children.placeOf(documents().at(i));
        EXPECT_EQ(place.normal, m_place.translated(10 * i, 20 * i)) << i;
        EXPECT_EQ(place.state, static_cast<ChildState>(i)) << i;
    }
}

TEST_F(Sessions, KeepAMaximisedWindowWhenAFurtherOneFollows) {
    startWith(
        {u"<FILE>"_qs, record(fileOf("1", u"1.txt"_qs), 2, m_place), record(fileOf("2", u"2.txt"_qs), 0, m_place)});
    ASSERT_EQ(documents().size(), 2);
    EXPECT_TRUE(window(0)->isMaximized());
    EXPECT_FALSE(window(1)->isMaximized());
    window(0)->showNormal();
    EXPECT_EQ(window(0)->geometry(), m_place);
    // Afterwards windows take the state over from each other again.
    window(1)->showMaximized();
    house().children.bringToFront(documents().at(0));
    EXPECT_TRUE(window(0)->isMaximized());
    EXPECT_FALSE(window(1)->isMaximized());
}

TEST_F(Sessions, LeaveTheFocusInTheTextOfTheLastDocument) {
    startWith(
        {u"<FILE>"_qs, record(fileOf("1", u"1.txt"_qs), 0, m_place), record(fileOf("2", u"2.txt"_qs), 0, m_place)});
    EXPECT_EQ(active()->filename, path(u"2.txt"_qs));
    EXPECT_EQ(strip().currentIndex(), 1);
    EXPECT_EQ(m_frame->focusWidget(), &textWidget());
    type(u"x"_qs);
    EXPECT_EQ(text(), u"x2"_qs);
    m_prompts.answerNo();
    end();
}

TEST_F(Sessions, OfAProjectHoldItsPathAlone) {
    start();
    open(fileOf("1"));
    m_frame->ProjectFilename = u"/p q.qmp"_qs;
    end();
    EXPECT_EQ(session(), QStringList({u"<PROJECT>"_qs, u"/p q.qmp"_qs}));
    set("LoadLastFiles", "1");
    m_prompts.answerNo();
    start();
    EXPECT_EQ(missingProject(), u"/p q.qmp"_qs);
    EXPECT_EQ(tabs(), QStringList(u"Document1"_qs));
}

TEST_F(Sessions, OfAProjectThatWasNeverSavedOrOfAnUnknownFormRestoreNothing) {
    const QString file = fileOf("1");
    for (const QStringList& lines : {QStringList{u"<PROJECT>"_qs, u"[New Project]"_qs},
                                     {u"<PROJECT>"_qs, QString(), file},
                                     {u"<PROJECT>"_qs},
                                     {u"<DOCUMENTS>"_qs, file},
                                     {file},
                                     {QString(), u"<FILE>"_qs, file},
                                     {u"<FILE>"_qs},
                                     {}}) {
        startWith(lines);
        EXPECT_EQ(tabs(), QStringList(u"Document1"_qs)) << qPrintable(lines.join(u'|'));
        EXPECT_TRUE(m_prompts.questions.isEmpty()) << qPrintable(lines.join(u'|'));
        m_frame.reset();
    }
    QFile::remove(ownFile("lastopen.idx"));
    start();
    EXPECT_EQ(tabs(), QStringList(u"Document1"_qs));
}

TEST_F(Sessions, WithAnUnsavedProjectHoldItsName) {
    start();
    m_frame->ProjectFilename = u"[New Project]"_qs;
    m_frame->SaveSession();
    EXPECT_EQ(session(), QStringList({u"<PROJECT>"_qs, u"[New Project]"_qs}));
}

TEST_F(Sessions, AFileThatHasGoneIsToldAndItsPlaceGoesToTheActiveDocument) {
    const QString file = fileOf("1");
    const QString gone = path(u"gone.txt"_qs);
    const QRect other(60, 70, 300, 250);
    startWith({u"<FILE>"_qs, record(file, 0, m_place), record(gone, 0, other)});
    EXPECT_EQ(m_prompts.messages, QStringList(gone + QLatin1String("\nFile not found!")));
    EXPECT_EQ(names(), QStringList(file));
    EXPECT_EQ(window()->geometry(), other);
    m_frame->RestoreDocRecord(record(gone, 2, other));
    EXPECT_TRUE(window()->isMaximized());
}

TEST_F(Sessions, AFileThatHasGoneFindsNoDocumentToPlace) {
    set("StartNewDocument", "0");
    startWith({u"<FILE>"_qs, record(path(u"gone.txt"_qs), 2, m_place)});
    EXPECT_EQ(m_prompts.messages.size(), 1);
    EXPECT_TRUE(documents().isEmpty());
}

TEST_F(Sessions, ShortAndMalformedRecordsStillOpenTheirPath) {
    const QStringList tails{QString(),
                            u"\tFalse"_qs,
                            u"\tFalse\tTrue"_qs,
                            u"\t\t\t\t"_qs,
                            u"\tx\ty\tz\ta\tb\tc\td"_qs,
                            u"\tTrue\tFalse\t7\tnan\tinf\t1e30\t-4\t\t\t"_qs};
    QStringList lines{u"<FILE>"_qs, u"\tTrue\tFalse\t0\t0\t0\t1500\t1500"_qs, u"\t"_qs};
    QStringList files;
    for (const QString& tail : tails) {
        files << fileOf("x", u"%1.txt"_qs.arg(files.size()));
        lines << files.last() + tail;
    }
    startWith(lines);
    EXPECT_EQ(names(), files);
    EXPECT_TRUE(documents().at(0)->TextEdit());
    EXPECT_FALSE(documents().at(1)->TextEdit());
    EXPECT_FALSE(documents().at(1)->Locked());
    EXPECT_TRUE(documents().at(2)->Locked());
    EXPECT_TRUE(documents().at(4)->TextEdit());
    EXPECT_TRUE(m_prompts.messages.isEmpty());
}

TEST_F(Sessions, ARecordWithoutAStateOrPlaceLeavesTheWindowAsItIs) {
    start();
    open(fileOf("1"));
    ASSERT_TRUE(window()->isMaximized());
    m_frame->RestoreDocRecord(fileOf("2", u"2.txt"_qs) + QLatin1String("\tTrue"));
    EXPECT_TRUE(window()->isMaximized());
    EXPECT_EQ(active()->filename, path(u"2.txt"_qs));
    m_frame->RestoreDocRecord(fileOf("3", u"3.txt"_qs) + QLatin1String("\tTrue\tFalse\tx\t450\t600\t6000\t4500"));
    EXPECT_TRUE(window()->isMaximized());
    window()->showNormal();
    EXPECT_EQ(window()->geometry(), m_place);
}

TEST_F(Sessions, ASizeThatNoWindowHasIsPassedOver) {
    start();
    open(fileOf("1"));
    window()->showNormal();
    window()->setGeometry(m_place);
    for (const char* size : {"0\t1500", "1500\t0", "-1\t1500", "1500\t-1", "x\t1500", "0.5\t1500"}) {
        const QString line = path(u"gone"_qs) + QLatin1String("\tTrue\tFalse\t0\t15\t15\t") + QLatin1String(size);
        m_frame->RestoreDocRecord(line);
        EXPECT_EQ(window()->geometry(), m_place) << size;
    }
}

TEST_F(Sessions, AHugePlaceIsCutToWhatAWindowCanHave) {
    start();
    m_frame->RestoreDocRecord(fileOf("1") + QLatin1String("\tTrue\tFalse\t0\t1e30\t-1e30\t1e30\t1e30"));
    EXPECT_EQ(window()->geometry(), QRect(32767, -32767, 32767, 32767));
}

TEST_F(Sessions, ABinaryFileOpensInTheModeOfItsRecord) {
    const QString binary = fileOf(QByteArray("\0\1\2\3", 4), u"a.bin"_qs);
    startWith({u"<FILE>"_qs, record(binary, 0, m_place, true)});
    EXPECT_TRUE(active()->TextEdit());
}

TEST_F(Sessions, AFileThatIsListedTwiceIsToldAndStaysOnce) {
    const QString file = fileOf("1");
    startWith({u"<FILE>"_qs, record(file, 0, m_place), record(file, 0, m_place)});
    EXPECT_EQ(names(), QStringList(file));
    EXPECT_EQ(m_prompts.messages, QStringList(u"'%1' already open!"_qs.arg(file)));
}

TEST_F(Sessions, AnExitThatIsChosenMeanwhileWaitsForTheEnd) {
    const QString file = fileOf("1");
    start();
    putSession({u"<FILE>"_qs, path(u"gone"_qs), file});
    m_prompts.whileShown([this] {
        EXPECT_TRUE(house().systemClose.isGreyed());
        run("mnuFileExit");
        EXPECT_FALSE(m_frame->close());
        EXPECT_TRUE(m_frame->isVisible());
    });
    m_frame->RestoreSession();
    EXPECT_EQ(names(), QStringList(file));
    ASSERT_TRUE(QTest::qWaitFor([this] { return !m_frame->isVisible(); }));
}

TEST_F(Sessions, AFailingBoxDoesNotKeepTheNextRecordFromOpening) {
    const QString file = fileOf("1");
    m_prompts.whileShown([] { throw std::runtime_error("no box"); });
    startWith({u"<FILE>"_qs, path(u"gone"_qs), file});
    EXPECT_EQ(names(), QStringList(file));
    EXPECT_FALSE(house().systemClose.isGreyed());
}

TEST_F(Sessions, ADocumentSavedAtTheEndStandsUnderItsOldName) {
    start();
    const QString file = fileOf("1");
    open(file);
    run("mnuFileNew");
    type(u"new"_qs);
    const QString saved = path(u"late.txt"_qs);
    m_prompts.answerYes();
    m_prompts.answerSavePath(saved);
    end();
    EXPECT_EQ(bytesOf(saved), "new");
    EXPECT_EQ(session().size(), 2);
    EXPECT_TRUE(session().last().startsWith(file + u'\t'));
    EXPECT_TRUE(bytesOf(ownFile("lastfiles.idx")).endsWith(saved.toUtf8() + "\r\n"));
}

TEST_F(Sessions, ADocumentWithoutAFileHasNoRecord) {
    start();
    EXPECT_EQ(m_frame->WriteDocRecord(active()), QString());
    EXPECT_EQ(m_frame->WriteDocRecord(nullptr), QString());
}

TEST_F(Sessions, OfGeneratedDocumentsComeBackTwiceAlike) {
    std::mt19937 random(7);
    for (int round = 0; round < 8; ++round) {
        QStringList lines{u"<FILE>"_qs};
        for (unsigned i = 0; i < 1 + random() % 5; ++i) {
            const QString file = fileOf("text", u"r%1 f%2 ü.txt"_qs.arg(round).arg(i));
            const QRect place(static_cast<int>(random() % 200), static_cast<int>(random() % 200),
                              300 + static_cast<int>(random() % 300), 250 + static_cast<int>(random() % 300));
            lines << record(file, 0, place, random() % 2 == 0, random() % 2 == 0);
        }
        startWith(lines);
        end();
        ASSERT_EQ(session(), lines) << round;
    }
}
