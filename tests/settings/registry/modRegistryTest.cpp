#include "settings/registry/RegistryData.h"
#include "settings/registry/ScriptedRegistry.h"
#include "settings/registry/modRegistry.h"

#include <gtest/gtest.h>

namespace {

constexpr RegistryRoot Root = HKEY_CURRENT_USER;
const QString Key = QStringLiteral("Software/Quillmark/test");
const QString Name = QStringLiteral("name");

class ModRegistryTest : public testing::Test {
 protected:
    QString read() { return GetRegString(store, Root, Key, Name); }

    ScriptedRegistry store;
};

}  // namespace

TEST_F(ModRegistryTest, AStringIsWrittenWithItsKeyAndRead) {
    EXPECT_TRUE(SetRegString(store, Root, Key, Name, QStringLiteral("Grüße")));
    EXPECT_EQ(read(), QStringLiteral("Grüße"));
    EXPECT_TRUE(SetRegString(store, Root, Key, QString(), QStringLiteral("default")));
    EXPECT_EQ(GetRegString(store, Root, Key, QString()), QStringLiteral("default"));
}

TEST_F(ModRegistryTest, APercentSignMakesNoReference) {
    SetRegString(store, Root, Key, Name, QStringLiteral("%PATH%"));
    RegistryValue value;
    store.readValue(Root, Key, Name, value);
    EXPECT_EQ(value.type, RegistryType::String);
    EXPECT_EQ(read(), QStringLiteral("%PATH%"));
}

TEST_F(ModRegistryTest, WhatIsMissingReadsAsAnEmptyText) {
    EXPECT_EQ(read(), QString());
    store.createKey(Root, Key);
    EXPECT_EQ(read(), QString());
}

TEST_F(ModRegistryTest, AnotherTypeReadsAsAnEmptyText) {
    EXPECT_TRUE(SetRegDword(store, Root, Key, Name, 65));
    EXPECT_EQ(read(), QString());
    for (const qint32 type : {RegistryType::ExpandString, RegistryType::Binary, RegistryType::StringList}) {
        store.writeValue(Root, Key, Name, RegistryData::fromText(QStringLiteral("x"), type));
        EXPECT_EQ(read(), QString()) << type;
    }
}

TEST_F(ModRegistryTest, AStringIsCutAtItsFirstZero) {
    SetRegString(store, Root, Key, Name, QStringLiteral("ab") + QChar(QChar::Null) + QStringLiteral("cd"));
    EXPECT_EQ(read(), QStringLiteral("ab"));
    store.writeValue(Root, Key, Name, {RegistryType::String, QByteArray("a\0b\0", 4)});
    EXPECT_EQ(read(), QStringLiteral("ab"));
    store.writeValue(Root, Key, Name, {RegistryType::String, {}});
    EXPECT_EQ(read(), QString());
}

TEST_F(ModRegistryTest, AnIntegerIsStoredLowestByteFirst) {
    EXPECT_TRUE(SetRegDword(store, Root, Key, Name, -2));
    RegistryValue value;
    store.readValue(Root, Key, Name, value);
    EXPECT_EQ(value, (RegistryValue{RegistryType::Integer, QByteArray("\xFE\xFF\xFF\xFF", 4)}));
}

TEST_F(ModRegistryTest, ReadRegValueSaysWhetherThereIsAString) {
    QString text = QStringLiteral("stale");
    EXPECT_FALSE(ReadRegValue(store, Root, Key, Name, text));
    EXPECT_EQ(text, QString());
    SetRegString(store, Root, Key, Name, QStringLiteral("x"));
    EXPECT_TRUE(ReadRegValue(store, Root, Key, Name, text));
    EXPECT_EQ(text, QStringLiteral("x"));
    SetRegDword(store, Root, Key, Name, 1);
    EXPECT_FALSE(ReadRegValue(store, Root, Key, Name, text));
    EXPECT_EQ(text, QString());
}

TEST_F(ModRegistryTest, WritingAnEmptyTextDeletesTheValue) {
    EXPECT_TRUE(WriteRegValue(store, Root, Key, Name, QStringLiteral("x")));
    EXPECT_EQ(read(), QStringLiteral("x"));
    EXPECT_TRUE(WriteRegValue(store, Root, Key, Name, QString()));
    QStringList names;
    store.valueNames(Root, Key, names);
    EXPECT_TRUE(names.isEmpty());
    EXPECT_FALSE(WriteRegValue(store, Root, Key, Name, QString()));
}

TEST_F(ModRegistryTest, OneKeyIsDeletedOnlyWithoutSubKeys) {
    store.createKey(Root, Key);
    EXPECT_FALSE(DeleteRegKey(store, Root, QStringLiteral("Software/Quillmark")));
    EXPECT_TRUE(DeleteRegKey(store, Root, Key));
    EXPECT_TRUE(DeleteRegKey(store, Root, QStringLiteral("Software/Quillmark")));
    EXPECT_FALSE(DeleteRegKey(store, Root, Key));
}

TEST_F(ModRegistryTest, TheFramesNameForItDeletesOneKeyToo) {
    store.createKey(Root, Key);
    EXPECT_FALSE(DeleteKey(store, Root, QStringLiteral("Software/Quillmark"), QStringLiteral("test")));
    EXPECT_TRUE(DeleteKey(store, Root, Key, QString()));
    EXPECT_EQ(store.openKey(Root, Key), RegistryCode::NotFound);
    EXPECT_FALSE(DeleteKey(store, Root, Key, QString()));
}

TEST_F(ModRegistryTest, ATreeIsDeletedWithEverythingBelow) {
    for (const char* path : {"a/b/c", "a/b/d/e", "a/f", "ab", "A2"}) {
        SetRegString(store, Root, QLatin1String(path), Name, QStringLiteral("x"));
    }
    EXPECT_TRUE(DeleteRegTree(store, Root, QStringLiteral("A")));
    QStringList names;
    store.subKeys(Root, QString(), names);
    EXPECT_EQ(names, (QStringList{QStringLiteral("A2"), QStringLiteral("ab")}));
    EXPECT_EQ(store.openKey(Root, QStringLiteral("a/b/d/e")), RegistryCode::NotFound);
}

TEST_F(ModRegistryTest, AMissingTreeIsNotDeletedAndNothingChanges) {
    SetRegString(store, Root, Key, Name, QStringLiteral("x"));
    EXPECT_FALSE(DeleteRegTree(store, Root, QStringLiteral("Software/None")));
    EXPECT_EQ(read(), QStringLiteral("x"));
}

TEST_F(ModRegistryTest, ATreeWithAKeyThatStaysKeepsWhatIsAboveAndBehindIt) {
    for (const char* path : {"t/a", "t/b/deep", "t/c"}) {
        store.createKey(Root, QLatin1String(path));
    }
    store.undeletable = QStringLiteral("t/b/deep");
    EXPECT_FALSE(DeleteRegTree(store, Root, QStringLiteral("t")));
    QStringList names;
    store.subKeys(Root, QStringLiteral("t"), names);
    EXPECT_EQ(names, (QStringList{QStringLiteral("b"), QStringLiteral("c")}));
}

TEST_F(ModRegistryTest, SectionsOfTheProgramsOwnKeyAreListed) {
    QStringList names{QStringLiteral("stale")};
    EXPECT_FALSE(EnumRegSections(store, QStringLiteral("FilenameFilters"), names));
    EXPECT_TRUE(names.isEmpty());
    for (const char* name : {"003", "001", "002"}) {
        store.createKey(Root, QStringLiteral("Software/Quillmark/FilenameFilters/") + QLatin1String(name));
    }
    EXPECT_TRUE(EnumRegSections(store, QStringLiteral("FilenameFilters"), names));
    EXPECT_EQ(names, (QStringList{QStringLiteral("001"), QStringLiteral("002"), QStringLiteral("003")}));
}

TEST_F(ModRegistryTest, TheListOfSectionsHasRoomForOneCharacterMore) {
    const QString fits(255, u'a');
    store.createKey(Root, QStringLiteral("Software/Quillmark/s/") + fits);
    store.createKey(Root, QStringLiteral("Software/Quillmark/s/") + QString(256, u'b'));
    store.createKey(Root, QStringLiteral("Software/Quillmark/s/c"));
    QStringList names;
    EnumRegSections(store, QStringLiteral("s"), names);
    EXPECT_EQ(names, QStringList{fits});
}

TEST_F(ModRegistryTest, FailuresAreSilentAndFalse) {
    store.writeResult = RegistryCode::AccessDenied;
    EXPECT_FALSE(SetRegString(store, Root, Key, Name, QStringLiteral("x")));
    EXPECT_FALSE(SetRegDword(store, Root, Key, Name, 1));
    EXPECT_FALSE(WriteRegValue(store, Root, Key, Name, QStringLiteral("x")));
    EXPECT_FALSE(DeleteRegValue(store, Root, Key, Name));
    EXPECT_FALSE(SetRegString(store, 5, Key, Name, QStringLiteral("x")));
}
