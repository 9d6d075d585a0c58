#pragma once

#include <QByteArray>
#include <QColor>
#include <QString>

#include <vector>

/// The look of a stretch of text.
struct RtfLook {
    QColor colour;
    bool bold = false;
    bool italic = false;
    bool operator==(const RtfLook&) const = default;
};

/// Writes a text of one font as rich text, run after run. A plain value; line ends of all kinds become paragraphs.
class RtfWriter {
 public:
    RtfWriter(const QString& fontName, int points);

    void append(QStringView text, const RtfLook& look);
    /// Returns the complete document; nothing may be appended afterwards.
    QByteArray finished() const;

 private:
    int numberOf(const QColor& colour);
    void appendUnit(char16_t unit);

    QByteArray m_font;
    int m_halfPoints;
    std::vector<QColor> m_colours;
    QByteArray m_body;
    bool m_afterCr = false;
};
