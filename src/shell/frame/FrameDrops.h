#pragma once

#include <QStringList>

class DocumentOpening;
class QMimeData;
struct FrameParts;

/// Files dropped on the frame. Owned by the frame.
class FrameDrops {
 public:
    FrameDrops(FrameParts& parts, DocumentOpening& files);

    static bool carriesFiles(const QMimeData& data);
    /// Opens the files in the order of the drop, once the drop itself has ended, so that a box does not hold up the
    /// program they come from. A drag of the side panel's own rows is given back to the panel and not read.
    void take(const QMimeData& data);

 private:
    FrameParts& m_parts;
    DocumentOpening& m_files;
};
