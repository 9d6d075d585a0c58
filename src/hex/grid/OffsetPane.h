#pragma once

#include <QStringList>
#include <QWidget>

/// The column of offsets beside the panes of a hex view, a text for each row. Sizes are logical pixels.
class OffsetPane : public QWidget {
    Q_OBJECT

 public:
    explicit OffsetPane(QWidget* parent = nullptr);

    void setTexts(const QStringList& texts);
    const QStringList& texts() const { return m_texts; }

 Q_SIGNALS:
    void clicked();
    /// For the pane that turns the page.
    void wheelTurned(QWheelEvent* event);

 protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

 private:
    QStringList m_texts;
};
