#pragma once

#include <optional>
#include <string>
#include <string_view>

/// Turns UTF-8 into the encoding of a dictionary and back. Owned by the code that creates it. No Qt, so that a child
/// process may use it.
class DictionaryText {
 public:
    /// By the name that an affix file gives ("UTF-8", "ISO8859-15", "microsoft-cp1251").
    explicit DictionaryText(const std::string& encoding);
    ~DictionaryText();
    DictionaryText(const DictionaryText&) = delete;
    DictionaryText& operator=(const DictionaryText&) = delete;

    /// False: the system does not know the encoding.
    bool isKnown() const { return m_isUtf8 || (isOpen(m_to) && isOpen(m_from)); }
    /// Nothing: a character has no place in the encoding.
    std::optional<std::string> toDictionary(const std::string& utf8) const;
    std::optional<std::string> fromDictionary(const std::string& bytes) const;

 private:
    using Converter = void*;

    static bool isOpen(Converter converter);
    static std::optional<std::string> convert(Converter converter, const std::string& text);

    bool m_isUtf8;
    Converter m_to = nullptr;
    Converter m_from = nullptr;
};
