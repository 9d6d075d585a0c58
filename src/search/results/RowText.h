#pragma once

#include <QString>

/// The text of a row as it is drawn: of a long one the first characters alone, and a dot for each control character, so
/// that nothing breaks the row and every place in the text stays what it was. Tabs remain.
QString shownRowText(const QString& text);
