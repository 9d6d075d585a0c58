#include "keys/HotKeys.h"
#include "keys/KeyNames.h"
#include "settings/registry/MemoryRegistry.h"
#include "settings/registry/RegistryData.h"

#include <gtest/gtest.h>

#include <array>

namespace {

constexpr int Shift = HotKeyStroke::Shift;
constexpr int Ctrl = HotKeyStroke::Ctrl;
constexpr int Alt = HotKeyStroke::Alt;

HotKeyStroke stroke(int modifiers, char16_t code) {
    return {modifiers, QString(QChar(code))};
}

HotKey oneStroke(int modifiers, char16_t code) {
    return {stroke(modifiers, code), {}};
}

const HotKey CtrlK = oneStroke(Ctrl, u'K');
const HotKey CtrlKCtrlC = {stroke(Ctrl, u'K'), stroke(Ctrl, u'C')};

}  // namespace

TEST(KeyNames, EveryKeyOfTheTableHasItsName) {
    struct Row {
        char16_t code;
        const char* name;
    };
    const auto rows = std::to_array<Row>(
        {{8, "Backspace"}, {9, "Tab"},        {19, "Pause"}, {20, "Captial"}, {27, "Escape"}, {32, "Space"},
         {33, "Page Up"},  {34, "Page Down"}, {35, "End"},   {36, "Home"},    {37, "Left"},   {38, "Up"},
         {39, "Right"},    {40, "Down"},      {42, "Print"}, {45, "Insert"},  {46, "Delete"}, {47, "Help"},
         {144, "Lock"},    {112, "F1"},       {113, "F2"},   {114, "F3"},     {115, "F4"},    {116, "F5"},
         {117, "F6"},      {118, "F7"},       {119, "F8"},   {120, "F9"},     {121, "F10"},   {122, "F11"},
         {123, "F12"},     {124, "F13"},      {125, "F14"},  {126, "F15"},    {127, "F16"}});
    for (const Row& row : rows) {
        EXPECT_EQ(KeyNames::KeyName(QString(QChar(row.code))), QLatin1String(row.name));
    }
}

TEST(KeyNames, OtherKeysShowAsTheyStand) {
    for (char16_t code = u'0'; code <= u'9'; ++code) {
        EXPECT_EQ(KeyNames::KeyName(QString(QChar(code))), QString(QChar(code)));
    }
    for (char16_t code = u'A'; code <= u'Z'; ++code) {
        EXPECT_EQ(KeyNames::KeyName(QString(QChar(code))), QString(QChar(code)));
    }
    for (const char16_t code : {41, 43, 44, 128, 143, 145}) {
        EXPECT_EQ(KeyNames::KeyName(QString(QChar(code))), QString(QChar(code)));
    }
    EXPECT_EQ(KeyNames::KeyName({}), QString());
}

TEST(KeyNames, AStrokeNamesCtrlShiftAltAndTheKeyInThatOrder) {
    EXPECT_EQ(KeyNames::text(stroke(Ctrl | Shift, 116)), u"Ctrl + Shift + F5"_qs);
    EXPECT_EQ(KeyNames::text(stroke(Ctrl | Shift | Alt, 65)), u"Ctrl + Shift + Alt + A"_qs);
    EXPECT_EQ(KeyNames::text(stroke(Shift | Alt, 9)), u"Shift + Alt + Tab"_qs);
    EXPECT_EQ(KeyNames::text(stroke(0, 112)), u"F1"_qs);
}

TEST(KeyNames, ASecondStrokeStandsBehindAComma) {
    EXPECT_EQ(KeyNames::text(CtrlKCtrlC), u"Ctrl + K, Ctrl + C"_qs);
    EXPECT_EQ(KeyNames::text(CtrlK), u"Ctrl + K"_qs);
}

TEST(KeyNames, ModifiersOfASecondStrokeWithoutItsKeyShowWithTheComma) {
    EXPECT_EQ(KeyNames::text(HotKey{stroke(Alt, u'A'), {Ctrl, {}}}), u"Alt + A, Ctrl + "_qs);
}

TEST(KeyNames, PressedKeysBecomeStrokesThatNameThem) {
    struct Row {
        int key;
        Qt::KeyboardModifiers held;
        const char* text;
    };
    const auto rows = std::to_array<Row>({
        {Qt::Key_A, Qt::ControlModifier, "Ctrl + A"},
        {Qt::Key_9, Qt::AltModifier, "Alt + 9"},
        {Qt::Key_F5, Qt::ControlModifier | Qt::ShiftModifier, "Ctrl + Shift + F5"},
        {Qt::Key_Backtab, Qt::ShiftModifier, "Shift + Tab"},
        {Qt::Key_PageDown, Qt::NoModifier, "Page Down"},
        {Qt::Key_Delete, Qt::KeypadModifier, "Delete"},
        {Qt::Key_F16, Qt::NoModifier, "F16"},
        {Qt::Key_Period, Qt::ControlModifier, nullptr},
        {Qt::Key_F17, Qt::NoModifier, nullptr},
        {Qt::Key_Return, Qt::ControlModifier, nullptr},
        {Qt::Key_Control, Qt::ControlModifier, nullptr},
        {Qt::Key_Adiaeresis, Qt::ControlModifier, nullptr},
        {Qt::Key_A, Qt::ControlModifier | Qt::MetaModifier, nullptr},
    });
    for (const Row& row : rows) {
        const auto pressed = KeyNames::strokeOf(row.key, row.held);
        ASSERT_EQ(pressed.has_value(), row.text != nullptr) << row.key;
        EXPECT_EQ(pressed ? KeyNames::text(*pressed) : QString(), QLatin1String(row.text));
    }
}

TEST(HotKeys, EveryMacroShowsTheHotKeyOfItsCommand) {
    HotKeys keys;
    for (int macro = 1; macro <= 10; ++macro) {
        EXPECT_TRUE(keys.bind(213 + macro, oneStroke(Ctrl, static_cast<char16_t>(111 + macro))));
    }
    for (int macro = 1; macro <= 10; ++macro) {
        EXPECT_EQ(keys.HotKeyText(QString::number(macro)), u"Ctrl + F%1"_qs.arg(macro));
    }
}

TEST(HotKeys, OtherTextsAreNoMacro) {
    HotKeys keys;
    keys.bind(213, oneStroke(Ctrl, u'A'));
    keys.bind(214, oneStroke(Ctrl, u'B'));
    keys.bind(224, oneStroke(Ctrl, u'C'));
    for (const QString& n : {u"11"_qs, u"0"_qs, u"-1"_qs, u" 1"_qs, u"01"_qs, u"1.0"_qs, u"one"_qs, QString()}) {
        EXPECT_EQ(keys.HotKeyText(n), QString()) << n.toStdString();
    }
    EXPECT_EQ(keys.HotKeyText(u"2"_qs), QString());
}

TEST(HotKeys, OnlyTheFirstOfSeveralIsShown) {
    HotKeys keys;
    keys.bind(216, oneStroke(Ctrl, u'A'));
    keys.bind(216, oneStroke(Ctrl, u'B'));
    EXPECT_EQ(keys.HotKeyText(u"3"_qs), u"Ctrl + A"_qs);
    keys.remove(oneStroke(Ctrl, u'A'));
    EXPECT_EQ(keys.HotKeyText(u"3"_qs), u"Ctrl + B"_qs);
}

TEST(HotKeys, AHotKeyWithoutAKeyIsNotTaken) {
    HotKeys keys;
    EXPECT_FALSE(keys.bind(214, HotKey{{Ctrl, {}}, {}}));
    EXPECT_TRUE(keys.bindings().isEmpty());
}

TEST(HotKeys, ANewOnePushesOutWhatItCollidesWith) {
    HotKeys keys;
    keys.bind(214, CtrlKCtrlC);
    keys.bind(215, oneStroke(Ctrl, u'L'));
    EXPECT_EQ(keys.collisionsOf(CtrlK), (QList<HotKeys::Binding>{{214, CtrlKCtrlC}}));
    keys.bind(216, CtrlK);
    EXPECT_EQ(keys.HotKeyText(u"1"_qs), QString());
    EXPECT_EQ(keys.HotKeyText(u"2"_qs), u"Ctrl + L"_qs);
    EXPECT_EQ(keys.HotKeyText(u"3"_qs), u"Ctrl + K"_qs);
}

TEST(HotKeys, TwoThatShareTheirFirstStrokeLiveSideBySide) {
    HotKeys keys;
    keys.bind(214, CtrlKCtrlC);
    keys.bind(215, {stroke(Ctrl, u'K'), stroke(Ctrl, u'D')});
    EXPECT_EQ(keys.bindings().size(), 2);
}

TEST(HotKeys, ResetBringsTheDefaultsBack) {
    HotKeys keys({{102, oneStroke(Ctrl, u'C')}});
    keys.bind(214, CtrlK);
    keys.remove(oneStroke(Ctrl, u'C'));
    keys.reset();
    EXPECT_EQ(keys.bindings(), (QList<HotKeys::Binding>{{102, oneStroke(Ctrl, u'C')}}));
    EXPECT_EQ(keys.HotKeyText(u"1"_qs), QString());
}

TEST(HotKeys, WhatWasSavedIsLoaded) {
    MemoryRegistry store;
    HotKeys keys;
    keys.bind(214, CtrlKCtrlC);
    keys.bind(223, oneStroke(Alt | Shift, 127));
    keys.bind(215, {stroke(Ctrl, u'B'), {Shift, {}}});
    keys.save(store);

    HotKeys loaded({{102, oneStroke(Ctrl, u'C')}});
    loaded.load(store);
    EXPECT_EQ(loaded.bindings(), keys.bindings());
}

TEST(HotKeys, AnEmptyListLeavesTheDefaults) {
    MemoryRegistry store;
    ASSERT_TRUE(HotKeys().save(store));
    HotKeys loaded({{102, CtrlK}});
    loaded.load(store);
    EXPECT_EQ(loaded, HotKeys({{102, CtrlK}}));
}

TEST(HotKeys, KeysThatWereTakenFromACommandStayTaken) {
    MemoryRegistry store;
    HotKeys keys({{100, oneStroke(Ctrl, u'A')}, {106, oneStroke(Ctrl, u'B')}});
    keys.remove(oneStroke(Ctrl, u'B'));
    keys.save(store);
    HotKeys loaded({{100, oneStroke(Ctrl, u'A')}, {106, oneStroke(Ctrl, u'B')}});
    loaded.load(store);
    EXPECT_EQ(loaded, keys);
}

namespace {

/// What is loaded from such lines, over defaults for the commands 100, which has two hot keys, 106 and 113.
QList<HotKeys::Binding> loadedFrom(const QStringList& lines) {
    MemoryRegistry store;
    store.writeValue(HKEY_CURRENT_USER, u"Software/Quillmark/Languages"_qs, u"HotKeys"_qs,
                     RegistryData::fromTexts(lines));
    HotKeys loaded({{100, oneStroke(Ctrl, u'A')},
                    {100, oneStroke(0, u'%')},
                    {106, oneStroke(Ctrl, u'B')},
                    {113, oneStroke(0, u'\b')}});
    loaded.load(store);
    return loaded.bindings();
}

}  // namespace

TEST(HotKeys, ALineThatCannotBeReadLeavesTheDefaultsOfItsCommand) {
    const HotKeys::Binding own{113, oneStroke(Alt, u'X')};
    for (const char* damaged : {"100", "100 ", "100 2", "100 2 65 0", "100 2 65 0 0 0", "100 8 65 0 0", "100 2 0 0 0",
                                "100 2 65 0 99999", "100 -2 65 0 0", "100 x 65 0 0", "100 2 65 0 0x"}) {
        EXPECT_EQ(loadedFrom({u"113 4 88 0 0"_qs, QString::fromLatin1(damaged)}),
                  (QList<HotKeys::Binding>{own, {100, oneStroke(Ctrl, u'A')}, {100, oneStroke(0, u'%')}}))
            << damaged;
    }
}

TEST(HotKeys, ALineOfAnUnknownCommandLeavesAllDefaultsThatAreFree) {
    for (const char* damaged :
         {" ", "x", "0 2 66 0 0", "-1 2 66 0 0", "99 2 66 0 0", "9999999999 2 66 0 0", "2 66 0 0", "\xFF\x01"}) {
        EXPECT_EQ(loadedFrom({u"214 2 65 0 0"_qs, QString::fromLatin1(damaged)}),
                  (QList<HotKeys::Binding>{{214, oneStroke(Ctrl, u'A')},
                                           {100, oneStroke(0, u'%')},
                                           {106, oneStroke(Ctrl, u'B')},
                                           {113, oneStroke(0, u'\b')}}))
            << damaged;
    }
}

TEST(HotKeys, AStoredStrokeThatTypesTextIsPassedOver) {
    for (const char* typed : {"214 0 65 0 0", "214 1 65 0 0", "214 0 48 0 0", "214 0 57 2 65", "214 0 32 0 0",
                              "214 0 9 0 0", "214 0 8 0 0"}) {
        EXPECT_EQ(loadedFrom({u"106 2 66 0 0"_qs, QString::fromLatin1(typed)}),
                  (QList<HotKeys::Binding>{{106, oneStroke(Ctrl, u'B')}}))
            << typed;
    }
    EXPECT_EQ(loadedFrom({u"113 0 65 0 0"_qs}), (QList<HotKeys::Binding>{{113, oneStroke(0, u'\b')}}));
}

TEST(HotKeys, StrokesWithCtrlOrAltAndTheDefaultOfBackspaceAreTaken) {
    EXPECT_EQ(
        loadedFrom({u"214 2 65 0 0"_qs, u"215 4 66 0 67"_qs, u"113 0 8 0 0"_qs}),
        (QList<HotKeys::Binding>{
            {214, oneStroke(Ctrl, u'A')}, {215, {stroke(Alt, u'B'), stroke(0, u'C')}}, {113, oneStroke(0, u'\b')}}));
}

TEST(HotKeys, WithoutAnythingSavedTheDefaultsStand) {
    MemoryRegistry store;
    HotKeys loaded({{102, CtrlK}});
    loaded.load(store);
    EXPECT_EQ(loaded.bindings().size(), 1);
}

TEST(HotKeys, LinesThatCannotBeReadArePassedOver) {
    MemoryRegistry store;
    const QStringList lines{u"214 2 75 0 0"_qs, u"215"_qs,          u"x 2 76 0 0"_qs,      u"216 8 76 0 0"_qs,
                            u"217 2 0 0 0"_qs,  u"218 2 77 9 9"_qs, u"219 2 99999 0 0"_qs, u"220 -1 78 0 0"_qs};
    store.writeValue(HKEY_CURRENT_USER, u"Software/Quillmark/Languages"_qs, u"HotKeys"_qs,
                     RegistryData::fromTexts(lines));
    HotKeys loaded;
    loaded.load(store);
    EXPECT_EQ(loaded.bindings(), (QList<HotKeys::Binding>{{214, CtrlK}}));
}

TEST(HotKeys, AValueOfAnotherTypeLeavesTheDefaults) {
    MemoryRegistry store;
    store.writeValue(HKEY_CURRENT_USER, u"Software/Quillmark/Languages"_qs, u"HotKeys"_qs,
                     RegistryData::fromInteger(7));
    HotKeys loaded({{102, CtrlK}});
    loaded.load(store);
    EXPECT_EQ(loaded.bindings().size(), 1);
}

TEST(HotKeyStrokes, OneStrokeRunsItsCommand) {
    HotKeys keys;
    keys.bind(214, CtrlK);
    HotKeyStrokes strokes(keys);
    const auto answer = strokes.press(CtrlK.first);
    EXPECT_TRUE(answer.taken);
    EXPECT_EQ(answer.command, 214);
    EXPECT_FALSE(strokes.isWaiting());
}

TEST(HotKeyStrokes, AFirstStrokeWaitsForTheSecond) {
    HotKeys keys;
    keys.bind(214, CtrlKCtrlC);
    HotKeyStrokes strokes(keys);
    const auto first = strokes.press(CtrlKCtrlC.first);
    EXPECT_TRUE(first.taken);
    EXPECT_FALSE(first.command.has_value());
    EXPECT_TRUE(strokes.isWaiting());
    EXPECT_EQ(strokes.press(CtrlKCtrlC.second).command, 214);
}

TEST(HotKeyStrokes, AStrokeThatGoesOnWithNothingBeginsAnew) {
    HotKeys keys;
    keys.bind(214, CtrlKCtrlC);
    keys.bind(215, oneStroke(Ctrl, u'L'));
    HotKeyStrokes strokes(keys);
    strokes.press(CtrlKCtrlC.first);
    EXPECT_EQ(strokes.press(stroke(Ctrl, u'L')).command, 215);
    strokes.press(CtrlKCtrlC.first);
    EXPECT_FALSE(strokes.press(stroke(0, u'X')).taken);
    EXPECT_FALSE(strokes.isWaiting());
}

TEST(HotKeyStrokes, AForgottenFirstStrokeLeavesTheSecondAlone) {
    HotKeys keys;
    keys.bind(214, CtrlKCtrlC);
    HotKeyStrokes strokes(keys);
    strokes.press(CtrlKCtrlC.first);
    strokes.forget();
    EXPECT_FALSE(strokes.press(CtrlKCtrlC.second).taken);
}
