#include "RecordedServices.h"
#include "properties/ucPropGeneral.h"
#include "settings/Options.h"
#include "settings/Settings.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

namespace {

class GeneralPanel : public testing::Test {
 protected:
    GeneralPanel() {
        panel.LoadProp();
        panel.show();
    }
    template <typename Widget = QCheckBox>
    Widget& part(const char* name) {
        return *panel.findChild<Widget*>(QLatin1String(name));
    }
    QLineEdit& colour() { return part<QLineEdit>("txtCursorColor"); }
    void click(const char* name) { part<QAbstractButton>(name).click(); }
    QString stored(const char* key) { return settings.PropertyValue(QLatin1String(key), u"none"_qs, false); }
    QStringList saved() {
        calls.clear();
        panel.SaveProp();
        return calls;
    }
    /// Closes the colour dialog with this colour.
    void choose(const QColor& chosen) {
        click("cmdSelectColor");
        auto* dialog = panel.findChild<QColorDialog*>();
        ASSERT_NE(dialog, nullptr);
        dialog->setCurrentColor(chosen);
        dialog->accept();
    }

    QStringList calls;
    RecordedRegistry registry{calls};
    RecordedShell shell{calls};
    Settings settings{registry};
    Options options;
    ucPropGeneral panel{settings, options, shell};
    const QSignalSpy changed{&panel, &ucPropGeneral::Changed};
};

struct Captioned {
    const char* name;
    const char* caption;
    const char* key = nullptr;
};

constexpr Captioned Boxes[] = {
    {"chkLoadLastFiles", "Reload last files at startup", "LoadLastFiles"},
    {"chkWorkFolder", "Working folder follows active document", "DocumentWorkingFolder"},
    {"chkNewDocument", "Start with new document", "StartNewDocument"},
    {"chkShowPath", "Show file path in document caption", "ShowFullPath"},
    {"chkShowIcon", "Show document icon in explorer", "UseFileIcon"},
    {"chkLoadLastFolder", "Load the last accessed folder in explorer when startup", "LoadLastFolder"},
    {"chkRowHighlight", "Highlight the cursor row", "RowHighlight"},
    {"chkCheckHex", "Check for Hex mode when opening files", "CheckHexModeWhenOpen"},
    {"chkClearRedo", "Clear undo/redo chain after successful save", "ClearRedoAfterSave"},
    {"chkXP", "Using XP Skin", "XPSkin"},
};

constexpr Captioned Others[] = {
    {"optFileMod(0)", "Ignore"}, {"optFileMod(1)", "Prompt"}, {"chkSTContext", "Context menu"},
    {"chkSTDesktop", "Desktop"}, {"chkSCProgram", "Program"}, {"chkSCStartup", "Startup menu"},
    {"cmdSelectColor", "Color"}, {"cmdReset", "Reset"},
};

}  // namespace

TEST_F(GeneralPanel, BearsTheCaptionsOfItsBoxes) {
    for (const Captioned& each : Boxes) {
        EXPECT_EQ(part(each.name).text().remove(u'&'), QLatin1String(each.caption));
    }
    for (const Captioned& each : Others) {
        EXPECT_EQ(part<QAbstractButton>(each.name).text().remove(u'&'), QLatin1String(each.caption));
    }
    const auto frameOf = [this](const char* name) {
        return qobject_cast<QGroupBox*>(part<QWidget>(name).parentWidget())->title();
    };
    EXPECT_EQ(frameOf("optFileMod(0)"), u" When files are modified by another process: "_qs);
    EXPECT_EQ(frameOf("optFileMod(1)"), frameOf("optFileMod(0)"));
    for (const char* name : {"chkSTContext", "chkSTDesktop", "chkSCProgram", "chkSCStartup"}) {
        EXPECT_EQ(frameOf(name), u" Put shortcuts to Quillmark on:  "_qs);
    }
}

TEST_F(GeneralPanel, EachBoxIsShownFromItsSettingAndSavedToIt) {
    for (const Captioned& each : Boxes) {
        const bool before = part(each.name).isChecked();
        EXPECT_EQ(before, settings.forDialog(QLatin1String(each.key)) == QLatin1String("1")) << each.name;
        click(each.name);
        panel.SaveProp();
        EXPECT_EQ(stored(each.key), before ? u"0"_qs : u"1"_qs) << each.name;
        settings.write(QLatin1String(each.key), before ? u"1"_qs : u"0"_qs);
        panel.LoadProp();
        EXPECT_EQ(part(each.name).isChecked(), before) << each.name;
    }
}

TEST_F(GeneralPanel, AnyControlRaisesChangedOnceForEachTimeItIsUsed) {
    int times = 0;
    for (const Captioned& each : Boxes) {
        click(each.name);
        EXPECT_EQ(changed.count(), ++times) << each.name;
    }
    for (const char* name :
         {"optFileMod(0)", "optFileMod(1)", "chkSTContext", "chkSTDesktop", "chkSCProgram", "chkSCStartup"}) {
        click(name);
        EXPECT_EQ(changed.count(), ++times) << name;
    }
    panel.LoadProp();
    EXPECT_EQ(changed.count(), times) << "loading is no change of the user's";
}

TEST_F(GeneralPanel, SavesNothingUnlessTheUserChangedSomethingSince) {
    EXPECT_EQ(saved(), QStringList());
    click("chkShowPath");
    EXPECT_FALSE(saved().isEmpty());
    EXPECT_EQ(saved(), QStringList());
    click("chkShowPath");
    panel.LoadProp();
    EXPECT_EQ(saved(), QStringList());
}

TEST_F(GeneralPanel, WritesTheDialogsDefaultsAtTheFirstChangeOfAnything) {
    EXPECT_EQ(settings.forFrame(u"LoadLastFiles"_qs), u"0"_qs);
    EXPECT_TRUE(part("chkLoadLastFiles").isChecked());
    click("chkShowPath");
    panel.SaveProp();
    EXPECT_EQ(stored("LoadLastFiles"), u"1"_qs);
}

TEST_F(GeneralPanel, TheNoticeIsOneOfTwo) {
    EXPECT_TRUE(part<QRadioButton>("optFileMod(1)").isChecked());
    click("optFileMod(0)");
    EXPECT_FALSE(part<QRadioButton>("optFileMod(1)").isChecked());
    panel.SaveProp();
    EXPECT_EQ(stored("FileModifyNotice"), u"False"_qs);
    EXPECT_FALSE(options.FileModifyNotice);
    panel.LoadProp();
    EXPECT_TRUE(part<QRadioButton>("optFileMod(0)").isChecked());
}

TEST_F(GeneralPanel, ShowsTheShortcutsOfTheDesktop) {
    shell.shortcuts = {u"program"_qs};
    panel.LoadProp();
    EXPECT_TRUE(part("chkSCProgram").isChecked());
    EXPECT_FALSE(part("chkSTDesktop").isChecked());
    EXPECT_FALSE(part("chkSCStartup").isChecked());
    click("chkSCStartup");
    click("chkSCProgram");
    panel.SaveProp();
    EXPECT_EQ(shell.shortcuts, QSet<QString>({u"startup"_qs}));
    click("chkSTDesktop");
    panel.SaveProp();
    EXPECT_EQ(shell.shortcuts, QSet<QString>({u"startup"_qs, u"desktop"_qs}));
}

TEST_F(GeneralPanel, AShortcutThatCouldNotBeMadeIsNotShown) {
    shell.fails = true;
    click("chkSTDesktop");
    panel.SaveProp();
    EXPECT_FALSE(part("chkSTDesktop").isChecked());
    EXPECT_EQ(changed.count(), 1);
}

TEST_F(GeneralPanel, TheContextMenuShowsTheOutcomeOfItsRegistration) {
    const char* outcome = "Failed";
    shell.whenRegister = [&](bool on) {
        settings.write(u"register_handle"_qs, on ? QString::fromLatin1(outcome) : u"Unregistered"_qs);
    };
    EXPECT_TRUE(part("chkSTContext").isEnabled());
    click("chkSTContext");
    EXPECT_EQ(saved().filter(u"register"_qs).constFirst(), u"register"_qs);
    EXPECT_FALSE(part("chkSTContext").isChecked());
    outcome = "Registered";
    click("chkSTContext");
    panel.SaveProp();
    EXPECT_TRUE(part("chkSTContext").isChecked());
    click("chkShowPath");
    EXPECT_EQ(saved().filter(u"register"_qs), QStringList());
    click("chkSTContext");
    EXPECT_EQ(saved().filter(u"register"_qs).constFirst(), u"unregister"_qs);
    EXPECT_FALSE(part("chkSTContext").isChecked());
}

// The colour of the cursor row

TEST_F(GeneralPanel, TheColourIsShownAsSixDigits) {
    EXPECT_EQ(colour().text(), u"CDD7E7"_qs);
    settings.write(u"RowHighlightColor"_qs, u"255"_qs);
    panel.LoadProp();
    EXPECT_EQ(colour().text(), u"FF0000"_qs);
}

TEST_F(GeneralPanel, TheColourCanBeChangedOnlyWhileTheRowIsHighlighted) {
    for (const bool on : {false, true}) {
        click("chkRowHighlight");
        for (const char* name : {"txtCursorColor", "cmdSelectColor", "cmdReset"}) {
            EXPECT_EQ(part<QWidget>(name).isEnabled(), on) << name;
        }
    }
    settings.write(u"RowHighlight"_qs, u"0"_qs);
    panel.LoadProp();
    EXPECT_FALSE(colour().isEnabled());
}

TEST_F(GeneralPanel, ATypedColourCountsWhenItIsValid) {
    colour().setFocus();
    colour().selectAll();
    QTest::keyClicks(&colour(), u"00400"_qs);
    EXPECT_EQ(changed.count(), 0);
    QTest::keyClicks(&colour(), u"0"_qs);
    EXPECT_EQ(changed.count(), 1);
    panel.SaveProp();
    EXPECT_EQ(stored("RowHighlightColor"), u"16384"_qs);
    EXPECT_EQ(options.RowHighlightColor, 16384);
}

TEST_F(GeneralPanel, ATypedTextThatIsNoColourGivesWayToTheLastOne) {
    colour().setText(u"ff0000"_qs);
    colour().setText(u"nonsense"_qs);
    click("chkShowPath");
    panel.SaveProp();
    EXPECT_EQ(stored("RowHighlightColor"), u"255"_qs);
    EXPECT_EQ(colour().text(), u"FF0000"_qs);
    colour().setText(u"GG"_qs);
    QTest::keyClick(&colour(), Qt::Key_Return);
    EXPECT_EQ(colour().text(), u"FF0000"_qs);
    EXPECT_EQ(saved(), QStringList()) << "nothing was changed since";
}

TEST_F(GeneralPanel, TheSameColourTypedOtherwiseIsNoChange) {
    colour().setText(u"cdd7e7"_qs);
    EXPECT_EQ(changed.count(), 0);
    EXPECT_EQ(saved(), QStringList());
}

TEST_F(GeneralPanel, TheColourDialogSetsTheColour) {
    choose(QColor(1, 2, 3));
    EXPECT_EQ(colour().text(), u"010203"_qs);
    EXPECT_EQ(changed.count(), 1);
    panel.SaveProp();
    EXPECT_EQ(stored("RowHighlightColor"), QString::number(1 | 2 << 8 | 3 << 16));
}

TEST_F(GeneralPanel, ACancelledColourDialogChangesNothing) {
    click("cmdSelectColor");
    auto* dialog = panel.findChild<QColorDialog*>();
    ASSERT_NE(dialog, nullptr);
    EXPECT_TRUE(dialog->isModal());
    EXPECT_EQ(dialog->currentColor(), QColor(205, 215, 231));
    dialog->setCurrentColor(QColor(1, 2, 3));
    dialog->reject();
    EXPECT_EQ(colour().text(), u"CDD7E7"_qs);
    EXPECT_EQ(changed.count(), 0);
}

TEST_F(GeneralPanel, ResetGoesBackToTheFirstColour) {
    choose(QColor(1, 2, 3));
    panel.SaveProp();
    click("cmdReset");
    EXPECT_EQ(colour().text(), u"CDD7E7"_qs);
    EXPECT_EQ(changed.count(), 2);
    panel.SaveProp();
    EXPECT_EQ(stored("RowHighlightColor"), u"15194061"_qs);
}

TEST_F(GeneralPanel, EveryControlIsReachedByTheTabKeyAndNamed) {
    for (const Captioned& each : Boxes) {
        EXPECT_TRUE(part(each.name).focusPolicy() & Qt::TabFocus) << each.name;
    }
    EXPECT_EQ(colour().accessibleName(), u"Color of the cursor row"_qs);
    EXPECT_EQ(part<QPushButton>("cmdReset").accessibleName(), u"Reset the color of the cursor row"_qs);
}
