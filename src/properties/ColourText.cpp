#include "properties/ColourText.h"

#include "widgets/StoredColour.h"

#include <QRegularExpression>

QString ColourText::textOf(qint32 colour) {
    return StoredColour::colourOf(colour).name().mid(1).toUpper();
}

std::optional<qint32> ColourText::numberOf(const QString& text) {
    static const QRegularExpression digits(u"^#?([0-9A-Fa-f]{6})$"_qs);
    const QRegularExpressionMatch match = digits.match(text.trimmed());
    if (!match.hasMatch())
        return std::nullopt;
    return StoredColour::numberOf(QColor(u'#' + match.captured(1)));
}
