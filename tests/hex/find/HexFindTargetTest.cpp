#include "hex/bytes/HexFindState.h"
#include "hex/find/HexFindTarget.h"
#include "hex/find/frmFindReplace.h"
#include "platform/Folders.h"
#include "settings/Options.h"
#include "support/ScriptedPrompts.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QDir>
#include <QLabel>

#include <gtest/gtest.h>

namespace {

/// Records its calls; finds `matches` times, at 7, then nothing.
class RecordedTarget : public HexFindTarget {
 public:
    int FindDown(const QString& pStr, qint16 pFindType) override { return find(u"down"_qs, pStr, pFindType); }
    int FindUp(const QString& pStr, qint16 pFindType) override { return find(u"up"_qs, pStr, pFindType); }
    int CountBytes(const QString& pStr, qint16 pFindType) override { return note(u"count"_qs, pStr, pFindType); }
    int MarkAll(const QString& pStr, qint16 pFindType) override { return note(u"mark"_qs, pStr, pFindType); }
    int ReplaceAll(const QString& pFind, const QString& pReplace, qint16 pFindType) override {
        return note(u"all "_qs + pReplace, pFind, pFindType);
    }
    void ReplaceBytes(const QString& pHexText, int position) override { note(u"replace"_qs, pHexText, position); }
    void FillGrid() override { calls += u"fill"_qs; }
    bool wasSearchStopped() const override { return isStopped; }

    QStringList calls;
    int matches = 0;
    bool isStopped = false;

 private:
    int note(const QString& what, const QString& text, int number) {
        calls += u"%1 %2 %3"_qs.arg(what, text).arg(number);
        return 3;
    }
    int find(const QString& what, const QString& text, int type) {
        note(what, text, type);
        return matches-- > 0 ? 7 : -1;
    }
};

class TheFindForm : public testing::Test {
 protected:
    void SetUp() override { QDir(ProgramFolder()).removeRecursively(); }

    QStringList takeCalls() { return std::exchange(m_target.calls, {}); }
    void set(const char* box, const QString& text) {
        m_page->findChild<QComboBox*>(QString::fromLatin1(box))->setEditText(text);
    }
    void click(const char* button) { m_page->findChild<QAbstractButton*>(QString::fromLatin1(button))->click(); }
    void open(const char* page) {
        m_form.InitControl(&m_target, u"ReplaceHex"_qs, u"Replace"_qs, false);
        m_page = m_form.findChild<QWidget*>(QString::fromLatin1(page));
        ASSERT_NE(m_page, nullptr);
    }

    ScriptedPrompts m_prompts;
    Options m_options;
    HexFindState m_state;
    RecordedTarget m_target;
    frmFindReplace m_form{{m_prompts, m_options, m_state}};
    QWidget* m_page = nullptr;
};

}  // namespace

TEST_F(TheFindForm, AsksItsTargetForEachButton) {
    open("ucReplaceHex1");
    set("Text1", u"4142"_qs);
    set("Text2", u"4344"_qs);
    click("cmdCount");
    EXPECT_EQ(takeCalls(), QStringList(u"count 41 42  0"_qs));
    click("cmdMarkAll");
    EXPECT_EQ(takeCalls(), QStringList(u"mark 41 42  0"_qs));
    click("cmdReplaceAll");
    EXPECT_EQ(takeCalls(), QStringList(u"all 43 44  41 42  0"_qs));
    EXPECT_EQ(m_prompts.messages.size(), 3);
}

TEST_F(TheFindForm, SearchesItsTargetInTheDirectionAndByTheCaseChosen) {
    open("ucFindText1");
    set("Text1", u"ab"_qs);
    click("cmdFindNext");
    EXPECT_EQ(takeCalls(), QStringList(u"down ab 1"_qs));
    click("Option2(0)");
    click("Option1(1)");
    click("cmdFindNext");
    EXPECT_EQ(takeCalls(), QStringList(u"up ab 2"_qs));
}

TEST_F(TheFindForm, ReplacesTheMatchThatItsTargetGaveLast) {
    open("ucReplaceHex1");
    set("Text1", u"41"_qs);
    set("Text2", u"42"_qs);
    m_target.matches = 1;
    click("cmdReplace");
    EXPECT_EQ(takeCalls(), QStringList(u"down 41  0"_qs));
    click("cmdReplace");
    EXPECT_EQ(takeCalls(), QStringList({u"replace 42  7"_qs, u"down 41  0"_qs, u"fill"_qs}));
}

TEST_F(TheFindForm, LeavesItsTargetAloneOnceItIsClosed) {
    open("ucReplaceHex1");
    set("Text1", u"41"_qs);
    set("Text2", u"42"_qs);
    m_form.done(QDialog::Rejected);
    for (const char* button : {"cmdFindNext", "cmdCount", "cmdMarkAll", "cmdReplace", "cmdReplaceAll"})
        click(button);
    EXPECT_EQ(takeCalls(), QStringList());
}

TEST_F(TheFindForm, ReportsASearchThatWasStoppedOnItsPageAndInNoBox) {
    open("ucReplaceText1");
    m_target.isStopped = true;
    set("Text1", u"ab"_qs);
    set("Text2", u"cd"_qs);
    const auto* refusal = m_page->findChild<QLabel*>(u"lblRefusal"_qs);
    for (const char* button : {"cmdCount", "cmdMarkAll", "cmdReplaceAll"}) {
        click(button);
        EXPECT_EQ(refusal->text(), u"Stopped after 3."_qs) << button;
    }
    for (const char* button : {"cmdFindNext", "cmdReplace"}) {
        click(button);
        EXPECT_EQ(refusal->text(), u"Stopped."_qs) << button;
    }
    EXPECT_TRUE(m_prompts.messages.isEmpty());
    EXPECT_FALSE(takeCalls().contains(u"fill"_qs));
}
