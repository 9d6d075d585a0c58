#include "editor/Editor.h"
#include "editor/control/ControlMacros.h"
#include "editor/control/ControlSelection.h"
#include "editor/control/ControlTyping.h"
#include "editor/control/EditorKeys.h"
#include "keys/KeyNames.h"
#include "keys/MacroFixture.h"
#include "keys/MenuKeys.h"
#include "settings/registry/RegistryData.h"

#include <QAction>
#include <QMainWindow>
#include <QMenuBar>
#include <QSignalSpy>

namespace {

using Sci = QsciScintillaBase;

class HotKeyTyping : public MacroFixture {
 protected:
    HotKeyTyping() { put(1, {text(u"played"_qs)}); }

    const HotKey ctrlKCtrlC{{HotKeyStroke::Ctrl, u"K"_qs}, {HotKeyStroke::Ctrl, u"C"_qs}};
};

/// A window that contains the control and a menu entry with the shortcut Ctrl+S.
class HotKeyAndMenu : public HotKeyTyping {
 protected:
    HotKeyAndMenu() {
        save = window.menuBar()->addMenu(u"&File"_qs)->addAction(u"&Save..."_qs);
        save->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_S));
        QObject::connect(save, &QAction::triggered, &window, [this] { ++saved; });
        window.setCentralWidget(inner);
        window.show();
        inner->macros().setGlobals(globals);
        inner->setFocus();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
    }
    void ctrlS() { QTest::keyClick(inner, Qt::Key_S, Qt::ControlModifier); }

    QMainWindow window;
    QAction* save = nullptr;
    TextControl* inner = makeEditor(&window);
    int saved = 0;
};

}  // namespace

TEST_F(HotKeyTyping, EveryKeyOfTheControlDoesThroughTheTableWhatItDoesWithout) {
    const QString before = u"one two\n  three\nfour five\n"_qs;
    for (const EditorKeys::Row& row : EditorKeys::all()) {
        const std::unique_ptr<TextControl> plainOwner{makeEditor()};
        TextControl& plain = *plainOwner;
        const std::unique_ptr<TextControl> keyedOwner{makeEditor()};
        TextControl& keyed = *keyedOwner;
        keyed.macros().setGlobals(globals);
        for (TextControl* each : {&plain, &keyed}) {
            each->resize(600, 400);
            each->show();
            each->setText(before);
            each->setSelection(12, 14);
            QGuiApplication::clipboard()->setText(u"clip"_qs);
            QTest::keyClick(each, static_cast<Qt::Key>(row.key), Qt::KeyboardModifiers(row.modifiers));
        }
        EXPECT_EQ(keyed.Text(), plain.Text()) << row.key << " " << row.modifiers;
        EXPECT_EQ(keyed.selected().CaretPosition(), plain.selected().CaretPosition())
            << row.key << " " << row.modifiers;
        EXPECT_EQ(keyed.selected().AnchorPosition(), plain.selected().AnchorPosition())
            << row.key << " " << row.modifiers;
    }
}

TEST_F(HotKeyTyping, OneStrokePlaysItsMacro) {
    hotKeys.bind(214, hotKey(HotKeyStroke::Ctrl | HotKeyStroke::Shift, u'M'));
    key(Qt::Key_M, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(control.Text(), u"played"_qs);
}

TEST_F(HotKeyTyping, ASecondStrokeIsWaitedForAndSaid) {
    hotKeys.bind(214, ctrlKCtrlC);
    const QSignalSpy told(&control, &TextControl::Notice);
    key(Qt::Key_K, Qt::ControlModifier);
    ASSERT_EQ(told.size(), 1);
    EXPECT_EQ(told.last()[0].toString(), u"Ctrl + K: press the second key, or Esc to leave."_qs);
    key(Qt::Key_Control, Qt::ControlModifier);
    EXPECT_EQ(told.size(), 1);
    key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(control.Text(), u"played"_qs);
    EXPECT_EQ(told.last()[0].toString(), QString());
}

TEST_F(HotKeyTyping, EscapeLeavesTheFirstStroke) {
    hotKeys.bind(214, ctrlKCtrlC);
    control.setText(u"abc"_qs);
    control.setRepeatCount(5);
    key(Qt::Key_K, Qt::ControlModifier);
    key(Qt::Key_Escape);
    EXPECT_EQ(globals.begunHotKey(), QString());
    EXPECT_EQ(control.repeatCount(), 5);
    key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(control.Text(), u"abc"_qs);
}

TEST_F(HotKeyTyping, AKeyThatGoesOnWithNothingIsTyped) {
    hotKeys.bind(214, ctrlKCtrlC);
    key(Qt::Key_K, Qt::ControlModifier);
    type("x");
    EXPECT_EQ(control.Text(), u"x"_qs);
    key(Qt::Key_K, Qt::ControlModifier);
    key(Qt::Key_Return);
    EXPECT_EQ(control.Text(), u"x\n"_qs);
    EXPECT_EQ(globals.begunHotKey(), QString());
}

TEST_F(HotKeyTyping, TheFocusAndTheMouseLeaveTheFirstStroke) {
    hotKeys.bind(214, ctrlKCtrlC);
    key(Qt::Key_K, Qt::ControlModifier);
    QFocusEvent away(QEvent::FocusOut);
    QCoreApplication::sendEvent(&control, &away);
    EXPECT_EQ(globals.begunHotKey(), QString());
    key(Qt::Key_K, Qt::ControlModifier);
    QTest::mouseClick(control.viewport(), Qt::LeftButton, {}, QPoint(50, 5));
    EXPECT_EQ(globals.begunHotKey(), QString());
}

TEST_F(HotKeyTyping, TextOfAnInputMethodLeavesTheFirstStroke) {
    hotKeys.bind(214, {{HotKeyStroke::Ctrl, u"K"_qs}, {0, u"C"_qs}});
    QInputMethodEvent nothing;
    QInputMethodEvent onTheWay(u"ka"_qs, {});
    QInputMethodEvent commit;
    commit.setCommitString(u"か"_qs);
    key(Qt::Key_K, Qt::ControlModifier);
    QCoreApplication::sendEvent(&control, &nothing);
    EXPECT_EQ(globals.begunHotKey(), u"Ctrl + K"_qs);
    for (QInputMethodEvent* event : {&onTheWay, &commit}) {
        key(Qt::Key_K, Qt::ControlModifier);
        QCoreApplication::sendEvent(&control, event);
        EXPECT_EQ(globals.begunHotKey(), QString());
    }
    type("c");
    EXPECT_EQ(control.Text(), u"かc"_qs);
}

TEST_F(HotKeyTyping, SwallowsNoTypingThatItDoesNotOwn) {
    for (int n = 1; n <= 10; ++n)
        hotKeys.bind(213 + n, {{HotKeyStroke::Ctrl, u"K"_qs}, {0, QString(QChar(u'A' + n))}});
    QString typed;
    for (char16_t sign = u' '; sign < 127; ++sign) {
        const auto pressed = static_cast<Qt::Key>(QChar(sign).toUpper().unicode());
        const bool shift = sign >= u'A' && sign <= u'Z';
        QKeyEvent press(QEvent::KeyPress, pressed, shift ? Qt::ShiftModifier : Qt::NoModifier, QString(QChar(sign)));
        QCoreApplication::sendEvent(&control, &press);
        typed += QChar(sign);
    }
    EXPECT_EQ(control.Text(), typed);
}

TEST_F(HotKeyTyping, WhateverListIsStoredTheKeysOfTheCaretWorkAndLettersAreTyped) {
    const QStringList damaged(u"\x01\x02"_qs);
    QStringList cut;
    for (const HotKeys::Binding& binding : GlobalObject::defaultHotKeys()) {
        const HotKeyStroke& first = binding.hotKey.first;
        cut << u"%1 %2 %3"_qs.arg(binding.command).arg(first.modifiers).arg(first.key.front().unicode());
    }
    for (const QStringList& stored : {QStringList(), damaged, cut, QStringList{u"214 0 65 0 0"_qs, u"x"_qs}}) {
        registry.writeValue(HKEY_CURRENT_USER, u"Software/Quillmark/Languages"_qs, u"HotKeys"_qs,
                            RegistryData::fromTexts(stored));
        hotKeys.load(registry);
        control.setText(u"xyz"_qs);
        control.setSelection(0, 0);
        key(Qt::Key_Right);
        type("a");
        key(Qt::Key_End);
        key(Qt::Key_Backspace);
        key(Qt::Key_Tab);
        EXPECT_EQ(control.Text(), u"xay\t"_qs) << stored.size();
    }
}

TEST_F(HotKeyTyping, AKeyTakenFromACommandDoesItNoMore) {
    control.setText(u"abc"_qs);
    control.SelectAll();
    hotKeys.remove(hotKey(HotKeyStroke::Ctrl, u'X'));
    key(Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(control.Text(), u"abc"_qs);
    hotKeys.bind(160, hotKey(0, 120));
    key(Qt::Key_F9);
    EXPECT_EQ(control.Text(), QString());
}

TEST_F(HotKeyTyping, AShiftedDigitIsTheKeyOfItsPlace) {
    constexpr quint32 PlaceOfOne = 10;
    QKeyEvent shifted(QEvent::KeyPress, Qt::Key_Exclam, Qt::ControlModifier | Qt::ShiftModifier, PlaceOfOne, 0, 0);
    ASSERT_TRUE(KeyNames::strokeOf(shifted).has_value());
    EXPECT_EQ(KeyNames::text(*KeyNames::strokeOf(shifted)), u"Ctrl + Shift + 1"_qs);
    QKeyEvent elsewhere(QEvent::KeyPress, Qt::Key_Exclam, Qt::ControlModifier, 60, 0, 0);
    EXPECT_FALSE(KeyNames::strokeOf(elsewhere).has_value());
}

TEST_F(HotKeyAndMenu, AnEnabledMenuShortcutWins) {
    hotKeys.bind(214, hotKey(HotKeyStroke::Ctrl, u'S'));
    ctrlS();
    EXPECT_EQ(saved, 1);
    EXPECT_EQ(inner->Text(), QString());
    save->setEnabled(false);
    ctrlS();
    EXPECT_EQ(saved, 1);
    EXPECT_EQ(inner->Text(), u"played"_qs);
}

TEST_F(HotKeyAndMenu, AnAwaitedSecondStrokeGoesPastTheMenu) {
    hotKeys.bind(214, {{HotKeyStroke::Ctrl, u"K"_qs}, {HotKeyStroke::Ctrl, u"S"_qs}});
    QTest::keyClick(inner, Qt::Key_K, Qt::ControlModifier);
    ctrlS();
    EXPECT_EQ(saved, 0);
    EXPECT_EQ(inner->Text(), u"played"_qs);
    ctrlS();
    EXPECT_EQ(saved, 1);
}

TEST_F(HotKeyAndMenu, AMenuShortcutLeavesAFirstStroke) {
    hotKeys.bind(214, ctrlKCtrlC);
    QTest::keyClick(inner, Qt::Key_K, Qt::ControlModifier);
    ctrlS();
    EXPECT_EQ(saved, 1);
    EXPECT_EQ(globals.begunHotKey(), QString());
}

TEST_F(HotKeyAndMenu, AShortcutOfTheMenuIsNoHotKeyForAMacro) {
    EXPECT_EQ(MenuKeys::commandOf({HotKeyStroke::Ctrl, u"S"_qs}, *inner), u"Save"_qs);
    EXPECT_EQ(MenuKeys::commandOf({HotKeyStroke::Alt, u"F"_qs}, *inner), u"File"_qs);
    EXPECT_EQ(MenuKeys::commandOf({HotKeyStroke::Ctrl, u"D"_qs}, *inner), QString());
    inner->ExecuteCmd(213);
    inner->typing().type(u"x"_qs);
    inner->ExecuteCmd(213);
    auto* asked = inner->findChild<MacroDialog*>();
    QTest::keyClick(asked->findChild<StrokeEdit*>(), Qt::Key_S, Qt::ControlModifier);
    EXPECT_FALSE(asked->findChild<QPushButton*>(u"cmdKeep"_qs)->isEnabled());
    EXPECT_EQ(asked->findChild<QLabel*>(u"lblVerdict"_qs)->text(),
              u"Ctrl + S belongs to \"Save\" of the menus, which comes first."_qs);
}
