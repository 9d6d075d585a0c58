#pragma once

#include "shell/documents/ChildPlace.h"

#include <QString>

#include <optional>

/// An open document as one line of text, by which it is opened again: eight fields separated by tabs. Lengths are twips
/// and are written with "." in every locale. A plain struct without a window.
struct DocumentRecord {
    QString path;
    bool textEdit = true;  ///< text mode, not hex
    bool locked = false;
    std::optional<ChildState> windowState;
    // The child window in its normal state.
    float left = 0;
    float top = 0;
    float width = 0;
    float height = 0;

    bool operator==(const DocumentRecord&) const = default;

    /// A field that is missing or cannot be read keeps its default, and the others are read all the same.
    static DocumentRecord fromLine(const QString& line);
    /// Empty when the path is empty or contains a tab or a line break.
    QString toLine() const;

    /// The child window can have this size.
    bool hasPlace() const { return width >= 1 && height > 0; }
};
