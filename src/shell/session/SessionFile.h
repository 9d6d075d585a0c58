#pragma once

#include <QString>
#include <QStringList>

/// What a run leaves for the next one: the open project, or else the open documents. A plain struct without a window.
struct SessionFile {
    QString project;      ///< path or name of the open project; empty: none
    QStringList records;  ///< a line of text for each document; none while a project is open

    bool operator==(const SessionFile&) const = default;

    /// Empty when the first line is none of the two marks. Lines after the second, or blank ones, count for documents
    /// alone.
    static SessionFile fromLines(const QStringList& lines);
    QStringList toLines() const;
};
