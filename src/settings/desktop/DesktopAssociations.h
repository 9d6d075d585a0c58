#pragma once

#include "settings/desktop/DesktopFolders.h"
#include "settings/desktop/DesktopRecord.h"

#include <QString>

class RegistryStore;

/// The file types that open in the program, and its entry in the menus, in the files of the desktop: mimeapps.list, a
/// desktop entry, packages of file types. What others wrote there stays, and when all is undone the files are as
/// before. What was changed is kept in the settings store; where that cannot be written, nothing is changed.
///
/// Owned by whoever registers types; the store outlives it. Failures are not reported. It does not run the event loop,
/// but waits for the programs that update the desktop's caches, if these are installed.
///
/// One file serves two purposes: Quillmark.desktop among the user's entries is the entry in the menu of programs, and
/// by it the desktop opens files. While it is only needed for files, it is hidden from the menu.
class DesktopAssociations {
 public:
    DesktopAssociations(RegistryStore& store, DesktopFolders folders);

    /// The program opens files with this extension from now on. `description` is what the desktop calls them, if it
    /// does not know them. Nothing happens for an extension that no file can have.
    void add(const QString& extension, const QString& description, bool hasIcon);
    void remove(const QString& extension);
    /// Whether the desktop was told to open files of the extension, which was added, with another program.
    bool isTakenOver(const QString& extension) const;

    /// Offers the program in the menu of every text file.
    void addToContextMenu();
    void removeFromContextMenu();

    /// The entry in the menu of programs.
    bool isInMenu() const;
    void addToMenu();
    void removeFromMenu();

 private:
    bool change(const DesktopRecord& before, DesktopRecord& after, const QStringList& defaults,
                const QStringList& added);
    bool editList(const DesktopRecord& before, DesktopRecord& after, const QStringList& defaults,
                  const QStringList& added);
    bool isEntryInstalled() const;
    bool hasHiddenEntry(const DesktopRecord& record) const;
    void updateEntry(DesktopRecord& record);
    void updateCache(DesktopRecord& record) const;
    void writePackage(const QString& extension, const QByteArray& package, DesktopRecord& record);
    void deletePackage(const QString& extension, DesktopRecord& record);
    void deleteGenerated() const;
    QString listFolder() const;
    QString entryPath() const;

    RegistryStore& m_store;
    DesktopFolders m_folders;
};
