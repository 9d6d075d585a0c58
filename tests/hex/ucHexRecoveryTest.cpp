// What an observer is notified of while a user works in the view, and a second view with the same edits.

#include "hex/HexFixture.h"
#include "hex/bytes/EditRecorder.h"
#include "hex/bytes/HexReplay.h"

#include <QElapsedTimer>
#include <QTimer>

#include <cerrno>

namespace {

using Names = std::vector<std::string>;

class HexRecovery : public HexFixture {
 protected:
    void openObserved(const QByteArray& bytes) {
        open(bytes);
        m_hex->setEditObserver(&m_seen);
    }
    /// A second view of the file as it was, with the edits of the first one.
    bool bringBack() {
        m_second = std::make_unique<ucHex>(m_prompts, m_options, m_findState);
        return m_second->bringBack(at(u"file"_qs), [this](HexReplay& replay) {
            m_seen.repeatIn(replay);
            return true;
        });
    }
    void expectSame() {
        ASSERT_TRUE(bringBack());
        EXPECT_EQ(bytesOf(m_second->TempFileName()), workingBytes());
        EXPECT_EQ(m_second->edits().state(), m_hex->edits().state());
    }

    EditRecorder m_seen;
    std::unique_ptr<ucHex> m_second;
};

}  // namespace

TEST_F(HexRecovery, HasTypedAndUndoneBytes) {
    openObserved(someBytes(2000));
    type(u"AB"_qs);
    press(Qt::Key_Tab);
    type(u"Text"_qs);
    scroll(u"MoveNextPage"_qs);
    type(u"xy"_qs);
    m_hex->cmdUndo();
    EXPECT_EQ(m_seen.names,
              Names({"half", "typed", "typed", "typed", "typed", "typed", "typed", "typed", "took back"}));
    expectSame();
    EXPECT_TRUE(m_second->Modified());
    m_second->cmdUndo();
    m_hex->cmdUndo();
    EXPECT_EQ(bytesOf(m_second->TempFileName()), workingBytes());
    EXPECT_EQ(m_second->FilePointer(), m_hex->FilePointer());
}

TEST_F(HexRecovery, HasReplacedAndFilledBytes) {
    openObserved(someBytes(5000));
    EXPECT_EQ(m_hex->ReplaceAll(u"05 06 "_qs, u"EE EE EE "_qs, 0), 20);
    m_hex->ReplaceBytes(u"01 02 03 "_qs, 4999);
    m_hex->fillBlock(Offset(100), Offset(4000), 0xCC);
    EXPECT_FALSE(m_hex->Modified());
    EXPECT_EQ(m_seen.names.size(), 22U);
    EXPECT_EQ(m_seen.names.back(), "filled");
    ASSERT_TRUE(bringBack());
    EXPECT_EQ(bytesOf(m_second->TempFileName()), workingBytes());
    EXPECT_TRUE(m_second->Modified());  // a save is to write what was brought back
    EXPECT_TRUE(m_second->edits().state().marks.empty());
    EXPECT_TRUE(m_second->SaveFile(at(u"file"_qs), false));
    EXPECT_EQ(bytesOf(at(u"file"_qs)), workingBytes());
}

TEST_F(HexRecovery, IsNotNotifiedOfASaveOrARefusedEdit) {
    openObserved(someBytes(5000));
    EXPECT_TRUE(m_hex->SaveFile(at(u"copy"_qs), true));
    m_hex->setLocked(true);
    m_hex->fillBlock(Offset(0), Offset(9), 1);
    type(u"AB"_qs);
    m_hex->setLocked(false);
    EXPECT_TRUE(m_hex->OpenFile(at(u"copy"_qs)));
    m_hex->cmdUndo();
    EXPECT_EQ(m_seen.names, Names({"unloaded"}));
}

TEST_F(HexRecovery, IsNotNotifiedAnyMoreOnceTheObserverIsRemoved) {
    openObserved(someBytes(100));
    m_hex->setEditObserver(nullptr);
    type(u"AB"_qs);
    m_hex->ReplaceBytes(u"01 "_qs, 3);
    m_hex->fillBlock(Offset(0), Offset(9), 1);
    m_hex->cmdUndo();
    EXPECT_EQ(m_seen.names, Names());
}

TEST_F(HexRecovery, OfEditsThatTheFileHasNoPlaceForClosesTheViewWithoutAMessage) {
    openObserved(someBytes(100));
    type(u"AB"_qs);
    const QString shorter = file(someBytes(100), u"file"_qs);
    const auto wrong = [](HexReplay& replay) {
        replay.type(FilePosition(1), {0, 0}, 1);
        replay.write(FilePosition(101), "x");
        return true;
    };
    EXPECT_FALSE(m_hex->bringBack(shorter, wrong));
    EXPECT_FALSE(m_hex->FileOpen());
    EXPECT_FALSE(m_hex->Modified());
    EXPECT_EQ(m_prompts.messages, QStringList());
    EXPECT_FALSE(m_hex->bringBack(at(u"missing"_qs), wrong));
    EXPECT_EQ(m_prompts.messages, QStringList());
    EXPECT_TRUE(m_hex->OpenFile(shorter));
    // Nor is anything shown that the caller does not want.
    EXPECT_FALSE(m_hex->bringBack(shorter, [](HexReplay&) { return false; }));
    EXPECT_FALSE(m_hex->FileOpen());
    EXPECT_EQ(m_prompts.messages, QStringList());
}

TEST_F(HexRecovery, EndsWhenTheViewIsDestroyedMeanwhile) {
    file(someBytes(100));
    bool isOver = false;
    m_second = std::make_unique<ucHex>(m_prompts, m_options, m_findState);
    QElapsedTimer longest;
    longest.start();
    EXPECT_FALSE(m_second->bringBack(at(u"file"_qs), [&](HexReplay& replay) {
        QTimer::singleShot(0, [this] { m_second.reset(); });
        while (replay.goesOn() && longest.elapsed() < 60'000)
            replay.type(FilePosition(1), {0, 0}, 1);
        EXPECT_EQ(replay.error().number, ECANCELED);
        isOver = true;
        return true;
    }));
    EXPECT_TRUE(isOver);
    EXPECT_EQ(m_second, nullptr);
}

TEST_F(HexRecovery, NotifiesItsObserverOfWhatFollows) {
    file(someBytes(100));
    m_hex->setEditObserver(&m_seen);
    ASSERT_TRUE(m_hex->bringBack(at(u"file"_qs), [](HexReplay& replay) {
        replay.type(FilePosition(1), {0, 0}, 1);
        return true;
    }));
    EXPECT_EQ(m_seen.names, Names({"unloaded"}));
    m_hex->cmdUndo();
    EXPECT_EQ(m_seen.names, Names({"unloaded", "took back"}));
    EXPECT_EQ(workingBytes(), someBytes(100));
}
