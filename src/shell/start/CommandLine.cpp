#include "shell/start/CommandLine.h"

#include "platform/Paths.h"

#include <QByteArray>
#include <QStringConverter>

namespace CommandLine {
namespace {

enum class Aim { Documents, Project, SearchFolders };

/// What a text means, with the paths of its documents or its project.
struct Meaning {
    Aim aim = Aim::Documents;
    QStringList texts;
};

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

/// The arguments as paths when each names a file, otherwise nothing.
QStringList filesOf(const Surroundings& around) {
    QStringList paths;
    for (const QString& argument : around.arguments) {
        const QString path = absolutePath(withoutQuotes(argument), around.workingFolder);
        if (path.isEmpty() || around.isFolder(path) || !around.exists(path))
            return {};
        paths.append(path);
    }
    return paths;
}

/// Of a text without quotes.
Meaning meaningOf(const QString& text, const Surroundings& around) {
    if (text.contains(u';') || around.isFolder(text))
        return {Aim::SearchFolders, {text}};
    const QString path = absolutePath(text, around.workingFolder);
    if (around.arguments.size() > 1 && !around.exists(path)) {
        const QStringList files = filesOf(around);
        if (!files.isEmpty())
            return {Aim::Documents, files};
    }
    return {text.right(4).toUpper() == QLatin1String(".QMP") ? Aim::Project : Aim::Documents, {path}};
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

QStringList argumentsOf(int count, const char* const* arguments) {
    QStringList texts;
    for (int i = 1; i < count; ++i)
        texts.append(decoded(arguments[i]));
    return texts;
}

bool staysApart(const QString& tail) {
    return tail == QLatin1String("-d");
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
    if (text.isEmpty())
        return {};
    const Meaning meaning = meaningOf(text, around);
    if (meaning.aim != Aim::Documents)
        return {};
    return {MainOrder::Kind::Document, meaning.texts};
}

LoadOrder readForLoad(const QString& tail, const Surroundings& around) {
    LoadOrder order;
    order.hooked = !staysApart(tail);
    order.sessionMayReturn = tail.isEmpty() || !order.hooked;
    if (order.sessionMayReturn)
        return order;
    const Meaning meaning = meaningOf(withoutQuotes(tail), around);
    order.texts = meaning.texts;
    switch (meaning.aim) {
        case Aim::SearchFolders:
            order.kind = LoadOrder::Kind::SearchFolders;
            break;
        case Aim::Project:
            order.kind = LoadOrder::Kind::Project;
            break;
        case Aim::Documents:
            order.kind = LoadOrder::Kind::Document;
            break;
    }
    return order;
}

}  // namespace CommandLine
