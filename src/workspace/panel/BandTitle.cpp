#include "workspace/panel/BandTitle.h"

#include "widgets/FocusFrame.h"
#include "widgets/Icons.h"
#include "widgets/PlainKey.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>

namespace {

constexpr int PictureSize = 16;
constexpr int ButtonSize = 12;
constexpr int LargeStep = 10;

struct MoveKey {
    int key;
    int steps;
};

constexpr MoveKey MoveKeys[] = {
    {Qt::Key_Up, -1}, {Qt::Key_Down, 1}, {Qt::Key_PageUp, -LargeStep}, {Qt::Key_PageDown, LargeStep}};

QString numbered(const char* name, int number) {
    return u"%1(%2)"_qs.arg(QLatin1String(name)).arg(number);
}

}  // namespace

BandTitle::BandTitle(int number, const QIcon& picture, QWidget* parent)
    : QWidget(parent),
      m_picture(*new QLabel(this)),
      m_text(*new QLabel(this)),
      m_up(addButton("imgUp", "bandup", number)),
      m_center(addButton("imgCenter", "bandclose", number)) {
    setFocusPolicy(Qt::TabFocus);
    setCursor(Qt::SizeVerCursor);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::Button);
    setForegroundRole(QPalette::ButtonText);
    m_picture.setObjectName(numbered("imgIcon", number));
    m_picture.setPixmap(picture.pixmap(QSize(PictureSize, PictureSize), devicePixelRatioF()));
    m_text.setObjectName(numbered("lbTitle", number));
    m_text.setTextFormat(Qt::PlainText);
    m_text.setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_text.setForegroundRole(QPalette::ButtonText);
    auto* parts = new QHBoxLayout(this);
    parts->setContentsMargins(4, 2, 2, 2);
    parts->setSpacing(4);
    parts->addWidget(&m_picture);
    parts->addWidget(&m_text, 1);
    parts->addWidget(&m_up);
    parts->addWidget(&m_center);
    connect(&m_up, &QToolButton::clicked, this, &BandTitle::enlargeWanted);
    connect(&m_center, &QToolButton::clicked, this, &BandTitle::closeWanted);
}

QToolButton& BandTitle::addButton(const char* name, const char* icon, int number) {
    auto* button = new QToolButton(this);
    button->setObjectName(numbered(name, number));
    button->setIcon(Icons::named(icon));
    button->setIconSize(QSize(ButtonSize, ButtonSize));
    button->setAutoRaise(true);
    button->setCursor(Qt::ArrowCursor);
    button->setFocusPolicy(Qt::TabFocus);
    return *button;
}

QString BandTitle::text() const {
    return m_text.text();
}

void BandTitle::setText(const QString& text, const QString& toolTip) {
    m_text.setText(text);
    setToolTip(toolTip);
    m_text.setToolTip(toolTip);
    setAccessibleName(text);
    setAccessibleDescription(u"Up and Down move this bar, Enter enlarges the tab, Delete closes it"_qs);
    m_up.setToolTip(u"Enlarge %1"_qs.arg(text));
    m_up.setAccessibleName(m_up.toolTip());
    m_center.setToolTip(u"Close %1"_qs.arg(text));
    m_center.setAccessibleName(m_center.toolTip());
}

void BandTitle::keyPressEvent(QKeyEvent* event) {
    if (!isPlainKey(*event)) {
        QWidget::keyPressEvent(event);
        return;
    }
    for (const MoveKey& each : MoveKeys) {
        if (event->key() == each.key) {
            Q_EMIT moveWanted(each.steps);
            return;
        }
    }
    if (event->key() == Qt::Key_Delete)
        Q_EMIT closeWanted();
    else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        Q_EMIT enlargeWanted();
    else
        QWidget::keyPressEvent(event);
}

void BandTitle::paintEvent(QPaintEvent*) {
    FocusFrame::paint(*this);
}
