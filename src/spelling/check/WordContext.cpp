#include "spelling/check/WordContext.h"

#include "spelling/check/SpellingSession.h"

#include <algorithm>

namespace {

constexpr qsizetype MostUnits = 140;  ///< on each side of the word
constexpr QChar Ellipsis(0x2026);

bool isLineEnd(QChar each) {
    return each == u'\n' || each == u'\r';
}

QString shown(QString text) {
    for (QChar& each : text) {
        if (each.isSpace() || each.category() == QChar::Other_Control)
            each = u' ';
    }
    return text;
}

}  // namespace

WordContext WordContext::of(const SpellingSession& session) {
    const QStringView text = session.text();
    const WordSpan place = session.place();
    qsizetype begin = place.position;
    while (begin > 0 && place.position - begin < MostUnits && !isLineEnd(text[begin - 1]))
        --begin;
    const bool isCutBefore = begin > 0 && !isLineEnd(text[begin - 1]);
    if (isCutBefore && text[begin].isLowSurrogate())
        ++begin;
    const qsizetype wordEnd = place.position + place.length;
    qsizetype end = wordEnd;
    while (end < text.size() && end - wordEnd < MostUnits && !isLineEnd(text[end]))
        ++end;
    const bool isCutBehind = end < text.size() && !isLineEnd(text[end]);
    if (isCutBehind && text[end].isLowSurrogate())
        --end;
    const QString before = shown(session.corrections().appliedTo(text, begin, place.position));
    const QString behind = shown(text.mid(wordEnd, end - wordEnd).toString());
    return {isCutBefore ? Ellipsis + before : before, session.word(), isCutBehind ? behind + Ellipsis : behind};
}

qint64 lineAt(QStringView text, qsizetype position) {
    qint64 line = 1;
    for (qsizetype at = 0; at < position; ++at) {
        const bool isFirstOfTwo = text[at] == u'\r' && at + 1 < text.size() && text[at + 1] == u'\n';
        line += isLineEnd(text[at]) && !isFirstOfTwo ? 1 : 0;
    }
    return line;
}
