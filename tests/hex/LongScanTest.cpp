#include "hex/HexFormFixture.h"
#include "hex/bytes/HexSearch.h"

#include <QComboBox>
#include <QKeyEvent>
#include <QProgressBar>
#include <QSignalSpy>

#include <algorithm>
#include <functional>

namespace {

/// A view on a slow disk: each search takes long.
class LongScans : public HexFormFixture {
 protected:
    static constexpr unsigned long SlowRead = 120;  ///< milliseconds; a second of them is longer than the patience
    static constexpr qsizetype Blocks = 6;

    void openSlow(char byte = 'a') {
        open(QByteArray(Blocks * HexSearch::BlockSize, byte));
        m_calls.slowDown(SystemCall::ReadAt, SlowRead);
    }
    void makeFast() { m_calls.slowDown(SystemCall::ReadAt, 0); }
    QProgressBar* progress() const { return part<QProgressBar>(u"ProgressBar1"_qs); }
    void postKey(QWidget* to, int key) {
        QCoreApplication::postEvent(to, new QKeyEvent(QEvent::KeyPress, key, Qt::NoModifier));
    }
    int reads() const { return m_calls.count(SystemCall::ReadAt); }
    static qint64 numberOf(const QByteArray& bytes, char byte) { return bytes.count(byte); }
};

}  // namespace

TEST_F(LongScans, ShowHowFarTheyAreAndInTheStatusBarHowTheyAreStopped) {
    openSlow();
    QSignalSpy notices(m_hex.get(), &ucHex::Notice);
    QList<int> values;
    bool wasSeen = false;
    QObject::connect(progress(), &QProgressBar::valueChanged, m_hex.get(), [&](int value) { values += value; });
    QTimer::singleShot(0, m_hex.get(), [&] { wasSeen = progress()->isVisible(); });
    EXPECT_EQ(m_hex->CountBytes(u"62 "_qs, 0), 0);
    EXPECT_TRUE(wasSeen);
    EXPECT_GE(values.size(), 3);
    EXPECT_TRUE(std::is_sorted(values.begin(), values.end()));
    EXPECT_FALSE(progress()->isVisible());
    EXPECT_FALSE(m_hex->wasSearchStopped());
    ASSERT_EQ(notices.count(), 2);
    EXPECT_EQ(notices[0][0].toString(), u"Searching. Esc stops it."_qs);
    EXPECT_EQ(notices[1][0].toString(), QString());
}

TEST_F(LongScans, ThatAreShortShowNothing) {
    openSlow();
    makeFast();
    QSignalSpy notices(m_hex.get(), &ucHex::Notice);
    EXPECT_EQ(m_hex->CountBytes(u"62 "_qs, 0), 0);
    EXPECT_EQ(notices.count(), 0);
}

TEST_F(LongScans, EndWithEscAndKeepWhatTheyHave) {
    openSlow();
    const int before = reads();
    postKey(pane(1), Qt::Key_Escape);
    const int counted = m_hex->CountBytes(u"61 "_qs, 0);
    EXPECT_TRUE(m_hex->wasSearchStopped());
    EXPECT_LT(reads() - before, Blocks);
    EXPECT_GT(counted, 0);
    EXPECT_LT(counted, Blocks * HexSearch::BlockSize);
    postKey(pane(1), Qt::Key_Escape);
    const int marked = m_hex->MarkAll(u"61 "_qs, 0);
    EXPECT_GT(marked, 0);
    EXPECT_EQ(bookmarks()->model()->rowCount(), marked);
    postKey(pane(1), Qt::Key_Escape);
    const int replaced = m_hex->ReplaceAll(u"61 "_qs, u"62 "_qs, 0);
    EXPECT_TRUE(m_hex->wasSearchStopped());
    EXPECT_GT(replaced, 0);
    EXPECT_EQ(numberOf(workingBytes(), 'b'), replaced);
    postKey(pane(1), Qt::Key_Escape);
    EXPECT_EQ(m_hex->FindDown(u"63 "_qs, 0), -1);
    EXPECT_TRUE(m_hex->wasSearchStopped());
    makeFast();
    EXPECT_EQ(m_hex->FindDown(u"63 "_qs, 0), -1);
    EXPECT_FALSE(m_hex->wasSearchStopped());
}

TEST_F(LongScans, StoppedAreNoMoreStoppedForASearchThatDoesNotScan) {
    openSlow();
    postKey(pane(1), Qt::Key_Escape);
    EXPECT_EQ(m_hex->FindDown(u"63 "_qs, 0), -1);
    EXPECT_TRUE(m_hex->wasSearchStopped());
    EXPECT_EQ(m_hex->FindDown(u"no bytes"_qs, 0), -1);
    EXPECT_FALSE(m_hex->wasSearchStopped());
    postKey(pane(1), Qt::Key_Escape);
    EXPECT_EQ(m_hex->FindDown(u"63 "_qs, 0), -1);
    press(Qt::Key_End, Qt::ControlModifier);
    EXPECT_EQ(m_hex->FindDown(u"63 "_qs, 0), -1);
    EXPECT_FALSE(m_hex->wasSearchStopped());
}

TEST_F(LongScans, TakeNoOtherKeyMeanwhile) {
    openSlow();
    postKey(pane(1), Qt::Key_Right);
    QCoreApplication::postEvent(pane(1), new QKeyEvent(QEvent::KeyPress, Qt::Key_F, Qt::NoModifier, u"f"_qs));
    EXPECT_EQ(m_hex->CountBytes(u"62 "_qs, 0), 0);
    QApplication::processEvents();
    EXPECT_EQ(cursor(), 1);
    EXPECT_EQ(grid(1)->Value(0, 0), u"61"_qs);
}

TEST_F(LongScans, AreTheOnlyWorkOnTheirFile) {
    openSlow();
    QSignalSpy notices(m_hex.get(), &ucHex::Notice);
    QList<int> outcomes;
    QTimer::singleShot(0, m_hex.get(), [&] {
        outcomes = {m_hex->CountBytes(u"61 "_qs, 0), m_hex->FindDown(u"61 "_qs, 0), m_hex->OpenFile(at(u"file"_qs)),
                    m_hex->SaveFile(at(u"file"_qs), true)};
    });
    EXPECT_EQ(m_hex->CountBytes(u"62 "_qs, 0), 0);
    EXPECT_EQ(outcomes, QList<int>({0, -1, 0, 0}));
    QStringList texts;
    for (const auto& notice : notices)
        texts += notice[0].toString();
    EXPECT_EQ(texts,
              QStringList({u"Searching. Esc stops it."_qs,
                           u"Not saved: a search, replacement or fill is running. Esc stops it."_qs, QString()}));
    const auto before = notices.count();
    EXPECT_TRUE(m_hex->SaveFile(at(u"file"_qs), true));
    EXPECT_EQ(notices.count(), before);
}

TEST_F(LongScans, AFillShowsHowFarItIsAndIsStoppedByEsc) {
    constexpr qsizetype Size = 20 * 512'000;
    open(QByteArray(Size, 'a'));
    const auto filled = [this] { return numberOf(workingBytes(), 'b'); };
    QSignalSpy notices(m_hex.get(), &ucHex::Notice);
    m_hex->fillBlock(Offset(Size - 10), Offset(Size), 'b');
    EXPECT_EQ(filled(), 10);
    EXPECT_EQ(notices.count(), 0);
    m_calls.slowDown(SystemCall::Write, SlowRead);
    bool wasSeen = false;
    QTimer::singleShot(0, m_hex.get(), [&] {
        wasSeen = progress()->isVisible();
        EXPECT_EQ(m_hex->CountBytes(u"61 "_qs, 0), 0);
        m_hex->fillBlock(Offset(0), Offset(9), 'c');
        EXPECT_FALSE(m_hex->SaveFile(at(u"file"_qs), true));
    });
    postKey(pane(1), Qt::Key_Escape);
    m_hex->fillBlock(Offset(0), Offset(Size), 'b');
    EXPECT_TRUE(wasSeen);
    EXPECT_GT(filled(), 512'000);
    EXPECT_LT(filled(), Size);
    EXPECT_EQ(numberOf(workingBytes(), 'c'), 0);
    EXPECT_FALSE(progress()->isVisible());
    ASSERT_EQ(notices.count(), 3);
    EXPECT_EQ(notices[0][0].toString(), u"Filling. Esc stops it."_qs);
    EXPECT_EQ(notices[2][0].toString(), QString());
    EXPECT_EQ(m_hex->limitations(), u"Save As writes what was replaced or filled."_qs);
    m_calls.slowDown(SystemCall::Write, 0);
    m_hex->fillBlock(Offset(0), Offset(Size), 'b');
    EXPECT_EQ(filled(), Size);
}

TEST_F(LongScans, AFillEndsWithItsView) {
    open(QByteArray(20 * 512'000, 'a'));
    m_calls.slowDown(SystemCall::Write, SlowRead);
    QTimer::singleShot(0, qApp, [this] { m_hex.reset(); });
    m_hex->fillBlock(Offset(0), Offset(20 * 512'000), 'b');
    EXPECT_EQ(m_hex, nullptr);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    EXPECT_TRUE(m_prompts.messages.isEmpty());
}

TEST_F(LongScans, EndWithTheirView) {
    openSlow();
    QTimer::singleShot(0, qApp, [this] { m_hex.reset(); });
    ucHex* const view = m_hex.get();
    EXPECT_EQ(view->FindDown(u"62 "_qs, 0), -1);
    EXPECT_EQ(m_hex, nullptr);
}

TEST_F(LongScans, EndWithTheirViewWhateverTheyDo) {
    const std::function<void(ucHex*)> scans[] = {
        [](ucHex* view) { view->FindUp(u"b"_qs, 1); },  [](ucHex* view) { view->CountBytes(u"b"_qs, 1); },
        [](ucHex* view) { view->MarkAll(u"a"_qs, 1); }, [](ucHex* view) { view->ReplaceAll(u"a"_qs, u"62 "_qs, 1); },
        [](ucHex* view) { view->FindNextItem(); },      [](ucHex* view) { view->FindPrevStr(u"62"_qs); }};
    m_findState = {u"b"_qs, HexFindType::AnyCase, HexFindDirection::Up, true};
    for (const auto& scan : scans) {
        m_hex = std::make_unique<ucHex>(m_prompts, m_options, m_findState, nullptr, HexStorage{.calls = m_calls});
        m_hex->show();
        makeFast();
        ASSERT_TRUE(m_hex->OpenFile(file(QByteArray(Blocks * HexSearch::BlockSize, 'a'))));
        press(Qt::Key_End, Qt::ControlModifier);
        m_calls.slowDown(SystemCall::ReadAt, SlowRead);
        QTimer::singleShot(0, qApp, [this] { m_hex.reset(); });
        scan(m_hex.get());
        EXPECT_EQ(m_hex, nullptr);
    }
    EXPECT_TRUE(m_prompts.messages.isEmpty());
}

TEST_F(LongScans, StoppedByARepeatedSearchSayNothing) {
    openSlow();
    m_findState = {u"63 "_qs, HexFindType::Bytes, HexFindDirection::Down, true};
    postKey(pane(1), Qt::Key_Escape);
    m_hex->FindNextItem();
    EXPECT_TRUE(m_prompts.messages.isEmpty());
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST_F(LongScans, StoppedFromTheFormAreReportedOnItsPage) {
    openSlow();
    const QString number = u"Stopped after "_qs;
    whileOpen([&](QDialog* form) {
        auto* page = form->findChild<QWidget*>(u"ucReplaceHex1"_qs);
        const auto* refusal = page->findChild<QLabel*>(u"lblRefusal"_qs);
        page->findChild<QComboBox*>(u"Text1"_qs)->setEditText(u"61"_qs);
        page->findChild<QComboBox*>(u"Text2"_qs)->setEditText(u"62"_qs);
        for (const char* button : {"cmdCount", "cmdMarkAll", "cmdReplaceAll"}) {
            postKey(form, Qt::Key_Escape);
            click(page, QString::fromLatin1(button));
            EXPECT_TRUE(form->isVisible()) << button;
            EXPECT_TRUE(refusal->text().startsWith(number)) << button << ' ' << refusal->text().toStdString();
        }
        page->findChild<QComboBox*>(u"Text1"_qs)->setEditText(u"63"_qs);
        postKey(form, Qt::Key_Escape);
        click(page, u"cmdFindNext"_qs);
        EXPECT_EQ(refusal->text(), u"Stopped."_qs);
        makeFast();
        click(page, u"cmdFindNext"_qs);
        EXPECT_EQ(refusal->text(), QString());
    });
    m_hex->cmdReplaceHex();
    EXPECT_EQ(m_prompts.messages, QStringList(u"Not Found"_qs));
}

TEST_F(LongScans, StartedByTheFormMayEndWithFormAndView) {
    for (const char* button : {"cmdFindNext", "cmdCount", "cmdMarkAll", "cmdReplace", "cmdReplaceAll"}) {
        m_hex = std::make_unique<ucHex>(m_prompts, m_options, m_findState, nullptr, HexStorage{.calls = m_calls});
        m_hex->show();
        m_hex->activateWindow();
        makeFast();
        openSlow();
        QTimer::singleShot(0, qApp, [this, button] {
            const auto* form = QApplication::activeModalWidget();
            ASSERT_NE(form, nullptr);
            auto* page = form->findChild<QWidget*>(u"ucReplaceHex1"_qs);
            page->findChild<QComboBox*>(u"Text1"_qs)->setEditText(u"62"_qs);
            page->findChild<QComboBox*>(u"Text2"_qs)->setEditText(u"63"_qs);
            QTimer::singleShot(0, qApp, [this] { m_hex.reset(); });
            click(page, QString::fromLatin1(button));
        });
        m_hex->cmdReplaceHex();
        EXPECT_EQ(m_hex, nullptr) << button;
    }
    EXPECT_TRUE(m_prompts.messages.isEmpty());
}
