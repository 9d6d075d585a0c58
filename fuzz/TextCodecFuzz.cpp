// Bytes of any kind must come back unchanged through the codec, whatever the size of the parts they are read in.

#include "FuzzEntry.h"
#include "text/codec/SaveFlags.h"
#include "text/codec/TextCodec.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace {

DecodedText decode(std::string_view bytes, std::size_t partSize) {
    TextDecoder decoder;
    for (;; decoder.startOver()) {
        DecodedText result;
        std::string scratch;
        bool good = true;
        for (std::size_t at = 0; good && at < bytes.size(); at += partSize) {
            // In memory of its own, so that a look beyond the part is an error.
            const std::string_view part = bytes.substr(at, partSize);
            const std::vector<char> copy(part.begin(), part.end());
            const auto text = decoder.decode({copy.data(), copy.size()}, scratch);
            good = text.has_value();
            result.utf8 += text.value_or("");
        }
        const auto rest = good ? decoder.finish(scratch) : std::nullopt;
        if (!rest)
            continue;
        result.utf8 += *rest;
        result.format = decoder.format();
        return result;
    }
}

std::string encode(std::string_view text, TextFormat format, std::size_t pieceSize) {
    std::vector<std::string_view> pieces;
    for (std::size_t at = 0; at < text.size(); at += pieceSize)
        pieces.push_back(text.substr(at, pieceSize));
    const EncodedText encoded = encodeText(pieces, format);
    std::string bytes;
    for (const std::string_view piece : encoded.pieces)
        bytes += piece;
    return encoded.failure ? std::string("refused") : bytes;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0)
        return 0;
    const std::size_t partSize = 1 + data[0];
    const std::string_view bytes(reinterpret_cast<const char*>(data) + 1, size - 1);

    const DecodedText whole = decodeText(bytes);
    const DecodedText parts = decode(bytes, partSize);
    require(whole.format == parts.format && whole.utf8 == parts.utf8);
    require(encode(parts.utf8, parts.format, partSize) == bytes);
    require(decodeText(bytes, parts.format).utf8 == parts.utf8);

    // Unsound bytes inside a text must not harm either.
    for (const int flag : {SaveFlags::Ansi, SaveFlags::Utf8WithMark, SaveFlags::Utf16WithMark, SaveFlags::Utf8})
        encode(bytes, formatOfSave(flag, parts.format), partSize);
    return 0;
}
