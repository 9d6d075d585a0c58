#pragma once

#include "settings/desktop/MimeAppsList.h"

#include <QMap>
#include <QString>
#include <QStringList>

class RegistryStore;

/// What the program has changed in the files of the desktop, so that it can be undone: kept in the settings store, in a
/// key of its own. Plain data, loaded for each change.
struct DesktopRecord {
    QMap<QString, QStringList> types;  ///< of each extension that opens in the program
    bool contextMenu = false;
    MimeAppsList::Marks marks;  ///< what was inserted and created

    bool isEmpty() const { return types.isEmpty() && !contextMenu; }

    bool operator==(const DesktopRecord&) const = default;

    static DesktopRecord load(RegistryStore& store);
    /// Replaces the stored record, or leaves the old one. False when it could not be written.
    bool save(RegistryStore& store) const;
};
