#pragma once

#include <QString>

class HelpPages;
class Prompts;
class QWidget;

/// The commands that leave the program: other programs, windows of the file manager, help, web and mail; and the About
/// box, which leads there too. A command whose program or folder is missing does nothing and reports nothing. Owned by
/// the frame.
class OutsideCommands {
 public:
    /// `window` is the frame; the folders are those of the program's own and of the installed files.
    OutsideCommands(QWidget& window, Prompts& prompts, const HelpPages& help, const QString& programFolder,
                    const QString& shareFolder);

    void StartCalculator();
    void OpenWindowsDirectory();
    void OpenSystemDirectory();
    void OpenDesktop();
    void OpenMyDocuments();
    void ShowHelp();
    void OpenWebSite();
    void SendEmail();
    /// Runs the event loop until the box is closed.
    void ShowAbout();

 private:
    QWidget& m_window;
    Prompts& m_prompts;
    const HelpPages& m_help;
    QString m_programFolder;
    QString m_shareFolder;
};
