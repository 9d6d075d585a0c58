#include "editor/TokenClasses.h"

#include "editor/ViewColours.h"

#include <algorithm>
#include <array>
#include <cmath>

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

double linear(double part) {
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& colour) {
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

}  // namespace

std::span<const Row> TokenClasses::table() {
    return Rows;
}

std::optional<TokenClass> TokenClasses::byName(QByteArrayView name) {
    const auto row = std::find_if(Rows.begin(), Rows.end(), [name](const Row& one) { return name == one.name; });
    return row == Rows.end() ? std::nullopt : std::optional(row->token);
}

double TokenClasses::contrast(const QColor& one, const QColor& other) {
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

bool TokenClasses::isDark(const QColor& ground) {
    return contrast(ground, Qt::white) > contrast(ground, Qt::black);
}

QColor TokenClasses::readableOn(const QColor& ground, const QColor& wanted) {
    const QColor end = isDark(ground) ? Qt::white : Qt::black;
    constexpr int Step = 5;
    for (int percent = 0; percent < 100; percent += Step) {
        const QColor colour = ViewColours::blended(wanted, end, percent);
        if (contrast(colour, ground) >= EnoughContrast)
            return colour;
    }
    return end;
}

QColor TokenClasses::colourOn(const QColor& ground, TokenClass token) {
    const Row& row = Rows[static_cast<std::size_t>(token)];
    return readableOn(ground, QColor::fromRgb(isDark(ground) ? row.onDark : row.onLight));
}
