#include "shell/FrameFixture.h"
#include "shell/bars/FindBar.h"
#include "shell/documents/SystemClose.h"

#include <QComboBox>
#include <QDateTime>
#include <QMenu>

#include <stdexcept>

/// An exception of a call reaches neither the event loop nor the user.
class FailingCalls : public FrameFixture {
 protected:
    void failInTheNextBox() {
        m_prompts.whileShown([] { throw std::runtime_error("no box"); });
    }
};

TEST_F(FailingCalls, OfMenuEntriesAndSlotsLeaveTheFrameStanding) {
    start();
    failInTheNextBox();
    run("mnuResetKey");
    EXPECT_EQ(m_prompts.questions.size(), 1);
    slot("mnuFavoriteProject", 1)->setData(u"/a.qmp"_qs);
    failInTheNextBox();
    slot("mnuFavoriteProject", 1)->trigger();
    EXPECT_EQ(missingProject(), u"/a.qmp"_qs);
    EXPECT_TRUE(m_frame->isVisible());
    EXPECT_EQ(tabs(), QStringList(u"Document1"_qs));
    EXPECT_TRUE(m_prompts.messages.isEmpty());
}

TEST_F(FailingCalls, OfADocumentLeaveTheFrameStanding) {
    start();
    house().findBar.AddSearchKey(u"absent"_qs, true);
    auto* box = m_frame->findChild<QComboBox*>(u"cmbSearch"_qs);
    box->setEditText(u"absent"_qs);
    const std::function<void()> calls[] = {[&] { run("mnuFindNext"); }, [&] { button("FindPrev")->trigger(); },
                                           [&] { QTest::keyClick(&textWidget(), Qt::Key_F3); },
                                           [&] { QTest::keyClick(box, Qt::Key_Return); }};
    for (const auto& call : calls) {
        m_prompts.messages.clear();
        failInTheNextBox();
        call();
        EXPECT_EQ(m_prompts.messages.size(), 1);
    }
    EXPECT_EQ(active()->fIdx, u"F1"_qs);
}

TEST_F(FailingCalls, OfTheFindBarStillKeepTheText) {
    start();
    auto* box = m_frame->findChild<QComboBox*>(u"cmbSearch"_qs);
    box->setEditText(u"absent"_qs);
    failInTheNextBox();
    QTest::keyClick(box, Qt::Key_Return);
    EXPECT_EQ(box->itemText(0), u"absent"_qs);
}

TEST_F(FailingCalls, WhileAFileOpensDoNotKeepTheNextOneFromOpening) {
    start();
    m_explorer.fails = true;
    open(fileOf("1", u"1.txt"_qs));
    EXPECT_FALSE(house().systemClose.isGreyed());
    open(fileOf("2", u"2.txt"_qs));
    EXPECT_EQ(tabs(), QStringList({u"1.txt"_qs, u"2.txt"_qs}));
    EXPECT_EQ(active()->GetEditor()->Text(), u"2"_qs);
    EXPECT_TRUE(m_frame->close());
}

TEST_F(FailingCalls, OfTheTabMenuLeaveTheFrameStanding) {
    start();
    const QString file = fileOf("1");
    open(file);
    type(u"x"_qs);
    m_explorer.fails = true;
    m_frame->findChild<QAction*>(u"mnuSaveFile"_qs)->trigger();
    EXPECT_EQ(bytesOf(file), "x1");
    EXPECT_EQ(house().tabs.image(0), 1);
}

TEST_F(FailingCalls, OfOneDocumentDoNotKeepTheOthersFromBeingSaved) {
    start();
    const QString files[] = {fileOf("1", u"1.txt"_qs), fileOf("2", u"2.txt"_qs)};
    for (const QString& file : files) {
        open(file);
        type(u"x"_qs);
    }
    m_explorer.fails = true;
    run("mnuFileSaveAll");
    EXPECT_EQ(bytesOf(files[0]), "x1");
    EXPECT_EQ(bytesOf(files[1]), "x2");
    EXPECT_EQ(strip().currentIndex(), 1);
}

TEST_F(FailingCalls, OfTheQuestionWhetherToSaveStillCloseTheDocument) {
    start();
    type(u"x"_qs);
    failInTheNextBox();
    run("mnuFileClose");
    EXPECT_TRUE(documents().isEmpty());
    EXPECT_EQ(strip().count(), 0);
    EXPECT_TRUE(m_explorer.calls.contains(u"RemoveFile F1"_qs));
}

TEST_F(FailingCalls, WhenTheApplicationComesBackLeaveTheNextCheckToRun) {
    const QString file = fileOf("1");
    start();
    open(file);
    QFile::remove(file);
    failInTheNextBox();
    Q_EMIT qGuiApp->applicationStateChanged(Qt::ApplicationActive);
    EXPECT_EQ(m_prompts.messages, QStringList(u"'%1' has been deleted!"_qs.arg(file)));
    QFile again(fileOf("again"));
    ASSERT_TRUE(again.open(QIODevice::ReadWrite));
    ASSERT_TRUE(again.setFileTime(QDateTime::fromSecsSinceEpoch(1'600'000'000), QFileDevice::FileModificationTime));
    again.close();
    m_prompts.answerYes();
    Q_EMIT qGuiApp->applicationStateChanged(Qt::ApplicationActive);
    EXPECT_EQ(active()->GetEditor()->Text(), u"again"_qs);
}
