#include "text/codec/TextCodec.h"
#include "text/codec/TextCodecSupport.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <ostream>

using namespace std::string_view_literals;

namespace {

constexpr TextFormat Utf8{TextEncoding::Utf8, false};
constexpr TextFormat Utf8Mark{TextEncoding::Utf8, true};
constexpr TextFormat Little{TextEncoding::Utf16LittleEndian, true};
constexpr TextFormat Big{TextEncoding::Utf16BigEndian, true};
constexpr TextFormat Ansi{TextEncoding::Windows1252, false};

constexpr std::size_t PartSizes[] = {0, 1, 2, 3, 4, 5, 7, 16, 17};

void expectDecoded(std::string_view bytes, TextFormat format, std::string_view text) {
    for (const std::size_t size : PartSizes) {
        const DecodedText decoded = decodeInParts(bytes, size);
        EXPECT_EQ(decoded.format, format) << "parts of " << size;
        EXPECT_EQ(decoded.utf8, text) << "parts of " << size;
    }
}

void expectFailure(std::string_view text, qint64 line, qint64 column, char32_t character) {
    for (const std::size_t size : PartSizes) {
        const EncodedText encoded = encodeInPieces(text, Ansi, size);
        ASSERT_TRUE(encoded.failure.has_value()) << "pieces of " << size;
        EXPECT_TRUE(encoded.pieces.empty());
        EXPECT_EQ(encoded.failure->line, line) << "pieces of " << size;
        EXPECT_EQ(encoded.failure->column, column) << "pieces of " << size;
        EXPECT_EQ(encoded.failure->character, character) << "pieces of " << size;
    }
}

}  // namespace

void PrintTo(const TextFormat& format, std::ostream* out);
void PrintTo(const TextFormat& format, std::ostream* out) {
    *out << "encoding " << static_cast<int>(format.encoding) << (format.mark ? " with mark" : " without mark");
}

TEST(TextCodecDetection, AMarkDecides) {
    expectDecoded("\xEF\xBB\xBFgr\xC3\xB6", Utf8Mark, "gr\xC3\xB6");
    expectDecoded("\xFF\xFEg\0\xF6\0"sv, Little, "g\xC3\xB6");
    expectDecoded("\xFE\xFF\0g\0\xF6"sv, Big, "g\xC3\xB6");
}

TEST(TextCodecDetection, AMarkAloneIsAnEmptyText) {
    expectDecoded("\xEF\xBB\xBF", Utf8Mark, "");
    expectDecoded("\xFF\xFE", Little, "");
    expectDecoded("\xFE\xFF", Big, "");
}

TEST(TextCodecDetection, PartOfAMarkIsText) {
    expectDecoded("\xEF", Ansi, "\xC3\xAF");
    expectDecoded("\xEF\xBB", Ansi, "\xC3\xAF\xC2\xBB");
    expectDecoded("\xFF", Ansi, "\xC3\xBF");
}

TEST(TextCodecDetection, ASecondMarkIsText) {
    expectDecoded("\xEF\xBB\xBF\xEF\xBB\xBF", Utf8Mark, "\xEF\xBB\xBF");
}

TEST(TextCodecDetection, WithoutAMarkValidUtf8IsUtf8) {
    expectDecoded("", Utf8, "");
    expectDecoded("plain", Utf8, "plain");
    expectDecoded("\xE6\xBC\xA2\xF0\x9F\x98\x80", Utf8, "\xE6\xBC\xA2\xF0\x9F\x98\x80");
    expectDecoded("a\0b"sv, Utf8, "a\0b"sv);
}

TEST(TextCodecDetection, WhatIsNotStrictUtf8IsWindows1252) {
    expectDecoded("gr\xF6\xDF", Ansi, "gr\xC3\xB6\xC3\x9F");
    expectDecoded("\xC0\xAF", Ansi, "\xC3\x80\xC2\xAF");
    expectDecoded("cut \xE2\x82", Ansi, "cut \xC3\xA2\xE2\x80\x9A");
}

TEST(TextCodecDetection, UnsoundTextBehindAMarkIsWindows1252WithTheMarkAsText) {
    expectDecoded("\xEF\xBB\xBF\xFF", Ansi, "\xC3\xAF\xC2\xBB\xC2\xBF\xC3\xBF");
    expectDecoded("\xFF\xFE\x61", Ansi, "\xC3\xBF\xC3\xBE\x61");
    expectDecoded("\xFE\xFF\x61", Ansi, "\xC3\xBE\xC3\xBF\x61");
    expectDecoded("\xFF\xFE\x3D\xD8", Ansi, "\xC3\xBF\xC3\xBE=\xC3\x98");
    expectDecoded("\xFF\xFE\x00\xDC\x61\x00"sv, Ansi, "\xC3\xBF\xC3\xBE\0\xC3\x9C\x61\0"sv);
}

TEST(TextCodecDetection, PairsOfUnitsMakeOneCharacterAcrossParts) {
    expectDecoded("\xFF\xFE\x3D\xD8\x00\xDE\x61\x00"sv, Little, "\xF0\x9F\x98\x80\x61");
    expectDecoded("\xFE\xFF\xDB\xFF\xDF\xFF"sv, Big, "\xF4\x8F\xBF\xBF");
}

TEST(TextCodecDetection, LineEndsAndNulsAreKept) {
    expectDecoded("\xFF\xFE\r\0\n\0\r\0\0\0\n\0"sv, Little, "\r\n\r\0\n"sv);
    expectDecoded("a\r\nb\rc\n\xFF", Ansi, "a\r\nb\rc\n\xC3\xBF");
}

TEST(TextCodecDetection, TellsWhetherAllIsAscii) {
    const auto ascii = [](std::string_view bytes, std::size_t size) { return decodeInParts(bytes, size).ascii; };
    for (const std::size_t size : PartSizes) {
        EXPECT_TRUE(ascii("plain text of more than sixteen bytes", size));
        EXPECT_TRUE(ascii("\xFF\xFEg\0o\0o\0d\0 \0t\0e\0x\0t\0"sv, size));
        EXPECT_TRUE(ascii("\xEF\xBB\xBFgood", size));
        EXPECT_FALSE(ascii("plain text of more than sixteen bytes\xC3\xB6", size));
        EXPECT_FALSE(ascii("plain text of more than sixteen bytes\xF6", size));
        EXPECT_FALSE(ascii("\xFE\xFF\0g\0\xF6"sv, size));
    }
}

TEST(TextCodecDetection, NothingIsCopiedWhereNothingChanges) {
    const std::string bytes = "\xEF\xBB\xBFno change";
    TextDecoder decoder;
    std::string scratch;
    const auto text = decoder.decode(bytes, scratch);
    ASSERT_TRUE(text.has_value());
    EXPECT_EQ(text->data(), bytes.data() + 3);
    EXPECT_TRUE(scratch.empty());
}

TEST(TextCodecGivenFormat, BytesThatLookLikeAnotherEncodingStayInTheirs) {
    const DecodedText decoded = decodeText("gr\xC3\xB6\xC3\x9F", Ansi);
    EXPECT_EQ(decoded.format, Ansi);
    EXPECT_EQ(decoded.utf8, "gr\xC3\x83\xC2\xB6\xC3\x83\xC5\xB8");
}

TEST(TextCodecGivenFormat, WithoutAMarkOneInFrontIsText) {
    EXPECT_EQ(decodeText("\xEF\xBB\xBFx", Utf8).utf8, "\xEF\xBB\xBFx");
    EXPECT_EQ(decodeText("\xEF\xBB\xBFx", Utf8).format, Utf8);
    EXPECT_EQ(decodeText("\xFF\xFE", Ansi).utf8, "\xC3\xBF\xC3\xBE");
}

TEST(TextCodecGivenFormat, BytesThatAreNotInItAreDetected) {
    for (const std::size_t size : PartSizes) {
        EXPECT_EQ(decodeInParts("no mark", size, Utf8Mark).format, Utf8);
        EXPECT_EQ(decodeInParts("\xEF\xBB\xBFx", size, Little).format, Utf8Mark);
        EXPECT_EQ(decodeInParts("gr\xF6", size, Utf8).format, Ansi);
        EXPECT_EQ(decodeInParts("gr\xF6", size, Utf8).utf8, "gr\xC3\xB6");
        EXPECT_EQ(decodeInParts("", size, Utf8Mark).format, Utf8);
    }
}

TEST(TextCodecWindows1252, EveryByteComesBack) {
    std::string all;
    for (int byte = 0; byte < 256; ++byte)
        all += static_cast<char>(byte);
    const DecodedText decoded = decodeText(all);
    EXPECT_EQ(decoded.format, Ansi);
    EXPECT_EQ(joined(encodeInPieces(decoded.utf8, Ansi)), all);
}

TEST(TextCodecWindows1252, TheUpperBytesHaveTheirCharacters) {
    EXPECT_EQ(decodeText("\x80\x82\x8A\x99\x9F\xA0\xFF").utf8, "€‚Š™Ÿ\u00A0ÿ");
    EXPECT_EQ(decodeText("\x81\x8D\x8F\x90\x9D").utf8, "\xC2\x81\xC2\x8D\xC2\x8F\xC2\x90\xC2\x9D");
}

TEST(TextCodecSaving, FlagWordsNameTheFormat) {
    EXPECT_EQ(formatOfSave(16, Big), Ansi);
    EXPECT_EQ(formatOfSave(32, Big), Utf8Mark);
    EXPECT_EQ(formatOfSave(64, Big), Little);
    EXPECT_EQ(formatOfSave(128, Big), Utf8);
    EXPECT_EQ(formatOfSave(0, Big), Big);
    EXPECT_EQ(formatOfSave(1, Ansi), Ansi);
    EXPECT_EQ(formatOfSave(65, Ansi), Little);
}

TEST(TextCodecSaving, ATextIsWrittenInEveryFormat) {
    const std::string_view text = "gr\xC3\xB6 \xF0\x9F\x98\x80\n";
    for (const std::size_t size : PartSizes) {
        EXPECT_EQ(joined(encodeInPieces(text, Utf8, size)), text);
        EXPECT_EQ(joined(encodeInPieces(text, Utf8Mark, size)), "\xEF\xBB\xBF" + std::string(text));
        EXPECT_EQ(joined(encodeInPieces(text, Little, size)), "\xFF\xFEg\0r\0\xF6\0 \0\x3D\xD8\x00\xDE\n\0"sv);
        EXPECT_EQ(joined(encodeInPieces(text, Big, size)), "\xFE\xFF\0g\0r\0\xF6\0 \xD8\x3D\xDE\x00\0\n"sv);
        EXPECT_EQ(joined(encodeInPieces("gr\xC3\xB6 \xE2\x82\xAC", Ansi, size)), "gr\xF6 \x80");
    }
}

TEST(TextCodecSaving, AnEmptyTextIsItsMarkAlone) {
    EXPECT_EQ(joined(encodeText({}, Utf8)), "");
    EXPECT_EQ(joined(encodeText({}, Ansi)), "");
    EXPECT_EQ(joined(encodeText({}, Utf8Mark)), "\xEF\xBB\xBF");
    EXPECT_EQ(joined(encodeText({}, Little)), "\xFF\xFE");
    EXPECT_EQ(joined(encodeText({}, Big)), "\xFE\xFF");
}

TEST(TextCodecSaving, Utf8IsNotCopied) {
    const std::string_view text = "as it is";
    const EncodedText encoded = encodeInPieces(text, Utf8Mark);
    ASSERT_EQ(encoded.pieces.size(), 2U);
    EXPECT_EQ(encoded.pieces[1].data(), text.data());
    EXPECT_EQ(encoded.storage, nullptr);
}

TEST(TextCodecSaving, WhatAnsiCannotHoldIsRefusedWithItsPlace) {
    expectFailure("\xE6\xBC\xA2", 1, 1, 0x6F22);
    expectFailure("one\ntwo\r\nthr\xC3\xB6\xE6\xBC\xA2\xE6\xBC\xA2", 3, 5, 0x6F22);
    expectFailure("a\rb\r\r\nc\n\n\xC4\x80", 6, 1, 0x100);
    expectFailure("long enough to be more than a block of bytes \xF0\x9F\x98\x80", 1, 46, 0x1F600);
    expectFailure("\n\xC2\x80", 2, 1, 0x80);
}

TEST(TextCodecSaving, ColumnsCountUnitsAndNotBytes) {
    const std::string_view text = "\xC3\xB6\xE2\x82\xAC\tx\xC4\x80";
    expectFailure(text, 1, 5, 0x100);
}

TEST(TextCodecSaving, ARefusalTellsLineColumnAndCharacter) {
    const SystemError error = EncodeFailure{12, 7, 0x1F600}.error();
    EXPECT_EQ(error.number, EILSEQ);
    EXPECT_EQ(error.description, u"Line 12, column 7: the character U+1F600 can't be saved as ANSI (Windows-1252)."_qs);
    EXPECT_TRUE((EncodeFailure{1, 1, 0x80}.error().description.contains(u"U+0080"_qs)));
}

TEST(TextCodecSaving, UnsoundBytesInsideATextBecomeReplacementCharacters) {
    for (const std::size_t size : PartSizes) {
        EXPECT_EQ(joined(encodeInPieces("a\xFF\xE2\x82z\xF0\x9F", Big, size)),
                  "\xFE\xFF\0a\xFF\xFD\xFF\xFD\xFF\xFD\0z\xFF\xFD"sv);
    }
}

TEST(TextCodecSaving, WhatWasSavedInAFormatIsLoadedByIt) {
    const std::string_view text = "\xEF\xBB\xBFgr\xC3\xB6\r\n";
    for (const TextFormat format : {Utf8, Utf8Mark, Little, Big}) {
        const DecodedText decoded = decodeText(joined(encodeInPieces(text, format)), format);
        EXPECT_EQ(decoded.utf8, text);
        EXPECT_EQ(decoded.format, format);
    }
}
