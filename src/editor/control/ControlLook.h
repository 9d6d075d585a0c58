#pragma once

#include "editor/language/TokenLooks.h"

#include <QColor>
#include <QFont>
#include <QList>
#include <QPixmap>
#include <QString>

class ControlBraces;
class ControlLineNumbers;
class ControlTyping;
class EditView;
class TokenTheme;
struct LanguageDefinition;

/// The look of a control: font, colours, language, the left margin, and what is shown besides the text. Owned by the
/// control. Line numbers and braces have classes of their own.
class ControlLook {
 public:
    /// All four outlive this object.
    ControlLook(EditView& view, ControlTyping& typing, ControlLineNumbers& lineNumbers, ControlBraces& braces);

    /// The font of a new control.
    static QFont defaultFont();
    QString FontName() const { return m_fontName; }
    int FontSize() const { return m_fontSize; }
    /// The zoom stays as it is and is added to the size. A size below SmallestFontSize is refused: the size stays.
    void setTextFont(const QString& name, int points);
    static constexpr int SmallestFontSize = 1;  ///< points
    void resetZoom();

    bool DisplayLeftMargin() const { return m_leftMargin; }
    void setDisplayLeftMargin(bool on);
    bool DisplayWhitespace() const;
    void setDisplayWhitespace(bool on);
    bool VScrollVisible() const;
    void setVScrollVisible(bool on);
    bool HScrollVisible() const;
    void setHScrollVisible(bool on);
    bool WordWrap() const;
    void setWordWrap(bool on);

    /// Elements that have a colour of their own; an invalid one means the desktop's.
    enum Element { BackgroundElement = 0, LeftMarginElement = 1, RowHighlightElement = 2 };
    QColor elementColour(Element element) const { return m_elements[element]; }
    void setElementColour(Element element, const QColor& colour);
    /// The background of the text.
    QColor baseColour() const;
    /// The one highlighted line, -1 for none. A colour that adapts is one for dark text on a light ground, and is
    /// turned into its like where the ground is dark; any other is shown as it is.
    enum class HighlightColour { AsItIs, Adapts };
    void setLineHighlight(qint64 line, const QColor& colour, HighlightColour kind = HighlightColour::AsItIs);
    /// Pictures for the left margin: the first is shown at bookmarks instead of their sign. None: the sign.
    QList<QPixmap> hImageList() const { return m_images; }
    void setHImageList(const QList<QPixmap>& images);

    /// Colours the text by a language, now and after each load; null: by none. It outlives the control.
    void setLanguage(const LanguageDefinition* language);
    /// The looks of the token classes, which the control follows from now on; null: those of the program. The theme
    /// outlives the control.
    void setTheme(TokenTheme* theme);
    TokenTheme* theme() const { return m_theme; }

    /// To be called when the palette has changed.
    void applyColours();
    /// To be called after an edit and a load: whether errors are shown depends on whether lines are held in pieces.
    void followPieces();

 private:
    static constexpr int ElementCount = RowHighlightElement + 1;

    void setUpMargins();
    void applyMarginColours(const QColor& base, const QColor& text);
    void applyMarkColours(const QColor& base, const QColor& text);
    void applyLeftMargin();
    void showBookmarkSign();
    TokenLooks looks() const;
    TokenLook textLook() const;
    void applyTokenLooks();

    EditView& m_view;
    ControlTyping& m_typing;
    ControlLineNumbers& m_lineNumbers;
    ControlBraces& m_braces;
    TokenTheme* m_theme = nullptr;
    QString m_fontName;
    int m_fontSize = 0;
    QColor m_elements[ElementCount];
    QList<QPixmap> m_images;
    bool m_leftMargin = true;
    QColor m_highlight;
    HighlightColour m_highlightKind = HighlightColour::AsItIs;
    bool m_colouredInPieces = false;
};
