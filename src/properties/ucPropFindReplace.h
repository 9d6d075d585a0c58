#pragma once

#include <QWidget>

#include <array>

class QCheckBox;
class Settings;

/// The find page of the properties dialog, which owns it: the search options that are on at the start of the program.
/// Those of the running program do not change. The settings outlive it.
class ucPropFindReplace : public QWidget {
    Q_OBJECT

 public:
    explicit ucPropFindReplace(Settings& settings, QWidget* parent = nullptr);

    Q_INVOKABLE void LoadProp();
    /// Saves the page if the user changed anything.
    Q_INVOKABLE void SaveProp();

 Q_SIGNALS:
    /// The user changed something.
    void Changed();

 private:
    static constexpr std::size_t Boxes = 4;

    void alter();

    Settings& m_settings;
    std::array<QCheckBox*, Boxes> m_boxes{};
    bool m_changed = false;
    bool m_filling = false;  ///< true while the program, not the user, changes the boxes
};
