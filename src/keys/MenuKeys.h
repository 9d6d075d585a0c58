#pragma once

#include "keys/HotKey.h"

#include <QString>

class QWidget;

/// The shortcuts of a window's menus. An enabled shortcut has precedence over hot keys.
namespace MenuKeys {

/// Returns the name of the enabled action, menu or shortcut in the widget's window that this stroke triggers, without
/// "&" and "..."; empty if there is none.
QString commandOf(const HotKeyStroke& stroke, const QWidget& widget);

}  // namespace MenuKeys
