#pragma once

#include "text/search/SearchPattern.h"

#include <QByteArray>
#include <QString>

#include <string_view>

/// A short text that every match of a search contains, or stands beside. A file without it has no match, which is seen
/// in its raw bytes much faster than by decoding and searching it. A plain value.
class RequiredText {
 public:
    RequiredText(const QString& text, SearchFlags flags);

    /// False: no match can be in a file of these bytes. The bytes may be in any encoding that a load detects.
    bool mayBeIn(std::string_view bytes) const;

    /// ASCII; lower case when the search ignores case. Empty: nothing is known to be in every match.
    const QByteArray& text() const { return m_text; }

 private:
    void choosePair();
    bool isAt(const char* bytes) const;
    bool isIn(std::string_view bytes) const;

    QByteArray m_text;
    bool m_caseSensitive;
    // Two bytes of the text that are rare in other texts, by their index.
    qsizetype m_first = 0;
    qsizetype m_second = 0;
};
