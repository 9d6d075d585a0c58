#pragma once

#include <QString>

#include <functional>

/// What another program has done to a document's file since the document last checked it.
enum class DiskChange {
    None,       ///< nothing, or nothing that was not reported already
    Rewritten,  ///< it is there, with another time
    Deleted,
};

/// Compares modification times as texts, so to the second. `now` is the file's current one, `lastUpdate` that of the
/// last load or save; `knownUpdate`, the last one seen, becomes `now`, so that each state of the file is reported once.
inline DiskChange checkDiskChange(const QString& now, const QString& lastUpdate, QString& knownUpdate,
                                  const std::function<bool()>& exists) {
    if (now == knownUpdate)
        return DiskChange::None;
    knownUpdate = now;
    if (now == lastUpdate)
        return DiskChange::None;
    return exists() ? DiskChange::Rewritten : DiskChange::Deleted;
}
