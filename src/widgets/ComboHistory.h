#pragma once

#include <QString>

class QComboBox;

/// The texts typed into a combo box before, stored in a text file of the program folder: an entry a line, the newest
/// last. The list of the box has the newest at the top. Failures are not reported.

/// How many entries a history has.
inline constexpr int ComboHistorySize = 30;
/// As `pFlag`: an entry that is in the list already is moved to the top.
inline constexpr int RaiseComboHistory = -1;

/// Adds a text at the top of the list and removes the last entry if there are more than `pMax`. Blank texts are
/// ignored. An equal entry stays where it is, unless `pFlag` is RaiseComboHistory.
void AddComboHistory(QComboBox& pCombo, const QString& pText, int pMax, int pFlag);

/// Fills the list from the file, and the box with its last line. Without a file the list is unchanged.
void LoadComboHistory(const QString& pName, QComboBox& pCombo);

/// Replaces the file by the list, followed by the text in the box. A text that contains a line break is left out.
void SaveComboHistory(const QString& pName, const QComboBox& pCombo);
