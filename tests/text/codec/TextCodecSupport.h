#pragma once

#include "text/codec/TextCodec.h"

#include <string>
#include <string_view>
#include <vector>

/// Decodes in parts of one size, as a file is read; 0 means all at once.
inline DecodedText decodeInParts(std::string_view bytes, std::size_t partSize,
                                 std::optional<TextFormat> format = std::nullopt) {
    TextDecoder decoder = format ? TextDecoder(*format) : TextDecoder();
    const std::size_t step = partSize == 0 ? std::max<std::size_t>(bytes.size(), 1) : partSize;
    for (;; decoder.startOver()) {
        DecodedText result;
        std::string scratch;
        bool good = true;
        for (std::size_t at = 0; good && at < bytes.size(); at += step) {
            // A separate copy, so that an access beyond the part is detected.
            const std::string part(bytes.substr(at, step));
            const auto text = decoder.decode(part, scratch);
            good = text.has_value();
            result.utf8 += text.value_or("");
        }
        const auto rest = good ? decoder.finish(scratch) : std::nullopt;
        if (!rest)
            continue;
        result.utf8 += *rest;
        result.format = decoder.format();
        result.ascii = decoder.ascii();
        return result;
    }
}

inline std::string joined(const EncodedText& encoded) {
    std::string bytes;
    for (const std::string_view piece : encoded.pieces)
        bytes += piece;
    return bytes;
}

/// The text cut into pieces of one size; 0 means a single piece.
inline std::vector<std::string_view> cutInPieces(std::string_view text, std::size_t size) {
    if (size == 0)
        return {text};
    std::vector<std::string_view> pieces;
    for (std::size_t at = 0; at < text.size(); at += size)
        pieces.push_back(text.substr(at, size));
    return pieces;
}

inline EncodedText encodeInPieces(std::string_view text, TextFormat format, std::size_t size = 0) {
    return encodeText(cutInPieces(text, size), format);
}
