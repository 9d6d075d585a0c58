#pragma once

#include <QObject>

#include <array>

class QStatusBar;
class StatusPanel;
class frmDocument;

/// The panels of the status bar for the active document: 1 a notice of its view, else a pending repeat count, else the
/// recording of a macro, else what has to be known of how it is shown or saved, 2 cursor position, 3 last update of the
/// file, 4 its size. Owned by the bar.
class StatusPanels : public QObject {
    Q_OBJECT

 public:
    explicit StatusPanels(QStatusBar& bar);

    /// The pictures of the panels for size and last update.
    void putPictures();
    /// Cheap: it is called with every movement of the cursor.
    void ShowCursorPosition(const frmDocument* document);
    void ShowDocumentInfo(const frmDocument* document);
    void ShowLimitations(const frmDocument* document);
    void ShowRepeatCount(const frmDocument* document);

    /// No document is left.
    void clear();
    /// Shown until an empty text is set.
    void ShowNotice(const QString& text);
    /// A notice that is shown for half a minute, unless another one comes.
    void ShowPassingNotice(const QString& text);
    void ShowRecording(const QString& text);

    /// Text of panel 1 to 4.
    QString text(int panel) const;

 Q_SIGNALS:
    /// The user wants to read the whole text of a panel.
    void textWanted(const QString& text);
    /// The keyboard is to go back to the active document.
    void left();

 private:
    StatusPanel* panel(int number) const { return m_panels.at(static_cast<size_t>(number - 1)); }

    void showFirst();

    std::array<StatusPanel*, 4> m_panels{};
    QString m_notice;
    QString m_repeatCount;
    QString m_recording;
    QString m_limitations;
};
