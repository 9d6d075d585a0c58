#include "shell/session/DocumentRecord.h"

#include "settings/files/OwnTextFile.h"

#include <QLocale>
#include <QStringList>

#include <cmath>

namespace {

constexpr int States = 3;

QString textOf(bool value) {
    return value ? u"True"_qs : u"False"_qs;
}

QString textOf(float value) {
    return QString::number(static_cast<double>(value), 'f', QLocale::FloatingPointShortest);
}

/// A word in any letter case, or a number, of which 0 is false.
bool boolean(const QString& field, bool otherwise) {
    if (field.compare(QLatin1String("True"), Qt::CaseInsensitive) == 0)
        return true;
    if (field.compare(QLatin1String("False"), Qt::CaseInsensitive) == 0)
        return false;
    bool isNumber = false;
    const int number = field.toInt(&isNumber);
    return isNumber ? number != 0 : otherwise;
}

float length(const QString& field) {
    bool isNumber = false;
    const float number = field.toFloat(&isNumber);
    return isNumber && std::isfinite(number) ? number : 0;
}

std::optional<ChildState> state(const QString& field) {
    bool isNumber = false;
    const int number = field.toInt(&isNumber);
    if (!isNumber || number < 0 || number >= States)
        return std::nullopt;
    return static_cast<ChildState>(number);
}

}  // namespace

DocumentRecord DocumentRecord::fromLine(const QString& line) {
    const QStringList fields = line.split(u'\t');
    const auto field = [&fields](qsizetype index) { return fields.value(index).trimmed(); };
    DocumentRecord record;
    record.path = fields.first();
    record.textEdit = boolean(field(1), record.textEdit);
    record.locked = boolean(field(2), record.locked);
    record.windowState = state(field(3));
    record.left = length(field(4));
    record.top = length(field(5));
    record.width = length(field(6));
    record.height = length(field(7));
    return record;
}

QString DocumentRecord::toLine() const {
    if (path.isEmpty() || !OwnTextFile::isOneField(path))
        return {};
    const int number = static_cast<int>(windowState.value_or(ChildState::Normal));
    return QStringList{path,         textOf(textEdit), textOf(locked), QString::number(number),
                       textOf(left), textOf(top),      textOf(width),  textOf(height)}
        .join(u'\t');
}
