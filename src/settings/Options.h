#pragma once

#include <QString>

class Settings;

/// The program-wide variables that mirror the store. The shell owns the one set; the frame fills it at start, the
/// properties dialog writes it along with the store, documents and views read it and never the store. The values here
/// are the defaults; the font is given to loadFirstOptions().
struct Options {
    QString FontName;
    qint16 FontSize = 0;  ///< points
    bool FileModifyNotice = true;
    bool CheckHexModeWhenOpen = true;
    bool ClearRedoAfterSave = false;
    bool WholeWord = false;
    bool RegExpOn = false;
    bool CaseSensitiveOn = false;
    bool ContinueSearch = true;
    bool LoadLastFolder = false;
    bool DocumentWorkingFolder = true;
    bool ShowFullPath = true;
    bool UseFileIcon = false;
    qint32 RowHighlightColor = 15194061;  ///< blue-green-red, as all stored colours
    bool RowHighlight = true;
};

/// Reads the first group of settings, from "FontName" to "ContinueSearch". `options` comes with the font that a fresh
/// text control has. A text that means nothing leaves its own variable alone.
void loadFirstOptions(Settings& settings, Options& options);

/// Reads the rest, from "LoadLastFolder" to "RowHighlight". A text that means nothing ends the reading: its variable
/// and those behind it stay as they are.
void LoadOptions(Settings& settings, Options& options);
