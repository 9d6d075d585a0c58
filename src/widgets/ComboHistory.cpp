#include "widgets/ComboHistory.h"

#include "platform/FileReader.h"
#include "platform/Folders.h"
#include "text/codec/Windows1252.h"

#include <QComboBox>
#include <QSaveFile>
#include <QStringDecoder>

#include <optional>

namespace {

constexpr qsizetype MostBytes = 1'000'000;
constexpr int KeepOrder = 0;

QString pathOf(const QString& name) {
    return ProgramFolder() + u'/' + name;
}

/// Nothing when there is no such file; the first part of one that is no history.
std::optional<QByteArray> bytesOf(const QString& path) {
    FileReader reader;
    if (reader.open(path))
        return std::nullopt;
    QByteArray bytes(MostBytes, Qt::Uninitialized);
    const qint64 count = reader.read(bytes.data(), bytes.size());
    if (count < 0)
        return std::nullopt;
    bytes.truncate(count);
    return bytes;
}

QString decoded(const QByteArray& bytes) {
    QStringDecoder decoder(QStringDecoder::Utf8);
    QString text = decoder(bytes);
    if (!decoder.hasError())
        return text;
    text.clear();
    for (const char byte : bytes)
        text += QChar(Windows1252::characterOf(static_cast<quint8>(byte)));
    return text;
}

QStringList linesOf(QString text) {
    QStringList lines = text.replace(QLatin1String("\r\n"), QLatin1String("\n")).split(u'\n');
    if (lines.last().isEmpty())
        lines.removeLast();
    return lines;
}

/// The list changes and the text in the box does not.
void insertOnTop(QComboBox& combo, const QString& text) {
    const QString inBox = combo.currentText();
    combo.insertItem(0, text);
    combo.setEditText(inBox);
}

void writeLine(QSaveFile& file, const QString& line) {
    if (!line.contains(u'\n') && !line.contains(u'\r'))
        file.write(line.toUtf8() + "\r\n");
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
    const std::optional<QByteArray> bytes = bytesOf(pathOf(pName));
    if (!bytes)
        return;
    const QStringList lines = linesOf(decoded(*bytes));
    pCombo.clear();
    for (const QString& line : lines) {
        if (!line.isEmpty())
            AddComboHistory(pCombo, line, ComboHistorySize, KeepOrder);
    }
    pCombo.setEditText(lines.isEmpty() ? QString() : lines.last());
}

void SaveComboHistory(const QString& pName, const QComboBox& pCombo) {
    makeFolder(ProgramFolder());
    QSaveFile file(pathOf(pName));
    if (!file.open(QIODevice::WriteOnly))
        return;
    for (int index = pCombo.count() - 1; index >= 0; --index)
        writeLine(file, pCombo.itemText(index));
    writeLine(file, pCombo.currentText());
    file.commit();
}
