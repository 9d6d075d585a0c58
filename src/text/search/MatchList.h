#pragma once

#include <QByteArray>
#include <QString>

/// Builds the text form of a list of matches: for each match its line (from 0), the position of its first character and
/// its length, separated by commas and terminated by a tab. Positions and lengths are UTF-16 units. A plain value.
class MatchList {
 public:
    void add(qint64 line, qint64 position, qint64 length);
    QString text() const { return QString::fromLatin1(m_records); }

 private:
    void append(qint64 number, char end);

    QByteArray m_records;
};
