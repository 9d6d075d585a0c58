#pragma once

#include "shell/start/FrameSteps.h"

#include <span>

class frmMain;
struct FrameParts;

/// Everything that goes down with the frame, as lists of named steps in their order: first the session is written, with
/// the documents still open; then each document asks about its changes and goes; then the frame writes its lists and
/// releases what it holds. Nothing here can keep the program from ending.
class ShutDown {
 public:
    ShutDown(frmMain& frame, FrameParts& parts);

    static std::span<const FrameStep<ShutDown>> steps();

 private:
    void SaveSession();
    void unloadDocuments();
    void releaseMenus();
    void SaveRecentFiles();
    void SaveRecentProjects();
    void SaveFavProjects();
    void SaveSearchKeys();
    void PropertiesSave();
    void saveMacroFiles();
    void unloadForms();
    void releaseTabMenu();
    void Unhook();

    frmMain& m_frame;
    FrameParts& m_parts;
};
