#pragma once

#include <QWidget>

class BandTitle;

/// One band of the side panel, a title with the content of its tab below. Visible while the tab is open. Owned by the
/// area of the bands, which places it and owns the content with it. The focus is passed on to the content.
class ExplorerBand : public QWidget {
    Q_OBJECT
    Q_PROPERTY(QString Tag READ Tag)
    Q_PROPERTY(int Top READ Top)

 public:
    ExplorerBand(int number, const QIcon& picture, QWidget* parent);

    /// The band owns it from then on.
    void setContent(QWidget* content);

    BandTitle& title() { return m_title; }
    int titleHeight() const;

    /// "1" while its bar is dragged.
    QString Tag() const { return m_dragged ? u"1"_qs : QString(); }
    void setDragged(bool on) { m_dragged = on; }
    /// In twips.
    int Top() const { return m_top; }
    /// In twips; the width is that of the parent.
    void place(int top, int height);

 protected:
    void focusInEvent(QFocusEvent* event) override;

 private:
    BandTitle& m_title;
    QWidget* m_content = nullptr;
    bool m_dragged = false;
    int m_top = 0;
};
