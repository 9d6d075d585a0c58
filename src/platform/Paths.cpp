#include "platform/Paths.h"

#include <QDir>
#include <QStringConverter>
#include <QStringList>

#include <sys/stat.h>

#include <optional>

namespace {

std::optional<mode_t> modeOf(const QString& path) {
    const auto name = localName(path);
    struct stat status {};
    if (!name || ::stat(name->constData(), &status) != 0)
        return std::nullopt;
    return status.st_mode;
}

}  // namespace

QString FileNameOf(const QString& path) {
    return path.mid(path.lastIndexOf(u'/') + 1);
}

bool IsFolderPath(const QString& path) {
    const auto mode = modeOf(path);
    return mode && S_ISDIR(*mode);
}

bool isNormalFile(const QString& path) {
    const auto mode = modeOf(path);
    return mode && S_ISREG(*mode);
}

bool fileExists(const QString& path) {
    return modeOf(path).has_value();
}

QString absolutePath(const QString& path, const QString& workingFolder) {
    if (path.isEmpty())
        return path;
    const QString whole = path.startsWith(u'/') ? path : workingFolder + u'/' + path;
    QStringList elements = whole.split(u'/', Qt::SkipEmptyParts);
    const bool endsOpen = whole.endsWith(u'/') || elements.endsWith(u"."_qs);
    elements.removeAll(u"."_qs);
    QString result = u'/' + elements.join(u'/');
    if (endsOpen && !elements.isEmpty())
        result += u'/';
    return result;
}

QString absolutePath(const QString& path) {
    return absolutePath(path, QDir::currentPath());
}

std::optional<QByteArray> localName(const QString& path) {
    if (path.isEmpty() || path.contains(QChar::Null))
        return std::nullopt;
    QStringEncoder encoder(QStringEncoder::Utf8, QStringConverter::Flag::Stateless);
    const QByteArray name = encoder(path);
    if (encoder.hasError())
        return std::nullopt;
    return name;
}

std::optional<QString> pathText(QByteArrayView name) {
    // A byte order mark at the start is a character of the name like any other.
    QStringDecoder decoder(QStringDecoder::Utf8,
                           QStringConverter::Flag::Stateless | QStringConverter::Flag::ConvertInitialBom);
    const QString text = decoder(name);
    if (decoder.hasError())
        return std::nullopt;
    return text;
}
