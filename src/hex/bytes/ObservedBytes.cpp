#include "hex/bytes/ObservedBytes.h"

#include "hex/bytes/HexBlock.h"
#include "hex/bytes/HexEditObserver.h"

#include <QByteArray>

#include <algorithm>

SystemError ObservedBytes::write(FilePosition from, std::string_view bytes) {
    SystemError error = m_bytes.write(from, bytes);
    if (m_observer == nullptr)
        return error;
    const qint64 room = std::max<qint64>(length() - Offset(from).number(), 0);
    const qint64 count = std::min(room, static_cast<qint64>(bytes.size()));
    if (error)
        reportPresent(from, count);
    else
        report(from, bytes.substr(0, static_cast<std::size_t>(count)));
    return error;
}

void ObservedBytes::report(FilePosition from, std::string_view bytes) {
    if (!bytes.empty())
        m_observer->wrote(from, bytes);
}

/// A write that failed may have changed the first of its bytes: what is there now is reported.
void ObservedBytes::reportPresent(FilePosition from, qint64 count) {
    QByteArray present(static_cast<qsizetype>(count), Qt::Uninitialized);
    if (m_bytes.read(from, present.data(), count) == count)
        report(from, {present.constData(), static_cast<std::size_t>(count)});
}

void ObservedBytes::reportFill(const HexBlock& block, quint8 byte, qint64 count, bool hasFailed) {
    if (m_observer == nullptr)
        return;
    if (hasFailed) {
        QByteArray next(static_cast<qsizetype>(std::min(block.size() - count, HexBlock::BytesAtOnce)), '\0');
        const qint64 got = m_bytes.read(block.first + count, next.data(), next.size());
        const auto end = next.cbegin() + std::max<qint64>(got, 0);
        count += std::find_if(next.cbegin(), end, [byte](char each) { return static_cast<quint8>(each) != byte; }) -
                 next.cbegin();
    }
    if (count > 0)
        m_observer->filled({block.first, block.first + count - 1}, byte);
}
