#pragma once

#include <QString>
#include <QStringView>

/// A pattern for file names: "*" stands for any characters, "?" for one; everything else stands for itself, letter case
/// included. "*.*" means "*". A name that begins with a dot never matches.
class Wildcard {
 public:
    explicit Wildcard(QString pattern);

    bool matches(QStringView name) const;

 private:
    QString m_pattern;
};
