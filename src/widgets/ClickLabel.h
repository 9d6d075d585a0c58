#pragma once

#include <QLabel>
#include <QMouseEvent>

/// A label that emits a signal when it is clicked.
class ClickLabel : public QLabel {
    Q_OBJECT

 public:
    using QLabel::QLabel;

 Q_SIGNALS:
    void clicked();

 protected:
    void mouseReleaseEvent(QMouseEvent* event) override {
        if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint()))
            Q_EMIT clicked();
    }
};
