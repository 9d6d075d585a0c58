#pragma once

#include "text/held/HeldText.h"
#include "text/held/TextMap.h"

#include <string_view>

/// A decoded text in memory as the searches read it: without a gap and without joints. Does not own the bytes.
class PlainText : public HeldText {
 public:
    explicit PlainText(std::string_view utf8) : m_text(utf8) {}

    qint64 length() const override { return static_cast<qint64>(m_text.size()); }
    qint64 gap() const override { return length(); }
    std::string_view range(qint64 from, qint64 length) const override;

    // Each call of these counts from the start of the text.
    qint64 lineCount() const override;
    qint64 lineOf(qint64 byte) const override;
    qint64 lineStart(qint64 line) const override;

 private:
    std::string_view m_text;
};

/// The place of a byte in a text.
struct TextPlace {
    qint64 line = 0;          ///< from 0
    qint64 lineStart = 0;     ///< byte
    qint64 position = 0;      ///< UTF-16 units from the start of the text
    qint64 linePosition = 0;  ///< position of the line's first character
};

/// Finds the places of bytes in a text by counting on from the last one, so that ascending bytes cost one pass over the
/// text. CR, LF and CR LF end a line. Owned by the code that asks; does not own the bytes.
class PlaceFinder {
 public:
    PlaceFinder(std::string_view utf8, bool ascii);

    TextPlace placeOf(qint64 byte);
    qint64 unitsBetween(qint64 from, qint64 to) const;
    /// The text of the line that begins at this byte, without its line end.
    std::string_view lineAt(qint64 start) const;

 private:
    void countLinesTo(qint64 byte);
    qint64 behindLineEnd(qint64 from) const;

    std::string_view m_text;
    bool m_ascii;
    bool m_hasCr;
    qint64 m_lineEnd = 0;    ///< the first byte behind the end of the present line, once it was looked for; else 0
    qint64 m_countedTo = 0;  ///< the byte of the last place
    TextPlace m_place;
};
