#include "shell/start/HandOverMessage.h"

#include "platform/Paths.h"

#include <QtEndian>

#include <optional>

namespace {

constexpr quint32 Number = 3;
constexpr qsizetype FieldSize = sizeof(quint32);
constexpr qsizetype HeaderSize = 2 * FieldSize;
constexpr qsizetype LongestRest = HandOverMessage::LongestPath + 1;

quint32 fieldAt(const QByteArray& bytes, qsizetype place) {
    return qFromLittleEndian<quint32>(bytes.constData() + place);
}

void appendField(QByteArray& bytes, quint32 value) {
    const quint32 field = qToLittleEndian(value);
    bytes.append(reinterpret_cast<const char*>(&field), FieldSize);
}

qsizetype restSize(const QByteArray& message) {
    return fieldAt(message, FieldSize);
}

/// Nothing unless the NUL at the end is the only one and the path is UTF-8.
std::optional<QString> pathIn(const QByteArray& message) {
    const QByteArrayView rest = QByteArrayView(message).sliced(HeaderSize);
    if (rest.indexOf('\0') != rest.size() - 1)
        return std::nullopt;
    return pathText(rest.chopped(1));
}

}  // namespace

QByteArray HandOverMessage::of(const QString& path) {
    const std::optional<QByteArray> name = localName(path);
    if (!name || name->size() > LongestPath)
        return {};
    QByteArray message;
    appendField(message, Number);
    appendField(message, static_cast<quint32>(name->size() + 1));
    return message + *name + '\0';
}

/// An empty path is no message either.
bool HandOverReader::isHeaderGood() const {
    return fieldAt(m_bytes, 0) == Number && restSize(m_bytes) > 1 && restSize(m_bytes) <= LongestRest;
}

qsizetype HandOverReader::missing() const {
    if (m_bytes.size() < HeaderSize)
        return HeaderSize - m_bytes.size();
    return isHeaderGood() ? HeaderSize + restSize(m_bytes) - m_bytes.size() : 0;
}

HandOverReader::State HandOverReader::state() const {
    if (missing() > 0)
        return State::Incomplete;
    return isHeaderGood() && pathIn(m_bytes) ? State::Complete : State::Malformed;
}

QString HandOverReader::path() const {
    return pathIn(m_bytes).value_or(QString());
}
