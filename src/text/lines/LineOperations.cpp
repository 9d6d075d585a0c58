#include "text/lines/LineOperations.h"

#include "text/lines/clsConcat.h"

#include <QList>
#include <QStringView>

#include <algorithm>
#include <stdexcept>

namespace {

/// The control can't hold longer texts (UTF-16 units).
constexpr qsizetype LongestText = 1'000'000'000;

QStringView withoutTrailing(QStringView piece) {
    while (piece.endsWith(u' '))
        piece.chop(1);
    return piece;
}

QStringView withoutLeading(QStringView piece) {
    while (piece.startsWith(u' '))
        piece = piece.sliced(1);
    return piece;
}

qsizetype longestOf(const QList<QStringView>& pieces) {
    qsizetype longest = 0;
    for (const QStringView piece : pieces)
        longest = std::max(longest, piece.size());
    return longest;
}

/// Half of a number, rounded to even.
qsizetype halfToEven(qsizetype number) {
    const qsizetype half = number / 2;
    return number % 2 == 0 || half % 2 == 0 ? half : half + 1;
}

/// A line with the spaces added on both sides; lengths are UTF-16 units.
struct Placed {
    qsizetype left = 0;
    QStringView text;
    qsizetype right = 0;

    qsizetype length() const { return left + text.size() + right; }
};

/// Returns the new form of a line; `longest` is the length of the longest line.
using NewForm = Placed (*)(QStringView piece, qsizetype longest);

/// Replaces each line by its new form. A line end is added after every line, so the last one is removed again.
QString transformed(const QString& text, NewForm newForm) {
    const QString lineEnd = LineOperations::lineEndOf(text);
    const QList<QStringView> pieces = QStringView(text).split(lineEnd);
    const qsizetype longest = longestOf(pieces);
    qsizetype length = 0;
    qsizetype mostBlanks = 0;
    for (const QStringView piece : pieces) {
        const Placed placed = newForm(piece, longest);
        length += placed.length() + lineEnd.size();
        mostBlanks = std::max({mostBlanks, placed.left, placed.right});
        if (length > LongestText)
            throw std::length_error("the lines would become too long");
    }

    const QString blanks(mostBlanks, u' ');
    clsConcat result;
    result.ReInit();
    for (const QStringView piece : pieces) {
        const Placed placed = newForm(piece, longest);
        result.SConcat(QStringView(blanks).first(placed.left));
        result.SConcat(placed.text);
        result.SConcat(QStringView(blanks).first(placed.right));
        result.SConcat(lineEnd);
    }
    QString lines = result.GetString();
    lines.chop(lineEnd.size());
    return lines;
}

}  // namespace

namespace LineOperations {

QString lineEndOf(const QString& text) {
    for (const QString& lineEnd : {u"\r\n"_qs, u"\n"_qs, u"\r"_qs}) {
        if (text.contains(lineEnd))
            return lineEnd;
    }
    return u"\r\n"_qs;
}

QString TrimTailed(const QString& text) {
    return transformed(text, [](QStringView piece, qsizetype) { return Placed{0, withoutTrailing(piece), 0}; });
}

QString AlignLeft(const QString& text) {
    return transformed(text, [](QStringView piece, qsizetype) { return Placed{0, withoutLeading(piece), 0}; });
}

QString AlignRight(const QString& text) {
    return transformed(text, [](QStringView piece, qsizetype longest) {
        const QStringView kept = withoutTrailing(piece);
        return Placed{longest - kept.size(), kept, 0};
    });
}

QString AlignCenter(const QString& text) {
    return transformed(text, [](QStringView piece, qsizetype longest) {
        const QStringView kept = withoutLeading(withoutTrailing(piece));
        const qsizetype beside = halfToEven(longest - kept.size());
        return Placed{beside, kept, beside};
    });
}

}  // namespace LineOperations
