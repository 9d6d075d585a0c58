#pragma once

#include <QColor>
#include <QDialog>

#include <vector>

class TextControl;
class ControlPage;
class QComboBox;
class QFormLayout;
class QLabel;
class QPushButton;
class QSpinBox;
class TokenColourPage;

/// The properties dialog of one control: how it shows the text and handles keys, its colours, and the line ends and
/// encoding of its file. Options are applied with OK; line ends and encoding at once, by their buttons. Owned by the
/// control, one at a time, modal to its window only.
class ControlProperties : public QDialog {
    Q_OBJECT

 public:
    /// Shows the dialog of a control, the one that is open if there is one.
    static void show(TextControl& control);

    explicit ControlProperties(TextControl& control);

    void accept() override;

 private:
    QWidget* viewPage();
    QWidget* editingPage();
    QWidget* colourPage();
    QWidget* filePage();
    void addColour(QFormLayout& form, const QString& caption, const QString& name, int element);
    void showColour(int element);
    void chooseColour(int element);
    void convertLineEnds();
    void reopen();
    void refreshFile();

    struct ColourRow {
        int element = 0;
        QString caption;
        QPushButton* choose = nullptr;
        QPushButton* reset = nullptr;
        QColor colour;
    };
    ColourRow& colourRow(int element);

    TextControl& m_control;
    std::vector<ColourRow> m_colours;
    TokenColourPage* m_tokens = nullptr;  ///< null for a control without a theme
    QList<ControlPage*> m_brought;        ///< pages of a room above
    QSpinBox* m_tabWidth = nullptr;
    QComboBox* m_lineEnds = nullptr;
    QPushButton* m_convert = nullptr;
    QComboBox* m_encoding = nullptr;
    QPushButton* m_reopen = nullptr;
    QLabel* m_fileNote = nullptr;
};
