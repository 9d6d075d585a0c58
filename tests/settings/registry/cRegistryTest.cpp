#include "settings/registry/RegistryData.h"
#include "settings/registry/ScriptedRegistry.h"
#include "settings/registry/cRegistry.h"
#include "settings/registry/modRegistry.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

const QString Section = u"Software/Quillmark/test"_qs;
const QString Name = u"name"_qs;

class RegistryAccess : public testing::Test {
 protected:
    RegistryAccess() {
        registry.SectionKey = Section;
        registry.ValueKey = Name;
        registry.Default = u"default"_qs;
    }

    void put(qint32 type, const QByteArray& data) { store.writeValue(HKEY_CURRENT_USER, Section, Name, {type, data}); }
    RegistryValue stored() {
        RegistryValue value{-99, {}};
        store.readValue(HKEY_CURRENT_USER, Section, Name, value);
        return value;
    }
    /// Writes the text as a string, and returns the type of the stored value.
    qint32 typeOf(const QString& text) {
        EXPECT_TRUE(registry.setValue(text));
        return stored().type;
    }
    void expectRaised(const QString& description) {
        EXPECT_EQ(registry.lastError().number, 26001);
        EXPECT_EQ(registry.lastError().source, u"Quillmark.cRegistry"_qs);
        EXPECT_EQ(registry.lastError().description, description);
    }

    ScriptedRegistry store;
    cRegistry registry{store};
};

}  // namespace

TEST_F(RegistryAccess, TheRootsAreTheirSignedHandles) {
    EXPECT_EQ(HKEY_CLASSES_ROOT, -2147483647 - 1);
    EXPECT_EQ(HKEY_CURRENT_USER, -2147483647);
    EXPECT_EQ(HKEY_LOCAL_MACHINE, -2147483646);
}

TEST_F(RegistryAccess, AKeyExistsOnceItIsCreatedAndNoMoreOnceDeleted) {
    EXPECT_FALSE(registry.KeyExists());
    EXPECT_TRUE(registry.CreateKey());
    EXPECT_TRUE(registry.KeyExists());
    EXPECT_TRUE(registry.DeleteKey());
    EXPECT_FALSE(registry.KeyExists());
    EXPECT_EQ(registry.lastError().number, 0);
}

TEST_F(RegistryAccess, AKeyThatCannotBeCreatedRaises) {
    store.createResult = RegistryCode::AccessDenied;
    EXPECT_FALSE(registry.CreateKey());
    expectRaised(u"Failed to create registry Key: 'Software/Quillmark/test"_qs);
}

TEST_F(RegistryAccess, AKeyThatCannotBeDeletedRaises) {
    EXPECT_FALSE(registry.DeleteKey());
    expectRaised(u"Failed to delete registry Key: '-2147483647',Section: 'Software/Quillmark/test"_qs);
    registry.ClassKey = HKEY_CLASSES_ROOT;
    registry.SectionKey = u"a"_qs;
    store.createKey(HKEY_CLASSES_ROOT, u"a/b"_qs);
    EXPECT_FALSE(registry.DeleteKey());
    expectRaised(u"Failed to delete registry Key: '-2147483648',Section: 'a"_qs);
}

TEST_F(RegistryAccess, DeletingAValueRaisesOnlyWithoutTheKey) {
    EXPECT_FALSE(registry.DeleteValue());
    expectRaised(u"Failed to open key '-2147483647',Section: 'Software/Quillmark/test' for delete access"_qs);
    registry.CreateKey();
    EXPECT_FALSE(registry.DeleteValue());
    EXPECT_EQ(registry.lastError().number, 0);
    registry.setValue(u"x"_qs);
    EXPECT_TRUE(registry.DeleteValue());
    EXPECT_EQ(registry.Value(), QVariant(u"default"_qs));
}

TEST_F(RegistryAccess, TheNextOperationForgetsTheErrorBefore) {
    registry.DeleteKey();
    registry.KeyExists();
    EXPECT_EQ(registry.lastError().number, 0);
    EXPECT_TRUE(registry.lastError().description.isEmpty());
}

TEST_F(RegistryAccess, AMissingValueReadsAsTheDefaultOfWhateverType) {
    for (const QVariant& value :
         {QVariant(u"text"_qs), QVariant(42), QVariant(QByteArray("bytes")), QVariant(), QVariant(true)}) {
        registry.Default = value;
        EXPECT_EQ(registry.Value(), value);
    }
    registry.CreateKey();
    registry.Default = 7;
    registry.ValueType = RegistryType::Binary;
    EXPECT_EQ(registry.Value(), QVariant(7));
    EXPECT_EQ(registry.ValueType, RegistryType::Binary);
}

TEST_F(RegistryAccess, OnlyMoreDataIsNoFailureOfAQuery) {
    put(RegistryType::Integer, QByteArray("\x2A\0\0\0", 4));
    store.readResult = RegistryCode::MoreData;
    EXPECT_EQ(registry.Value(), QVariant(42));
    store.readResult = RegistryCode::AccessDenied;
    EXPECT_EQ(registry.Value(), QVariant(u"default"_qs));
}

TEST_F(RegistryAccess, ARereadStringIsTheOneWritten) {
    for (const QString& text :
         {QString(), u"x"_qs, u"Grüße, 世界 😀"_qs, u"a\0b"_qs.append(QChar(QChar::Null)), u"l1\r\nl2"_qs}) {
        EXPECT_TRUE(registry.setValue(text));
        EXPECT_EQ(registry.Value(), QVariant(text));
        EXPECT_EQ(registry.ValueType, RegistryType::String);
        EXPECT_EQ(stored(), RegistryData::fromText(text));
    }
}

TEST_F(RegistryAccess, AStringOfNoBytesAndOneOfItsZeroReadAsAnEmptyText) {
    put(RegistryType::String, {});
    EXPECT_EQ(registry.Value(), QVariant(QString()));
    put(RegistryType::String, QByteArray(2, '\0'));
    EXPECT_EQ(registry.Value(), QVariant(QString()));
}

TEST_F(RegistryAccess, AStringWithoutItsZeroLosesItsLastCharacter) {
    put(RegistryType::String, QByteArray("a\0b\0", 4));
    EXPECT_EQ(registry.Value(), QVariant(u"a"_qs));
}

TEST_F(RegistryAccess, AListReadsAsOneTextWithItsZeros) {
    const RegistryValue list = RegistryData::fromTexts({u"a"_qs, u"bc"_qs});
    store.writeValue(HKEY_CURRENT_USER, Section, Name, list);
    const QString zero(1, QChar::Null);
    EXPECT_EQ(registry.Value(), QVariant(u"a"_qs + zero + u"bc"_qs + zero));
    EXPECT_EQ(registry.ValueType, RegistryType::StringList);
}

TEST_F(RegistryAccess, ReferencesToTheEnvironmentAreExpandedAndUnknownOnesStay) {
    qputenv("QM_ONE", "first");
    qputenv("QM_EMPTY", "");
    qunsetenv("QM_NONE");
    const std::pair<const char*, const char*> cases[] = {
        {"%QM_ONE%", "first"},
        {"a%QM_ONE%b%QM_ONE%c", "afirstbfirstc"},
        {"%QM_NONE%", "%QM_NONE%"},
        {"%QM_NONE%QM_ONE%", "%QM_NONEfirst"},
        {"100%%QM_ONE%", "100%first"},
        {"%QM_EMPTY%x", "x"},
        {"%%x%", "%%x%"},
        {"one % only", "one % only"},
        {"", ""},
    };
    for (const auto& [text, expanded] : cases) {
        store.writeValue(HKEY_CURRENT_USER, Section, Name,
                         RegistryData::fromText(QLatin1String(text), RegistryType::ExpandString));
        EXPECT_EQ(registry.Value(), QVariant(QString(QLatin1String(expanded)))) << text;
        EXPECT_EQ(registry.ValueType, RegistryType::ExpandString);
    }
}

TEST_F(RegistryAccess, AStringTypeOneIsNotExpanded) {
    qputenv("QM_ONE", "first");
    store.writeValue(HKEY_CURRENT_USER, Section, Name, RegistryData::fromText(u"%QM_ONE%"_qs));
    EXPECT_EQ(registry.Value(), QVariant(u"%QM_ONE%"_qs));
}

TEST_F(RegistryAccess, IntegersAreReadInTheByteOrderOfTheirType) {
    put(RegistryType::Integer, QByteArray("\x01\x02\x03\x84", 4));
    EXPECT_EQ(registry.Value(), QVariant(static_cast<qint32>(0x84030201)));
    EXPECT_EQ(registry.Value().typeId(), QMetaType::Int);
    put(RegistryType::IntegerBigEndian, QByteArray("\x01\x02\x03\x84", 4));
    EXPECT_EQ(registry.Value(), QVariant(0x01020384));
    EXPECT_EQ(registry.ValueType, RegistryType::IntegerBigEndian);
    put(RegistryType::Integer, QByteArray("\x07", 1));
    EXPECT_EQ(registry.Value(), QVariant(7));
}

TEST_F(RegistryAccess, EveryOtherTypeReadsAsItsBytes) {
    for (const qint32 type : {0, 3, 6, 8, 11, 99}) {
        put(type, QByteArray("\0\x01\xFF", 3));
        EXPECT_EQ(registry.Value(), QVariant(QByteArray("\0\x01\xFF", 3)));
        EXPECT_EQ(registry.ValueType, type);
    }
    put(RegistryType::Binary, {});
    EXPECT_EQ(registry.Value().toByteArray().size(), 0);
    EXPECT_EQ(registry.Value().typeId(), QMetaType::QByteArray);
}

TEST_F(RegistryAccess, TwoPercentSignsThatAreNotAdjacentMakeAReference) {
    EXPECT_EQ(typeOf(u"%PATH%"_qs), RegistryType::ExpandString);
    EXPECT_EQ(typeOf(u"%a%"_qs), RegistryType::ExpandString);
    EXPECT_EQ(typeOf(u"%%%"_qs), RegistryType::ExpandString);
    EXPECT_EQ(typeOf(u"50%"_qs), RegistryType::String);
    EXPECT_EQ(typeOf(u"%%"_qs), RegistryType::String);
    EXPECT_EQ(typeOf(u"a%%b"_qs), RegistryType::String);
    EXPECT_EQ(typeOf(QString()), RegistryType::String);
}

TEST_F(RegistryAccess, TheTextDecidesBetweenTheTwoStringTypes) {
    registry.ValueType = RegistryType::ExpandString;
    EXPECT_EQ(typeOf(u"plain"_qs), RegistryType::String);
    EXPECT_EQ(registry.ValueType, RegistryType::ExpandString) << "only a read changes it";
}

TEST_F(RegistryAccess, OtherVariantsAreWrittenAsTheirText) {
    registry.setValue(42);
    EXPECT_EQ(registry.Value(), QVariant(u"42"_qs));
    registry.setValue(true);
    EXPECT_EQ(registry.Value(), QVariant(u"True"_qs));
    registry.setValue(false);
    EXPECT_EQ(registry.Value(), QVariant(u"False"_qs));
}

TEST_F(RegistryAccess, AByteArrayIsStoredWithoutItsLastByte) {
    registry.ValueType = RegistryType::Binary;
    EXPECT_TRUE(registry.setValue(QByteArray("\x01\x02\x03", 3)));
    EXPECT_EQ(stored(), (RegistryValue{RegistryType::Binary, QByteArray("\x01\x02", 2)}));
    EXPECT_EQ(registry.currentValue(), QVariant(QByteArray("\x01\x02\x03", 3)));
    EXPECT_TRUE(registry.setValue(QByteArray("x")));
    EXPECT_EQ(stored().data.size(), 0);
    EXPECT_TRUE(registry.setValue(QByteArray()));
    EXPECT_EQ(stored().data.size(), 0);
}

TEST_F(RegistryAccess, AnythingButAByteArrayRaisesOnTheBinaryType) {
    registry.ValueType = RegistryType::Binary;
    EXPECT_FALSE(registry.setValue(u"text"_qs));
    expectRaised(
        u"Failed to set registry value Key: '-2147483647',Section: 'Software/Quillmark/test',Key: "
        "'name' to value: 'text'"_qs);
    EXPECT_FALSE(registry.currentValue().isValid());
    EXPECT_EQ(stored().type, -99);
    EXPECT_TRUE(registry.KeyExists()) << "the key was made before";
}

TEST_F(RegistryAccess, ShortAndLongIntegersAreStoredInOrdinaryByteOrder) {
    for (const qint32 type : {RegistryType::Integer, RegistryType::IntegerBigEndian}) {
        for (const QVariant& value :
             {QVariant(258), QVariant::fromValue<short>(258), QVariant(258U), QVariant::fromValue<ushort>(258)}) {
            registry.ValueType = type;
            EXPECT_TRUE(registry.setValue(value));
            EXPECT_EQ(stored(), (RegistryValue{RegistryType::Integer, QByteArray("\x02\x01\0\0", 4)}));
        }
    }
    registry.ValueType = RegistryType::Integer;
    registry.setValue(std::numeric_limits<qint32>::min());
    EXPECT_EQ(registry.Value(), QVariant(std::numeric_limits<qint32>::min()));
}

TEST_F(RegistryAccess, NoOtherVariantIsStoredAsAnIntegerAndNobodyIsTold) {
    registry.ValueType = RegistryType::Integer;
    for (const QVariant& value : {QVariant(u"7"_qs), QVariant(7.0), QVariant(true), QVariant(7LL)}) {
        EXPECT_TRUE(registry.setValue(value));
        EXPECT_EQ(stored().type, -99);
        EXPECT_EQ(registry.currentValue(), value);
    }
}

TEST_F(RegistryAccess, AnotherTypeStoresNothingAndRaisesNothing) {
    for (const qint32 type : {0, 6, 7, 11, -1}) {
        registry.ValueType = type;
        EXPECT_TRUE(registry.setValue(u"x"_qs));
        EXPECT_EQ(stored().type, -99);
        EXPECT_EQ(registry.lastError().number, 0);
        EXPECT_EQ(registry.currentValue(), QVariant(u"x"_qs));
    }
}

TEST_F(RegistryAccess, AFailureOfTheSystemPassesWithoutAWord) {
    store.writeResult = RegistryCode::AccessDenied;
    EXPECT_TRUE(registry.setValue(u"x"_qs));
    EXPECT_EQ(registry.lastError().number, 0);
    EXPECT_EQ(registry.currentValue(), QVariant(u"x"_qs));
}

TEST_F(RegistryAccess, OnlyTheResultMinusOneRaises) {
    store.writeResult = -1;
    EXPECT_FALSE(registry.setValue(12));
    expectRaised(
        u"Failed to set registry value Key: '-2147483647',Section: 'Software/Quillmark/test',Key: "
        "'name' to value: '12'"_qs);
    EXPECT_FALSE(registry.currentValue().isValid());
}

TEST_F(RegistryAccess, AKeyThatCannotBeMadeRaisesInAWrite) {
    store.createResult = RegistryCode::AccessDenied;
    registry.ValueKey.clear();
    EXPECT_FALSE(registry.setValue(u"v"_qs));
    expectRaised(
        u"Failed to set registry value Key: '-2147483647',Section: 'Software/Quillmark/test',Key: '' "
        "to value: 'v'"_qs);
}

TEST_F(RegistryAccess, ValuesAndSectionsAreEnumerated) {
    QStringList names{u"stale"_qs};
    qint32 count = 9;
    registry.EnumerateValues(names, count);
    EXPECT_EQ(count, 0);
    EXPECT_TRUE(names.isEmpty());
    registry.EnumerateSections(names, count);
    EXPECT_EQ(count, 0);

    registry.setValue(u"x"_qs);
    registry.ValueKey.clear();
    registry.setValue(u"y"_qs);
    store.createKey(HKEY_CURRENT_USER, Section + u"/b"_qs);
    store.createKey(HKEY_CURRENT_USER, Section + u"/A"_qs);
    registry.EnumerateValues(names, count);
    EXPECT_EQ(count, 2);
    EXPECT_EQ(names, (QStringList{QString(), Name}));
    registry.EnumerateSections(names, count);
    EXPECT_EQ(count, 2);
    EXPECT_EQ(names, (QStringList{u"A"_qs, u"b"_qs}));
}

TEST_F(RegistryAccess, TheWalkOverSectionsEndsAtANameThatDoesNotFit) {
    const QString fits(254, u'b');
    for (const QString& name : {u"a"_qs, fits, QString(255, u'c'), u"d"_qs})
        store.createKey(HKEY_CURRENT_USER, Section + u'/' + name);
    QStringList names;
    qint32 count = 0;
    registry.EnumerateSections(names, count);
    EXPECT_EQ(names, (QStringList{u"a"_qs, fits}));
    EXPECT_EQ(count, 2);
}

TEST_F(RegistryAccess, NamesOfSectionsAreCutAtTheirFirstZero) {
    store.createKey(HKEY_CURRENT_USER, Section + u"/ab"_qs + QChar(QChar::Null) + u"cd"_qs);
    QStringList names;
    qint32 count = 0;
    registry.EnumerateSections(names, count);
    EXPECT_EQ(names, QStringList{u"ab"_qs});
}

namespace {

class FileAssociations : public RegistryAccess {
 protected:
    QString classText(const char* key) {
        return GetRegString(store, HKEY_CLASSES_ROOT, QString::fromLatin1(key), QString());
    }
    bool hasClass(const char* key) {
        return store.openKey(HKEY_CLASSES_ROOT, QString::fromLatin1(key)) == RegistryCode::Ok;
    }

    const QString exe = u"/opt/my app/q"_qs;
    const QString className = u"My.Class"_qs;
};

}  // namespace

TEST_F(FileAssociations, TheSmallestHasOpenAlone) {
    EXPECT_TRUE(registry.CreateEXEAssociation(exe, className, u"Description"_qs, u"ext"_qs));
    EXPECT_EQ(classText(".ext"), className);
    EXPECT_EQ(classText("My.Class"), u"Description"_qs);
    EXPECT_EQ(classText("My.Class/shell/open"), u"&Open"_qs);
    EXPECT_EQ(classText("My.Class/shell/open/command"), u"\"/opt/my app/q\" \"%1\""_qs);
    for (const char* key :
         {"My.Class/shell/print", "My.Class/shell/add", "My.Class/shell/new", "My.Class/DefaultIcon"}) {
        EXPECT_FALSE(hasClass(key)) << key;
    }
    EXPECT_EQ(registry.SectionKey, Section) << "the fields stay";
}

TEST_F(FileAssociations, EveryVerbHasItsUsualText) {
    EXPECT_TRUE(registry.CreateEXEAssociation(exe, className, QString(), u"ext"_qs, QString(), true, QString(), true,
                                              QString(), true, QString(), 0));
    EXPECT_EQ(classText("My.Class/shell/print"), u"&Print"_qs);
    EXPECT_EQ(classText("My.Class/shell/print/command"), u"\"/opt/my app/q\" /p \"%1\""_qs);
    EXPECT_EQ(classText("My.Class/shell/add"), u"&Install My.Class"_qs);
    EXPECT_EQ(classText("My.Class/shell/add/command"), u"\"/opt/my app/q\" /a \"%1\""_qs);
    EXPECT_EQ(classText("My.Class/shell/new"), u"&New"_qs);
    EXPECT_EQ(classText("My.Class/shell/new/command"), u"\"/opt/my app/q\" /n \"%1\""_qs);
    EXPECT_EQ(classText("My.Class/DefaultIcon"), u"\"/opt/my app/q\",0"_qs);
}

TEST_F(FileAssociations, GivenTextsAreTakenAndAQuotedPathStaysAsItIs) {
    const QString quoted = u"\"/opt/q\""_qs;
    EXPECT_TRUE(registry.CreateEXEAssociation(quoted, className, QString(), u"ext"_qs, u"o"_qs, true, u"p"_qs, true,
                                              u"n"_qs, true, u"i"_qs, 3));
    EXPECT_EQ(classText("My.Class/shell/open"), u"o"_qs);
    EXPECT_EQ(classText("My.Class/shell/print"), u"p"_qs);
    EXPECT_EQ(classText("My.Class/shell/add"), u"i"_qs);
    EXPECT_EQ(classText("My.Class/shell/new"), u"n"_qs);
    EXPECT_EQ(classText("My.Class/DefaultIcon"), u"\"/opt/q\",3"_qs);
}

TEST_F(FileAssociations, AStoreThatRefusesRaises) {
    store.createResult = RegistryCode::AccessDenied;
    EXPECT_FALSE(registry.CreateEXEAssociation(exe, className, QString(), u"ext"_qs));
    expectRaised(u"Failed to set registry value Key: '-2147483648',Section: '.ext',Key: '' to value: 'My.Class'"_qs);
}

TEST_F(FileAssociations, FurtherEntriesComeInThrees) {
    store.createKey(HKEY_CLASSES_ROOT, className);
    EXPECT_TRUE(registry.CreateAdditionalEXEAssociations(
        className, {u"one"_qs, u"&One"_qs, u"cmd 1"_qs, u"two"_qs, u"&Two"_qs, u"cmd 2"_qs}));
    EXPECT_EQ(classText("My.Class/shell/one"), u"&One"_qs);
    EXPECT_EQ(classText("My.Class/shell/one/command"), u"cmd 1"_qs);
    EXPECT_EQ(classText("My.Class/shell/two"), u"&Two"_qs);
    EXPECT_EQ(classText("My.Class/shell/two/command"), u"cmd 2"_qs);
    EXPECT_TRUE(registry.CreateAdditionalEXEAssociations(className, {}));
}

TEST_F(FileAssociations, AnIncompleteListAndAnUnknownClassRaise) {
    EXPECT_FALSE(registry.CreateAdditionalEXEAssociations(className, {u"one"_qs, u"&One"_qs}));
    expectRaised(u"Invalid parameter list passed to CreateAdditionalEXEAssociations - expected Name/Text/Command"_qs);
    EXPECT_FALSE(registry.CreateAdditionalEXEAssociations(className, {u"one"_qs, u"&One"_qs, u"cmd"_qs}));
    expectRaised(u"Error - attempt to create additional associations before class defined."_qs);
    EXPECT_FALSE(hasClass("My.Class"));
}
