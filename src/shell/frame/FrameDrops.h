#pragma once

#include <QStringList>

class DocumentOpening;
class PanelLink;
class QMimeData;
class QObject;

/// Files dropped on the frame. Owned by the frame.
class FrameDrops {
 public:
    /// Nothing is opened any more once `frame` was destroyed.
    FrameDrops(QObject& frame, PanelLink& panel, DocumentOpening& opening);

    static bool carriesFiles(const QMimeData& data);
    /// Opens the files in the order of the drop, once the drop itself has ended, so that a box does not block the
    /// program that is their source. A drag of the side panel's own rows is left to the panel.
    void take(const QMimeData& data);

 private:
    QObject& m_frame;
    PanelLink& m_panel;
    DocumentOpening& m_opening;
};
