#include "widgets/ComboHistory.h"

#include "settings/files/OwnTextFile.h"

#include <QComboBox>

#include <optional>

namespace {

constexpr int KeepOrder = 0;

/// The list changes and the text in the box does not.
void insertOnTop(QComboBox& combo, const QString& text) {
    const QString inBox = combo.currentText();
    combo.insertItem(0, text);
    combo.setEditText(inBox);
}

}  // namespace

void AddComboHistory(QComboBox& pCombo, const QString& pText, int pMax, int pFlag) {
    if (pText.trimmed().isEmpty())
        return;
    const int found = pCombo.findText(pText, Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (found >= 0 && pFlag != RaiseComboHistory)
        return;
    if (found >= 0) {
        pCombo.removeItem(found);
        insertOnTop(pCombo, pText);
        pCombo.setEditText(pText);
        return;
    }
    if (pCombo.count() >= pMax)
        pCombo.removeItem(pMax - 1);
    insertOnTop(pCombo, pText);
}

void LoadComboHistory(const QString& pName, QComboBox& pCombo) {
    const std::optional<QStringList> lines =
        OwnTextFile::readLines(OwnTextFile::path(pName), OwnTextFile::MostListBytes);
    if (!lines)
        return;
    pCombo.clear();
    for (const QString& line : *lines) {
        if (!line.isEmpty())
            AddComboHistory(pCombo, line, ComboHistorySize, KeepOrder);
    }
    pCombo.setEditText(lines->isEmpty() ? QString() : lines->last());
}

void SaveComboHistory(const QString& pName, const QComboBox& pCombo) {
    QStringList lines;
    for (int index = pCombo.count() - 1; index >= 0; --index)
        lines += pCombo.itemText(index);
    OwnTextFile::writeLines(OwnTextFile::path(pName), lines << pCombo.currentText());
}
