#include "hex/bytes/BlockExport.h"

#include "hex/bytes/HexText.h"

#include <array>

namespace {

constexpr int BytesPerLine = 16;

/// The text around the bytes of a block.
struct Frame {
    QLatin1String heading;  ///< with "%1" for the number in brackets
    int lessThanCount;      ///< how much that number is below the count of bytes
    QLatin1String before;   ///< each byte
    QLatin1String behind;   ///< each byte
    QLatin1String lineEnd;
    QLatin1String end;
    bool cutsLastSeparator;
};

constexpr std::array<Frame, 3> Frames{
    Frame{QLatin1String(""), 0, QLatin1String(""), QLatin1String(" "), QLatin1String("\r\n"), QLatin1String(""), false},
    Frame{QLatin1String("unsigned char data[%1] = {\r\n\t"), 0, QLatin1String("0x"), QLatin1String(", "),
          QLatin1String("\r\n\t"), QLatin1String("\r\n};"), true},
    Frame{QLatin1String("data: array[0..%1] of byte = (\r\n\t"), 1, QLatin1String("$"), QLatin1String(", "),
          QLatin1String("\r\n\t"), QLatin1String("\r\n);"), true},
};

}  // namespace

QString blockText(QByteArrayView bytes, BlockForm form) {
    const Frame& frame = Frames[static_cast<std::size_t>(form)];
    QString text =
        QString(frame.heading).replace(QLatin1String("%1"), QString::number(bytes.size() - frame.lessThanCount));
    text.reserve(text.size() + bytes.size() * (frame.before.size() + 2 + frame.behind.size()) +
                 bytes.size() / BytesPerLine * frame.lineEnd.size() + frame.end.size());
    for (qsizetype i = 0; i < bytes.size(); ++i) {
        text += frame.before;
        text += HexText::ByteToHexCell(static_cast<quint8>(bytes[i]));
        text += frame.behind;
        if (i % BytesPerLine == BytesPerLine - 1)
            text += frame.lineEnd;
    }
    if (frame.cutsLastSeparator)
        text.chop(frame.behind.size() + (bytes.size() % BytesPerLine == 0 ? frame.lineEnd.size() : 0));
    return text + frame.end;
}
