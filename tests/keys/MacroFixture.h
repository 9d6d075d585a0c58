#pragma once

#include "editor/Editor.h"
#include "editor/control/ControlMacros.h"
#include "editor/control/MacroRecorder.h"
#include "editor/control/TextControl.h"
#include "keys/GlobalObject.h"
#include "keys/HotKeys.h"
#include "keys/MacroDialog.h"
#include "keys/MacroStore.h"
#include "keys/StrokeEdit.h"
#include "settings/registry/MemoryRegistry.h"
#include "support/ScriptedPrompts.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>

/// A control with hot keys and macros, and functions that press its keys.
class MacroFixture : public testing::Test {
 protected:
    static constexpr int Record = 213;
    using Steps = QList<MacroStep>;

    MacroFixture() {
        control.macros().setGlobals(globals);
        control.resize(600, 400);
        control.show();
        QGuiApplication::clipboard()->setText(u"clipboard"_qs);
    }

    static MacroStep command(int number, const QString& argument = {}) {
        return {MacroStep::Kind::Command, number, argument};
    }
    static MacroStep text(const QString& typed) { return {MacroStep::Kind::Text, 0, typed}; }
    static HotKey hotKey(int modifiers, char16_t code) { return {{modifiers, QString(QChar(code))}, {}}; }

    void key(Qt::Key key, Qt::KeyboardModifiers held = {}) { QTest::keyClick(&control, key, held); }
    void type(const char* typed) { QTest::keyClicks(&control, QString::fromUtf8(typed)); }
    Steps recorded() { return globals.recorder().steps(); }
    bool recording() { return globals.recorder().isRecording(); }
    MacroDialog* dialog() { return control.findChild<MacroDialog*>(); }
    template <typename Widget>
    Widget& part(const char* name) {
        return *dialog()->findChild<Widget*>(QString::fromLatin1(name));
    }
    void press(Qt::Key key, Qt::KeyboardModifiers held = {}) {
        QTest::keyClick(&part<StrokeEdit>("txtHotKey"), key, held);
    }
    QString verdict() { return part<QLabel>("lblVerdict").text(); }
    bool canKeep() { return part<QPushButton>("cmdKeep").isEnabled(); }
    void keep() {
        part<QPushButton>("cmdKeep").click();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    /// Ends the recording and stores it as a macro with this hot key.
    void keepAs(Qt::Key hotKey, Qt::KeyboardModifiers held = Qt::ControlModifier | Qt::ShiftModifier) {
        control.ExecuteCmd(Record);
        ASSERT_NE(dialog(), nullptr);
        press(hotKey, held);
        ASSERT_TRUE(canKeep()) << verdict().toStdString();
        keep();
    }
    void put(int n, const Steps& steps) { ASSERT_TRUE(store.setMacro(n - 1, Macro(steps))); }
    void play(int n) { control.ExecuteCmd(Record + n); }
    QString toldInABox() {
        const auto* box = control.findChild<QMessageBox*>(u"ControlMessage"_qs);
        return box == nullptr ? QString() : box->text();
    }

    QTemporaryDir home;
    MemoryRegistry registry;
    HotKeys hotKeys{GlobalObject::defaultHotKeys()};
    MacroStore store{registry, hotKeys, home.path()};
    ScriptedPrompts prompts;
    GlobalObject globals{prompts, registry, hotKeys, store};
    const std::unique_ptr<TextControl> controlOwner{makeEditor()};
    TextControl& control = *controlOwner;
};
