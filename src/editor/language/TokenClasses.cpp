#include "editor/language/TokenClasses.h"

#include "widgets/Contrast.h"

#include <algorithm>
#include <array>

namespace {

using Row = TokenClasses::Row;

constexpr auto Rows = std::to_array<Row>({
    {TokenClass::Text, "text", 0xFF1F2328, 0xFFE3E6E8, false, false},
    {TokenClass::Comment, "comment", 0xFF57734F, 0xFF8FAE84, false, true},
    {TokenClass::Documentation, "documentation", 0xFF3B6E69, 0xFF82B8B1, false, true},
    {TokenClass::Keyword, "keyword", 0xFF2148B8, 0xFF86AEF8, true, false},
    {TokenClass::Type, "type", 0xFF0F6B7D, 0xFF6CC4D6, false, false},
    {TokenClass::Name, "name", 0xFF6B4410, 0xFFE0C48A, false, false},
    {TokenClass::String, "string", 0xFFA8321F, 0xFFEE9C86, false, false},
    {TokenClass::Number, "number", 0xFF8A3A8C, 0xFFD59BDB, false, false},
    {TokenClass::Operator, "operator", 0xFF4A5058, 0xFFB4BCC4, false, false},
    {TokenClass::Preprocessor, "preprocessor", 0xFF7A4B9E, 0xFFBCA4EE, false, false},
    {TokenClass::Markup, "markup", 0xFF135FA8, 0xFF79BDEB, true, false},
    {TokenClass::Error, "error", 0xFFB00020, 0xFFFF8585, false, false},
});
static_assert(Rows.size() == TokenClasses::Count);

}  // namespace

std::span<const Row> TokenClasses::table() {
    return Rows;
}

std::optional<TokenClass> TokenClasses::byName(QByteArrayView name) {
    const auto row = std::find_if(Rows.begin(), Rows.end(), [name](const Row& one) { return name == one.name; });
    return row == Rows.end() ? std::nullopt : std::optional(row->token);
}

QColor TokenClasses::colourOn(const QColor& ground, TokenClass token) {
    const Row& row = Rows[static_cast<std::size_t>(token)];
    return Contrast::readableOn(ground, QColor::fromRgb(Contrast::isDark(ground) ? row.onDark : row.onLight));
}
