#pragma once

#include <QWidget>

class ElidedLabel;
class QMdiArea;
class QToolButton;
class SplitBar;

/// The bottom panel `picSearch`, below side panel and documents: a title bar `picHBar` with the text `lbTitle` and the
/// buttons `imgMax` and `imgClose`, and below it the results of a search across files. Hidden at first. Whether it is
/// shown is stored only in the widget. It is resized by its top edge, by dragging its title bar, or by keys on the bar.
/// Owned by the frame's window, whose layout gives it the height that it asks for, or what there is. Lengths are twips.
class SearchPanel : public QWidget {
    Q_OBJECT

 public:
    /// `documents` is given the keyboard when the panel is hidden.
    SearchPanel(QMdiArea& documents, QWidget* parent);

    /// Puts the results into the panel, which owns them from then on. Null: the panel stays empty.
    void hold(QWidget* results);
    QWidget* held() const { return m_held; }
    /// What the keyboard enters: the results, or the title bar while there are none.
    QWidget* entrance() const;

    /// The title is shown in one line, cut in the middle where it is too long.
    QString title() const;
    void setTitle(const QString& title);

    bool isShown() const { return !isHidden(); }
    /// A hidden panel passes the keyboard on to the active document.
    void setShown(bool shown);

    /// The height that was set; a low window shows less of the panel. At least LeastHeight, at most what the window
    /// has.
    int panelHeight() const { return m_height; }
    void setPanelHeight(int height);
    /// Two thirds of the window.
    void enlarge();
    /// Ends a drag of the title bar.
    void resetSplitter();
    void ArrangePanels();

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

    static constexpr int LeastHeight = 500;

 Q_SIGNALS:
    void shownChanged(bool shown);

 protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

 private:
    QToolButton& addButton(const char* name, const char* icon, const QString& tip);
    void layOutBar();

    QMdiArea& m_documents;
    SplitBar& m_bar;
    ElidedLabel& m_title;
    QToolButton& m_max;
    QToolButton& m_close;
    QWidget* m_held = nullptr;
    int m_height;
};
