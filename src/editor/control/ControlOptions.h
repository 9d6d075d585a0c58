#pragma once

#include <QColor>
#include <QList>
#include <QPixmap>

/// How one control shows its text and takes its keys, beyond what Scintilla keeps for it. A colour that is not valid
/// stands for the desktop's.
struct ControlOptions {
    bool leftMargin = true;
    bool braceMatching = true;
    bool dragDrop = true;
    bool autoIndent = true;
    bool blanksForTabs = false;
    int tabWidth = 4;
    qint64 lineNumberStart = 1;
    QColor background;
    QColor leftMarginColour;
    QColor rowHighlight;
    QList<QPixmap> images;
};
