#include "shell/FrameFixture.h"
#include "shell/commands/SearchToggles.h"
#include "shell/documents/SystemClose.h"

#include <QComboBox>
#include <QMetaMethod>

/// The frame's procedures as callers outside find them: by name.
class FrameProcedures : public FrameFixture {
 protected:
    template <typename... Values>
    bool call(const char* name, Values... values) {
        return QMetaObject::invokeMethod(m_frame.get(), name, values...);
    }
    bool callWith(const char* name, frmDocument* document) { return call(name, Q_ARG(frmDocument*, document)); }
};

TEST_F(FrameProcedures, CanBeCalledByTheirNames) {
    QStringList names;
    for (int i = frmMain::staticMetaObject.methodOffset(); i < frmMain::staticMetaObject.methodCount(); ++i)
        names << QString::fromLatin1(frmMain::staticMetaObject.method(i).name());
    for (const char* name : {"OpenFile",
                             "OpenFileFromCmd",
                             "SaveDocument",
                             "SaveAll",
                             "CloseAll",
                             "DocClose",
                             "DelTab",
                             "ActiveFormChange",
                             "SelChange",
                             "FileChange",
                             "DocChange",
                             "SetTabCaption",
                             "SetDocumentEnv",
                             "SetEditModeIcon",
                             "CheckFileUpdate",
                             "ChangeReadOnly",
                             "CheckLangMenu",
                             "NewDocument",
                             "FindOpenDocument",
                             "AddDocumentTab",
                             "ShowDocumentInfo",
                             "ShowCursorPosition",
                             "EnableSystemClose",
                             "AddMenu",
                             "SetMenuCaption",
                             "UnloadMenuItem",
                             "RefreshCheckedItems",
                             "CheckMenuItem",
                             "UpdateMacroMenu",
                             "SetProjectMenus",
                             "AfterFind",
                             "AddSearchKey",
                             "SetWholeWordOption",
                             "SetRegExpOption",
                             "SetCaseOption",
                             "SetContinueSearchOption"}) {
        EXPECT_TRUE(names.contains(QLatin1String(name))) << name;
    }
}

TEST_F(FrameProcedures, WithoutADocumentDoNothing) {
    start();
    for (const char* name :
         {"DocClose", "DelTab", "ActiveFormChange", "SelChange", "FileChange", "DocChange", "SetDocumentEnv",
          "SetEditModeIcon", "CheckLangMenu", "AddDocumentTab", "ShowDocumentInfo", "ShowCursorPosition"}) {
        EXPECT_TRUE(callWith(name, nullptr)) << name;
    }
    EXPECT_TRUE(call("SaveDocument", Q_ARG(frmDocument*, nullptr), Q_ARG(bool, true), Q_ARG(int, 1)));
    EXPECT_TRUE(call("SetTabCaption", Q_ARG(frmDocument*, nullptr), Q_ARG(bool, true)));
    EXPECT_TRUE(call("EnableSystemClose", Q_ARG(QWidget*, nullptr), Q_ARG(bool, false)));
    EXPECT_FALSE(house().systemClose.isGreyed());
    run("mnuFileClose");
    EXPECT_TRUE(callWith("SelChange", nullptr));
    EXPECT_EQ(strip().count(), 0);
    EXPECT_TRUE(m_prompts.messages.isEmpty());
}

TEST_F(FrameProcedures, SaveAndCloseTheDocumentTheyAreGiven) {
    start();
    const QString file = fileOf("1");
    open(file);
    type(u"x"_qs);
    frmDocument* first = active();
    run("mnuFileNew");
    EXPECT_TRUE(call("SaveDocument", Q_ARG(frmDocument*, first), Q_ARG(bool, true), Q_ARG(int, 1)));
    EXPECT_EQ(bytesOf(file), "x1");
    EXPECT_TRUE(callWith("CloseAll", first));
    EXPECT_EQ(documents(), QList<frmDocument*>{first});
    EXPECT_TRUE(callWith("CloseAll", nullptr));
    EXPECT_TRUE(documents().isEmpty());
}

TEST_F(FrameProcedures, BringTheTabInLineWithItsDocument) {
    start();
    active()->filename = u"/d/name.txt"_qs;
    active()->isChange = true;
    EXPECT_TRUE(call("SetTabCaption", Q_ARG(frmDocument*, active()), Q_ARG(bool, false)));
    EXPECT_EQ(tabs(), QStringList(u"name.txt"_qs));
    EXPECT_EQ(house().tabs.image(0), 2);
    active()->isChange = false;
    EXPECT_TRUE(callWith("FileChange", active()));
    EXPECT_EQ(house().tabs.image(0), 1);
}

TEST_F(FrameProcedures, GreyTheCloseItemOfAFormAlone) {
    start();
    QWidget* frame = m_frame.get();
    QWidget* document = active();
    EXPECT_TRUE(call("EnableSystemClose", Q_ARG(QWidget*, document), Q_ARG(bool, false)));
    EXPECT_FALSE(house().systemClose.isGreyed());
    run("mnuFileClose");
    EXPECT_EQ(documents().size(), 1);
    EXPECT_TRUE(call("EnableSystemClose", Q_ARG(QWidget*, document), Q_ARG(bool, true)));
    run("mnuFileClose");
    EXPECT_TRUE(documents().isEmpty());
    EXPECT_TRUE(call("EnableSystemClose", Q_ARG(QWidget*, frame), Q_ARG(bool, false)));
    EXPECT_FALSE(m_frame->close());
    EXPECT_TRUE(call("EnableSystemClose", Q_ARG(QWidget*, frame), Q_ARG(bool, true)));
    EXPECT_TRUE(m_frame->close());
}

TEST_F(FrameProcedures, SetMarksAndTogglesByName) {
    start();
    EXPECT_TRUE(call("CheckMenuItem", Q_ARG(QString, u"mnuReadonly"_qs), Q_ARG(bool, true)));
    EXPECT_TRUE(entry("mnuReadonly")->isChecked());
    EXPECT_TRUE(call("CheckMenuItem", Q_ARG(QString, u"mnuNothing"_qs), Q_ARG(bool, true)));
    const std::tuple<const char*, const char*, bool Options::*> toggles[] = {
        {"SetWholeWordOption", "mnuWholeWord", &Options::WholeWord},
        {"SetRegExpOption", "mnuRegExp", &Options::RegExpOn},
        {"SetCaseOption", "mnuCaseSensitive", &Options::CaseSensitiveOn},
        {"SetContinueSearchOption", "mnuSearchContinue", &Options::ContinueSearch}};
    for (const auto& [name, mark, field] : toggles) {
        for (const bool on : {true, false}) {
            EXPECT_TRUE(call(name, Q_ARG(bool, on)));
            EXPECT_EQ(house().options.*field, on) << name;
            EXPECT_EQ(entry(mark)->isChecked(), on) << name;
        }
    }
    EXPECT_TRUE(call("AddSearchKey", Q_ARG(QString, u"sought"_qs), Q_ARG(bool, false)));
    EXPECT_EQ(m_frame->findChild<QComboBox*>(u"cmbSearch"_qs)->itemText(0), u"sought"_qs);
}

TEST_F(FrameProcedures, ShowTheDocumentTheyAreGivenInTheStatusBar) {
    start();
    open(fileOf("12345"));
    frmDocument* first = active();
    select(3, 3);
    run("mnuFileNew");
    EXPECT_EQ(house().status.text(4), QString());
    EXPECT_TRUE(callWith("SelChange", first));
    EXPECT_TRUE(callWith("DocChange", first));
    EXPECT_EQ(house().status.text(2), u"Ln 1 / 1, Col 1, Pos 1"_qs);
    EXPECT_TRUE(callWith("ShowCursorPosition", first));
    EXPECT_EQ(house().status.text(2), u"Ln 1 / 1, Col 4, Pos 4"_qs);
    EXPECT_TRUE(callWith("ShowDocumentInfo", first));
    EXPECT_EQ(house().status.text(4), u"5"_qs);
    EXPECT_TRUE(callWith("DocChange", active()));
    EXPECT_EQ(house().status.text(2), u"Ln 1 / 1, Col 4, Pos 4"_qs);
    EXPECT_TRUE(callWith("SelChange", active()));
    EXPECT_EQ(house().status.text(2), u"Ln 1 / 1, Col 1, Pos 1"_qs);
}
