#include "text/codec/Utf8Text.h"

QByteArray wellFormedUtf8(QString text) {
    for (qsizetype at = 0; at < text.size(); ++at) {
        if (text[at].isHighSurrogate() && at + 1 < text.size() && text[at + 1].isLowSurrogate())
            ++at;
        else if (text[at].isSurrogate())
            text[at] = QChar::ReplacementCharacter;
    }
    return text.toUtf8();
}
