#include "settings/registry/RegistryData.h"
#include "settings/registry/ScriptedRegistry.h"
#include "settings/registry/modRegistry.h"

#include <gtest/gtest.h>

namespace {

constexpr RegistryRoot Root = HKEY_CURRENT_USER;
const QString Key = u"Software/Quillmark/test"_qs;
const QString Name = u"name"_qs;

class RegistryProcedures : public testing::Test {
 protected:
    QString read() { return GetRegString(store, Root, Key, Name); }

    ScriptedRegistry store;
};

}  // namespace

TEST_F(RegistryProcedures, AStringIsWrittenWithItsKeyAndRead) {
    EXPECT_TRUE(SetRegString(store, Root, Key, Name, u"Grüße"_qs));
    EXPECT_EQ(read(), u"Grüße"_qs);
    EXPECT_TRUE(SetRegString(store, Root, Key, QString(), u"default"_qs));
    EXPECT_EQ(GetRegString(store, Root, Key, QString()), u"default"_qs);
}

TEST_F(RegistryProcedures, APercentSignMakesNoReference) {
    SetRegString(store, Root, Key, Name, u"%PATH%"_qs);
    RegistryValue value;
    store.readValue(Root, Key, Name, value);
    EXPECT_EQ(value.type, RegistryType::String);
    EXPECT_EQ(read(), u"%PATH%"_qs);
}

TEST_F(RegistryProcedures, WhatIsMissingReadsAsAnEmptyText) {
    EXPECT_EQ(read(), QString());
    store.createKey(Root, Key);
    EXPECT_EQ(read(), QString());
}

TEST_F(RegistryProcedures, AnotherTypeReadsAsAnEmptyText) {
    EXPECT_TRUE(SetRegDword(store, Root, Key, Name, 65));
    EXPECT_EQ(read(), QString());
    for (const qint32 type : {RegistryType::ExpandString, RegistryType::Binary, RegistryType::StringList}) {
        store.writeValue(Root, Key, Name, RegistryData::fromText(u"x"_qs, type));
        EXPECT_EQ(read(), QString()) << type;
    }
}

TEST_F(RegistryProcedures, AStringIsCutAtItsFirstZero) {
    SetRegString(store, Root, Key, Name, u"ab"_qs + QChar(QChar::Null) + u"cd"_qs);
    EXPECT_EQ(read(), u"ab"_qs);
    store.writeValue(Root, Key, Name, {RegistryType::String, QByteArray("a\0b\0", 4)});
    EXPECT_EQ(read(), u"ab"_qs);
    store.writeValue(Root, Key, Name, {RegistryType::String, {}});
    EXPECT_EQ(read(), QString());
}

TEST_F(RegistryProcedures, AnIntegerIsStoredLowestByteFirst) {
    EXPECT_TRUE(SetRegDword(store, Root, Key, Name, -2));
    RegistryValue value;
    store.readValue(Root, Key, Name, value);
    EXPECT_EQ(value, (RegistryValue{RegistryType::Integer, QByteArray("\xFE\xFF\xFF\xFF", 4)}));
}

TEST_F(RegistryProcedures, ReadRegValueSaysWhetherThereIsAString) {
    QString text = u"stale"_qs;
    EXPECT_FALSE(ReadRegValue(store, Root, Key, Name, text));
    EXPECT_EQ(text, QString());
    SetRegString(store, Root, Key, Name, u"x"_qs);
    EXPECT_TRUE(ReadRegValue(store, Root, Key, Name, text));
    EXPECT_EQ(text, u"x"_qs);
    SetRegDword(store, Root, Key, Name, 1);
    EXPECT_FALSE(ReadRegValue(store, Root, Key, Name, text));
    EXPECT_EQ(text, QString());
}

TEST_F(RegistryProcedures, WritingAnEmptyTextDeletesTheValue) {
    EXPECT_TRUE(WriteRegValue(store, Root, Key, Name, u"x"_qs));
    EXPECT_EQ(read(), u"x"_qs);
    EXPECT_TRUE(WriteRegValue(store, Root, Key, Name, QString()));
    QStringList names;
    store.valueNames(Root, Key, names);
    EXPECT_TRUE(names.isEmpty());
    EXPECT_FALSE(WriteRegValue(store, Root, Key, Name, QString()));
}

TEST_F(RegistryProcedures, OneKeyIsDeletedOnlyWithoutSubKeys) {
    store.createKey(Root, Key);
    EXPECT_FALSE(DeleteRegKey(store, Root, u"Software/Quillmark"_qs));
    EXPECT_TRUE(DeleteRegKey(store, Root, Key));
    EXPECT_TRUE(DeleteRegKey(store, Root, u"Software/Quillmark"_qs));
    EXPECT_FALSE(DeleteRegKey(store, Root, Key));
}

TEST_F(RegistryProcedures, TheFramesNameForItDeletesOneKeyToo) {
    store.createKey(Root, Key);
    EXPECT_FALSE(DeleteKey(store, Root, u"Software/Quillmark"_qs, u"test"_qs));
    EXPECT_TRUE(DeleteKey(store, Root, Key, QString()));
    EXPECT_EQ(store.openKey(Root, Key), RegistryCode::NotFound);
    EXPECT_FALSE(DeleteKey(store, Root, Key, QString()));
}

TEST_F(RegistryProcedures, ATreeIsDeletedWithEverythingBelow) {
    for (const char* path : {"a/b/c", "a/b/d/e", "a/f", "ab", "A2"})
        SetRegString(store, Root, QLatin1String(path), Name, u"x"_qs);
    EXPECT_TRUE(DeleteRegTree(store, Root, u"A"_qs));
    QStringList names;
    store.subKeys(Root, QString(), names);
    EXPECT_EQ(names, (QStringList{u"A2"_qs, u"ab"_qs}));
    EXPECT_EQ(store.openKey(Root, u"a/b/d/e"_qs), RegistryCode::NotFound);
}

TEST_F(RegistryProcedures, AMissingTreeIsNotDeletedAndNothingChanges) {
    SetRegString(store, Root, Key, Name, u"x"_qs);
    EXPECT_FALSE(DeleteRegTree(store, Root, u"Software/None"_qs));
    EXPECT_EQ(read(), u"x"_qs);
}

TEST_F(RegistryProcedures, ATreeWithAKeyThatStaysKeepsWhatIsAboveAndBehindIt) {
    for (const char* path : {"t/a", "t/b/deep", "t/c"})
        store.createKey(Root, QLatin1String(path));
    store.undeletable = u"t/b/deep"_qs;
    EXPECT_FALSE(DeleteRegTree(store, Root, u"t"_qs));
    QStringList names;
    store.subKeys(Root, u"t"_qs, names);
    EXPECT_EQ(names, (QStringList{u"b"_qs, u"c"_qs}));
}

TEST_F(RegistryProcedures, SectionsOfTheProgramsOwnKeyAreListed) {
    QStringList names{u"stale"_qs};
    EXPECT_FALSE(EnumRegSections(store, u"FilenameFilters"_qs, names));
    EXPECT_TRUE(names.isEmpty());
    for (const char* name : {"003", "001", "002"})
        store.createKey(Root, u"Software/Quillmark/FilenameFilters/"_qs + QLatin1String(name));
    EXPECT_TRUE(EnumRegSections(store, u"FilenameFilters"_qs, names));
    EXPECT_EQ(names, (QStringList{u"001"_qs, u"002"_qs, u"003"_qs}));
}

TEST_F(RegistryProcedures, TheListOfSectionsHasRoomForOneCharacterMore) {
    const QString fits(255, u'a');
    store.createKey(Root, u"Software/Quillmark/s/"_qs + fits);
    store.createKey(Root, u"Software/Quillmark/s/"_qs + QString(256, u'b'));
    store.createKey(Root, u"Software/Quillmark/s/c"_qs);
    QStringList names;
    EnumRegSections(store, u"s"_qs, names);
    EXPECT_EQ(names, QStringList{fits});
}

TEST_F(RegistryProcedures, FailuresAreSilentAndFalse) {
    store.writeResult = RegistryCode::AccessDenied;
    EXPECT_FALSE(SetRegString(store, Root, Key, Name, u"x"_qs));
    EXPECT_FALSE(SetRegDword(store, Root, Key, Name, 1));
    EXPECT_FALSE(WriteRegValue(store, Root, Key, Name, u"x"_qs));
    EXPECT_FALSE(DeleteRegValue(store, Root, Key, Name));
    EXPECT_FALSE(SetRegString(store, 5, Key, Name, u"x"_qs));
}
