#include "recovery/journals/JournalHead.h"

#include "recovery/journals/Payload.h"

#include <algorithm>
#include <limits>

namespace {

constexpr quint8 LastEncoding = static_cast<quint8>(TextEncoding::Windows1252);

void writeText(PayloadWriter& writer, const QString& text) {
    const QByteArray bytes = text.toUtf8();
    writer.bytes({bytes.constData(), static_cast<std::size_t>(bytes.size())});
}

QString readText(PayloadReader& reader) {
    const std::string_view bytes = reader.bytes();
    return QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size()));
}

void writeState(PayloadWriter& writer, const std::optional<FileState>& state) {
    writer.byte(state ? 1 : 0);
    if (!state)
        return;
    writer.number(state->device);
    writer.number(state->inode);
    writer.number(state->size);
    writer.number(state->modified);
    writer.number(state->changed);
}

std::optional<FileState> readState(PayloadReader& reader) {
    if (reader.byte() == 0)
        return std::nullopt;
    FileState state;
    state.device = reader.number();
    state.inode = reader.number();
    state.size = reader.offset();
    // Times before 1970 are negative.
    state.modified = static_cast<qint64>(reader.number());
    state.changed = static_cast<qint64>(reader.number());
    return state;
}

/// A path that enters from a journal is one that a document could have.
bool isPath(const QString& path) {
    return path.isEmpty() || (path.startsWith(u'/') && !path.contains(QChar::Null));
}

}  // namespace

std::string payloadOf(const JournalBase& base) {
    std::string payload;
    PayloadWriter writer(payload);
    writer.byte(static_cast<quint8>(base.view));
    writeText(writer, base.path);
    writeText(writer, base.caption);
    writeState(writer, base.state);
    writer.byte(static_cast<quint8>(base.format.encoding));
    writer.byte(base.format.mark ? 1 : 0);
    writer.number(qint64(std::max(base.lineEndMode, 0)));
    writeText(writer, base.language);
    writer.number(base.textLength + 1);
    return payload;
}

std::optional<JournalBase> baseOf(std::string_view payload) {
    PayloadReader reader(payload);
    JournalBase base;
    const quint8 view = reader.byte();
    base.view = static_cast<JournalBase::View>(view);
    base.path = readText(reader);
    base.caption = readText(reader);
    base.state = readState(reader);
    const quint8 encoding = reader.byte();
    base.format.mark = reader.byte() != 0;
    base.lineEndMode = static_cast<qint32>(reader.numberUpTo(std::numeric_limits<qint32>::max()));
    base.language = readText(reader);
    base.textLength = reader.offset() - 1;
    if (!reader.isValid() || !reader.atEnd() || !isPath(base.path) || encoding > LastEncoding ||
        (view != static_cast<quint8>(JournalBase::View::Text) && view != static_cast<quint8>(JournalBase::View::Hex)))
        return std::nullopt;
    base.format.encoding = static_cast<TextEncoding>(encoding);
    return base;
}
