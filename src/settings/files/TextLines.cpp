#include "settings/files/TextLines.h"

#include "text/codec/TextCodec.h"

QStringList linesOf(QByteArrayView bytes) {
    const DecodedText text = decodeText({bytes.data(), static_cast<std::size_t>(bytes.size())});
    QStringList lines = QString::fromStdString(text.utf8).split(u'\n');
    for (QString& line : lines) {
        if (line.endsWith(u'\r'))
            line.chop(1);
    }
    if (lines.last().isEmpty())
        lines.removeLast();
    return lines;
}
