#pragma once

#include <QString>

class TextControl;

/// The commands that are made of more than the control itself: of words and lines, with windows, searches and
/// bookmarks.
namespace ControlCommands {

/// Carries out a command by its number (CommandNumbers.h). False when it is not one of these. Runs inside a scope of
/// the control; the control may be destroyed when it returns, since searches run the event loop.
bool run(TextControl& control, int number, const QString& argument);

}  // namespace ControlCommands
