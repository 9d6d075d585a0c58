#include "hex/HexFixture.h"
#include "hex/bytes/BlockExport.h"

#include <QClipboard>
#include <QGuiApplication>

#include <cerrno>

namespace {

/// A view whose working copy can't always be read or written.
class FailuresInHex : public HexFixture {
 protected:
    void failNext(SystemCall call, int error) { m_calls.fail(call, m_calls.count(call) + 1, error); }
    void expectTold(int error) {
        QApplication::processEvents();
        EXPECT_EQ(m_prompts.messages, QStringList(SystemError::fromErrno(error).description));
        m_prompts.messages.clear();
    }
};

}  // namespace

TEST_F(FailuresInHex, BytesThatCannotBeReadAreNotTakenForTypedOnes) {
    const QByteArray bytes = someBytes(1000);
    open(bytes);
    failNext(SystemCall::ReadAt, EIO);
    m_hex->MoveNextPage();
    EXPECT_EQ(grid(1)->Value(0, 0), u"??"_qs);
    EXPECT_EQ(grid(2)->Value(0, 0), QString());
    press(Qt::Key_Right);
    press(Qt::Key_Return);
    press(Qt::Key_Tab);
    press(Qt::Key_Tab);
    EXPECT_FALSE(m_hex->Modified());
    EXPECT_EQ(workingBytes(), bytes);
    m_hex->FillGrid();
    expectShown(bytes);
}

TEST_F(FailuresInHex, AnEditIsTakenBackFromTheScreenAndTold) {
    const QByteArray bytes = someBytes(40);
    open(bytes);
    const std::pair<SystemCall, int> occasions[] = {{SystemCall::Write, ENOSPC}, {SystemCall::ReadAt, EIO}};
    for (const auto& [call, error] : occasions) {
        failNext(call, error);
        type(u"ff"_qs);
        expectTold(error);
        expectShown(bytes);
        EXPECT_FALSE(m_hex->Modified());
        m_hex->cmdUndo();
        EXPECT_EQ(workingBytes(), bytes);
    }
    press(Qt::Key_Tab);
    failNext(SystemCall::Write, ENOSPC);
    type(u"x"_qs);
    expectTold(ENOSPC);
    expectShown(bytes);
}

TEST_F(FailuresInHex, AnUndoCanBeTriedAgain) {
    const QByteArray bytes = someBytes(40);
    open(bytes);
    type(u"ff"_qs);
    failNext(SystemCall::Write, ENOSPC);
    m_hex->cmdUndo();
    expectTold(ENOSPC);
    expectShown("\xFF" + bytes.mid(1));
    m_hex->cmdUndo();
    EXPECT_EQ(workingBytes(), bytes);
    expectShown(bytes);
}

TEST_F(FailuresInHex, OfAnEditAreToldWhenTheEditIsOver) {
    open(someBytes(40));
    type(u"f"_qs);
    failNext(SystemCall::Write, ENOSPC);
    m_prompts.whileShown([this] { m_hex.reset(); });
    press(Qt::Key_Right);
    EXPECT_NE(m_hex, nullptr);
    expectTold(ENOSPC);
    EXPECT_EQ(m_hex, nullptr);
}

TEST_F(FailuresInHex, ReplacingCountsWhatWasReplacedAndTellsOfTheRest) {
    open("one two one");
    failNext(SystemCall::Write, ENOSPC);
    EXPECT_EQ(m_hex->ReplaceAll(u"one"_qs, u"31 31 31 "_qs, 2), 1);
    expectTold(ENOSPC);
    EXPECT_EQ(workingBytes(), "one two 111");
    expectShown("one two 111");
    failNext(SystemCall::Write, ENOSPC);
    m_hex->ReplaceBytes(u"32 "_qs, 1);
    expectTold(ENOSPC);
    EXPECT_EQ(workingBytes(), "one two 111");
}

TEST_F(FailuresInHex, OfABlockAreTold) {
    open("one two one");
    failNext(SystemCall::Write, ENOSPC);
    m_hex->fillBlock(Offset(0), Offset(3), 0);
    expectTold(ENOSPC);
    expectShown("one two one");
    QGuiApplication::clipboard()->setText(u"before"_qs);
    failNext(SystemCall::ReadAt, EIO);
    m_hex->copyBlock(Offset(0), Offset(3), BlockForm::HexValues);
    expectTold(EIO);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"before"_qs);
}

TEST_F(FailuresInHex, SearchesEndWhereTheFileCannotBeRead) {
    open("one two one");
    failNext(SystemCall::ReadAt, EIO);
    EXPECT_EQ(m_hex->FindDown(u"two"_qs, 2), -1);
    failNext(SystemCall::ReadAt, EIO);
    EXPECT_EQ(m_hex->FindUp(u"one"_qs, 2), -1);
    EXPECT_TRUE(m_prompts.messages.isEmpty());
    EXPECT_EQ(m_hex->FindDown(u"two"_qs, 2), 5);
}

TEST_F(FailuresInHex, ALoadThatFailsShutsTheView) {
    open(someBytes(40));
    m_calls.fail(SystemCall::Clone, 0, EOPNOTSUPP);
    m_calls.fail(SystemCall::CopyRange, 0, EOPNOTSUPP);
    const QString name = m_hex->TempFileName();
    failNext(SystemCall::ReadAt, EIO);
    EXPECT_FALSE(m_hex->OpenFile(file("another", u"other"_qs)));
    expectTold(EIO);
    EXPECT_FALSE(m_hex->FileOpen());
    EXPECT_FALSE(pane(1)->isEnabled());
    EXPECT_FALSE(part<QWidget>(u"ProgressBar1"_qs)->isVisible());
    EXPECT_FALSE(QFile::exists(name));
    open("another");
    expectShown("another");
    EXPECT_EQ(m_hex->TempFileName(), name);
}
