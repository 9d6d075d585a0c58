#include "widgets/ClickLabel.h"

#include <QAccessibleWidget>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QStyleOptionFocusRect>
#include <QStylePainter>

namespace {

/// A label as a screen reader sees it: a button if the keyboard can reach it, else a text.
class ClickLabelAccessible : public QAccessibleWidget {
 public:
    explicit ClickLabelAccessible(ClickLabel* label) : QAccessibleWidget(label) {}

    QAccessible::Role role() const override { return isButton() ? buttonRole() : QAccessible::StaticText; }
    QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Name ? label().text() : QAccessibleWidget::text(kind);
    }
    QStringList actionNames() const override {
        return (isButton() ? QStringList(pressAction()) : QStringList()) + QAccessibleWidget::actionNames();
    }
    void doAction(const QString& actionName) override {
        if (actionName == pressAction() && isButton() && label().isEnabled())
            Q_EMIT label().clicked();
        else
            QAccessibleWidget::doAction(actionName);
    }

 private:
    QAccessible::Role buttonRole() const { return label().isLink() ? QAccessible::Link : QAccessible::Button; }
    bool isButton() const { return label().focusPolicy() != Qt::NoFocus; }
    ClickLabel& label() const { return *static_cast<ClickLabel*>(widget()); }
};

QAccessibleInterface* makeAccessible(const QString& className, QObject* object) {
    if (className != QLatin1String("ClickLabel"))
        return nullptr;
    return new ClickLabelAccessible(qobject_cast<ClickLabel*>(object));
}

void install() {
    static const bool installed = [] {
        QAccessible::installFactory(makeAccessible);
        return true;
    }();
    Q_UNUSED(installed)
}

}  // namespace

ClickLabel::ClickLabel(QWidget* parent) : ClickLabel(QString(), parent) {}

/// Setting the text makes the accessible object, by the class that the label has at that moment.
ClickLabel::ClickLabel(const QString& text, QWidget* parent) : QLabel(parent) {
    install();
    setText(text);
}

void ClickLabel::showAsLink() {
    m_isLink = true;
    setFocusPolicy(Qt::StrongFocus);
    setCursor(Qt::PointingHandCursor);
    setForegroundRole(QPalette::Link);
    QFont underlined = font();
    underlined.setUnderline(true);
    setFont(underlined);
}

void ClickLabel::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint()))
        Q_EMIT clicked();
}

void ClickLabel::keyPressEvent(QKeyEvent* event) {
    const int key = event->key();
    if (key == Qt::Key_Space || key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Select)
        Q_EMIT clicked();
    else
        QLabel::keyPressEvent(event);
}

void ClickLabel::focusInEvent(QFocusEvent* event) {
    QLabel::focusInEvent(event);
    update();
}

void ClickLabel::focusOutEvent(QFocusEvent* event) {
    QLabel::focusOutEvent(event);
    update();
}

void ClickLabel::paintEvent(QPaintEvent* event) {
    QLabel::paintEvent(event);
    if (!hasFocus())
        return;
    QStylePainter painter(this);
    QStyleOptionFocusRect option;
    option.initFrom(this);
    painter.drawPrimitive(QStyle::PE_FrameFocusRect, option);
}
