#pragma once

#include "editor/print/PaperLook.h"
#include "editor/print/PrintedText.h"

#include <QRectF>
#include <QString>

class QPaintDevice;
class QPainter;

/// Lays out the pages of a text and paints them: a header, line numbers, and rows of which none is wider than the page.
/// Owned by the print job, which keeps the first place of each page. Lengths are units of the paint device.
///
/// What a page holds depends on its first place alone, so that a page that was only measured is painted the same. The
/// text must not change meanwhile.
class PrintPages {
 public:
    /// The text and the device outlive this object. `name` stands in the header.
    PrintPages(const PrintedText& text, PaperLook look, QPaintDevice& device, QString name);

    /// Returns the first place after the page that begins at `place`. Paints the page when there is a painter.
    PrintPlace fill(const PrintPlace& place, QPainter* painter) const;
    /// Pages count from 1.
    void paintHeader(QPainter& painter, int page, int pages) const;

 private:
    struct Row;
    struct Cursor;
    class Lines;

    void placeText(QPaintDevice& device);
    bool addExtent(const PrintedText::Extent& extent, Cursor& cursor) const;
    bool addShortRow(const PrintedText::Extent& extent, Cursor& cursor) const;
    bool addRows(const PrintedText::Extent& extent, Cursor& cursor) const;
    bool isFull(const Cursor& cursor, qreal height) const;
    bool fitsOneRow(const PrintedText::Extent& extent) const;
    void paintNumber(QPainter& painter, const PrintPlace& place, qreal baseline) const;

    const PrintedText& m_text;
    PaperLook m_look;
    QPaintDevice& m_device;
    QString m_name;
    QFont m_headerFont;
    QRectF m_header;
    QRectF m_area;            ///< of the text, without the numbers
    qreal m_numberRight = 0;  ///< the right edge of the numbers
    qreal m_rowHeight = 0;
    qreal m_ascent = 0;
    qreal m_widest = 0;  ///< the widest visible ASCII character in any of the fonts
    qreal m_tab = 0;     ///< as a text layout takes it
};
