#pragma once

#include "platform/Folders.h"

#include <QString>

#include <functional>

class PanelLink;
class Prompts;
class RegistryStore;
class RoomsToCome;

/// The services that the frame uses; it owns none of them.
struct FrameServices {
    Prompts& prompts;
    RegistryStore& registry;
    PanelLink& panel;
    RoomsToCome& rooms;
    QString tail;  ///< command line tail, untrimmed
    /// Called with the name of each step of start and end as it begins; may be empty.
    std::function<void(const char* step)> noted;
    // The folder of the program's own files, and that of the installed files.
    QString programFolder = ProgramFolder();
    QString shareFolder = ::shareFolder();
};
