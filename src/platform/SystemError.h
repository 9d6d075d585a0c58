#pragma once

#include <QString>

/// An error of the system: its number (errno) and a sentence for the user. Number 0 means that nothing failed.
/// The description is the system's own unless whoever made the error knew better.
struct SystemError {
    int number = 0;
    QString description;

    explicit operator bool() const { return number != 0; }

    /// The error of this number with the system's description of it.
    static SystemError fromErrno(int number);
};
