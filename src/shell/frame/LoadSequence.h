#pragma once

#include "shell/start/CommandLine.h"
#include "shell/start/FrameSteps.h"

#include <span>

class FrameCommands;
class frmMain;
struct FrameParts;

/// Everything that comes up with the frame, as a list of named steps in their order. Run once, before the frame is
/// shown. The steps whose room is still to come are calls into RoomsToCome.
class LoadSequence {
 public:
    LoadSequence(frmMain& frame, FrameParts& parts, const QString& tail);

    static std::span<const FrameStep<LoadSequence>> steps();

 private:
    void putStatusPictures();
    void prepareMenuPictures();
    void loadOpenCheck();
    void hookOpenCheck();
    void readFirstSettings();
    void createEditorGlobals();
    void loadMacroFiles();
    void PropertiesLoad();
    void LoadOptions();
    void loadLanguages();
    void loadLists();
    void setLoaded();
    void placeSearchBox();
    void buildCoolBar();
    void startNewDocument();
    void layOutPanels();
    void followCommandLine();
    void UpdateMacroMenu();
    void restoreSession();
    void markViewParts();
    void setCommandStates();
    void makeTabMenu();
    void setCaption();

    frmMain& m_frame;
    FrameParts& m_parts;
    CommandLine::LoadOrder m_order;
};
