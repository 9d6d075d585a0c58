#pragma once

#include <QString>

/// An error that an operation raised: the operation gave false, and its object hands this out. Number 0: none.
struct RaisedError {
    qint32 number = 0;
    QString source;
    QString description;
};
