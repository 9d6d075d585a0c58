#include "hex/bytes/HexBlock.h"

#include <algorithm>

namespace {

bool isPosition(FilePosition position) {
    return position.number() >= 1 && position.number() <= FilePosition::Largest;
}

}  // namespace

std::optional<HexBlock> HexBlock::between(Offset one, Offset other, qint64 length) {
    const FilePosition first = std::min(one, other).position();
    const FilePosition last = std::max(one, other).position();
    if (length < 1 || !isPosition(first) || !isPosition(last))
        return std::nullopt;
    return HexBlock{std::min(first, FilePosition(length)), std::min(last, FilePosition(length))};
}

std::optional<QByteArray> HexBlock::bytesIn(const ByteStore& file) const {
    QByteArray bytes(static_cast<qsizetype>(size()), Qt::Uninitialized);
    if (file.read(first, bytes.data(), bytes.size()) != bytes.size())
        return std::nullopt;
    return bytes;
}

HexBlock::Filled HexBlock::fill(ByteStore& file, quint8 byte, const std::function<bool(int)>& watch) const {
    const QByteArray bytes(static_cast<qsizetype>(std::min(size(), BytesAtOnce)), static_cast<char>(byte));
    Filled filled;
    for (FilePosition at = first; at <= last; at = at + bytes.size()) {
        const qint64 count = std::min<qint64>(bytes.size(), last - at + 1);
        filled.error = file.write(at, {bytes.constData(), static_cast<std::size_t>(count)});
        if (filled.error)
            break;
        filled.bytes += count;
        if (watch && !watch(static_cast<int>(filled.bytes * 100 / size())))
            break;
    }
    return filled;
}
