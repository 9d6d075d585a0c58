#include "text/codec/TextCodecBytesMaker.h"
#include "text/codec/TextCodecSupport.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

namespace {

/// Nothing when the bytes are unchanged and the text is valid, else a description of the error.
std::string roundTripFault(std::string_view bytes, std::size_t partSize) {
    const DecodedText decoded = decodeInParts(bytes, partSize);
    if (const DecodedText whole = decodeText(bytes); whole.utf8 != decoded.utf8 || whole.format != decoded.format)
        return "the size of the parts matters";
    Utf8Validator validator;
    if (!validator.feed(decoded.utf8) || !validator.complete())
        return "the text is not UTF-8";
    if (validator.ascii() != decoded.ascii)
        return "wrong about ASCII";
    const EncodedText encoded = encodeInPieces(decoded.utf8, decoded.format, partSize);
    if (encoded.failure || joined(encoded) != bytes)
        return "other bytes came back";
    const DecodedText again = decodeInParts(bytes, partSize, decoded.format);
    return again.utf8 == decoded.utf8 && again.format == decoded.format ? "" : "its own format does not decode it";
}

}  // namespace

TEST(TextCodecRoundTrip, GeneratedBytesComeBackUnchanged) {
    TextCodecBytesMaker maker(20240305);
    int detected[4] = {};
    for (int i = 0; i < 20'000; ++i) {
        const std::string bytes = maker.make();
        const std::size_t partSize = maker.below(19);  // 0: all at once; 18: some large ones
        ASSERT_EQ(roundTripFault(bytes, partSize == 18 ? 4096 : partSize), "")
            << testing::PrintToString(bytes) << " in parts of " << partSize;
        ++detected[static_cast<int>(decodeText(bytes).format.encoding)];
    }
    for (const int count : detected) {
        EXPECT_GT(count, 500) << "the inputs do not reach every encoding";
    }
}

TEST(TextCodecRoundTrip, LargeTextsComeBackUnchanged) {
    TextCodecBytesMaker maker(99);
    for (int i = 0; i < 20; ++i) {
        std::string bytes = maker.make();
        while (bytes.size() < 300'000)
            bytes += maker.make();
        ASSERT_EQ(roundTripFault(bytes, 65'536), "") << "input " << i;
    }
}

TEST(TextCodecRoundTrip, FilesOfManyEncodingsComeBackUnchanged) {
    const QDir corpus(u"" QT_TESTCASE_SOURCEDIR "/text/codec/corpus"_qs);
    const QStringList names = corpus.entryList(QDir::Files);
    ASSERT_GE(names.size(), 80);
    for (const QString& name : names) {
        QFile file(corpus.filePath(name));
        ASSERT_TRUE(file.open(QFile::ReadOnly));
        const std::string bytes = file.readAll().toStdString();
        for (const std::size_t partSize : {0U, 1U, 2U, 3U, 5U, 16U, 100U}) {
            EXPECT_EQ(roundTripFault(bytes, partSize), "") << name.toStdString() << " in parts of " << partSize;
        }
    }
}

TEST(TextCodecRoundTrip, FilesAreTakenForWhatTheirNamesSay) {
    const QDir corpus(u"" QT_TESTCASE_SOURCEDIR "/text/codec/corpus"_qs);
    const auto formatOf = [&](const QString& name) {
        QFile file(corpus.filePath(name));
        EXPECT_TRUE(file.open(QFile::ReadOnly));
        return decodeText(file.readAll().toStdString()).format;
    };
    for (const QString& script : {u"german"_qs, u"hindi"_qs, u"korean"_qs, u"emoji"_qs, u"edges"_qs}) {
        const QString end = script + u".txt"_qs;
        EXPECT_TRUE((formatOf(u"utf8-"_qs + end) == TextFormat{TextEncoding::Utf8, false}));
        EXPECT_TRUE((formatOf(u"utf8-mark-"_qs + end) == TextFormat{TextEncoding::Utf8, true}));
        EXPECT_TRUE((formatOf(u"utf16le-"_qs + end) == TextFormat{TextEncoding::Utf16LittleEndian, true}));
        EXPECT_TRUE((formatOf(u"utf16be-"_qs + end) == TextFormat{TextEncoding::Utf16BigEndian, true}));
    }
    for (const QString& name :
         {u"shift-jis.txt"_qs, u"utf16le-odd.txt"_qs, u"utf16be-swapped-pair.txt"_qs, u"utf8-surrogate.txt"_qs,
          u"utf8-overlong-3.txt"_qs, u"windows1252-letter.txt"_qs, u"utf8-mark-invalid.txt"_qs}) {
        EXPECT_TRUE((formatOf(name) == TextFormat{TextEncoding::Windows1252, false})) << name.toStdString();
    }
}
