#include "settings/Settings.h"
#include "settings/registry/MemoryRegistry.h"
#include "settings/registry/SqliteRegistry.h"
#include "settings/registry/modRegistry.h"

#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

class StoredSettings : public testing::Test {
 protected:
    QString stored(const char* section, const QString& key) {
        const QString path = u"Software/Quillmark"_qs + QLatin1String(section);
        return GetRegString(store, HKEY_CURRENT_USER, path, key);
    }
    QString read(const char* key, const char* fallback) {
        return settings.PropertyValue(QLatin1String(key), QLatin1String(fallback), false);
    }
    /// The section that a key is written to: empty for the program's own key.
    QString sectionOf(const QString& key) {
        settings.PropertyValue(key, u"routed"_qs, true);
        for (const char* section : {"/general", "/editor", "/search", "/macro", ""}) {
            if (stored(section, key) == QLatin1String("routed"))
                return QLatin1String(section);
        }
        return u"nowhere"_qs;
    }

    MemoryRegistry store;
    Settings settings{store};
};

}  // namespace

TEST_F(StoredSettings, EveryKeyGoesToItsSection) {
    for (const char* key : {"LoadLastFiles", "DocumentWorkingFolder", "StartNewDocument", "ShowFullPath", "UseFileIcon",
                            "LoadLastFolder", "LastFolderName", "ContextMenu", "RowHighlight", "RowHighlightColor",
                            "FileModifyNotice", "CheckHexModeWhenOpen", "ClearRedoAfterSave", "XPSkin"}) {
        EXPECT_EQ(sectionOf(QLatin1String(key)), u"/general"_qs) << key;
    }
    for (const char* key : {"FontName", "FontSize", "BackColor"}) {
        EXPECT_EQ(sectionOf(QLatin1String(key)), u"/editor"_qs) << key;
    }
    for (const char* key : {"ToolbarCase", "ToolbarRegExp", "ContinueSearch", "ToolbarWholeWord"}) {
        EXPECT_EQ(sectionOf(QLatin1String(key)), u"/search"_qs) << key;
    }
    for (int n = 1; n <= 10; ++n) {
        EXPECT_EQ(sectionOf(u"%1Display"_qs.arg(n)), u"/macro"_qs) << n;
        EXPECT_EQ(sectionOf(u"%1Desc"_qs.arg(n)), u"/macro"_qs) << n;
    }
    EXPECT_EQ(Settings::table().size(), 14U + 3U + 4U + 20U);
}

TEST_F(StoredSettings, AnyOtherKeyGoesToTheProgramsOwn) {
    for (const char* key : {"Display", "Desc", "0Display", "11Display", "01Display", "1display", "loadlastfiles",
                            "FONTNAME", "fontname", "path", "register_handle", "ToolbarCase ", ""}) {
        EXPECT_EQ(sectionOf(QLatin1String(key)), QString()) << key;
    }
}

TEST_F(StoredSettings, AReadGivesWhatIsStoredOrElseTheCallersText) {
    EXPECT_EQ(read("ShowFullPath", "fallback"), u"fallback"_qs);
    EXPECT_EQ(settings.PropertyValue(u"ShowFullPath"_qs, u"0"_qs, true), QString());
    EXPECT_EQ(read("ShowFullPath", "fallback"), u"0"_qs);
    EXPECT_EQ(stored("/general", u"ShowFullPath"_qs), u"0"_qs);
}

TEST_F(StoredSettings, AnEmptyStoredTextReadsAsTheDefault) {
    for (const char* key : {"LastFolderName", "FontName"}) {
        settings.PropertyValue(QLatin1String(key), u"x"_qs, true);
        settings.PropertyValue(QLatin1String(key), QString(), true);
        EXPECT_EQ(read(key, "fallback"), u"fallback"_qs);
    }
    QStringList names;
    store.valueNames(HKEY_CURRENT_USER, u"Software/Quillmark/editor"_qs, names);
    EXPECT_EQ(names, QStringList{u"FontName"_qs}) << "it is stored, and empty";
}

TEST_F(StoredSettings, AValueOfAnotherTypeReadsAsTheDefault) {
    SetRegDword(store, HKEY_CURRENT_USER, u"Software/Quillmark/general"_qs, u"ShowFullPath"_qs, 0);
    EXPECT_EQ(read("ShowFullPath", "1"), u"1"_qs);
}

TEST_F(StoredSettings, EverySettingIsAString) {
    settings.write(u"RowHighlightColor"_qs, u"255"_qs);
    RegistryValue value;
    store.readValue(HKEY_CURRENT_USER, u"Software/Quillmark/general"_qs, u"RowHighlightColor"_qs, value);
    EXPECT_EQ(value.type, RegistryType::String);
}

TEST_F(StoredSettings, DefaultsAreThoseOfTheTable) {
    const std::pair<const char*, const char*> defaults[] = {
        {"LoadLastFiles", "0"},
        {"DocumentWorkingFolder", "1"},
        {"StartNewDocument", "1"},
        {"ShowFullPath", "1"},
        {"UseFileIcon", "0"},
        {"LoadLastFolder", "0"},
        {"LastFolderName", ""},
        {"ContextMenu", "1"},
        {"RowHighlight", "1"},
        {"RowHighlightColor", "15194061"},
        {"FileModifyNotice", "True"},
        {"CheckHexModeWhenOpen", "1"},
        {"ClearRedoAfterSave", "0"},
        {"XPSkin", "1"},
        {"ToolbarCase", "0"},
        {"ToolbarRegExp", "0"},
        {"ToolbarWholeWord", "0"},
        {"ContinueSearch", "1"},
        {"1Display", "0"},
        {"10Display", "0"},
        {"1Desc", ""},
        {"10Desc", ""},
        {"FontName", ""},
        {"unknown", ""},
    };
    for (const auto& [key, text] : defaults) {
        EXPECT_EQ(settings.forFrame(QLatin1String(key)), QLatin1String(text)) << key;
        const bool differs = qstrcmp(key, "LoadLastFiles") == 0 || qstrcmp(key, "ToolbarWholeWord") == 0;
        EXPECT_EQ(settings.forDialog(QLatin1String(key)), differs ? QLatin1String("1") : QLatin1String(text)) << key;
    }
}

TEST_F(StoredSettings, WhatIsStoredIsTheSameForFrameAndDialog) {
    for (const char* key : {"LoadLastFiles", "ToolbarWholeWord"}) {
        for (const char* text : {"0", "1"}) {
            settings.write(QLatin1String(key), QLatin1String(text));
            EXPECT_EQ(settings.forFrame(QLatin1String(key)), QLatin1String(text));
            EXPECT_EQ(settings.forDialog(QLatin1String(key)), QLatin1String(text));
        }
    }
}

TEST_F(StoredSettings, TheTwoQuestionsOfTheStartAreOnByTheTextOneAlone) {
    EXPECT_TRUE(settings.StartNewDocument());
    EXPECT_FALSE(settings.LoadLastFiles());
    const std::pair<const char*, bool> cases[] = {
        {"1", true}, {"0", false}, {"True", false}, {"1.0", false}, {" 1", false}};
    for (const auto& [text, on] : cases) {
        settings.write(u"StartNewDocument"_qs, QLatin1String(text));
        settings.write(u"LoadLastFiles"_qs, QLatin1String(text));
        EXPECT_EQ(settings.StartNewDocument(), on) << text;
        EXPECT_EQ(settings.LoadLastFiles(), on) << text;
    }
}

TEST_F(StoredSettings, ReadingEverythingWritesNothing) {
    const QTemporaryDir home;
    SqliteRegistry file(home.filePath(u"quillmark/registry.db"_qs));
    Settings onFile(file);
    for (const SettingRow& row : Settings::table()) {
        onFile.forFrame(QLatin1String(row.key));
        onFile.forDialog(QLatin1String(row.key));
    }
    onFile.StartNewDocument();
    onFile.LoadLastFiles();
    EXPECT_TRUE(QDir(home.path()).isEmpty());
}
