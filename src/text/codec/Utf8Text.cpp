#include "text/codec/Utf8Text.h"

#include <utility>

QByteArray wellFormedUtf8(QString text) {
    for (qsizetype at = 0; at < text.size(); ++at) {
        if (text[at].isHighSurrogate() && at + 1 < text.size() && text[at + 1].isLowSurrogate())
            ++at;
        else if (text[at].isSurrogate())
            text[at] = QChar::ReplacementCharacter;
    }
    return text.toUtf8();
}

QByteArray utf8WithLineEnds(QString text, const QString& lineEnd) {
    text.replace(u"\r\n"_qs, u"\n"_qs).replace(u'\r', u'\n');
    if (lineEnd != u"\n")
        text.replace(u"\n"_qs, lineEnd);
    return wellFormedUtf8(std::move(text));
}
