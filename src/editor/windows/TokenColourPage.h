#pragma once

#include "editor/language/TokenLooks.h"

#include <QColor>
#include <QWidget>

class QCheckBox;
class QLabel;
class QListWidget;
class QPushButton;
class TokenTheme;

/// The page of the properties dialog on which the user chooses the looks of the token classes for the background of the
/// text. Every class is shown as it will look. The choices are applied by apply().
class TokenColourPage : public QWidget {
    Q_OBJECT

 public:
    /// The theme outlives this page.
    TokenColourPage(TokenTheme& theme, const QColor& ground, QWidget* parent = nullptr);

    void apply();

 private:
    void buildList();
    QWidget* buildChoices();
    TokenClass chosen() const;
    void setOwnColour(const QColor& colour);
    void chooseColour();
    void showClass(int row);
    void showChosen();
    void resetAll();

    TokenTheme& m_theme;
    QColor m_ground;
    TokenLooks::Ground m_kind;
    TokenLooks m_looks;
    QListWidget* m_list = nullptr;
    QPushButton* m_colour = nullptr;
    QPushButton* m_default = nullptr;
    QCheckBox* m_bold = nullptr;
    QCheckBox* m_italic = nullptr;
    QLabel* m_note = nullptr;
};
