#pragma once

#include <QWidget>

/// A page of the control's properties dialog that a higher room provides.
class ControlPage : public QWidget {
    Q_OBJECT

 public:
    using QWidget::QWidget;

    virtual QString caption() const = 0;
    /// OK was chosen; a cancelled dialog never calls it.
    virtual void apply() = 0;
};
