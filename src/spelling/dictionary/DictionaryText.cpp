#include "spelling/dictionary/DictionaryText.h"

#include <iconv.h>

#include <algorithm>
#include <array>
#include <cctype>

namespace {

constexpr std::size_t MostBytesEach = 4;  ///< of one byte in the other encoding

struct OtherName {
    std::string_view inDictionary;
    const char* inSystem;
};

/// Names of encodings that the system has under another one.
constexpr OtherName OtherNames[] = {{"MICROSOFT-CP1251", "CP1251"}, {"TIS620-2533", "TIS-620"}};

std::string systemName(std::string name) {
    std::ranges::transform(name, name.begin(), [](unsigned char each) { return std::toupper(each); });
    for (const OtherName& other : OtherNames) {
        if (name == other.inDictionary)
            return other.inSystem;
    }
    constexpr std::string_view Iso = "ISO";
    return name.starts_with("ISO8859") ? "ISO-" + name.substr(Iso.size()) : name;
}

}  // namespace

DictionaryText::DictionaryText(const std::string& encoding) : m_isUtf8(systemName(encoding) == "UTF-8") {
    if (m_isUtf8)
        return;
    const std::string name = systemName(encoding);
    m_to = iconv_open(name.c_str(), "UTF-8");
    m_from = iconv_open("UTF-8", name.c_str());
}

DictionaryText::~DictionaryText() {
    for (const Converter converter : {m_to, m_from}) {
        if (isOpen(converter))
            iconv_close(converter);
    }
}

bool DictionaryText::isOpen(Converter converter) {
    return converter != nullptr && converter != reinterpret_cast<Converter>(-1);
}

std::optional<std::string> DictionaryText::convert(Converter converter, const std::string& text) {
    std::string source = text;
    std::string result(text.size() * MostBytesEach + MostBytesEach, '\0');
    char* from = source.data();
    char* to = result.data();
    std::size_t left = source.size();
    std::size_t room = result.size();
    iconv(converter, nullptr, nullptr, nullptr, nullptr);
    if (iconv(converter, &from, &left, &to, &room) != 0 || left > 0)
        return std::nullopt;
    result.resize(result.size() - room);
    return result;
}

std::optional<std::string> DictionaryText::toDictionary(const std::string& utf8) const {
    return m_isUtf8 ? std::optional(utf8) : convert(m_to, utf8);
}

std::optional<std::string> DictionaryText::fromDictionary(const std::string& bytes) const {
    return m_isUtf8 ? std::optional(bytes) : convert(m_from, bytes);
}
