#pragma once

#include <QByteArray>

#include <optional>

/// What a recovery kept of a file before it wrote over a block that may have been somebody's.
struct KeptBytes {
    QByteArray target;
    QByteArray contents;

    /// Nothing when the file of this name is something else, or is not whole.
    static std::optional<KeptBytes> read(const QByteArray& name);
};
