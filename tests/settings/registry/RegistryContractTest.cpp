// What every registry does, whatever keeps it.

#include "settings/registry/MemoryRegistry.h"
#include "settings/registry/RegistryData.h"
#include "settings/registry/SqliteRegistry.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

constexpr RegistryRoot Root = HKEY_CURRENT_USER;

/// A store and what it needs to live.
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
    SqliteRegistry m_store{m_folder.filePath(QStringLiteral("registry.db"))};
};

template <typename Holder>
class RegistryContract : public testing::Test {
 protected:
    RegistryStore& store() { return m_holder.store(); }

    QString text(const QString& path, const QString& name, RegistryRoot root = Root) {
        RegistryValue value;
        const int code = store().readValue(root, path, name, value);
        return code == RegistryCode::Ok ? RegistryData::textToZero(RegistryData::units(value))
                                        : QStringLiteral("result %1").arg(code);
    }
    int write(const QString& path, const QString& name, const QString& value, RegistryRoot root = Root) {
        return store().writeValue(root, path, name, RegistryData::fromText(value));
    }
    QStringList keys(const QString& path, int limit = -1) {
        QStringList names{QStringLiteral("stale")};
        store().subKeys(Root, path, names, limit);
        return names;
    }
    QStringList values(const QString& path) {
        QStringList names{QStringLiteral("stale")};
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
        EXPECT_EQ(store.openKey(root, QStringLiteral("Software")), RegistryCode::NotFound);
    }
    EXPECT_TRUE(this->keys(QString()).isEmpty());
    EXPECT_TRUE(this->values(QString()).isEmpty());
    QStringList names;
    EXPECT_EQ(store.subKeys(Root, QString(), names), RegistryCode::Ok);
    EXPECT_EQ(store.valueNames(Root, QString(), names), RegistryCode::Ok);
    EXPECT_EQ(store.subKeys(Root, QStringLiteral("none"), names), RegistryCode::NotFound);
    EXPECT_EQ(store.valueNames(Root, QStringLiteral("none"), names), RegistryCode::NotFound);
}

TYPED_TEST(RegistryContract, RootsAreApart) {
    this->write(QStringLiteral("a"), QStringLiteral("n"), QStringLiteral("classes"), HKEY_CLASSES_ROOT);
    this->write(QStringLiteral("a"), QStringLiteral("n"), QStringLiteral("user"), HKEY_CURRENT_USER);
    EXPECT_EQ(this->text(QStringLiteral("a"), QStringLiteral("n"), HKEY_CLASSES_ROOT), QStringLiteral("classes"));
    EXPECT_EQ(this->text(QStringLiteral("a"), QStringLiteral("n"), HKEY_CURRENT_USER), QStringLiteral("user"));
    EXPECT_EQ(this->text(QStringLiteral("a"), QStringLiteral("n"), HKEY_LOCAL_MACHINE), QStringLiteral("result 2"));
}

TYPED_TEST(RegistryContract, AnotherNumberIsNoRoot) {
    RegistryStore& store = this->store();
    const RegistryRoot unknown = 7;
    RegistryValue value;
    QStringList names;
    const QString a = QStringLiteral("a");
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
    EXPECT_EQ(this->store().createKey(Root, QStringLiteral("Software/Quillmark/general")), RegistryCode::Ok);
    EXPECT_EQ(this->store().openKey(Root, QStringLiteral("Software")), RegistryCode::Ok);
    EXPECT_EQ(this->store().openKey(Root, QStringLiteral("Software/Quillmark")), RegistryCode::Ok);
    EXPECT_EQ(this->keys(QStringLiteral("Software/Quillmark")), QStringList{QStringLiteral("general")});
    EXPECT_TRUE(this->values(QStringLiteral("Software/Quillmark/general")).isEmpty());
}

TYPED_TEST(RegistryContract, CreatingAKeyAgainKeepsWhatItHolds) {
    this->write(QStringLiteral("a/b"), QStringLiteral("n"), QStringLiteral("1"));
    EXPECT_EQ(this->store().createKey(Root, QStringLiteral("a/b")), RegistryCode::Ok);
    EXPECT_EQ(this->store().createKey(Root, QStringLiteral("a")), RegistryCode::Ok);
    EXPECT_EQ(this->text(QStringLiteral("a/b"), QStringLiteral("n")), QStringLiteral("1"));
}

TYPED_TEST(RegistryContract, SlashesAtTheEndsAndDoubledOnesCountForNothing) {
    this->write(QStringLiteral("/a//b/"), QStringLiteral("n"), QStringLiteral("1"));
    EXPECT_EQ(this->text(QStringLiteral("a/b"), QStringLiteral("n")), QStringLiteral("1"));
    EXPECT_EQ(this->keys(QStringLiteral("/")), QStringList{QStringLiteral("a")});
}

TYPED_TEST(RegistryContract, ABackslashIsACharacterOfAName) {
    this->write(QStringLiteral("a\\b"), QStringLiteral("n"), QStringLiteral("1"));
    EXPECT_EQ(this->store().openKey(Root, QStringLiteral("a")), RegistryCode::NotFound);
    EXPECT_EQ(this->keys(QString()), QStringList{QStringLiteral("a\\b")});
}

TYPED_TEST(RegistryContract, AValueNameMayHoldSlashes) {
    this->write(QStringLiteral("a"), QStringLiteral("x/y"), QStringLiteral("1"));
    EXPECT_EQ(this->text(QStringLiteral("a"), QStringLiteral("x/y")), QStringLiteral("1"));
    EXPECT_TRUE(this->keys(QStringLiteral("a")).isEmpty());
}

TYPED_TEST(RegistryContract, NamesAreComparedWithoutCaseInTheWholeOfUnicode) {
    this->write(QStringLiteral("Köln/ΣΙΓΜΑ"), QStringLiteral("Ärger"), QStringLiteral("1"));
    EXPECT_EQ(this->text(QStringLiteral("kÖLN/σιγμα"), QStringLiteral("äRGER")), QStringLiteral("1"));
    this->write(QStringLiteral("𐐀"), QStringLiteral("n"), QStringLiteral("2"));
    EXPECT_EQ(this->text(QStringLiteral("𐐨"), QStringLiteral("N")), QStringLiteral("2"));
}

TYPED_TEST(RegistryContract, NamesOfDifferentLengthAreNeverTheSame) {
    this->write(QStringLiteral("straße"), QStringLiteral("n"), QStringLiteral("1"));
    EXPECT_EQ(this->store().openKey(Root, QStringLiteral("STRASSE")), RegistryCode::NotFound);
}

TYPED_TEST(RegistryContract, TheFirstSpellingStays) {
    this->write(QStringLiteral("Key"), QStringLiteral("Name"), QStringLiteral("1"));
    this->write(QStringLiteral("KEY"), QStringLiteral("NAME"), QStringLiteral("2"));
    EXPECT_EQ(this->keys(QString()), QStringList{QStringLiteral("Key")});
    EXPECT_EQ(this->values(QStringLiteral("key")), QStringList{QStringLiteral("Name")});
    EXPECT_EQ(this->text(QStringLiteral("key"), QStringLiteral("name")), QStringLiteral("2"));
}

TYPED_TEST(RegistryContract, TheDefaultValueHasTheEmptyName) {
    this->write(QStringLiteral("a"), QString(), QStringLiteral("default"));
    this->write(QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("named"));
    EXPECT_EQ(this->text(QStringLiteral("a"), QString()), QStringLiteral("default"));
    EXPECT_EQ(this->values(QStringLiteral("a")), (QStringList{QString(), QStringLiteral("b")}));
}

TYPED_TEST(RegistryContract, ARootHasValuesOfItsOwn) {
    this->write(QString(), QStringLiteral("n"), QStringLiteral("1"));
    EXPECT_EQ(this->text(QStringLiteral("/"), QStringLiteral("N")), QStringLiteral("1"));
    EXPECT_EQ(this->values(QString()), QStringList{QStringLiteral("n")});
    EXPECT_EQ(this->store().deleteValue(Root, QString(), QStringLiteral("n")), RegistryCode::Ok);
}

TYPED_TEST(RegistryContract, SubKeysComeByNameWithoutCase) {
    for (const char* name : {"010", "b", "A", "c", "B2", "001", "a!"}) {
        this->store().createKey(Root, QStringLiteral("list/") + QLatin1String(name));
    }
    this->store().createKey(Root, QStringLiteral("list/A/deeper"));
    this->store().createKey(Root, QStringLiteral("list!"));
    const QStringList expected{QStringLiteral("001"), QStringLiteral("010"), QStringLiteral("A"), QStringLiteral("a!"),
                               QStringLiteral("b"),   QStringLiteral("B2"),  QStringLiteral("c")};
    EXPECT_EQ(this->keys(QStringLiteral("LIST")), expected);
    EXPECT_EQ(this->keys(QStringLiteral("list"), 2), expected.first(2));
    EXPECT_TRUE(this->keys(QStringLiteral("list"), 0).isEmpty());
}

TYPED_TEST(RegistryContract, ValuesComeByNameWithoutCase) {
    for (const char* name : {"b", "A", "C"}) {
        this->write(QStringLiteral("k"), QLatin1String(name), QString());
    }
    EXPECT_EQ(this->values(QStringLiteral("k")),
              (QStringList{QStringLiteral("A"), QStringLiteral("b"), QStringLiteral("C")}));
}

TYPED_TEST(RegistryContract, EveryTypeAndEveryByteComesBack) {
    QByteArray all;
    for (int byte = 0; byte < 256; ++byte) {
        all.append(static_cast<char>(byte));
    }
    for (const qint32 type : {0, 1, 2, 3, 4, 5, 7, 11, -1}) {
        for (const QByteArray& data : {QByteArray(), QByteArray(1, '\0'), all}) {
            const RegistryValue written{type, data};
            ASSERT_EQ(this->store().writeValue(Root, QStringLiteral("k"), QStringLiteral("n"), written),
                      RegistryCode::Ok);
            RegistryValue read{99, "stale"};
            ASSERT_EQ(this->store().readValue(Root, QStringLiteral("k"), QStringLiteral("n"), read), RegistryCode::Ok);
            EXPECT_EQ(read, written) << type << " " << data.size();
        }
    }
}

TYPED_TEST(RegistryContract, ALargeValueComesBack) {
    const QString large(1'000'000, u'ü');
    EXPECT_EQ(this->write(QStringLiteral("k"), QStringLiteral("n"), large), RegistryCode::Ok);
    EXPECT_EQ(this->text(QStringLiteral("k"), QStringLiteral("n")), large);
}

TYPED_TEST(RegistryContract, ZerosAndQuotesInNamesAreKept) {
    const QString odd = QStringLiteral("a'\"\n;--") + QChar(QChar::Null) + QStringLiteral("b");
    this->write(odd, odd, QStringLiteral("1"));
    EXPECT_EQ(this->keys(QString()), QStringList{odd});
    EXPECT_EQ(this->values(odd), QStringList{odd});
    EXPECT_EQ(this->text(QStringLiteral("a'\"\n;--"), odd), QStringLiteral("result 2"));
}

TYPED_TEST(RegistryContract, HalfASurrogatePairInANameBecomesTheReplacementCharacter) {
    EXPECT_EQ(this->write(QStringLiteral("k"), QString(QChar(0xD800)), QStringLiteral("1")), RegistryCode::Ok);
    EXPECT_EQ(this->text(QStringLiteral("k"), QString(QChar(0xD800))), QStringLiteral("1"));
    EXPECT_EQ(this->values(QStringLiteral("k")).size(), 1);
}

TYPED_TEST(RegistryContract, AMissingValueLeavesTheCallersAlone) {
    RegistryValue value{42, "kept"};
    this->store().createKey(Root, QStringLiteral("k"));
    EXPECT_EQ(this->store().readValue(Root, QStringLiteral("k"), QStringLiteral("n"), value), RegistryCode::NotFound);
    EXPECT_EQ(this->store().readValue(Root, QStringLiteral("none"), QString(), value), RegistryCode::NotFound);
    EXPECT_EQ(value, (RegistryValue{42, "kept"}));
}

TYPED_TEST(RegistryContract, AKeyWithSubKeysIsNotDeleted) {
    this->write(QStringLiteral("a"), QStringLiteral("n"), QStringLiteral("1"));
    this->store().createKey(Root, QStringLiteral("a/b"));
    EXPECT_EQ(this->store().deleteKey(Root, QStringLiteral("A")), RegistryCode::AccessDenied);
    EXPECT_EQ(this->text(QStringLiteral("a"), QStringLiteral("n")), QStringLiteral("1"));
    EXPECT_EQ(this->store().deleteKey(Root, QStringLiteral("A/B")), RegistryCode::Ok);
    EXPECT_EQ(this->store().deleteKey(Root, QStringLiteral("A")), RegistryCode::Ok);
    EXPECT_EQ(this->store().openKey(Root, QStringLiteral("a")), RegistryCode::NotFound);
}

TYPED_TEST(RegistryContract, ADeletedKeyTakesItsValuesAlong) {
    this->write(QStringLiteral("a"), QStringLiteral("n"), QStringLiteral("1"));
    this->store().deleteKey(Root, QStringLiteral("a"));
    this->store().createKey(Root, QStringLiteral("a"));
    EXPECT_TRUE(this->values(QStringLiteral("a")).isEmpty());
    EXPECT_EQ(this->text(QStringLiteral("a"), QStringLiteral("n")), QStringLiteral("result 2"));
}

TYPED_TEST(RegistryContract, WhatIsMissingIsNotDeletedAndARootNever) {
    EXPECT_EQ(this->store().deleteKey(Root, QStringLiteral("none")), RegistryCode::NotFound);
    EXPECT_EQ(this->store().deleteValue(Root, QStringLiteral("none"), QStringLiteral("n")), RegistryCode::NotFound);
    this->store().createKey(Root, QStringLiteral("a"));
    EXPECT_EQ(this->store().deleteKey(Root, QStringLiteral("none")), RegistryCode::NotFound);
    EXPECT_EQ(this->store().deleteValue(Root, QStringLiteral("a"), QStringLiteral("n")), RegistryCode::NotFound);
    EXPECT_EQ(this->store().deleteKey(Root, QString()), RegistryCode::AccessDenied);
}

TYPED_TEST(RegistryContract, ADeletedValueIsGoneAndTheOthersStay) {
    this->write(QStringLiteral("a"), QStringLiteral("one"), QStringLiteral("1"));
    this->write(QStringLiteral("a"), QStringLiteral("two"), QStringLiteral("2"));
    EXPECT_EQ(this->store().deleteValue(Root, QStringLiteral("a"), QStringLiteral("ONE")), RegistryCode::Ok);
    EXPECT_EQ(this->values(QStringLiteral("a")), QStringList{QStringLiteral("two")});
}

TYPED_TEST(RegistryContract, ABatchThatFailsIsTakenBack) {
    this->write(QStringLiteral("a"), QStringLiteral("n"), QStringLiteral("before"));
    const int code = this->store().runBatch([this] {
        this->write(QStringLiteral("a"), QStringLiteral("n"), QStringLiteral("within"));
        this->store().createKey(Root, QStringLiteral("b"));
        EXPECT_EQ(this->text(QStringLiteral("a"), QStringLiteral("n")), QStringLiteral("within"));
        return RegistryCode::AccessDenied;
    });
    EXPECT_EQ(code, RegistryCode::AccessDenied);
    EXPECT_EQ(this->text(QStringLiteral("a"), QStringLiteral("n")), QStringLiteral("before"));
    EXPECT_EQ(this->store().openKey(Root, QStringLiteral("b")), RegistryCode::NotFound);
}

TYPED_TEST(RegistryContract, ABatchKeepsAllThatItDidAndMayHoldAnother) {
    const int code = this->store().runBatch([this] {
        this->write(QStringLiteral("a"), QStringLiteral("n"), QStringLiteral("1"));
        EXPECT_EQ(this->store().deleteValue(Root, QStringLiteral("a"), QStringLiteral("none")), RegistryCode::NotFound);
        return this->store().runBatch([this] { return this->write(QStringLiteral("b"), QString(), QString()); });
    });
    EXPECT_EQ(code, RegistryCode::Ok);
    EXPECT_EQ(this->keys(QString()), (QStringList{QStringLiteral("a"), QStringLiteral("b")}));
}
