#pragma once

#include "keys/HotKey.h"

#include <QString>

class QWidget;

/// The shortcuts that a window's menus have now; an enabled one comes before any hot key.
namespace MenuKeys {

/// What the stroke does in the window of the widget, without the mark of a key; empty: nothing.
QString commandOf(const HotKeyStroke& stroke, const QWidget& widget);

}  // namespace MenuKeys
