#pragma once

#include <QIcon>

/// The program's own pictures, all drawn as SVG. One is parsed when it is first painted and not before, in the size and
/// resolution it is painted in, and in colours that are seen on the windows of the desktop, light or dark.
namespace Icons {

/// The picture of that name; an empty one when there is none.
QIcon named(const char* name);

}  // namespace Icons
