#include "RecordedServices.h"
#include "properties/GeneralProperties.h"
#include "settings/Options.h"
#include "settings/Settings.h"

#include <QRegularExpression>

#include <gtest/gtest.h>

namespace {

using Values = GeneralValues;

class GeneralPage : public testing::Test {
 protected:
    void set(const char* key, const char* value) {
        settings.write(QLatin1String(key), QLatin1String(value));
        calls.clear();
    }
    /// The registration writes its outcome, as the desktop's does.
    void registrationWrites(const char* outcome) {
        shell.whenRegister = [this, outcome](bool on) {
            settings.write(u"register_handle"_qs, on ? QString::fromLatin1(outcome) : u"Unregistered"_qs);
        };
    }
    QStringList saved(const Values& values) {
        calls.clear();
        page.save(values);
        return calls;
    }
    /// Of saving these values, what was done to shortcuts.
    QStringList savedShortcuts(const Values& values) {
        return saved(values).filter(QRegularExpression(u"^(create|delete) "_qs));
    }

    QStringList calls;
    RecordedRegistry registry{calls};
    RecordedShell shell{calls};
    Settings settings{registry};
    Options options;
    GeneralProperties page{settings, options, shell};
};

/// The box of a setting: the texts that are read as on and as off.
struct BoxCase {
    Values::Box box;
    const char* key;
    bool missing;  ///< what a missing setting counts as
    QStringList on;
    QStringList off;
};

const QStringList One(u"1"_qs);
const QStringList NotOne({u"0"_qs, u"True"_qs, u"1.0"_qs, u"2"_qs, u"yes"_qs});

const BoxCase Boxes[] = {
    {Values::LoadLastFiles, "LoadLastFiles", true, One, NotOne},
    {Values::WorkingFolder, "DocumentWorkingFolder", true, One, NotOne},
    {Values::NewDocument, "StartNewDocument", true, One, NotOne},
    {Values::ShowPath, "ShowFullPath", true, One, NotOne},
    {Values::ShowIcon, "UseFileIcon", false, One, NotOne},
    {Values::LoadLastFolder, "LoadLastFolder", false, One, NotOne},
    {Values::RowHighlight, "RowHighlight", true, {u"1"_qs, u"1.0"_qs, u" 1 "_qs}, {u"0"_qs, u"2"_qs, u"1.5"_qs}},
    {Values::CheckHex, "CheckHexModeWhenOpen", true, {u"1"_qs, u"True"_qs, u"-1"_qs}, {u"0"_qs, u"False"_qs}},
    {Values::ClearRedo, "ClearRedoAfterSave", false, One, NotOne},
    {Values::XPSkin, "XPSkin", true, One, NotOne},
};

}  // namespace

TEST_F(GeneralPage, ShowsTheDefaultsWhileNothingIsStored) {
    const Values values = page.load();
    ASSERT_EQ(std::size(Boxes), Values::Boxes);
    for (const BoxCase& each : Boxes) {
        EXPECT_EQ(values.boxes.at(each.box), each.missing) << each.key;
    }
    EXPECT_TRUE(values.modifyNotice);
    EXPECT_EQ(values.highlightColour, 15194061);
    EXPECT_FALSE(values.contextMenu);
    EXPECT_EQ(calls, QStringList()) << "reading writes nothing";
}

TEST_F(GeneralPage, ReadsEachSettingAsTheStartOfTheProgramDoes) {
    for (const BoxCase& each : Boxes) {
        for (const QString& text : each.on) {
            settings.write(QLatin1String(each.key), text);
            EXPECT_TRUE(page.load().boxes.at(each.box)) << each.key << ' ' << text.toStdString();
        }
        for (const QString& text : each.off) {
            settings.write(QLatin1String(each.key), text);
            EXPECT_FALSE(page.load().boxes.at(each.box)) << each.key << ' ' << text.toStdString();
        }
    }
}

TEST_F(GeneralPage, TakesTheOptionOfTheRunningProgramForATextThatIsNotValid) {
    for (const char* key : {"RowHighlight", "CheckHexModeWhenOpen", "FileModifyNotice", "RowHighlightColor"})
        set(key, "purple");
    for (const bool on : {true, false}) {
        options.RowHighlight = options.CheckHexModeWhenOpen = options.FileModifyNotice = on;
        options.RowHighlightColor = on ? 7 : 8;
        const Values values = page.load();
        EXPECT_EQ(values.boxes[Values::RowHighlight], on);
        EXPECT_EQ(values.boxes[Values::CheckHex], on);
        EXPECT_EQ(values.modifyNotice, on);
        EXPECT_EQ(values.highlightColour, on ? 7 : 8);
    }
}

TEST_F(GeneralPage, TakesTheOptionsOfTheRunningProgramForMissingSettings) {
    options.FileModifyNotice = false;
    options.RowHighlightColor = 255;
    const Values values = page.load();
    EXPECT_FALSE(values.modifyNotice);
    EXPECT_EQ(values.highlightColour, 255);
}

TEST_F(GeneralPage, ReadsTheNoticeAndTheColourThatAreStored) {
    set("FileModifyNotice", "False");
    set("RowHighlightColor", "16384");
    const Values values = page.load();
    EXPECT_FALSE(values.modifyNotice);
    EXPECT_EQ(values.highlightColour, 16384);
}

TEST_F(GeneralPage, ReadsTheShortcutsFromTheDesktop) {
    shell.shortcuts = {u"desktop"_qs, u"startup"_qs};
    const Values values = page.load();
    EXPECT_TRUE(values.shortcuts[Values::Desktop]);
    EXPECT_TRUE(values.shortcuts[Values::Startup]);
    EXPECT_FALSE(values.shortcuts[Values::Program]);
}

TEST_F(GeneralPage, ReadsTheContextMenuFromTheOutcomeOfTheLastRegistration) {
    set("ContextMenu", "1");
    EXPECT_FALSE(page.load().contextMenu);
    for (const char* outcome : {"Failed", "Unregistered", "registered"}) {
        set("register_handle", outcome);
        EXPECT_FALSE(page.load().contextMenu) << outcome;
    }
    set("ContextMenu", "0");
    set("register_handle", "Registered");
    EXPECT_TRUE(page.load().contextMenu);
}

TEST_F(GeneralPage, SavesInItsOrder) {
    Values values = page.load();
    values.shortcuts = {true, true, true};
    values.contextMenu = true;
    EXPECT_EQ(saved(values),
              QStringList({u"general/LoadLastFiles=1"_qs, u"general/DocumentWorkingFolder=1"_qs,
                           u"general/StartNewDocument=1"_qs, u"general/ShowFullPath=1"_qs, u"general/UseFileIcon=0"_qs,
                           u"general/LoadLastFolder=0"_qs, u"general/RowHighlight=1"_qs,
                           u"general/CheckHexModeWhenOpen=1"_qs, u"general/ClearRedoAfterSave=0"_qs,
                           u"general/XPSkin=1"_qs, u"manifest 1"_qs, u"general/FileModifyNotice=True"_qs,
                           u"general/RowHighlightColor=15194061"_qs, u"general/LastFolderName="_qs,
                           u"create startup"_qs, u"create desktop"_qs, u"create program"_qs, u"register"_qs}));
}

TEST_F(GeneralPage, WritesEachBoxToItsSetting) {
    for (const BoxCase& each : Boxes) {
        for (const bool on : {true, false}) {
            Values values;
            values.boxes.at(each.box) = on;
            const QString written = u"general/"_qs + QLatin1String(each.key) + (on ? u"=1"_qs : u"=0"_qs);
            EXPECT_TRUE(saved(values).contains(written)) << written.toStdString();
            EXPECT_EQ(calls.filter(u"=1"_qs).size(), on ? 1 : 0);
        }
    }
}

TEST_F(GeneralPage, TheManifestFollowsItsBox) {
    Values values = page.load();
    values.boxes[Values::XPSkin] = false;
    const QStringList done = saved(values);
    EXPECT_EQ(done.indexOf(u"manifest 0"_qs), done.indexOf(u"general/XPSkin=0"_qs) + 1);
}

TEST_F(GeneralPage, WritesTheNoticeAsAWord) {
    Values values = page.load();
    values.modifyNotice = false;
    EXPECT_TRUE(saved(values).contains(u"general/FileModifyNotice=False"_qs));
    EXPECT_FALSE(options.FileModifyNotice);
    values.modifyNotice = true;
    EXPECT_TRUE(saved(values).contains(u"general/FileModifyNotice=True"_qs));
    EXPECT_TRUE(options.FileModifyNotice);
}

TEST_F(GeneralPage, TheOptionsThatFollowAtOnceAndNoOthers) {
    Values values;
    values.boxes.fill(false);
    values.boxes[Values::RowHighlight] = true;
    values.highlightColour = 255;
    page.save(values);
    EXPECT_FALSE(options.CheckHexModeWhenOpen);
    EXPECT_TRUE(options.RowHighlight);
    EXPECT_EQ(options.RowHighlightColor, 255);
    EXPECT_TRUE(options.DocumentWorkingFolder);
    EXPECT_TRUE(options.ShowFullPath);
    values.boxes.fill(true);
    page.save(values);
    EXPECT_TRUE(options.ClearRedoAfterSave);
    EXPECT_TRUE(options.CheckHexModeWhenOpen);
    EXPECT_FALSE(options.UseFileIcon);
    EXPECT_FALSE(options.LoadLastFolder);
}

TEST_F(GeneralPage, TheColourIsWrittenOnlyWhileTheHighlightIsOn) {
    Values values = page.load();
    values.highlightColour = 16384;
    values.boxes[Values::RowHighlight] = false;
    EXPECT_EQ(saved(values).filter(u"RowHighlightColor"_qs), QStringList());
    EXPECT_EQ(options.RowHighlightColor, 15194061);
    EXPECT_FALSE(options.RowHighlight);
    values.boxes[Values::RowHighlight] = true;
    EXPECT_TRUE(saved(values).contains(u"general/RowHighlightColor=16384"_qs));
    EXPECT_EQ(options.RowHighlightColor, 16384);
    EXPECT_TRUE(options.RowHighlight);
}

TEST_F(GeneralPage, ClearingTheLastFolderEmptiesItsName) {
    set("LoadLastFolder", "1");
    set("LastFolderName", "FOLDER/home");
    Values values = page.load();
    EXPECT_EQ(saved(values).filter(u"LastFolderName"_qs), QStringList());
    EXPECT_EQ(settings.PropertyValue(u"LastFolderName"_qs, {}, false), u"FOLDER/home"_qs);
    values.boxes[Values::LoadLastFolder] = false;
    EXPECT_EQ(saved(values).filter(u"LastFolderName"_qs), QStringList(u"general/LastFolderName="_qs));
}

TEST_F(GeneralPage, ChangesOnlyTheShortcutsThatDiffer) {
    shell.shortcuts = {u"desktop"_qs, u"program"_qs};
    Values values = page.load();
    EXPECT_EQ(savedShortcuts(values), QStringList());
    values.shortcuts[Values::Startup] = true;
    values.shortcuts[Values::Desktop] = false;
    EXPECT_EQ(savedShortcuts(values), QStringList({u"create startup"_qs, u"delete desktop"_qs}));
    EXPECT_EQ(shell.shortcuts, QSet<QString>({u"startup"_qs, u"program"_qs}));
    EXPECT_EQ(savedShortcuts(values), QStringList()) << "once only";
}

TEST_F(GeneralPage, RegistersTheContextMenuWhenItsBoxDiffersFromWhatWasLoaded) {
    registrationWrites("Registered");
    Values values = page.load();
    EXPECT_EQ(saved(values).filter(u"register"_qs), QStringList());
    values.contextMenu = true;
    EXPECT_EQ(saved(values).filter(u"register"_qs), QStringList({u"register"_qs, u"register_handle=Registered"_qs}));
    EXPECT_EQ(saved(values).filter(u"register"_qs), QStringList()) << "it is registered now";
    values.contextMenu = false;
    EXPECT_EQ(saved(values).filter(u"register"_qs),
              QStringList({u"unregister"_qs, u"register_handle=Unregistered"_qs}));
    EXPECT_EQ(saved(values).filter(u"ContextMenu"_qs), QStringList()) << "this setting is not written";
}

TEST_F(GeneralPage, AFailedRegistrationIsSeenWhenTheDesktopIsReadAgain) {
    registrationWrites("Failed");
    Values values = page.load();
    values.contextMenu = true;
    page.save(values);
    page.readDesktop(values);
    EXPECT_FALSE(values.contextMenu);
    EXPECT_EQ(saved(values).filter(u"register"_qs), QStringList());
    values.contextMenu = true;
    EXPECT_EQ(saved(values).filter(u"register"_qs).constFirst(), u"register"_qs) << "the user tries again";
}

TEST_F(GeneralPage, AStoreThatRefusesToWriteStillLetsTheOptionsFollow) {
    registry.writeResult = RegistryCode::DiskFull;
    Values values = page.load();
    values.boxes[Values::ClearRedo] = true;
    page.save(values);
    EXPECT_TRUE(options.ClearRedoAfterSave);
    EXPECT_FALSE(page.load().boxes[Values::ClearRedo]);
}
