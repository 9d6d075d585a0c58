#include "settings/Options.h"
#include "settings/SettingText.h"
#include "settings/Settings.h"
#include "settings/registry/MemoryRegistry.h"

#include <gtest/gtest.h>

namespace {

class OptionReading : public testing::Test {
 protected:
    OptionReading() {
        options.FontName = u"Fresh Mono"_qs;
        options.FontSize = 11;
    }
    void put(const char* key, const char* text) { settings.write(QLatin1String(key), QString::fromUtf8(text)); }
    void load() {
        loadFirstOptions(settings, options);
        LoadOptions(settings, options);
    }
    /// The value of a member after its key held the text, from either state before.
    bool becomes(const char* key, const char* text, bool Options::*member) {
        put(key, text);
        options.*member = !(options.*member);
        load();
        return options.*member;
    }

    MemoryRegistry store;
    Settings settings{store};
    Options options;
};

constexpr struct {
    const char* key;
    bool Options::*member;
    bool initially;
} ComparedWithOne[] = {
    {"ClearRedoAfterSave", &Options::ClearRedoAfterSave, false},
    {"ToolbarWholeWord", &Options::WholeWord, false},
    {"ToolbarRegExp", &Options::RegExpOn, false},
    {"ToolbarCase", &Options::CaseSensitiveOn, false},
    {"ContinueSearch", &Options::ContinueSearch, true},
    {"LoadLastFolder", &Options::LoadLastFolder, false},
    {"DocumentWorkingFolder", &Options::DocumentWorkingFolder, true},
    {"ShowFullPath", &Options::ShowFullPath, true},
    {"UseFileIcon", &Options::UseFileIcon, false},
};

}  // namespace

TEST_F(OptionReading, AFirstStartRunsOnTheDefaultsAndLeavesTheStoreEmpty) {
    load();
    EXPECT_EQ(options.FontName, u"Fresh Mono"_qs);
    EXPECT_EQ(options.FontSize, 11);
    EXPECT_TRUE(options.FileModifyNotice);
    EXPECT_TRUE(options.CheckHexModeWhenOpen);
    EXPECT_TRUE(options.RowHighlight);
    EXPECT_EQ(options.RowHighlightColor, 15194061);
    for (const auto& row : ComparedWithOne) {
        EXPECT_EQ(options.*row.member, row.initially) << row.key;
    }
    QStringList names;
    store.subKeys(HKEY_CURRENT_USER, QString(), names);
    EXPECT_TRUE(names.isEmpty());
}

TEST_F(OptionReading, SwitchesAreOnByTheTextOneAlone) {
    for (const auto& row : ComparedWithOne) {
        EXPECT_TRUE(becomes(row.key, "1", row.member)) << row.key;
        for (const char* text : {"0", "True", "1.0", " 1", "on", "-1"}) {
            EXPECT_FALSE(becomes(row.key, text, row.member)) << row.key << " " << text;
        }
    }
}

TEST_F(OptionReading, RowHighlightIsANumberComparedWithOne) {
    for (const char* text : {"1", "1.0", " 1 ", "1e0", "+1", "&H1"}) {
        EXPECT_TRUE(becomes("RowHighlight", text, &Options::RowHighlight)) << text;
    }
    for (const char* text : {"0", "2", "-1", "0.5", "1.1"}) {
        EXPECT_FALSE(becomes("RowHighlight", text, &Options::RowHighlight)) << text;
    }
}

TEST_F(OptionReading, TwoSettingsAreBooleans) {
    const std::pair<const char*, bool Options::*> settingsOfKind[] = {
        {"FileModifyNotice", &Options::FileModifyNotice}, {"CheckHexModeWhenOpen", &Options::CheckHexModeWhenOpen}};
    for (const auto& [key, member] : settingsOfKind) {
        for (const char* text : {"True", "true", "TRUE", "1", "-1", "2", "0.5"}) {
            EXPECT_TRUE(becomes(key, text, member)) << text;
        }
        for (const char* text : {"False", "fALSE", "0", "0.0"}) {
            EXPECT_FALSE(becomes(key, text, member)) << text;
        }
    }
}

TEST_F(OptionReading, FontAndColourAreTaken) {
    put("FontName", "Größe Mono");
    put("FontSize", "14");
    put("RowHighlightColor", "255");
    load();
    EXPECT_EQ(options.FontName, u"Größe Mono"_qs);
    EXPECT_EQ(options.FontSize, 14);
    EXPECT_EQ(options.RowHighlightColor, 255);
}

TEST_F(OptionReading, InTheFirstGroupATextWithoutMeaningLeavesItsOwnVariableAlone) {
    put("FontSize", "large");
    put("FileModifyNotice", "perhaps");
    put("CheckHexModeWhenOpen", "never");
    put("ClearRedoAfterSave", "1");
    put("ContinueSearch", "0");
    loadFirstOptions(settings, options);
    EXPECT_EQ(options.FontSize, 11);
    EXPECT_TRUE(options.FileModifyNotice);
    EXPECT_TRUE(options.CheckHexModeWhenOpen);
    EXPECT_TRUE(options.ClearRedoAfterSave);
    EXPECT_FALSE(options.ContinueSearch);
}

TEST_F(OptionReading, AFontSizeOutOfRangeKeepsTheDefault) {
    for (const char* text : {"32768", "-32769", "1e9", "0", "0.4", "-1"}) {
        put("FontSize", text);
        loadFirstOptions(settings, options);
        EXPECT_EQ(options.FontSize, 11) << text;
    }
}

TEST_F(OptionReading, InTheSecondGroupATextWithoutMeaningEndsTheReading) {
    put("UseFileIcon", "1");
    put("RowHighlightColor", "blue");
    put("RowHighlight", "0");
    LoadOptions(settings, options);
    EXPECT_TRUE(options.UseFileIcon) << "it comes before";
    EXPECT_EQ(options.RowHighlightColor, 15194061);
    EXPECT_TRUE(options.RowHighlight) << "it comes behind";
}

TEST_F(OptionReading, ARowHighlightWithoutMeaningKeepsItsDefaultAndTheColourIsTaken) {
    put("RowHighlightColor", "16384");
    put("RowHighlight", "yes");
    LoadOptions(settings, options);
    EXPECT_EQ(options.RowHighlightColor, 16384);
    EXPECT_TRUE(options.RowHighlight);
}

TEST_F(OptionReading, EachGroupReadsItsOwnKeysOnly) {
    put("ContinueSearch", "0");
    put("ShowFullPath", "0");
    loadFirstOptions(settings, options);
    EXPECT_FALSE(options.ContinueSearch);
    EXPECT_TRUE(options.ShowFullPath);
    options.ContinueSearch = true;
    LoadOptions(settings, options);
    EXPECT_TRUE(options.ContinueSearch);
    EXPECT_FALSE(options.ShowFullPath);
}

TEST(SettingText, ReadsNumbersWhateverTheLocale) {
    EXPECT_EQ(SettingText::toNumber(u" -2.5e1 "_qs), -25);
    EXPECT_EQ(SettingText::toNumber(u"&hFF"_qs), 255);
    EXPECT_EQ(SettingText::toNumber(u"&HFFFFFFFF"_qs), -1);
    for (const char* text : {"", " ", "one", "1,5", "1 2", "nan", "inf", "&H", "&H-1", "&HG", "0x10", "1e999"}) {
        EXPECT_FALSE(SettingText::toNumber(QLatin1String(text))) << text;
    }
}

TEST(SettingText, RoundsToTheNearestIntegerInRange) {
    EXPECT_EQ(SettingText::toShort(u"9.75"_qs), 10);
    EXPECT_EQ(SettingText::toShort(u"12.5"_qs), 12);
    EXPECT_EQ(SettingText::toShort(u"13.5"_qs), 14);
    EXPECT_EQ(SettingText::toShort(u"32767"_qs), 32767);
    EXPECT_EQ(SettingText::toShort(u"-32768"_qs), -32768);
    EXPECT_FALSE(SettingText::toShort(u"32767.5"_qs));
    EXPECT_EQ(SettingText::toLong(u"2147483647"_qs), 2147483647);
    EXPECT_EQ(SettingText::toLong(u"-2147483648"_qs), -2147483647 - 1);
    EXPECT_FALSE(SettingText::toLong(u"2147483648"_qs));
    EXPECT_FALSE(SettingText::toLong(QString()));
}

TEST(SettingText, ReadsBooleansAsWordsAndNumbers) {
    EXPECT_EQ(SettingText::toBoolean(u" true "_qs), true);
    EXPECT_EQ(SettingText::toBoolean(u"FALSE"_qs), false);
    for (const char* text : {"", "yes", "on", "t", "truely"}) {
        EXPECT_FALSE(SettingText::toBoolean(QLatin1String(text)).has_value()) << text;
    }
}
