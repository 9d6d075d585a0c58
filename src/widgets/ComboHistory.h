#pragma once

#include <QString>

class QComboBox;

/// What was typed into a combo box before, kept in a text file of the program folder: an entry a line, the newest last.
/// The list of the box has the newest on top. Failures are not reported.

/// How many entries a history has.
inline constexpr int ComboHistorySize = 30;
/// As `pFlag`: an entry that is there already comes to the top.
inline constexpr int RaiseComboHistory = -1;

/// Puts a text on top of the list, where the last of `pMax` entries makes room for it. Blank texts are passed over. An
/// entry just like it stays where it is, unless `pFlag` is RaiseComboHistory.
void AddComboHistory(QComboBox& pCombo, const QString& pText, int pMax, int pFlag);

/// Fills the list from the file, and the box with the last line of it. Without a file the list stays as it was.
void LoadComboHistory(const QString& pName, QComboBox& pCombo);

/// Replaces the file by the list and behind it the text in the box. A text with a line break in it is left out.
void SaveComboHistory(const QString& pName, const QComboBox& pCombo);
