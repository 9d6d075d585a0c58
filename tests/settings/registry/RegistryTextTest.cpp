#include "settings/registry/MemoryRegistry.h"
#include "settings/registry/RegistryData.h"
#include "settings/registry/RegistryText.h"

#include <gtest/gtest.h>

#include <random>

namespace {

constexpr RegistryRoot Root = HKEY_CURRENT_USER;
using RegistryText::KeyName;

class RegistryTexts : public testing::Test {
 protected:
    QString exported(RegistryStore& from) {
        return RegistryText::exportKey(from, KeyName{Root, {}}).value_or(QString());
    }

    /// A store that is exported and imported again must be equal.
    void expectRoundTrip() {
        const QString text = QString::fromUtf8(exported(store).toUtf8());
        const RegistryText::Parsed parsed = RegistryText::parse(text);
        ASSERT_EQ(parsed.line, 0) << qPrintable(parsed.problem) << "\n" << qPrintable(text);
        MemoryRegistry copy;
        ASSERT_EQ(RegistryText::import(copy, parsed.entries), RegistryCode::Ok);
        expectSame(store, copy, QString());
    }
    void expectSame(RegistryStore& left, RegistryStore& right, const QString& path) {
        QStringList names;
        QStringList others;
        left.valueNames(Root, path, names);
        right.valueNames(Root, path, others);
        ASSERT_EQ(names, others);
        for (const QString& name : names) {
            RegistryValue one;
            RegistryValue other;
            left.readValue(Root, path, name, one);
            right.readValue(Root, path, name, other);
            ASSERT_EQ(one, other) << qPrintable(path) << " " << qPrintable(name) << " type " << one.type;
        }
        left.subKeys(Root, path, names);
        right.subKeys(Root, path, others);
        ASSERT_EQ(names, others);
        for (const QString& name : names)
            expectSame(left, right, path + u'/' + name);
    }
    void put(const QString& name, const RegistryValue& value) { store.writeValue(Root, u"k"_qs, name, value); }
    int lineOf(const char* text) { return RegistryText::parse(QString::fromUtf8(text)).line; }

    MemoryRegistry store;
};

const QString Odd =
    u"a\\b\"c\n\r\t]=[;#@:,'ünïcödé 世界 😀\u2028\u00A0\uFEFF\u200E"_qs + QChar(QChar::Null) + u"\x7F\x01 end "_qs;

}  // namespace

TEST_F(RegistryTexts, LooksAsThePersonExpects) {
    store.createKey(Root, u"Software/Empty"_qs);
    const QString key = u"Software/Quillmark"_qs;
    store.writeValue(Root, key, QString(), RegistryData::fromText(u"default"_qs));
    store.writeValue(Root, key, u"a"_qs, RegistryData::fromText(u"Grüße\n\"x\"\\"_qs));
    store.writeValue(Root, key, u"b"_qs, RegistryData::fromInteger(-42));
    store.writeValue(Root, key, u"c"_qs, {RegistryType::Binary, QByteArray("\0\xFF", 2)});
    store.writeValue(Root, key, u"d"_qs, RegistryData::fromTexts({u"x"_qs, u"y z"_qs}));
    store.writeValue(Root, key, u"e"_qs, RegistryData::fromText(u"%PATH%"_qs, RegistryType::ExpandString));
    store.writeValue(Root, key, u"f"_qs, {RegistryType::IntegerBigEndian, QByteArray("\0\0\1\2", 4)});
    store.writeValue(Root, key, u"g"_qs, {11, QByteArray("\1", 1)});
    EXPECT_EQ(RegistryText::exportKey(store, {Root, u"Software"_qs}),
              u"quillmark-registry 1\n"
              "\n[HKCU/Software]\n"
              "\n[HKCU/Software/Empty]\n"
              "\n[HKCU/Software/Quillmark]\n"
              "@ = string:\"default\"\n"
              "\"a\" = string:\"Grüße\\n\\\"x\\\"\\\\\"\n"
              "\"b\" = dword:-42\n"
              "\"c\" = binary:00 ff\n"
              "\"d\" = multi:\"x\",\"y z\"\n"
              "\"e\" = expand:\"%PATH%\"\n"
              "\"f\" = dword-be:258\n"
              "\"g\" = hex(11):01\n"_qs);
    expectRoundTrip();
}

TEST_F(RegistryTexts, AMissingKeyGivesNoText) {
    EXPECT_FALSE(RegistryText::exportKey(store, {Root, u"none"_qs}));
}

TEST_F(RegistryTexts, OddNamesAndTextsComeBack) {
    store.writeValue(Root, Odd + u'/' + Odd, Odd, RegistryData::fromText(Odd));
    store.createKey(Root, u" blank /]/[x]"_qs);
    put(u"@"_qs, RegistryData::fromText(QString()));
    put(QString(), RegistryData::fromText(u"default"_qs));
    put(u"half"_qs, RegistryData::fromText(QString(QChar(0xD800)) + u'x' + QChar(0xDC00)));
    put(u"list"_qs, RegistryData::fromTexts({Odd.section(QChar(QChar::Null), 0, 0), u"\",\""_qs}));
    expectRoundTrip();
}

TEST_F(RegistryTexts, DataOfNoUsualFormComesBack) {
    int number = 0;
    for (const qint32 type : {-1, 0, 1, 2, 3, 4, 5, 6, 7, 8, 11, 1000}) {
        for (const QByteArray& data :
             {QByteArray(), QByteArray("\0", 1), QByteArray("\0\0", 2), QByteArray("a\0", 2), QByteArray("a\0\0\0", 4),
              QByteArray("a\0\0", 3), QByteArray("\0\0\0\0", 4), QByteArray("\1\2\3\4\5", 5),
              QByteArray("a\0\0\0\0\0\0\0", 8), QByteArray("\0\0a\0\0\0\0\0", 8), QByteArray("\x00\xD8\x00\x00", 4)})
            put(QString::number(number++), {type, data});
    }
    expectRoundTrip();
}

TEST_F(RegistryTexts, EveryCharacterComesBack) {
    QString all;
    for (char32_t character = 0; character < 0x11000; ++character)
        all += QChar::fromUcs4(character);
    put(u"all"_qs, RegistryData::fromText(all));
    expectRoundTrip();
}

TEST_F(RegistryTexts, ChanceComesBack) {
    std::mt19937 chance(20260720);
    const auto below = [&](int limit) { return static_cast<int>(chance() % static_cast<unsigned>(limit)); };
    for (int i = 0; i < 500; ++i) {
        QByteArray data;
        for (int length = below(24); length > 0; --length)
            data.append(static_cast<char>(below(3) == 0 ? below(256) : 0));
        put(QString::number(i), {below(13), data});
    }
    expectRoundTrip();
}

TEST_F(RegistryTexts, ReadsWhatAPersonWrites) {
    const RegistryText::Parsed parsed = RegistryText::parse(
        u"\n# a remark\r\nquillmark-registry 1\r\n; another\r\n  [hkey_current_user/A/B]  \r\n"
        "  \"n\"=string: \"1\" \r\n@  =  dword:0xff\r\n\"h\" = hex(12): 00FF 1a\n\"e\" = multi:\n"_qs);
    ASSERT_EQ(parsed.line, 0) << qPrintable(parsed.problem);
    ASSERT_EQ(RegistryText::import(store, parsed.entries), RegistryCode::Ok);
    RegistryValue value;
    store.readValue(Root, u"a/b"_qs, u"n"_qs, value);
    EXPECT_EQ(value, RegistryData::fromText(u"1"_qs));
    store.readValue(Root, u"a/b"_qs, QString(), value);
    EXPECT_EQ(value, RegistryData::fromInteger(255));
    store.readValue(Root, u"a/b"_qs, u"h"_qs, value);
    EXPECT_EQ(value, (RegistryValue{12, QByteArray("\0\xFF\x1A", 3)}));
    store.readValue(Root, u"a/b"_qs, u"e"_qs, value);
    EXPECT_EQ(value, RegistryData::fromTexts({}));
}

TEST_F(RegistryTexts, ALineThatIsNotUnderstoodIsNamed) {
    EXPECT_EQ(lineOf("something else\n"), 1);
    EXPECT_EQ(lineOf("\n\nquillmark-registry 2\n"), 3);
    EXPECT_GT(lineOf(""), 0);
    for (const char* line : {"[HKCU/a",
                             "[HKXX/a]",
                             "[]",
                             "[HKCU/\\x]",
                             "junk",
                             "\"a\"",
                             "\"a\" string:\"x\"",
                             "\"a\" = string:x",
                             "\"a\" = string:\"x",
                             "\"a\" = string:\"x\"y",
                             "\"a = string:\"x\"",
                             "\"a\" = dword:",
                             "\"a\" = dword:x",
                             "\"a\" = dword:4294967296",
                             "\"a\" = binary:0",
                             "\"a\" = binary:zz",
                             "\"a\" = hex(x):00",
                             "\"a\" = hex(1:00",
                             "\"a\" = multi:\"x\"\"y\"",
                             "\"a\" = multi:\"x\",",
                             "\"a\" = real:1",
                             "\"a\" = ",
                             "@ string:\"x\"",
                             "\"\\u{110000}\" = dword:1",
                             "\"\\u{12\" = dword:1",
                             "\"\\u{}\" = dword:1",
                             "\"\\q\" = dword:1"}) {
        const QByteArray text = QByteArray("quillmark-registry 1\n[HKCU/a]\n") + line + "\n\"b\" = dword:1\n";
        EXPECT_EQ(lineOf(text.constData()), 3) << line;
        EXPECT_TRUE(RegistryText::parse(QString::fromUtf8(text)).entries.isEmpty());
    }
    EXPECT_EQ(lineOf("quillmark-registry 1\n\"a\" = dword:1\n"), 2) << "no key yet";
}

TEST_F(RegistryTexts, KeysAreNamedByEitherNameOfTheirRoot) {
    EXPECT_EQ(RegistryText::keyFromText(u"hkcr/.txt"_qs)->root, HKEY_CLASSES_ROOT);
    EXPECT_EQ(RegistryText::keyFromText(u"HKEY_LOCAL_MACHINE"_qs)->root, HKEY_LOCAL_MACHINE);
    EXPECT_EQ(RegistryText::keyFromText(u"HKCU/a/b"_qs)->path, u"a/b"_qs);
    EXPECT_FALSE(RegistryText::keyFromText(u"Software"_qs));
    EXPECT_FALSE(RegistryText::keyFromText(QString()));
    EXPECT_EQ(RegistryText::keyToText({HKEY_LOCAL_MACHINE, u"a/b"_qs}), u"HKLM/a/b"_qs);
    EXPECT_EQ(RegistryText::keyToText({HKEY_CLASSES_ROOT, {}}), u"HKCR"_qs);
}
