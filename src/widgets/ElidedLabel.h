#pragma once

#include <QLabel>

/// A line of plain text that is cut in the middle where it is too long for its place. text() is the whole text, which
/// the tool tip shows while it is cut.
class ElidedLabel : public QLabel {
    Q_OBJECT

 public:
    explicit ElidedLabel(QWidget* parent = nullptr);

    /// What is seen of the text.
    QString shownText() const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

 protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
};
