#include "workspace/panel/BandArea.h"

#include "widgets/Twips.h"
#include "workspace/panel/BandTitle.h"
#include "workspace/panel/ExplorerBand.h"

#include <QMouseEvent>

namespace {

constexpr int KeyStep = 8 * TwipsPerPixel;

}  // namespace

BandArea::BandArea(QWidget* parent) : QWidget(parent) {
    setCursor(Qt::SizeVerCursor);  // seen in the gaps between the bands
    setMinimumSize(0, 0);
}

ExplorerBand& BandArea::addBand(const QIcon& picture, const QString& title) {
    const auto tab = static_cast<int>(m_bands.size());
    auto* band = new ExplorerBand(tab, picture, this);
    m_bands.append(band);
    BandTitle& bar = band->title();
    bar.setText(title, {});
    connect(&bar, &BandTitle::enlargeWanted, this, [this, tab] { Q_EMIT enlargeWanted(tab); });
    connect(&bar, &BandTitle::closeWanted, this, [this, tab] { Q_EMIT closeWanted(tab); });
    connect(&bar, &BandTitle::moveWanted, this,
            [this, tab](int steps) { moveBar(tab, m_places.top(tab) + steps * KeyStep); });
    return *band;
}

void BandArea::layOut() {
    if (m_bands.isEmpty())
        return;
    // Layouts give the area its height when it is shown.
    const BandPlaces::Room room = isVisible() ? BandPlaces::Room::Real : BandPlaces::Room::Assumed;
    m_places.setRoom(height() * TwipsPerPixel, band(0).titleHeight() * TwipsPerPixel, room);
    for (int tab = 0; tab < m_bands.size(); ++tab) {
        if (m_places.isOpen(tab))
            band(tab).place(m_places.top(tab), m_places.height(tab));
        band(tab).setVisible(m_places.isOpen(tab));
    }
}

void BandArea::resizeEvent(QResizeEvent*) {
    layOut();
}

void BandArea::showEvent(QShowEvent*) {
    layOut();
}

void BandArea::moveBar(int tab, int top) {
    m_places.dragTo(tab, top);
    layOut();
}

/// The tab whose title, or the gap before it, is there; -1 for none.
int BandArea::barAt(int y) const {
    for (int tab = m_places.nextOpen(-1); tab >= 0; tab = m_places.nextOpen(tab)) {
        const ExplorerBand& each = band(tab);
        const int previous = m_places.previousOpen(tab);
        const int gap = previous < 0 ? 0 : each.y() - band(previous).geometry().bottom() - 1;
        if (y >= each.y() - gap && y < each.y() + each.titleHeight())
            return tab;
    }
    return -1;
}

/// Presses on a title, its picture or its text arrive here, because these ignore them.
void BandArea::mousePressEvent(QMouseEvent* event) {
    const int y = event->position().toPoint().y();
    const int tab = barAt(y);
    if (event->button() != Qt::LeftButton || tab < 0) {
        event->ignore();
        return;
    }
    m_dragged = tab;
    m_grip = y - band(tab).y();
    band(tab).setDragged(true);
    band(tab).raise();
}

void BandArea::mouseMoveEvent(QMouseEvent* event) {
    if (m_dragged >= 0)
        moveBar(m_dragged, (event->position().toPoint().y() - m_grip) * TwipsPerPixel);
}

void BandArea::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton || m_dragged < 0)
        return;
    band(m_dragged).setDragged(false);
    m_dragged = -1;
    layOut();
}
