#pragma once

#include <QByteArray>
#include <QString>

/// The list of matches that a search hands out, as one text: for each match its line (from 0), the position of its
/// first character and its length, divided by commas and ended by a tab. Positions and lengths are UTF-16 units.
class MatchList {
 public:
    void add(qint64 line, qint64 position, qint64 length);
    QString text() const { return QString::fromLatin1(m_records); }

 private:
    void append(qint64 number, char end);

    QByteArray m_records;
};
