#pragma once

#include <QString>

class Prompts;
class QWidget;

/// Has the user choose a folder. Returns its absolute path, empty when nothing was chosen. Modal over the window of the
/// owner; runs the event loop.
QString SelectFolderDialog(Prompts& prompts, QWidget* pOwner, const QString& pTitle);
