#include "shell/bars/SidePanel.h"

#include "shell/bars/FocusRound.h"
#include "shell/bars/SplitBar.h"
#include "widgets/Twips.h"

#include <QMdiArea>
#include <QVBoxLayout>

#include <algorithm>

namespace {

constexpr int StartLeft = 3300;
constexpr int BarWidth = 70;
constexpr int BarPixels = (BarWidth + TwipsPerPixel / 2) / TwipsPerPixel;
constexpr int LeastPixels = 33;  ///< of the height

}  // namespace

SidePanel::SidePanel(QWidget* parent)
    : QWidget(parent),
      m_area(*new QMdiArea(this)),
      m_container(*new QWidget(this)),
      m_bar(*new SplitBar(Qt::Vertical, this)),
      m_left(StartLeft) {
    setMinimumHeight(LeastPixels);
    m_container.setObjectName(u"picButtons"_qs);
    auto* rows = new QVBoxLayout(&m_container);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSizeConstraint(QLayout::SetNoConstraint);  // the bar may make it narrower than its content
    m_bar.setObjectName(u"PictureV"_qs);
    m_bar.setAccessibleName(u"Width of the side panel"_qs);
    m_bar.resize(BarPixels, 0);
    connect(&m_bar, &SplitBar::moveWanted, this,
            [this](int left) { setSplitterLeft(std::min(left, width() - m_bar.width()) * TwipsPerPixel); });
}

SidePanel::~SidePanel() {
    delete &m_area;  // documents report their end to the panel
}

void SidePanel::hold(QWidget* panel) {
    m_held = panel;
    if (panel != nullptr)
        m_container.layout()->addWidget(panel);
}

void SidePanel::setShown(bool shown) {
    if (!shown)
        FocusRound::leave({&m_bar, &m_container}, m_area);
    m_container.setVisible(shown);
    m_bar.setVisible(shown);
    ArrangePanels();
    Q_EMIT shownChanged(isShown());
}

void SidePanel::setSplitterLeft(int left) {
    m_left = std::max(left, 0);
    ArrangePanels();
}

void SidePanel::resetSplitter() {
    m_bar.reset();
    m_bar.resize(BarPixels, height());
}

void SidePanel::ArrangePanels() {
    if (!isShown()) {
        m_area.setGeometry(rect());
        return;
    }
    const int left = std::clamp(m_left / TwipsPerPixel, 0, std::max(0, width() - m_bar.width()));
    const int right = left + m_bar.width();
    m_container.setGeometry(0, 0, left, height());
    m_bar.setGeometry(left, 0, m_bar.width(), height());
    m_area.setGeometry(right, 0, std::max(0, width() - right), height());
}

void SidePanel::resizeEvent(QResizeEvent*) {
    ArrangePanels();
}
