#include "editor/control/CommandNumbers.h"
#include "editor/control/ControlBookmarks.h"
#include "editor/control/ControlClipboard.h"
#include "editor/control/ControlFile.h"
#include "editor/control/ControlReplace.h"
#include "editor/control/ControlSearch.h"
#include "editor/control/ControlTyping.h"
#include "editor/control/TextControl.h"
#include "editor/held/EditObserver.h"
#include "editor/held/EditReport.h"
#include "editor/held/LoadedControl.h"
#include "text/held/Joints.h"

#include <QClipboard>
#include <QDropEvent>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QMimeData>
#include <QTest>

#include <memory>
#include <random>
#include <string>
#include <vector>

namespace {

/// Carries out on a copy of the text what it is notified of.
class Copy : public EditObserver {
 public:
    explicit Copy(TextControl& control) : m_control(control) {
        take();
        control.edits().observe(this);
    }
    ~Copy() override { m_control.edits().observe(nullptr); }
    Q_DISABLE_COPY_MOVE(Copy)

    void aboutToEdit() override { ++announced; }
    void inserted(qint64 at, std::string_view bytes) override {
        ++edits;
        ASSERT_LE(at, static_cast<qint64>(text.size()));
        ASSERT_FALSE(bytes.empty());
        text.insert(static_cast<std::size_t>(at), bytes);
    }
    void removed(qint64 at, qint64 length) override {
        ++edits;
        ASSERT_GT(length, 0);
        ASSERT_LE(at + length, static_cast<qint64>(text.size()));
        text.erase(static_cast<std::size_t>(at), static_cast<std::size_t>(length));
    }
    void loaded() override {
        ++loads;
        take();
    }
    void saved() override { ++saves; }

    std::string text;
    int announced = 0;
    int edits = 0;
    int loads = 0;
    int saves = 0;

 private:
    void take() { text = m_control.bytes(0, m_control.heldText().length()).toStdString(); }

    TextControl& m_control;
};

struct ReportedEdits : LoadedControl {
    std::unique_ptr<Copy> copy;

    ReportedEdits() {
        QGuiApplication::clipboard()->setText(u"clip\nboard"_qs);
        copy = std::make_unique<Copy>(control);
    }
    std::string text() const { return control.bytes(0, control.heldText().length()).toStdString(); }
    void expectSame(const char* after = "") const { ASSERT_TRUE(copy->text == text()) << after; }
    /// Whether the kind of the joints alone says which bytes are joints.
    bool areJointsByRule() const {
        const JointList& joints = control.map().joints();
        const std::string_view held = control.heldText().range(0, control.heldText().length());
        std::size_t count = 0;
        for (std::size_t at = 0; at < held.size() && joints.kind() != JointKind::None; ++at) {
            const bool isPair = joints.kind() == JointKind::LoneCr && held.substr(at + 1, 1) == "\n";
            count += held[at] == jointByte(joints.kind()) && !isPair ? 1 : 0;
        }
        return count == joints.count();
    }
};

QByteArray longLine(int length, int seed = 0) {
    QByteArray line;
    for (int i = 0; i < length; ++i)
        line += i % 9 == 8 ? ' ' : static_cast<char>('a' + (i + seed) % 26);
    return line;
}

/// Random commands, keys, and calls from outside.
class Hand {
 public:
    Hand(TextControl& control, unsigned seed) : m_control(control), m_random(seed) {
        for (const Command::Info& info : Command::all()) {
            if (info.kind != Command::Kind::Asks && info.kind != Command::Kind::Records &&
                info.kind != Command::Kind::Plays)
                m_commands.push_back(info.number);
        }
    }

    /// Returns what was done.
    std::string act() {
        if (below(12) == 0)
            select();
        const int kind = below(20);
        if (kind < 8)
            return command();
        if (kind < 11)
            return type();
        if (kind < 13)
            return undo();
        return call(kind);
    }

 private:
    int below(int end) { return static_cast<int>(m_random() % static_cast<unsigned>(end)); }
    qint64 place() {
        const qint64 length = m_control.map().positionOf(m_control.heldText().length());
        return static_cast<qint64>(m_random() % static_cast<unsigned>(length + 1));
    }
    void select() {
        const qint64 anchor = place();
        m_control.setSelection(anchor, below(2) == 0 ? anchor : std::max<qint64>(0, anchor - below(3000)));
    }
    QString shortText() {
        static const char* const Texts[] = {"x", "é漢\U0001F600", "\n", "a\r\nb", "\r",
                                            "(", "two words",     "\t", "end\n"};
        return QString::fromUtf8(Texts[below(std::size(Texts))]);
    }
    QString text() {
        return below(12) == 0 ? QString::fromLatin1(longLine(1000 + below(90'000), below(26))) : shortText();
    }
    std::string command() {
        const int number = m_commands[static_cast<std::size_t>(below(static_cast<int>(m_commands.size())))];
        QString argument;
        if (number == Command::SetSearchText)
            argument = below(2) == 0 ? u"a"_qs : u"[ab]c?|\\r|\\n"_qs;
        if (number == Command::SetReplacementText)
            argument = below(3) == 0 ? u"\\n"_qs : shortText();
        m_control.ExecuteCmd(number, argument);
        return "command " + std::to_string(number);
    }
    std::string type() {
        static constexpr Qt::Key Keys[] = {Qt::Key_A,    Qt::Key_Return, Qt::Key_Backspace, Qt::Key_Delete,
                                           Qt::Key_Home, Qt::Key_End,    Qt::Key_Tab,       Qt::Key_Down};
        QTest::keyClick(&m_control, Keys[below(std::size(Keys))]);
        return "key";
    }
    std::string undo() {
        for (int times = 1 + below(6); times > 0; --times)
            below(3) == 0 ? m_control.Redo() : m_control.Undo();
        return "undo";
    }
    std::string call(int kind) {
        switch (kind) {
            case 13:
                m_control.setSelText(text());
                return "setSelText";
            case 14:
                m_control.AddText(text());
                return "AddText";
            case 15:
                m_control.typing().type(shortText());
                return "type";
            case 16:
                m_control.clipboard().Paste();
                return "Paste";
            case 17:
                m_control.setRepeatCount(1 + below(4));
                return "setRepeatCount";
            case 18:
                if (below(8) == 0)
                    m_control.file().convertLineEnds(below(3));
                return "convertLineEnds";
            default:
                if (below(40) == 0)
                    m_control.setText(text() + text());
                return "setText";
        }
    }

    TextControl& m_control;
    std::mt19937 m_random;
    std::vector<int> m_commands;
};

}  // namespace

TEST_F(ReportedEdits, AreAnnouncedBeforeTheTextChanges) {
    control.setText(u"one"_qs);
    struct Early : EditObserver {
        TextControl& control;
        std::vector<QString> before;
        explicit Early(TextControl& c) : control(c) {}
        void aboutToEdit() override { before.push_back(control.Text()); }
        void inserted(qint64, std::string_view) override {}
        void removed(qint64, qint64) override {}
        void loaded() override {}
        void saved() override {}
    } early(control);
    control.edits().observe(&early);
    control.setText(u"two"_qs);
    control.edits().observe(nullptr);
    ASSERT_FALSE(early.before.empty());
    EXPECT_EQ(early.before.front(), u"one"_qs);
}

TEST_F(ReportedEdits, AreThereBeforeTheChangeIsReported) {
    std::vector<std::string> seen;
    QObject::connect(&control, &TextControl::Change, &control, [&] { seen.push_back(copy->text); });
    QTest::keyClick(&control, Qt::Key_A);
    QTest::keyClick(&control, Qt::Key_Return);
    control.Undo();
    EXPECT_EQ(seen, (std::vector<std::string>{"a", "a\n", "a"}));
}

TEST_F(ReportedEdits, CostNothingOnceNobodyListens) {
    control.AddText(u"heard"_qs);
    control.edits().observe(nullptr);
    control.AddText(u" unheard"_qs);
    EXPECT_EQ(copy->text, "heard");
    EXPECT_EQ(copy->edits, 1);
}

TEST_F(ReportedEdits, IncludeWhatIsStillToBeReportedWhenTheObserverLeaves) {
    control.openScope(true);
    control.replaceBytes(0, 0, "half done");
    control.edits().observe(nullptr);
    control.closeScope();
    EXPECT_EQ(copy->text, "half done");
}

TEST_F(ReportedEdits, AreFollowedByLoadsAndSaves) {
    control.AddText(u"lost"_qs);
    load("first\r\nsecond");
    EXPECT_EQ(copy->loads, 1);
    expectSame();
    control.AddText(u"!"_qs);
    ASSERT_FALSE(control.file().SaveFile(path(), SaveFlags::AsLoaded));
    EXPECT_EQ(copy->saves, 1);
    EXPECT_EQ(copy->text, "first\r\nsecond!");
    ASSERT_TRUE(control.file().SaveFile(folder.filePath(u"no/such/folder"_qs), SaveFlags::AsLoaded));
    EXPECT_EQ(copy->saves, 1);
}

TEST_F(ReportedEdits, IncludeDraggedAndComposedText) {
    control.setText(u"drag me along"_qs);
    control.setSelection(0, 4);
    auto mime = std::make_unique<QMimeData>();
    mime->setText(u"dropped"_qs);
    QDropEvent drop(QPointF(60, 5), Qt::CopyAction, mime.get(), Qt::LeftButton, {});
    QCoreApplication::sendEvent(control.viewport(), &drop);
    expectSame("drop");
    QInputMethodEvent preedit(u"ni"_qs, {});
    QCoreApplication::sendEvent(&control, &preedit);
    expectSame("preedit");
    QInputMethodEvent commit;
    commit.setCommitString(QString::fromUtf8("你"));
    QCoreApplication::sendEvent(&control, &commit);
    expectSame("commit");
    EXPECT_NE(control.Text().indexOf(QString::fromUtf8("你")), -1);
}

TEST_F(ReportedEdits, DoNotIncludeJointsThatComeAndGo) {
    control.setSelText(QString::fromLatin1(longLine(LongLine)));
    ASSERT_TRUE(control.map().joints().empty());
    const int before = copy->edits;
    control.setSelText(QString::fromLatin1(longLine(100)));
    EXPECT_FALSE(control.map().joints().empty());
    EXPECT_EQ(copy->edits, before + 1);
    expectSame("typed");
    control.Undo();
    EXPECT_TRUE(control.map().joints().empty());
    EXPECT_EQ(copy->edits, before + 2);
    expectSame("undone");
    control.Redo();
    expectSame("done again");
}

TEST_F(ReportedEdits, IncludeALineEndOfWhichHalfIsLeft) {
    load(longLine(70'000) + "\r\none\r\ntwo\r\n");
    ASSERT_EQ(control.map().joints().kind(), JointKind::LoneCr);
    const qint64 end = control.heldText().length();
    control.openScope(true);
    control.replaceBytes(end - 1, end, {});
    control.closeScope();
    EXPECT_FALSE(areJointsByRule());
    EXPECT_TRUE(copy->text.ends_with("one\r\ntwo\r"));
    expectSame("half");
    control.Undo();
    expectSame("undone");
}

struct RandomEdits : ReportedEdits, testing::WithParamInterface<int> {};

TEST_P(RandomEdits, GiveTheHeldTextAndItsJointsOnACopy) {
    const int which = GetParam();
    const char* const end = which % 4 == 1 ? "\r\n" : which % 4 == 2 ? "\r" : "\n";
    QByteArray text;
    for (int line = 0; line < 40; ++line)
        text += QByteArray("line ") + QByteArray::number(line * 7919) + end;
    if (which % 4 != 3)
        text += longLine(150'000) + end + "last" + end;
    load(text);
    Hand hand(control, static_cast<unsigned>(which));
    for (int step = 0; step < 500; ++step) {
        const std::string done = hand.act();
        expectSame((done + " at " + std::to_string(step)).c_str());
        if (HasFatalFailure())
            return;
        const qint64 length = control.heldText().length();
        if (length > 1'000'000 || length < text.size() / 2)
            load(text);
    }
    EXPECT_GT(copy->edits, 100);
    EXPECT_GE(copy->announced, copy->edits);
}

INSTANTIATE_TEST_SUITE_P(OfEachKind, RandomEdits, testing::Range(0, 8));
