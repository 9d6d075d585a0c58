#include "text/codec/TextCodec.h"

#include "text/codec/SaveFlags.h"

#include <algorithm>
#include <array>

namespace {

/// Encodings for saving, by their flag.
constexpr struct {
    int flag;
    TextFormat format;
} SaveTable[] = {
    {SaveFlags::Ansi, {TextEncoding::Windows1252, false}},
    {SaveFlags::Utf8WithMark, {TextEncoding::Utf8, true}},
    {SaveFlags::Utf16WithMark, {TextEncoding::Utf16LittleEndian, true}},
    {SaveFlags::Utf8, {TextEncoding::Utf8, false}},
};

}  // namespace

TextFormat formatOfSave(int flagWord, TextFormat loaded) {
    for (const auto& row : SaveTable) {
        if ((flagWord & row.flag) != 0)
            return row.format;
    }
    return loaded;
}

DecodedText decodeText(std::string_view bytes, std::optional<TextFormat> format) {
    TextDecoder decoder = format ? TextDecoder(*format) : TextDecoder();
    std::string scratch;
    for (;; decoder.startOver()) {
        const auto most = decoder.decode(bytes, scratch);
        if (!most)
            continue;
        DecodedText result{std::string(*most), {}, true};
        const auto rest = decoder.finish(scratch);
        if (!rest)
            continue;
        result.utf8 += *rest;
        result.format = decoder.format();
        result.ascii = decoder.ascii();
        return result;
    }
}
