#pragma once

#include <QString>

class Settings;

/// The program-wide variables that mirror the store. The shell owns the only instance; the frame fills it at start, the
/// properties dialog writes it along with the store, and documents and views read it instead of the store. The values
/// here are the defaults, except for the font, see loadFirstOptions().
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

/// Reads the first group of settings, from "FontName" to "ContinueSearch". On entry `options` holds the font of a new
/// text control. A text that is not valid leaves its variable unchanged.
void loadFirstOptions(Settings& settings, Options& options);

/// Reads the rest, from "LoadLastFolder" to "RowHighlight". A text that is not valid ends the reading: its variable and
/// those after it stay unchanged.
void LoadOptions(Settings& settings, Options& options);
