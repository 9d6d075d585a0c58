#pragma once

#include <QString>

/// Calls of the frame into rooms that are not built yet, each in its final place. Every one does nothing until its room
/// implements it and it is removed from this list.
class RoomsToCome {
 public:
    virtual ~RoomsToCome() = default;

    // Dialogs.
    virtual void ShowAbout() {}
    /// Has the user choose the language of the program, and stores it.
    virtual void ChooseLanguage() {}

    // Things outside the program.
    virtual void OpenWindowsDirectory() {}
    virtual void OpenSystemDirectory() {}
    virtual void OpenDesktop() {}
    virtual void OpenMyDocuments() {}
    virtual void ShowHelp() {}
    virtual void OpenWebSite() {}
    virtual void SendEmail() {}
};
