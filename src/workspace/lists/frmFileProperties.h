#pragma once

#include <QString>

class Prompts;
class QWidget;

/// Shows type, size, times, owner and mode of a file or folder in a dialog of its own. Returns false, with the reason
/// in a box titled "Error", when the path cannot be examined.
bool ShowProperties(const QString& path, Prompts& prompts, QWidget* parent);
