// The behaviour of every registry, whatever its storage.

#include "settings/registry/MemoryRegistry.h"
#include "settings/registry/RegistryData.h"
#include "settings/registry/SqliteRegistry.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

constexpr RegistryRoot Root = HKEY_CURRENT_USER;

/// A store and the objects that it needs.
class Memory {
 public:
    RegistryStore& store() { return m_store; }

 private:
    MemoryRegistry m_store;
};

class Sqlite {
 public:
    RegistryStore& store() { return m_store; }

 private:
    QTemporaryDir m_folder;
    SqliteRegistry m_store{m_folder.filePath(u"registry.db"_qs)};
};

template <typename Holder>
class RegistryContract : public testing::Test {
 protected:
    RegistryStore& store() { return m_holder.store(); }

    QString text(const QString& path, const QString& name, RegistryRoot root = Root) {
        RegistryValue value;
        const int code = store().readValue(root, path, name, value);
        return code == RegistryCode::Ok ? RegistryData::textToZero(RegistryData::units(value))
                                        : u"result %1"_qs.arg(code);
    }
    int write(const QString& path, const QString& name, const QString& value, RegistryRoot root = Root) {
        return store().writeValue(root, path, name, RegistryData::fromText(value));
    }
    QStringList keys(const QString& path, int limit = -1) {
        QStringList names{u"stale"_qs};
        store().subKeys(Root, path, names, limit);
        return names;
    }
    QStringList values(const QString& path) {
        QStringList names{u"stale"_qs};
        store().valueNames(Root, path, names);
        return names;
    }

 private:
    Holder m_holder;
};

using Holders = testing::Types<Memory, Sqlite>;

struct HolderNames {
    template <typename Holder>
    static std::string GetName(int) {
        return std::is_same_v<Holder, Memory> ? "Memory" : "Sqlite";
    }
};
TYPED_TEST_SUITE(RegistryContract, Holders, HolderNames);

}  // namespace

TYPED_TEST(RegistryContract, AnEmptyStoreHasItsRootsAndNothingElse) {
    RegistryStore& store = this->store();
    for (const RegistryRoot root : {HKEY_CLASSES_ROOT, HKEY_CURRENT_USER, HKEY_LOCAL_MACHINE}) {
        EXPECT_EQ(store.openKey(root, QString()), RegistryCode::Ok);
        EXPECT_EQ(store.openKey(root, u"Software"_qs), RegistryCode::NotFound);
    }
    EXPECT_TRUE(this->keys(QString()).isEmpty());
    EXPECT_TRUE(this->values(QString()).isEmpty());
    QStringList names;
    EXPECT_EQ(store.subKeys(Root, QString(), names), RegistryCode::Ok);
    EXPECT_EQ(store.valueNames(Root, QString(), names), RegistryCode::Ok);
    EXPECT_EQ(store.subKeys(Root, u"none"_qs, names), RegistryCode::NotFound);
    EXPECT_EQ(store.valueNames(Root, u"none"_qs, names), RegistryCode::NotFound);
}

TYPED_TEST(RegistryContract, RootsAreApart) {
    this->write(u"a"_qs, u"n"_qs, u"classes"_qs, HKEY_CLASSES_ROOT);
    this->write(u"a"_qs, u"n"_qs, u"user"_qs, HKEY_CURRENT_USER);
    EXPECT_EQ(this->text(u"a"_qs, u"n"_qs, HKEY_CLASSES_ROOT), u"classes"_qs);
    EXPECT_EQ(this->text(u"a"_qs, u"n"_qs, HKEY_CURRENT_USER), u"user"_qs);
    EXPECT_EQ(this->text(u"a"_qs, u"n"_qs, HKEY_LOCAL_MACHINE), u"result 2"_qs);
}

TYPED_TEST(RegistryContract, AnotherNumberIsNoRoot) {
    RegistryStore& store = this->store();
    const RegistryRoot unknown = 7;
    RegistryValue value;
    QStringList names;
    const QString a = u"a"_qs;
    EXPECT_EQ(store.openKey(unknown, a), RegistryCode::InvalidRoot);
    EXPECT_EQ(store.createKey(unknown, a), RegistryCode::InvalidRoot);
    EXPECT_EQ(store.deleteKey(unknown, a), RegistryCode::InvalidRoot);
    EXPECT_EQ(store.readValue(unknown, a, a, value), RegistryCode::InvalidRoot);
    EXPECT_EQ(store.writeValue(unknown, a, a, value), RegistryCode::InvalidRoot);
    EXPECT_EQ(store.deleteValue(unknown, a, a), RegistryCode::InvalidRoot);
    EXPECT_EQ(store.subKeys(unknown, a, names), RegistryCode::InvalidRoot);
    EXPECT_EQ(store.valueNames(unknown, a, names), RegistryCode::InvalidRoot);
}

TYPED_TEST(RegistryContract, AKeyStandsWithoutValuesAndMakesThoseAboveIt) {
    EXPECT_EQ(this->store().createKey(Root, u"Software/Quillmark/general"_qs), RegistryCode::Ok);
    EXPECT_EQ(this->store().openKey(Root, u"Software"_qs), RegistryCode::Ok);
    EXPECT_EQ(this->store().openKey(Root, u"Software/Quillmark"_qs), RegistryCode::Ok);
    EXPECT_EQ(this->keys(u"Software/Quillmark"_qs), QStringList{u"general"_qs});
    EXPECT_TRUE(this->values(u"Software/Quillmark/general"_qs).isEmpty());
}

TYPED_TEST(RegistryContract, CreatingAKeyAgainKeepsWhatItHolds) {
    this->write(u"a/b"_qs, u"n"_qs, u"1"_qs);
    EXPECT_EQ(this->store().createKey(Root, u"a/b"_qs), RegistryCode::Ok);
    EXPECT_EQ(this->store().createKey(Root, u"a"_qs), RegistryCode::Ok);
    EXPECT_EQ(this->text(u"a/b"_qs, u"n"_qs), u"1"_qs);
}

TYPED_TEST(RegistryContract, SlashesAtTheEndsAndDoubledOnesCountForNothing) {
    this->write(u"/a//b/"_qs, u"n"_qs, u"1"_qs);
    EXPECT_EQ(this->text(u"a/b"_qs, u"n"_qs), u"1"_qs);
    EXPECT_EQ(this->keys(u"/"_qs), QStringList{u"a"_qs});
}

TYPED_TEST(RegistryContract, ABackslashIsACharacterOfAName) {
    this->write(u"a\\b"_qs, u"n"_qs, u"1"_qs);
    EXPECT_EQ(this->store().openKey(Root, u"a"_qs), RegistryCode::NotFound);
    EXPECT_EQ(this->keys(QString()), QStringList{u"a\\b"_qs});
}

TYPED_TEST(RegistryContract, AValueNameMayHoldSlashes) {
    this->write(u"a"_qs, u"x/y"_qs, u"1"_qs);
    EXPECT_EQ(this->text(u"a"_qs, u"x/y"_qs), u"1"_qs);
    EXPECT_TRUE(this->keys(u"a"_qs).isEmpty());
}

TYPED_TEST(RegistryContract, NamesAreComparedWithoutCaseInTheWholeOfUnicode) {
    this->write(u"Köln/ΣΙΓΜΑ"_qs, u"Ärger"_qs, u"1"_qs);
    EXPECT_EQ(this->text(u"kÖLN/σιγμα"_qs, u"äRGER"_qs), u"1"_qs);
    this->write(u"𐐀"_qs, u"n"_qs, u"2"_qs);
    EXPECT_EQ(this->text(u"𐐨"_qs, u"N"_qs), u"2"_qs);
}

TYPED_TEST(RegistryContract, NamesOfDifferentLengthAreNeverTheSame) {
    this->write(u"straße"_qs, u"n"_qs, u"1"_qs);
    EXPECT_EQ(this->store().openKey(Root, u"STRASSE"_qs), RegistryCode::NotFound);
}

TYPED_TEST(RegistryContract, TheFirstSpellingStays) {
    this->write(u"Key"_qs, u"Name"_qs, u"1"_qs);
    this->write(u"KEY"_qs, u"NAME"_qs, u"2"_qs);
    EXPECT_EQ(this->keys(QString()), QStringList{u"Key"_qs});
    EXPECT_EQ(this->values(u"key"_qs), QStringList{u"Name"_qs});
    EXPECT_EQ(this->text(u"key"_qs, u"name"_qs), u"2"_qs);
}

TYPED_TEST(RegistryContract, TheDefaultValueHasTheEmptyName) {
    this->write(u"a"_qs, QString(), u"default"_qs);
    this->write(u"a"_qs, u"b"_qs, u"named"_qs);
    EXPECT_EQ(this->text(u"a"_qs, QString()), u"default"_qs);
    EXPECT_EQ(this->values(u"a"_qs), (QStringList{QString(), u"b"_qs}));
}

TYPED_TEST(RegistryContract, ARootHasValuesOfItsOwn) {
    this->write(QString(), u"n"_qs, u"1"_qs);
    EXPECT_EQ(this->text(u"/"_qs, u"N"_qs), u"1"_qs);
    EXPECT_EQ(this->values(QString()), QStringList{u"n"_qs});
    EXPECT_EQ(this->store().deleteValue(Root, QString(), u"n"_qs), RegistryCode::Ok);
}

TYPED_TEST(RegistryContract, SubKeysComeByNameWithoutCase) {
    for (const char* name : {"010", "b", "A", "c", "B2", "001", "a!"})
        this->store().createKey(Root, u"list/"_qs + QLatin1String(name));
    this->store().createKey(Root, u"list/A/deeper"_qs);
    this->store().createKey(Root, u"list!"_qs);
    const QStringList expected{u"001"_qs, u"010"_qs, u"A"_qs, u"a!"_qs, u"b"_qs, u"B2"_qs, u"c"_qs};
    EXPECT_EQ(this->keys(u"LIST"_qs), expected);
    EXPECT_EQ(this->keys(u"list"_qs, 2), expected.first(2));
    EXPECT_TRUE(this->keys(u"list"_qs, 0).isEmpty());
}

TYPED_TEST(RegistryContract, ValuesComeByNameWithoutCase) {
    for (const char* name : {"b", "A", "C"})
        this->write(u"k"_qs, QLatin1String(name), QString());
    EXPECT_EQ(this->values(u"k"_qs), (QStringList{u"A"_qs, u"b"_qs, u"C"_qs}));
}

TYPED_TEST(RegistryContract, EveryTypeAndEveryByteComesBack) {
    QByteArray all;
    for (int byte = 0; byte < 256; ++byte)
        all.append(static_cast<char>(byte));
    for (const qint32 type : {0, 1, 2, 3, 4, 5, 7, 11, -1}) {
        for (const QByteArray& data : {QByteArray(), QByteArray(1, '\0'), all}) {
            const RegistryValue written{type, data};
            ASSERT_EQ(this->store().writeValue(Root, u"k"_qs, u"n"_qs, written), RegistryCode::Ok);
            RegistryValue read{99, "stale"};
            ASSERT_EQ(this->store().readValue(Root, u"k"_qs, u"n"_qs, read), RegistryCode::Ok);
            EXPECT_EQ(read, written) << type << " " << data.size();
        }
    }
}

TYPED_TEST(RegistryContract, ALargeValueComesBack) {
    const QString large(1'000'000, u'ü');
    EXPECT_EQ(this->write(u"k"_qs, u"n"_qs, large), RegistryCode::Ok);
    EXPECT_EQ(this->text(u"k"_qs, u"n"_qs), large);
}

TYPED_TEST(RegistryContract, ZerosAndQuotesInNamesAreKept) {
    const QString odd = u"a'\"\n;--"_qs + QChar(QChar::Null) + u"b"_qs;
    this->write(odd, odd, u"1"_qs);
    EXPECT_EQ(this->keys(QString()), QStringList{odd});
    EXPECT_EQ(this->values(odd), QStringList{odd});
    EXPECT_EQ(this->text(u"a'\"\n;--"_qs, odd), u"result 2"_qs);
}

TYPED_TEST(RegistryContract, HalfASurrogatePairInANameBecomesTheReplacementCharacter) {
    EXPECT_EQ(this->write(u"k"_qs, QString(QChar(0xD800)), u"1"_qs), RegistryCode::Ok);
    EXPECT_EQ(this->text(u"k"_qs, QString(QChar(0xD800))), u"1"_qs);
    EXPECT_EQ(this->values(u"k"_qs).size(), 1);
}

TYPED_TEST(RegistryContract, AMissingValueLeavesTheCallersAlone) {
    RegistryValue value{42, "kept"};
    this->store().createKey(Root, u"k"_qs);
    EXPECT_EQ(this->store().readValue(Root, u"k"_qs, u"n"_qs, value), RegistryCode::NotFound);
    EXPECT_EQ(this->store().readValue(Root, u"none"_qs, QString(), value), RegistryCode::NotFound);
    EXPECT_EQ(value, (RegistryValue{42, "kept"}));
}

TYPED_TEST(RegistryContract, AKeyWithSubKeysIsNotDeleted) {
    this->write(u"a"_qs, u"n"_qs, u"1"_qs);
    this->store().createKey(Root, u"a/b"_qs);
    EXPECT_EQ(this->store().deleteKey(Root, u"A"_qs), RegistryCode::AccessDenied);
    EXPECT_EQ(this->text(u"a"_qs, u"n"_qs), u"1"_qs);
    EXPECT_EQ(this->store().deleteKey(Root, u"A/B"_qs), RegistryCode::Ok);
    EXPECT_EQ(this->store().deleteKey(Root, u"A"_qs), RegistryCode::Ok);
    EXPECT_EQ(this->store().openKey(Root, u"a"_qs), RegistryCode::NotFound);
}

TYPED_TEST(RegistryContract, ADeletedKeyTakesItsValuesAlong) {
    this->write(u"a"_qs, u"n"_qs, u"1"_qs);
    this->store().deleteKey(Root, u"a"_qs);
    this->store().createKey(Root, u"a"_qs);
    EXPECT_TRUE(this->values(u"a"_qs).isEmpty());
    EXPECT_EQ(this->text(u"a"_qs, u"n"_qs), u"result 2"_qs);
}

TYPED_TEST(RegistryContract, WhatIsMissingIsNotDeletedAndARootNever) {
    EXPECT_EQ(this->store().deleteKey(Root, u"none"_qs), RegistryCode::NotFound);
    EXPECT_EQ(this->store().deleteValue(Root, u"none"_qs, u"n"_qs), RegistryCode::NotFound);
    this->store().createKey(Root, u"a"_qs);
    EXPECT_EQ(this->store().deleteKey(Root, u"none"_qs), RegistryCode::NotFound);
    EXPECT_EQ(this->store().deleteValue(Root, u"a"_qs, u"n"_qs), RegistryCode::NotFound);
    EXPECT_EQ(this->store().deleteKey(Root, QString()), RegistryCode::AccessDenied);
}

TYPED_TEST(RegistryContract, ADeletedValueIsGoneAndTheOthersStay) {
    this->write(u"a"_qs, u"one"_qs, u"1"_qs);
    this->write(u"a"_qs, u"two"_qs, u"2"_qs);
    EXPECT_EQ(this->store().deleteValue(Root, u"a"_qs, u"ONE"_qs), RegistryCode::Ok);
    EXPECT_EQ(this->values(u"a"_qs), QStringList{u"two"_qs});
}

TYPED_TEST(RegistryContract, ABatchThatFailsIsTakenBack) {
    this->write(u"a"_qs, u"n"_qs, u"before"_qs);
    const int code = this->store().runBatch([this] {
        this->write(u"a"_qs, u"n"_qs, u"within"_qs);
        this->store().createKey(Root, u"b"_qs);
        EXPECT_EQ(this->text(u"a"_qs, u"n"_qs), u"within"_qs);
        return RegistryCode::AccessDenied;
    });
    EXPECT_EQ(code, RegistryCode::AccessDenied);
    EXPECT_EQ(this->text(u"a"_qs, u"n"_qs), u"before"_qs);
    EXPECT_EQ(this->store().openKey(Root, u"b"_qs), RegistryCode::NotFound);
}

TYPED_TEST(RegistryContract, ABatchKeepsAllThatItDidAndMayHoldAnother) {
    const int code = this->store().runBatch([this] {
        this->write(u"a"_qs, u"n"_qs, u"1"_qs);
        EXPECT_EQ(this->store().deleteValue(Root, u"a"_qs, u"none"_qs), RegistryCode::NotFound);
        return this->store().runBatch([this] { return this->write(u"b"_qs, QString(), QString()); });
    });
    EXPECT_EQ(code, RegistryCode::Ok);
    EXPECT_EQ(this->keys(QString()), (QStringList{u"a"_qs, u"b"_qs}));
}
