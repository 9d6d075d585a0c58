#pragma once

#include <QMenu>

class FrameCommands;
class QPoint;
struct FrameParts;

/// The menu of the tab strip. Its entries work on the active document, like the commands of the same purpose in the
/// menu bar. Owned by the frame.
class TabMenu : public QMenu {
    Q_OBJECT

 public:
    TabMenu(FrameParts& parts, FrameCommands& commands, QWidget* parent);

    /// Brings the entries in line with the active document and shows them there.
    void showAt(const QPoint& globalPosition);

 private:
    void BuildTabMenu();
    void run(void (FrameCommands::*command)());

    FrameParts& m_parts;
    FrameCommands& m_commands;
};
