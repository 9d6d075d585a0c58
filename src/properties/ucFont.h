#pragma once

#include <QFont>
#include <QWidget>

class QComboBox;
class QLayout;
class Settings;
class rtCM;
struct DocumentServices;
struct Options;

/// The editor page of the properties dialog, which owns it: font and size (points) of the text views, with a sample.
/// The services outlive it.
class ucFont : public QWidget {
    Q_OBJECT

 public:
    ucFont(const DocumentServices& services, Options& options, Settings& settings, QWidget* parent = nullptr);

    Q_INVOKABLE void LoadProp();
    /// Saves the font of the sample if the user changed anything. New documents have it from then on.
    Q_INVOKABLE void SaveProp();

 Q_SIGNALS:
    /// The user changed something.
    void Changed();

 private:
    QComboBox* addList(const QString& name, const QString& caption, QLayout& row);
    QWidget* buildSample();
    void fillFonts();
    void fillSizes();
    void showFont();
    void showSize();
    void takeFont(const QString& name);
    void takeSize(const QString& text);
    void alter();

    Options& m_options;
    Settings& m_settings;
    QComboBox* m_font = nullptr;
    QComboBox* m_size = nullptr;
    rtCM* m_sample;
    const QFont m_fresh;  ///< of a new text view; used while none is stored
    bool m_changed = false;
    bool m_filling = false;  ///< true while the program, not the user, changes the lists
};
