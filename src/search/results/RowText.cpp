#include "search/results/RowText.h"

namespace {

constexpr qsizetype LongestRow = 1000;
constexpr QChar Dot(u'\u00b7');

QChar shown(QChar character) {
    const QChar::Category category = character.category();
    const bool isInvisible =
        category == QChar::Other_Control || category == QChar::Separator_Line || category == QChar::Separator_Paragraph;
    return isInvisible && character != u'\t' ? Dot : character;
}

}  // namespace

QString shownRowText(const QString& text) {
    QString row = text.left(LongestRow);
    if (row.size() < text.size() && row.back().isHighSurrogate())
        row.chop(1);
    for (QChar& each : row)
        each = shown(each);
    return row;
}
