#pragma once

#include "properties/GeneralProperties.h"

#include <QWidget>

class QCheckBox;
class QGridLayout;
class QLayout;
class QLineEdit;
class QPushButton;
class QRadioButton;

/// The general page of the properties dialog, which owns it. The services outlive it. Colours are stored ones
/// (StoredColour.h). It runs the event loop while the message of a failed registration is open.
class ucPropGeneral : public QWidget {
    Q_OBJECT

 public:
    ucPropGeneral(Settings& settings, Options& options, ShellServices& shell, QWidget* parent = nullptr);

    /// Shows what is stored, and what is on the desktop.
    Q_INVOKABLE void LoadProp();
    /// Saves the page if the user changed anything; afterwards the boxes of shortcuts and context menu show what has
    /// come of it.
    Q_INVOKABLE void SaveProp();

 Q_SIGNALS:
    /// The user changed something.
    void Changed();

 private:
    QLayout* buildBoxes();
    QLayout* buildColour();
    QWidget* buildNotice();
    QWidget* buildShortcuts();
    void addShortcut(QGridLayout& grid, int place, QCheckBox*& box, const QString& name, const QString& caption);
    void showValues(const GeneralValues& values);
    GeneralValues values() const;
    void enableColour(bool on);
    void showColour();
    void showSwatch();
    void takeColour(qint32 colour);
    void typeColour(const QString& text);
    void chooseColour();
    void alter();

    GeneralProperties m_properties;
    std::array<QCheckBox*, GeneralValues::Boxes> m_boxes{};
    std::array<QCheckBox*, GeneralValues::Shortcuts> m_shortcuts{};
    QCheckBox* m_contextMenu = nullptr;
    QRadioButton* m_ignore = nullptr;
    QRadioButton* m_prompt = nullptr;
    QLineEdit* m_colourText = nullptr;
    QPushButton* m_selectColour = nullptr;
    QPushButton* m_reset = nullptr;
    qint32 m_colour = 0;  ///< the last valid one
    bool m_changed = false;
    bool m_filling = false;  ///< true while the program, not the user, changes the controls
};
