#pragma once

#include "platform/SystemError.h"
#include "text/codec/TextCodecUtf8.h"

#include <QString>

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// Decodes the bytes of a file into text, and encodes it again. Inside the program every text is UTF-8. Nothing is ever
/// lost: decoding, and encoding in the detected format, gives exactly the same bytes.

enum class TextEncoding { Utf8, Utf16LittleEndian, Utf16BigEndian, Windows1252 };

/// The properties of a file's bytes beside its text: enough to write the same bytes again.
struct TextFormat {
    TextEncoding encoding = TextEncoding::Utf8;
    bool mark = false;  ///< there is a byte order mark at the start

    bool operator==(const TextFormat&) const = default;
};

/// The format that a save with this word of SaveFlags writes; a word without an encoding: as loaded. UTF-16 is little
/// endian.
TextFormat formatOfSave(int flagWord, TextFormat loaded);

/// Turns the bytes of a file into UTF-8, part by part. Created for one load by the code that reads the file.
///
/// The format is certain only at the last byte, so a guess is used until it fails: a byte order mark decides, else it
/// is UTF-8. When decode() or finish() returns nothing, the guess was wrong; after startOver() the bytes are fed once
/// more from the first, with another guess. Windows-1252 never fails, so a detected text is read twice at most.
///
/// No byte is copied unless it must be converted: the result of decode() may lie in the bytes that were fed. Otherwise
/// it lies in the caller's scratch, which only grows. A part may end within a character.
class TextDecoder {
 public:
    /// With detection.
    TextDecoder() = default;
    /// In this format, mark included. If the bytes are not in it, startOver() changes to detection.
    explicit TextDecoder(TextFormat format) : m_way(Way::Given), m_format(format) {}

    std::optional<std::string_view> decode(std::string_view bytes, std::string& scratch);
    /// To be called after the last byte; may return the end of the text.
    std::optional<std::string_view> finish(std::string& scratch);

    void startOver();

    /// Certain after finish(); before, the present guess.
    TextFormat format() const { return m_format; }
    /// Whether all text so far is ASCII.
    bool ascii() const { return m_ascii; }

 private:
    enum class Way { Given, Detected, Fallback };

    std::optional<std::string_view> begin(std::string_view bytes, std::string& scratch);
    std::optional<std::string_view> beginWithHead(std::string& scratch);
    std::optional<std::string_view> run(std::string_view bytes, std::string& scratch);
    std::string_view runWindows1252(std::string_view bytes, std::string& scratch);
    std::optional<std::string_view> runUtf16(std::string_view bytes, std::string& scratch);

    Way m_way = Way::Detected;
    TextFormat m_format;
    bool m_begun = false;
    bool m_ascii = true;
    std::string m_head;  ///< too few bytes to see a mark
    Utf8Validator m_validator;
    bool m_hasOddByte = false;
    char m_oddByte = 0;
    char16_t m_highSurrogate = 0;  ///< waits for its other half; 0: none
};

/// A whole text decoded at once, for bytes that are in memory anyway.
struct DecodedText {
    std::string utf8;
    TextFormat format;
    bool ascii = true;
};

/// In the given format if the bytes are in it; otherwise, or without one, in the detected format.
DecodedText decodeText(std::string_view bytes, std::optional<TextFormat> format = std::nullopt);

/// The first character that an encoding can't hold.
struct EncodeFailure {
    qint64 line = 1;    ///< from 1; CR, LF and CR LF end one
    qint64 column = 1;  ///< from 1, in UTF-16 units
    char32_t character = 0;

    /// The sentence for the user.
    SystemError error() const;
};

/// The bytes to write for a text.
struct EncodedText {
    std::vector<std::string_view> pieces;  ///< parts of the text itself where nothing is converted
    std::unique_ptr<char[]> storage;       ///< holds the converted parts
    std::optional<EncodeFailure> failure;  ///< set: there are no pieces
};

/// The text comes in pieces of UTF-8 that outlive the result; one may end within a character.
EncodedText encodeText(std::span<const std::string_view> text, TextFormat format);
