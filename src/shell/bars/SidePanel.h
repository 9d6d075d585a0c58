#pragma once

#include <QWidget>

class QMdiArea;
class SplitBar;

/// The rows of the frame below the tabs: the side panel in its container `picButtons`, the bar `PictureV` that shares
/// out the width, and the area of the documents. Owned by the frame's window. Whether the panel is shown is stored only
/// in its container. Lengths are twips.
class SidePanel : public QWidget {
    Q_OBJECT

 public:
    explicit SidePanel(QWidget* parent = nullptr);
    ~SidePanel() override;

    /// Puts the panel into its container, which owns it from then on. Null: the container stays empty.
    void hold(QWidget* panel);
    /// What the keyboard enters; null while there is no panel.
    QWidget* held() const { return m_held; }
    QMdiArea& area() const { return m_area; }

    bool isShown() const { return !m_container.isHidden(); }
    /// Hides or shows the panel with its bar. A hidden panel passes the keyboard on to the active document.
    void setShown(bool shown);

    /// The left edge of the bar as it was set, which is the width of the panel. A narrower window shows it further
    /// left.
    int splitterLeft() const { return m_left; }
    /// Never below 0.
    void setSplitterLeft(int left);
    /// Ends a drag of the bar and gives it its width.
    void resetSplitter();
    void ArrangePanels();

 Q_SIGNALS:
    void shownChanged(bool shown);

 protected:
    void resizeEvent(QResizeEvent* event) override;

 private:
    QMdiArea& m_area;
    QWidget& m_container;
    SplitBar& m_bar;
    QWidget* m_held = nullptr;
    int m_left;
};
