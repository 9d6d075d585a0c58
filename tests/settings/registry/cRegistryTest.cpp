#include "settings/registry/RegistryData.h"
#include "settings/registry/ScriptedRegistry.h"
#include "settings/registry/cRegistry.h"
#include "settings/registry/modRegistry.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

const QString Section = QStringLiteral("Software/Quillmark/test");
const QString Name = QStringLiteral("name");

class cRegistryTest : public testing::Test {
 protected:
    cRegistryTest() {
        registry.SectionKey = Section;
        registry.ValueKey = Name;
        registry.Default = QStringLiteral("default");
    }

    void put(qint32 type, const QByteArray& data) { store.writeValue(HKEY_CURRENT_USER, Section, Name, {type, data}); }
    RegistryValue stored() {
        RegistryValue value{-99, {}};
        store.readValue(HKEY_CURRENT_USER, Section, Name, value);
        return value;
    }
    /// Writes the text as a string, and gives the type it was stored as.
    qint32 typeOf(const QString& text) {
        EXPECT_TRUE(registry.setValue(text));
        return stored().type;
    }
    void expectRaised(const QString& description) {
        EXPECT_EQ(registry.lastError().number, 26001);
        EXPECT_EQ(registry.lastError().source, QStringLiteral("Quillmark.cRegistry"));
        EXPECT_EQ(registry.lastError().description, description);
    }

    ScriptedRegistry store;
    cRegistry registry{store};
};

}  // namespace

TEST_F(cRegistryTest, TheRootsAreTheirSignedHandles) {
    EXPECT_EQ(HKEY_CLASSES_ROOT, -2147483647 - 1);
    EXPECT_EQ(HKEY_CURRENT_USER, -2147483647);
    EXPECT_EQ(HKEY_LOCAL_MACHINE, -2147483646);
}

TEST_F(cRegistryTest, AKeyExistsOnceItIsCreatedAndNoMoreOnceDeleted) {
    EXPECT_FALSE(registry.KeyExists());
    EXPECT_TRUE(registry.CreateKey());
    EXPECT_TRUE(registry.KeyExists());
    EXPECT_TRUE(registry.DeleteKey());
    EXPECT_FALSE(registry.KeyExists());
    EXPECT_EQ(registry.lastError().number, 0);
}

TEST_F(cRegistryTest, AKeyThatCannotBeCreatedRaises) {
    store.createResult = RegistryCode::AccessDenied;
    EXPECT_FALSE(registry.CreateKey());
    expectRaised(QStringLiteral("Failed to create registry Key: 'Software/Quillmark/test"));
}

TEST_F(cRegistryTest, AKeyThatCannotBeDeletedRaises) {
    EXPECT_FALSE(registry.DeleteKey());
    expectRaised(QStringLiteral("Failed to delete registry Key: '-2147483647',Section: 'Software/Quillmark/test"));
    registry.ClassKey = HKEY_CLASSES_ROOT;
    registry.SectionKey = QStringLiteral("a");
    store.createKey(HKEY_CLASSES_ROOT, QStringLiteral("a/b"));
    EXPECT_FALSE(registry.DeleteKey());
    expectRaised(QStringLiteral("Failed to delete registry Key: '-2147483648',Section: 'a"));
}

TEST_F(cRegistryTest, DeletingAValueRaisesOnlyWithoutTheKey) {
    EXPECT_FALSE(registry.DeleteValue());
    expectRaised(
        QStringLiteral("Failed to open key '-2147483647',Section: 'Software/Quillmark/test' for delete access"));
    registry.CreateKey();
    EXPECT_FALSE(registry.DeleteValue());
    EXPECT_EQ(registry.lastError().number, 0);
    registry.setValue(QStringLiteral("x"));
    EXPECT_TRUE(registry.DeleteValue());
    EXPECT_EQ(registry.Value(), QVariant(QStringLiteral("default")));
}

TEST_F(cRegistryTest, TheNextOperationForgetsTheErrorBefore) {
    registry.DeleteKey();
    registry.KeyExists();
    EXPECT_EQ(registry.lastError().number, 0);
    EXPECT_TRUE(registry.lastError().description.isEmpty());
}

TEST_F(cRegistryTest, AMissingValueReadsAsTheDefaultOfWhateverType) {
    for (const QVariant& value :
         {QVariant(QStringLiteral("text")), QVariant(42), QVariant(QByteArray("bytes")), QVariant(), QVariant(true)}) {
        registry.Default = value;
        EXPECT_EQ(registry.Value(), value);
    }
    registry.CreateKey();
    registry.Default = 7;
    registry.ValueType = RegistryType::Binary;
    EXPECT_EQ(registry.Value(), QVariant(7));
    EXPECT_EQ(registry.ValueType, RegistryType::Binary);
}

TEST_F(cRegistryTest, OnlyMoreDataIsNoFailureOfAQuery) {
    put(RegistryType::Integer, QByteArray("\x2A\0\0\0", 4));
    store.readResult = RegistryCode::MoreData;
    EXPECT_EQ(registry.Value(), QVariant(42));
    store.readResult = RegistryCode::AccessDenied;
    EXPECT_EQ(registry.Value(), QVariant(QStringLiteral("default")));
}

TEST_F(cRegistryTest, ARereadStringIsTheOneWritten) {
    for (const QString& text : {QString(), QStringLiteral("x"), QStringLiteral("Grüße, 世界 😀"),
                                QStringLiteral("a\0b").append(QChar(QChar::Null)), QStringLiteral("l1\r\nl2")}) {
        EXPECT_TRUE(registry.setValue(text));
        EXPECT_EQ(registry.Value(), QVariant(text));
        EXPECT_EQ(registry.ValueType, RegistryType::String);
        EXPECT_EQ(stored(), RegistryData::fromText(text));
    }
}

TEST_F(cRegistryTest, AStringOfNoBytesAndOneOfItsZeroReadAsAnEmptyText) {
    put(RegistryType::String, {});
    EXPECT_EQ(registry.Value(), QVariant(QString()));
    put(RegistryType::String, QByteArray(2, '\0'));
    EXPECT_EQ(registry.Value(), QVariant(QString()));
}

TEST_F(cRegistryTest, AStringWithoutItsZeroLosesItsLastCharacter) {
    put(RegistryType::String, QByteArray("a\0b\0", 4));
    EXPECT_EQ(registry.Value(), QVariant(QStringLiteral("a")));
}

TEST_F(cRegistryTest, AListReadsAsOneTextWithItsZeros) {
    const RegistryValue list = RegistryData::fromTexts({QStringLiteral("a"), QStringLiteral("bc")});
    store.writeValue(HKEY_CURRENT_USER, Section, Name, list);
    const QString zero(QChar(QChar::Null));
    EXPECT_EQ(registry.Value(), QVariant(QStringLiteral("a") + zero + QStringLiteral("bc") + zero));
    EXPECT_EQ(registry.ValueType, RegistryType::StringList);
}

TEST_F(cRegistryTest, ReferencesToTheEnvironmentAreExpandedAndUnknownOnesStay) {
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

TEST_F(cRegistryTest, AStringTypeOneIsNotExpanded) {
    qputenv("QM_ONE", "first");
    store.writeValue(HKEY_CURRENT_USER, Section, Name, RegistryData::fromText(QStringLiteral("%QM_ONE%")));
    EXPECT_EQ(registry.Value(), QVariant(QStringLiteral("%QM_ONE%")));
}

TEST_F(cRegistryTest, IntegersAreReadInTheByteOrderOfTheirType) {
    put(RegistryType::Integer, QByteArray("\x01\x02\x03\x84", 4));
    EXPECT_EQ(registry.Value(), QVariant(static_cast<qint32>(0x84030201)));
    EXPECT_EQ(registry.Value().typeId(), QMetaType::Int);
    put(RegistryType::IntegerBigEndian, QByteArray("\x01\x02\x03\x84", 4));
    EXPECT_EQ(registry.Value(), QVariant(0x01020384));
    EXPECT_EQ(registry.ValueType, RegistryType::IntegerBigEndian);
    put(RegistryType::Integer, QByteArray("\x07", 1));
    EXPECT_EQ(registry.Value(), QVariant(7));
}

TEST_F(cRegistryTest, EveryOtherTypeReadsAsItsBytes) {
    for (const qint32 type : {0, 3, 6, 8, 11, 99}) {
        put(type, QByteArray("\0\x01\xFF", 3));
        EXPECT_EQ(registry.Value(), QVariant(QByteArray("\0\x01\xFF", 3)));
        EXPECT_EQ(registry.ValueType, type);
    }
    put(RegistryType::Binary, {});
    EXPECT_EQ(registry.Value().toByteArray().size(), 0);
    EXPECT_EQ(registry.Value().typeId(), QMetaType::QByteArray);
}

TEST_F(cRegistryTest, TwoPercentSignsThatAreNotAdjacentMakeAReference) {
    EXPECT_EQ(typeOf(QStringLiteral("%PATH%")), RegistryType::ExpandString);
    EXPECT_EQ(typeOf(QStringLiteral("%a%")), RegistryType::ExpandString);
    EXPECT_EQ(typeOf(QStringLiteral("%%%")), RegistryType::ExpandString);
    EXPECT_EQ(typeOf(QStringLiteral("50%")), RegistryType::String);
    EXPECT_EQ(typeOf(QStringLiteral("%%")), RegistryType::String);
    EXPECT_EQ(typeOf(QStringLiteral("a%%b")), RegistryType::String);
    EXPECT_EQ(typeOf(QString()), RegistryType::String);
}

TEST_F(cRegistryTest, TheTextDecidesBetweenTheTwoStringTypes) {
    registry.ValueType = RegistryType::ExpandString;
    EXPECT_EQ(typeOf(QStringLiteral("plain")), RegistryType::String);
    EXPECT_EQ(registry.ValueType, RegistryType::ExpandString) << "only a read changes it";
}

TEST_F(cRegistryTest, OtherVariantsAreWrittenAsTheirText) {
    registry.setValue(42);
    EXPECT_EQ(registry.Value(), QVariant(QStringLiteral("42")));
    registry.setValue(true);
    EXPECT_EQ(registry.Value(), QVariant(QStringLiteral("True")));
    registry.setValue(false);
    EXPECT_EQ(registry.Value(), QVariant(QStringLiteral("False")));
}

TEST_F(cRegistryTest, AByteArrayIsStoredWithoutItsLastByte) {
    registry.ValueType = RegistryType::Binary;
    EXPECT_TRUE(registry.setValue(QByteArray("\x01\x02\x03", 3)));
    EXPECT_EQ(stored(), (RegistryValue{RegistryType::Binary, QByteArray("\x01\x02", 2)}));
    EXPECT_EQ(registry.currentValue(), QVariant(QByteArray("\x01\x02\x03", 3)));
    EXPECT_TRUE(registry.setValue(QByteArray("x")));
    EXPECT_EQ(stored().data.size(), 0);
    EXPECT_TRUE(registry.setValue(QByteArray()));
    EXPECT_EQ(stored().data.size(), 0);
}

TEST_F(cRegistryTest, AnythingButAByteArrayRaisesOnTheBinaryType) {
    registry.ValueType = RegistryType::Binary;
    EXPECT_FALSE(registry.setValue(QStringLiteral("text")));
    expectRaised(
        QStringLiteral("Failed to set registry value Key: '-2147483647',Section: 'Software/Quillmark/test',Key: "
                       "'name' to value: 'text'"));
    EXPECT_FALSE(registry.currentValue().isValid());
    EXPECT_EQ(stored().type, -99);
    EXPECT_TRUE(registry.KeyExists()) << "the key was made before";
}

TEST_F(cRegistryTest, ShortAndLongIntegersAreStoredInOrdinaryByteOrder) {
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

TEST_F(cRegistryTest, NoOtherVariantIsStoredAsAnIntegerAndNobodyIsTold) {
    registry.ValueType = RegistryType::Integer;
    for (const QVariant& value : {QVariant(QStringLiteral("7")), QVariant(7.0), QVariant(true), QVariant(7LL)}) {
        EXPECT_TRUE(registry.setValue(value));
        EXPECT_EQ(stored().type, -99);
        EXPECT_EQ(registry.currentValue(), value);
    }
}

TEST_F(cRegistryTest, AnotherTypeStoresNothingAndRaisesNothing) {
    for (const qint32 type : {0, 6, 7, 11, -1}) {
        registry.ValueType = type;
        EXPECT_TRUE(registry.setValue(QStringLiteral("x")));
        EXPECT_EQ(stored().type, -99);
        EXPECT_EQ(registry.lastError().number, 0);
        EXPECT_EQ(registry.currentValue(), QVariant(QStringLiteral("x")));
    }
}

TEST_F(cRegistryTest, AFailureOfTheSystemPassesWithoutAWord) {
    store.writeResult = RegistryCode::AccessDenied;
    EXPECT_TRUE(registry.setValue(QStringLiteral("x")));
    EXPECT_EQ(registry.lastError().number, 0);
    EXPECT_EQ(registry.currentValue(), QVariant(QStringLiteral("x")));
}

TEST_F(cRegistryTest, OnlyTheResultMinusOneRaises) {
    store.writeResult = -1;
    EXPECT_FALSE(registry.setValue(12));
    expectRaised(
        QStringLiteral("Failed to set registry value Key: '-2147483647',Section: 'Software/Quillmark/test',Key: "
                       "'name' to value: '12'"));
    EXPECT_FALSE(registry.currentValue().isValid());
}

TEST_F(cRegistryTest, AKeyThatCannotBeMadeRaisesInAWrite) {
    store.createResult = RegistryCode::AccessDenied;
    registry.ValueKey.clear();
    EXPECT_FALSE(registry.setValue(QStringLiteral("v")));
    expectRaised(
        QStringLiteral("Failed to set registry value Key: '-2147483647',Section: 'Software/Quillmark/test',Key: '' "
                       "to value: 'v'"));
}

TEST_F(cRegistryTest, ValuesAndSectionsAreEnumerated) {
    QStringList names{QStringLiteral("stale")};
    qint32 count = 9;
    registry.EnumerateValues(names, count);
    EXPECT_EQ(count, 0);
    EXPECT_TRUE(names.isEmpty());
    registry.EnumerateSections(names, count);
    EXPECT_EQ(count, 0);

    registry.setValue(QStringLiteral("x"));
    registry.ValueKey.clear();
    registry.setValue(QStringLiteral("y"));
    store.createKey(HKEY_CURRENT_USER, Section + QStringLiteral("/b"));
    store.createKey(HKEY_CURRENT_USER, Section + QStringLiteral("/A"));
    registry.EnumerateValues(names, count);
    EXPECT_EQ(count, 2);
    EXPECT_EQ(names, (QStringList{QString(), Name}));
    registry.EnumerateSections(names, count);
    EXPECT_EQ(count, 2);
    EXPECT_EQ(names, (QStringList{QStringLiteral("A"), QStringLiteral("b")}));
}

TEST_F(cRegistryTest, TheWalkOverSectionsEndsAtANameThatDoesNotFit) {
    const QString fits(254, u'b');
    for (const QString& name : {QStringLiteral("a"), fits, QString(255, u'c'), QStringLiteral("d")}) {
        store.createKey(HKEY_CURRENT_USER, Section + u'/' + name);
    }
    QStringList names;
    qint32 count = 0;
    registry.EnumerateSections(names, count);
    EXPECT_EQ(names, (QStringList{QStringLiteral("a"), fits}));
    EXPECT_EQ(count, 2);
}

TEST_F(cRegistryTest, NamesOfSectionsAreCutAtTheirFirstZero) {
    store.createKey(HKEY_CURRENT_USER, Section + QStringLiteral("/ab") + QChar(QChar::Null) + QStringLiteral("cd"));
    QStringList names;
    qint32 count = 0;
    registry.EnumerateSections(names, count);
    EXPECT_EQ(names, QStringList{QStringLiteral("ab")});
}

namespace {

class AssociationTest : public cRegistryTest {
 protected:
    QString classText(const char* key) {
        return GetRegString(store, HKEY_CLASSES_ROOT, QString::fromLatin1(key), QString());
    }
    bool hasClass(const char* key) {
        return store.openKey(HKEY_CLASSES_ROOT, QString::fromLatin1(key)) == RegistryCode::Ok;
    }

    const QString exe = QStringLiteral("/opt/my app/q");
    const QString className = QStringLiteral("My.Class");
};

}  // namespace

TEST_F(AssociationTest, TheSmallestHasOpenAlone) {
    EXPECT_TRUE(registry.CreateEXEAssociation(exe, className, QStringLiteral("Description"), QStringLiteral("ext")));
    EXPECT_EQ(classText(".ext"), className);
    EXPECT_EQ(classText("My.Class"), QStringLiteral("Description"));
    EXPECT_EQ(classText("My.Class/shell/open"), QStringLiteral("&Open"));
    EXPECT_EQ(classText("My.Class/shell/open/command"), QStringLiteral("\"/opt/my app/q\" \"%1\""));
    for (const char* key :
         {"My.Class/shell/print", "My.Class/shell/add", "My.Class/shell/new", "My.Class/DefaultIcon"}) {
        EXPECT_FALSE(hasClass(key)) << key;
    }
    EXPECT_EQ(registry.SectionKey, Section) << "the fields stay";
}

TEST_F(AssociationTest, EveryVerbHasItsUsualText) {
    EXPECT_TRUE(registry.CreateEXEAssociation(exe, className, QString(), QStringLiteral("ext"), QString(), true,
                                              QString(), true, QString(), true, QString(), 0));
    EXPECT_EQ(classText("My.Class/shell/print"), QStringLiteral("&Print"));
    EXPECT_EQ(classText("My.Class/shell/print/command"), QStringLiteral("\"/opt/my app/q\" /p \"%1\""));
    EXPECT_EQ(classText("My.Class/shell/add"), QStringLiteral("&Install My.Class"));
    EXPECT_EQ(classText("My.Class/shell/add/command"), QStringLiteral("\"/opt/my app/q\" /a \"%1\""));
    EXPECT_EQ(classText("My.Class/shell/new"), QStringLiteral("&New"));
    EXPECT_EQ(classText("My.Class/shell/new/command"), QStringLiteral("\"/opt/my app/q\" /n \"%1\""));
    EXPECT_EQ(classText("My.Class/DefaultIcon"), QStringLiteral("\"/opt/my app/q\",0"));
}

TEST_F(AssociationTest, GivenTextsAreTakenAndAQuotedPathStaysAsItIs) {
    const QString quoted = QStringLiteral("\"/opt/q\"");
    EXPECT_TRUE(registry.CreateEXEAssociation(quoted, className, QString(), QStringLiteral("ext"), QStringLiteral("o"),
                                              true, QStringLiteral("p"), true, QStringLiteral("n"), true,
                                              QStringLiteral("i"), 3));
    EXPECT_EQ(classText("My.Class/shell/open"), QStringLiteral("o"));
    EXPECT_EQ(classText("My.Class/shell/print"), QStringLiteral("p"));
    EXPECT_EQ(classText("My.Class/shell/add"), QStringLiteral("i"));
    EXPECT_EQ(classText("My.Class/shell/new"), QStringLiteral("n"));
    EXPECT_EQ(classText("My.Class/DefaultIcon"), QStringLiteral("\"/opt/q\",3"));
}

TEST_F(AssociationTest, AStoreThatRefusesRaises) {
    store.createResult = RegistryCode::AccessDenied;
    EXPECT_FALSE(registry.CreateEXEAssociation(exe, className, QString(), QStringLiteral("ext")));
    expectRaised(
        QStringLiteral("Failed to set registry value Key: '-2147483648',Section: '.ext',Key: '' to value: 'My.Class'"));
}

TEST_F(AssociationTest, FurtherEntriesComeInThrees) {
    store.createKey(HKEY_CLASSES_ROOT, className);
    EXPECT_TRUE(registry.CreateAdditionalEXEAssociations(
        className, {QStringLiteral("one"), QStringLiteral("&One"), QStringLiteral("cmd 1"), QStringLiteral("two"),
                    QStringLiteral("&Two"), QStringLiteral("cmd 2")}));
    EXPECT_EQ(classText("My.Class/shell/one"), QStringLiteral("&One"));
    EXPECT_EQ(classText("My.Class/shell/one/command"), QStringLiteral("cmd 1"));
    EXPECT_EQ(classText("My.Class/shell/two"), QStringLiteral("&Two"));
    EXPECT_EQ(classText("My.Class/shell/two/command"), QStringLiteral("cmd 2"));
    EXPECT_TRUE(registry.CreateAdditionalEXEAssociations(className, {}));
}

TEST_F(AssociationTest, AnIncompleteListAndAnUnknownClassRaise) {
    EXPECT_FALSE(registry.CreateAdditionalEXEAssociations(className, {QStringLiteral("one"), QStringLiteral("&One")}));
    expectRaised(QStringLiteral(
        "Invalid parameter list passed to CreateAdditionalEXEAssociations - expected Name/Text/Command"));
    EXPECT_FALSE(registry.CreateAdditionalEXEAssociations(
        className, {QStringLiteral("one"), QStringLiteral("&One"), QStringLiteral("cmd")}));
    expectRaised(QStringLiteral("Error - attempt to create additional associations before class defined."));
    EXPECT_FALSE(hasClass("My.Class"));
}
