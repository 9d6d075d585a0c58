#pragma once

#include "platform/Folders.h"

#include <QString>

#include <functional>

class PanelLink;
class Prompts;
class RegistryStore;
class RoomsToCome;

/// What the frame is given for its life; it owns none of it.
struct FrameServices {
    Prompts& prompts;
    RegistryStore& registry;
    PanelLink& panel;
    RoomsToCome& rooms;
    QString tail;  ///< command line tail, untrimmed
    /// Called with the name of each step of start and end as it begins; may be empty.
    std::function<void(const char* step)> noted;
    // Where the program keeps its own files, and what was installed with it.
    QString programFolder = ProgramFolder();
    QString shareFolder = ::shareFolder();
};
