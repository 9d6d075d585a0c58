#pragma once

#include "editor/language/LanguageDefinition.h"

#include <QColor>
#include <QFont>
#include <QTextCharFormat>

#include <array>
#include <cstddef>
#include <vector>

class TextControl;

/// How the text of a control looks on white paper: its font, and the colours that its language has on a light
/// background, whatever background the control has. A plain value.
struct PaperLook {
    enum class Ink { Colours, Greys };

    static PaperLook of(const TextControl& control, Ink ink);

    QFont font;
    QColor textColour;
    QColor numberColour;
    /// The different formats, and which of them each style has.
    std::vector<QTextCharFormat> formats;
    std::array<std::size_t, LanguageDefinition::Styles> formatOfStyle{};
    int tabWidth = 8;  ///< blanks
    bool showsNumbers = false;
};
