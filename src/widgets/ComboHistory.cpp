#include "widgets/ComboHistory.h"

#include "settings/files/OwnTextFile.h"

#include <QComboBox>

#include <optional>

namespace {

constexpr int KeepOrder = 0;

}  // namespace

void AddComboHistory(QComboBox& pCombo, const QString& pText, int pMax, int pFlag) {
    if (pText.trimmed().isEmpty())
        return;
    const int found = pCombo.findText(pText, Qt::MatchExactly | Qt::MatchCaseSensitive);
    if (found >= 0 && pFlag != RaiseComboHistory)
        return;
    // A combo box whose entry is removed shows another one.
    const QString inBox = found >= 0 ? pText : pCombo.currentText();
    if (found >= 0)
        pCombo.removeItem(found);
    else if (pCombo.count() >= pMax)
        pCombo.removeItem(pMax - 1);
    pCombo.insertItem(0, pText);
    pCombo.setEditText(inBox);
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
    const QString last = lines->isEmpty() ? QString() : lines->last();
    // The arrow keys start from the entry that the box shows.
    pCombo.setCurrentIndex(pCombo.findText(last, Qt::MatchExactly | Qt::MatchCaseSensitive));
    pCombo.setEditText(last);
}

void SaveComboHistory(const QString& pName, const QComboBox& pCombo) {
    QStringList lines;
    for (int index = pCombo.count() - 1; index >= 0; --index)
        lines += pCombo.itemText(index);
    OwnTextFile::writeLines(OwnTextFile::path(pName), lines << pCombo.currentText());
}
