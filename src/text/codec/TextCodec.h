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

/// How the bytes of a file make a text. Inside the program every text is UTF-8; these are the other forms and the way
/// there and back. Nothing is ever lost: what is decoded and encoded by the format found gives the very bytes again.

enum class TextEncoding { Utf8, Utf16LittleEndian, Utf16BigEndian, Windows1252 };

/// What is remembered of a file's bytes beside its text: enough to write the same bytes again.
struct TextFormat {
    TextEncoding encoding = TextEncoding::Utf8;
    bool mark = false;  ///< a byte order mark stands in front

    bool operator==(const TextFormat&) const = default;
};

/// The format that a save under this word of SaveFlags writes; a word that names none: as loaded. UTF-16 is little
/// endian.
TextFormat formatOfSave(int flagWord, TextFormat loaded);

/// Turns the bytes of a file into UTF-8, part by part. Made for one load by whoever reads the file.
///
/// What the bytes are shows only at the last of them, so a guess is followed until it fails: a byte order mark decides,
/// else it is UTF-8. When decode() or finish() gives nothing, the bytes can't be what they were taken for; after
/// startOver() they are fed once more from the first, and then they are something else. Windows-1252 never fails, so a
/// detected text is read twice at most.
///
/// No byte is copied where nothing has to change: what decode() gives may lie in the bytes that were fed. Otherwise it
/// lies in the caller's scratch, which only grows. A part may end within a character.
class TextDecoder {
 public:
    /// By what the bytes show.
    TextDecoder() = default;
    /// By this format, mark included. If the bytes are not in it, startOver() turns to what they show.
    explicit TextDecoder(TextFormat format) : m_way(Way::Given), m_format(format) {}

    std::optional<std::string_view> decode(std::string_view bytes, std::string& scratch);
    /// To be called behind the last byte; may give a last bit of text.
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

/// By the given format if the bytes are in it, else, or without one, by what they show.
DecodedText decodeText(std::string_view bytes, std::optional<TextFormat> format = std::nullopt);

/// The first character that an encoding can't hold.
struct EncodeFailure {
    qint64 line = 1;    ///< from 1; CR, LF and CR LF end one
    qint64 column = 1;  ///< from 1, in UTF-16 units
    char32_t character = 0;

    /// The sentence for the user.
    SystemError error() const;
};

/// What to write for a text.
struct EncodedText {
    std::vector<std::string_view> pieces;  ///< parts of the text itself where nothing had to change
    std::unique_ptr<char[]> storage;       ///< holds what had to
    std::optional<EncodeFailure> failure;  ///< set: there are no pieces
};

/// The text comes in pieces of UTF-8 that outlive the result; one may end within a character.
EncodedText encodeText(std::span<const std::string_view> text, TextFormat format);
