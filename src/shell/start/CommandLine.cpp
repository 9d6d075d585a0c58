#include "shell/start/CommandLine.h"

#include "platform/Paths.h"

#include <QByteArray>
#include <QStringConverter>

namespace CommandLine {
namespace {

enum class Aim { Document, Project, SearchFolders };

QString withoutBlanksAtEnds(const QString& tail) {
    qsizetype first = 0;
    qsizetype last = tail.size();
    while (first < last && tail.at(first) == u' ')
        ++first;
    while (last > first && tail.at(last - 1) == u' ')
        --last;
    return tail.mid(first, last - first);
}

QString withoutQuotes(QString tail) {
    return tail.remove(u'"');
}

Aim aimOf(const QString& text, const Surroundings& around) {
    if (text.contains(u';') || around.isFolder(text))
        return Aim::SearchFolders;
    return text.right(4).toUpper() == QLatin1String(".QMP") ? Aim::Project : Aim::Document;
}

int sequenceLength(unsigned char lead) {
    if (lead < 0x80)
        return 1;
    if (lead >= 0xC2 && lead < 0xE0)
        return 2;
    if (lead >= 0xE0 && lead < 0xF0)
        return 3;
    return lead >= 0xF0 && lead < 0xF5 ? 4 : 0;
}

/// One character from the front of the bytes, or half a pair for a byte that begins none.
QString firstCharacter(QByteArrayView bytes, qsizetype& used) {
    const auto lead = static_cast<unsigned char>(bytes.front());
    const int length = sequenceLength(lead);
    if (length > 0 && length <= bytes.size()) {
        QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
        QString character = decoder(bytes.first(length));
        if (!decoder.hasError()) {
            used = length;
            return character;
        }
    }
    used = 1;
    return QString(QChar(0xDC00 + lead));
}

QString decoded(QByteArrayView bytes) {
    QStringDecoder decoder(QStringDecoder::Utf8,
                           QStringDecoder::Flag::Stateless | QStringDecoder::Flag::ConvertInitialBom);
    QString text = decoder(bytes);
    if (!decoder.hasError())
        return text;
    text.clear();
    for (qsizetype used = 0; !bytes.isEmpty(); bytes = bytes.sliced(used))
        text += firstCharacter(bytes, used);
    return text;
}

}  // namespace

QString tailOf(int count, const char* const* arguments) {
    QByteArray tail;
    for (int i = 1; i < count; ++i) {
        if (i > 1)
            tail += ' ';
        tail += arguments[i];
    }
    return decoded(tail);
}

MainOrder readForMain(const QString& tail, const Surroundings& around) {
    if (tail == QLatin1String("-r"))
        return {MainOrder::Kind::Register, {}};
    if (tail == QLatin1String("-u"))
        return {MainOrder::Kind::Unregister, {}};
    const QString trimmed = withoutBlanksAtEnds(tail);
    if (trimmed.isEmpty() || trimmed == QLatin1String("-d"))
        return {};
    const QString text = withoutQuotes(trimmed);
    if (text.isEmpty() || aimOf(text, around) != Aim::Document)
        return {};
    return {MainOrder::Kind::Document, absolutePath(text, around.workingFolder)};
}

LoadOrder readForLoad(const QString& tail, const Surroundings& around) {
    LoadOrder order;
    order.hooked = tail != QLatin1String("-d");
    order.sessionMayReturn = tail.isEmpty() || !order.hooked;
    if (order.sessionMayReturn)
        return order;
    const QString text = withoutQuotes(tail);
    switch (aimOf(text, around)) {
        case Aim::SearchFolders:
            order.kind = LoadOrder::Kind::SearchFolders;
            order.text = text;
            break;
        case Aim::Project:
            order.kind = LoadOrder::Kind::Project;
            order.text = absolutePath(text, around.workingFolder);
            break;
        case Aim::Document:
            order.kind = LoadOrder::Kind::Document;
            order.text = absolutePath(text, around.workingFolder);
            break;
    }
    return order;
}

}  // namespace CommandLine
