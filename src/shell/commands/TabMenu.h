#pragma once

#include <QMenu>

class ActiveDocument;
class FileCommands;
class QPoint;

/// The menu of the tab strip. Its entries work on the active document, like the commands of the same purpose in the
/// menu bar. Owned by the frame.
class TabMenu : public QMenu {
    Q_OBJECT

 public:
    TabMenu(const ActiveDocument& active, FileCommands& commands, QWidget* parent);

    /// Updates the entries from the active document and shows them there.
    void showAt(const QPoint& globalPosition);

 private:
    void BuildTabMenu();
    void run(const char* key, void (FileCommands::*command)());

    const ActiveDocument& m_active;
    FileCommands& m_commands;
};
