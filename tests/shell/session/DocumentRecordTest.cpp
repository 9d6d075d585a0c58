#include "shell/session/DocumentRecord.h"

#include <QLocale>
#include <QStringList>

#include <gtest/gtest.h>

#include <clocale>
#include <random>

namespace {

const QString whole = u"/a b.txt\tFalse\tTrue\t2\t-15\t30.5\t6000\t4500"_qs;
const DocumentRecord wholeRecord{u"/a b.txt"_qs, false, true, ChildState::Maximised, -15, 30.5, 6000, 4500};

/// The record of a line with one field replaced.
DocumentRecord with(int field, const QString& text) {
    QStringList fields = whole.split(u'\t');
    fields[field] = text;
    return DocumentRecord::fromLine(fields.join(u'\t'));
}

}  // namespace

TEST(DocumentRecords, HaveEightFieldsInALine) {
    EXPECT_EQ(wholeRecord.toLine(), whole);
    EXPECT_EQ(DocumentRecord::fromLine(whole), wholeRecord);
    const DocumentRecord plain{u"/x"_qs, true, false, ChildState::Normal, 0, 0, 15, 1.5};
    EXPECT_EQ(plain.toLine(), u"/x\tTrue\tFalse\t0\t0\t0\t15\t1.5"_qs);
    EXPECT_EQ(DocumentRecord::fromLine(plain.toLine()), plain);
    EXPECT_EQ((DocumentRecord{u"/x"_qs, true, false, ChildState::Minimised, 0, 0, 0, 0}.toLine()),
              u"/x\tTrue\tFalse\t1\t0\t0\t0\t0"_qs);
}

TEST(DocumentRecords, OfADocumentThatNoLineCanHoldAreEmpty) {
    for (const char16_t* path : {u"", u"/a\tb", u"/a\nb", u"/a\rb"}) {
        DocumentRecord record = wholeRecord;
        record.path = QString::fromUtf16(path);
        EXPECT_EQ(record.toLine(), QString()) << qPrintable(record.path);
    }
}

TEST(DocumentRecords, OfFewFieldsKeepWhatTheyHave) {
    const QStringList fields = whole.split(u'\t');
    for (qsizetype count = 1; count <= fields.size(); ++count) {
        const DocumentRecord record = DocumentRecord::fromLine(fields.mid(0, count).join(u'\t'));
        EXPECT_EQ(record.path, wholeRecord.path);
        EXPECT_EQ(record.textEdit, count < 2) << count;
        EXPECT_EQ(record.locked, count >= 3) << count;
        EXPECT_EQ(record.windowState.has_value(), count >= 4) << count;
        EXPECT_EQ(record.left, count >= 5 ? -15.F : 0.F) << count;
        EXPECT_EQ(record.top, count >= 6 ? 30.5F : 0.F) << count;
        EXPECT_EQ(record.width, count >= 7 ? 6000.F : 0.F) << count;
        EXPECT_EQ(record.height, count >= 8 ? 4500.F : 0.F) << count;
        EXPECT_EQ(record.hasPlace(), count >= 8) << count;
    }
    EXPECT_EQ(DocumentRecord::fromLine(QString()), DocumentRecord());
    EXPECT_EQ(DocumentRecord::fromLine(u"\tTrue"_qs).path, QString());
    EXPECT_EQ(DocumentRecord::fromLine(whole + u"\tmore\t"_qs), wholeRecord);
}

TEST(DocumentRecords, KeepTheirDefaultWhereAFieldCannotBeRead) {
    for (const char* text : {"", "Yes", "-", "1e", "True True", "9999999999999"}) {
        const QString field = QString::fromLatin1(text);
        EXPECT_TRUE(with(1, field).textEdit) << text;
        EXPECT_FALSE(with(2, field).locked) << text;
        EXPECT_FALSE(with(3, field).windowState.has_value()) << text;
    }
    for (const char* state : {"-1", "3", "2.0", "two"}) {
        EXPECT_FALSE(with(3, QString::fromLatin1(state)).windowState.has_value()) << state;
    }
    for (const char* number : {"", "x", "1,5", "nan", "inf", "-inf", "1e99", "0x10"}) {
        const QString field = QString::fromLatin1(number);
        EXPECT_EQ(with(4, field).left, 0.F) << number;
        EXPECT_EQ(with(5, field).top, 0.F) << number;
        EXPECT_FALSE(with(6, field).hasPlace()) << number;
        EXPECT_FALSE(with(7, field).hasPlace()) << number;
        EXPECT_EQ(with(4, field).width, 6000.F) << number;
    }
}

TEST(DocumentRecords, ReadBooleansAsWordsAndNumbers) {
    const std::pair<const char*, bool> booleans[] = {{"True", true},   {"true", true},   {"TRUE", true},
                                                     {" True ", true}, {"1", true},      {"-1", true},
                                                     {"False", false}, {"fAlSe", false}, {"0", false}};
    for (const auto& [text, value] : booleans) {
        EXPECT_EQ(with(1, QString::fromLatin1(text)).textEdit, value) << text;
        EXPECT_EQ(with(2, QString::fromLatin1(text)).locked, value) << text;
    }
}

TEST(DocumentRecords, HaveAPlaceWhenTheWindowCanHaveThatSize) {
    const std::tuple<const char*, const char*, bool> sizes[] = {
        {"1", "0.1", true}, {"0.9", "100", false}, {"1", "0", false}, {"-5", "100", false}, {"100", "-1", false}};
    for (const auto& [width, height, has] : sizes) {
        DocumentRecord record = with(6, QString::fromLatin1(width));
        record.height = with(7, QString::fromLatin1(height)).height;
        EXPECT_EQ(record.hasPlace(), has) << width << ' ' << height;
    }
}

TEST(DocumentRecords, WriteAPointInEveryLocale) {
    const QLocale before;
    const std::string environment = std::setlocale(LC_ALL, nullptr);
    for (const char* name : {"de_DE.UTF-8", "fr_FR.UTF-8", "C"})
        std::setlocale(LC_ALL, name);  // where the system has it
    for (const QLocale::Language language : {QLocale::German, QLocale::French, QLocale::Arabic, QLocale::C}) {
        QLocale::setDefault(QLocale(language));
        EXPECT_EQ(wholeRecord.toLine(), whole);
        EXPECT_EQ(DocumentRecord::fromLine(whole), wholeRecord);
        const DocumentRecord large{u"/x"_qs, true, false, ChildState::Normal, 1'234'567, 0, 15, 15};
        EXPECT_TRUE(large.toLine().contains(u"\t1234567\t"_qs)) << qPrintable(large.toLine());
    }
    QLocale::setDefault(before);
    std::setlocale(LC_ALL, environment.c_str());
}

TEST(DocumentRecords, GeneratedOnesComeBackAsTheyWere) {
    std::mt19937 random(815);
    const auto length = [&random] {
        const auto quarters = static_cast<float>(static_cast<int>(random() % 2'000'000) - 1'000'000);
        return quarters / 4;
    };
    for (int round = 0; round < 2000; ++round) {
        const DocumentRecord record{u"/f %1 ü"_qs.arg(random()),
                                    random() % 2 == 0,
                                    random() % 2 == 0,
                                    static_cast<ChildState>(random() % 3),
                                    length(),
                                    length(),
                                    length(),
                                    length()};
        ASSERT_EQ(DocumentRecord::fromLine(record.toLine()), record) << qPrintable(record.toLine());
    }
}
