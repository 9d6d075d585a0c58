#pragma once

#include "workspace/panel/BandPlaces.h"

#include <QList>
#include <QWidget>

class ExplorerBand;

/// The bands of the side panel, one below the other. Their titles are bars that are dragged by the mouse or moved by
/// keys. Owned by the panel.
class BandArea : public QWidget {
    Q_OBJECT

 public:
    explicit BandArea(QWidget* parent = nullptr);

    /// Adds the next tab, at most as many as there are places. Its content is made as a child of the band, so that the
    /// Tab key walks from the title to the content.
    ExplorerBand& addBand(const QIcon& picture, const QString& title);
    ExplorerBand& band(int tab) const { return *m_bands.at(tab); }

    /// Which bands are where. A change is shown by layOut().
    BandPlaces& places() { return m_places; }
    const BandPlaces& places() const { return m_places; }
    void layOut();

 Q_SIGNALS:
    // Of the buttons and keys of a title.
    void enlargeWanted(int tab);
    void closeWanted(int tab);

 protected:
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

 private:
    int barAt(int y) const;
    void moveBar(int tab, int top);

    QList<ExplorerBand*> m_bands;
    BandPlaces m_places;
    int m_dragged = -1;  ///< the tab whose bar is dragged, -1 for none
    int m_grip = 0;      ///< where it is held, in pixels below its top
};
