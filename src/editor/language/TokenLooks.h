#pragma once

#include "editor/language/TokenClasses.h"
#include "widgets/Contrast.h"

#include <array>
#include <optional>

class RegistryStore;

/// How a piece of text is drawn.
struct TokenLook {
    QColor colour;
    bool bold = false;
    bool italic = false;

    bool operator==(const TokenLook&) const = default;
};

/// The looks of the token classes: the program's theme, and over it the user's choices. Colours are chosen separately
/// for light and dark backgrounds; bold and italic apply to both. A plain value.
class TokenLooks {
 public:
    enum Ground { Light, Dark };
    static Ground groundOf(const QColor& colour) { return Contrast::isDark(colour) ? Dark : Light; }

    /// The look of a class on a background, its colour made readable there.
    TokenLook on(const QColor& ground, TokenClass token) const;

    /// The colour a person has chosen; not valid: none, and the theme's holds.
    QColor ownColour(Ground ground, TokenClass token) const { return own(token).colours[ground]; }
    void setOwnColour(Ground ground, TokenClass token, const QColor& colour) { own(token).colours[ground] = colour; }
    bool bold(TokenClass token) const;
    void setBold(TokenClass token, bool on);
    bool italic(TokenClass token) const;
    void setItalic(TokenClass token, bool on);

    /// Reads the choices stored under the languages' key; whatever is missing or invalid there is the theme's.
    void load(RegistryStore& store);
    /// Stores the user's choices and deletes the rest, all or nothing; returns a result number of the store.
    int save(RegistryStore& store) const;

    bool operator==(const TokenLooks&) const = default;

 private:
    struct Own {
        std::array<QColor, 2> colours;  ///< by ground
        std::optional<bool> bold;
        std::optional<bool> italic;

        bool operator==(const Own&) const = default;
    };
    struct StoredRow;

    const Own& own(TokenClass token) const { return m_own[static_cast<std::size_t>(token)]; }
    Own& own(TokenClass token) { return m_own[static_cast<std::size_t>(token)]; }

    std::array<Own, TokenClasses::Count> m_own;  ///< by class
};
