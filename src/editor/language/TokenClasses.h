#pragma once

#include <QByteArrayView>
#include <QColor>

#include <optional>
#include <span>

/// The kinds of tokens, the same for all languages: each has its colour.
enum class TokenClass : unsigned char {
    Text,
    Comment,
    Documentation,
    Keyword,
    Type,
    Name,
    String,
    Number,
    Operator,
    Preprocessor,
    Markup,
    Error,
};

namespace TokenClasses {

inline constexpr int Count = static_cast<int>(TokenClass::Error) + 1;

/// The look of a class on a light and on a dark background.
struct Row {
    TokenClass token;
    const char* name;  ///< as definitions of languages write it
    QRgb onLight;
    QRgb onDark;
    bool bold;
    bool italic;
};

/// One row a class, in the order of the classes.
std::span<const Row> table();

std::optional<TokenClass> byName(QByteArrayView name);

/// The colour of a class on this ground, made readable there.
QColor colourOn(const QColor& ground, TokenClass token);

}  // namespace TokenClasses
