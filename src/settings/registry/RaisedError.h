#pragma once

#include <QString>

/// An error that an operation raised: the operation returned false, and its object returns this. Number 0: none.
struct RaisedError {
    qint32 number = 0;
    QString source;
    QString description;
};
