#pragma once

#include "editor/print/PrintDialogs.h"
#include "platform/FileLookup.h"
#include "platform/Folders.h"

#include <QString>
#include <QStringList>

#include <functional>

class InstanceLock;
class Journals;
class PanelLink;
class Prompts;
class RegistryStore;
class SaveNotices;
struct WorkspaceServices;

/// The services that the frame uses; it owns none of them.
struct FrameServices {
    /// Makes the side panel. The frame's window owns what is shown of it; the panel must live as long as the window.
    using PanelMaker = std::function<PanelLink&(const WorkspaceServices& services)>;

    Prompts& prompts;
    RegistryStore& registry;
    PanelMaker makePanel;
    QString tail;  ///< command line tail, untrimmed
    /// Called with the name of each step of start and end as it begins; may be empty.
    std::function<void(const char* step)> noted;
    // The folder of the program's own files, and that of the installed files.
    QString programFolder = ProgramFolder();
    QString shareFolder = ::shareFolder();
    FileLookup::Exists fileExists = ::fileExists;
    PrintDialogs& printDialogs = PrintDialogs::shown();
    QStringList arguments = {};  ///< of which the tail was made
    /// By which later starts find this instance; null: they do not. Longer-lived than the frame.
    InstanceLock* instanceLock = nullptr;
    /// Of unsaved changes; null: none are kept. Longer-lived than the frame.
    Journals* journals = nullptr;
    /// Of interrupted saves; null: nothing is said of them. Longer-lived than the frame.
    SaveNotices* saveNotices = nullptr;
};
