#pragma once

#include <QString>

/// An error of the system: its number (errno) and a sentence for the user. A plain value; number 0 means no error. The
/// description is the system's own, unless the code that reported the error had a better one.
struct SystemError {
    int number = 0;
    QString description;

    explicit operator bool() const { return number != 0; }

    /// Returns the error with this errno and the system's description of it.
    static SystemError fromErrno(int number);
};
