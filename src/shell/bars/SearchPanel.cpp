#include "shell/bars/SearchPanel.h"

#include "shell/bars/FocusRound.h"
#include "shell/bars/SplitBar.h"
#include "widgets/ElidedLabel.h"
#include "widgets/Icons.h"
#include "widgets/Twips.h"

#include <QHBoxLayout>
#include <QMdiArea>
#include <QMouseEvent>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>

namespace {

constexpr int StartHeight = 3300;
constexpr int EdgeHeight = 50;  ///< the top rows by which the panel is dragged
constexpr int HeldGap = 10;     ///< between title bar and results
constexpr int ButtonSize = 12;

constexpr int inPixels(int twips) {
    return (twips + TwipsPerPixel / 2) / TwipsPerPixel;
}

/// Whether the top edge of a pixel row is within the edge of the panel.
bool isInEdge(const QMouseEvent& event) {
    const int row = event.position().toPoint().y();
    return row >= 0 && row * TwipsPerPixel < EdgeHeight;
}

}  // namespace

SearchPanel::SearchPanel(QMdiArea& documents, QWidget* parent)
    : QWidget(parent),
      m_documents(documents),
      m_bar(*new SplitBar(Qt::Horizontal, this)),
      m_title(*new ElidedLabel(&m_bar)),
      m_max(addButton("imgMax", "bandup", u"Enlarge the Find/Replace panel"_qs)),
      m_close(addButton("imgClose", "bandclose", u"Hide the Find/Replace panel"_qs)),
      m_height(StartHeight) {
    setObjectName(u"picSearch"_qs);
    setMouseTracking(true);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    layOutBar();
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, (EdgeHeight + TwipsPerPixel - 1) / TwipsPerPixel, 0, 0);
    rows->setSpacing(inPixels(HeldGap));
    rows->setSizeConstraint(QLayout::SetNoConstraint);  // its own size hints count
    rows->addWidget(&m_bar);
    rows->addStretch();
    connect(&m_bar, &SplitBar::moveWanted, this,
            [this](int top) { setPanelHeight((height() + m_bar.y() - top) * TwipsPerPixel); });
    connect(&m_max, &QToolButton::clicked, this, &SearchPanel::enlarge);
    connect(&m_close, &QToolButton::clicked, this, [this] { setShown(false); });
    hide();
}

QToolButton& SearchPanel::addButton(const char* name, const char* icon, const QString& tip) {
    auto* button = new QToolButton(&m_bar);
    button->setObjectName(QLatin1String(name));
    button->setIcon(Icons::named(icon));
    button->setIconSize(QSize(ButtonSize, ButtonSize));
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::TabFocus);
    button->setToolTip(tip);
    button->setAccessibleName(tip);
    return *button;
}

void SearchPanel::layOutBar() {
    m_bar.setObjectName(u"picHBar"_qs);
    m_bar.setAccessibleName(u"Height of the Find/Replace panel"_qs);
    m_bar.setAccessibleDescription(u"Up and Down move this bar"_qs);
    m_title.setObjectName(u"lbTitle"_qs);
    setTitle(u"Find/Replace"_qs);
    auto* parts = new QHBoxLayout(&m_bar);
    parts->setContentsMargins(4, 0, 2, 2);
    parts->setSpacing(4);
    parts->addWidget(&m_title, 1);
    parts->addWidget(&m_max);
    parts->addWidget(&m_close);
}

void SearchPanel::hold(QWidget* results) {
    m_held = results;
    if (results == nullptr)
        return;
    auto* rows = static_cast<QVBoxLayout*>(layout());
    delete rows->takeAt(1);  // the empty room below the title bar
    rows->addWidget(results, 1);
    results->setCursor(Qt::ArrowCursor);
}

QWidget* SearchPanel::entrance() const {
    return m_held != nullptr ? m_held : &m_bar;
}

QString SearchPanel::title() const {
    return m_title.text();
}

void SearchPanel::setTitle(const QString& title) {
    m_title.setText(title);
}

void SearchPanel::setShown(bool shown) {
    if (!shown) {
        m_bar.reset();
        FocusRound::leave({this}, m_documents);
    }
    setVisible(shown);
    ArrangePanels();
    Q_EMIT shownChanged(isShown());
}

void SearchPanel::setPanelHeight(int height) {
    m_height = std::max(height, LeastHeight);
    ArrangePanels();
    if (isVisible() && this->height() < inPixels(m_height))
        m_height = std::max(this->height() * TwipsPerPixel, LeastHeight);
}

void SearchPanel::enlarge() {
    setPanelHeight(window()->height() * TwipsPerPixel * 2 / 3);
}

void SearchPanel::resetSplitter() {
    m_bar.reset();
}

/// At once, so that a drag sees where its bar is now.
void SearchPanel::ArrangePanels() {
    updateGeometry();
    if (QLayout* rows = parentWidget()->layout())
        rows->activate();
}

QSize SearchPanel::sizeHint() const {
    return {0, inPixels(m_height)};
}

QSize SearchPanel::minimumSizeHint() const {
    return {0, inPixels(LeastHeight)};
}

void SearchPanel::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && isInEdge(*event))
        m_bar.grip(event->globalPosition().toPoint());
}

/// The title bar and the results have a shape of the pointer of their own, since they would have the edge's otherwise.
void SearchPanel::mouseMoveEvent(QMouseEvent* event) {
    if (event->buttons() & Qt::LeftButton)
        m_bar.follow(event->globalPosition().toPoint());
    else if (isInEdge(*event))
        setCursor(Qt::SizeVerCursor);
    else
        unsetCursor();
}

void SearchPanel::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton)
        m_bar.release(event->globalPosition().toPoint());
}
