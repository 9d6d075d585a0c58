#pragma once

#include "hex/bytes/FilePosition.h"

#include <QHash>

#include <utility>
#include <vector>

/// The bytes that were typed since a file was loaded or saved and differ from their values then. Keeps the old value of
/// each byte, so its size is that of the edits and not of the file. Owned by the view.
class HexChanges {
 public:
    void clear() { m_before.clear(); }

    /// A byte was typed in the place of another.
    void type(FilePosition at, quint8 before, quint8 now);
    /// A byte was undone.
    void restore(FilePosition at, quint8 now);

    /// Whether the current byte is to be marked.
    bool isMarked(FilePosition at, quint8 now) const;
    qsizetype count() const { return m_before.size(); }

    /// The position of each of them and its old value; ascending.
    std::vector<std::pair<FilePosition, quint8>> all() const;

 private:
    QHash<qint64, quint8> m_before;  ///< by position
};
