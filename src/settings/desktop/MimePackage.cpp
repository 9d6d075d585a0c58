#include "settings/desktop/MimePackage.h"

#include <QMimeDatabase>
#include <QXmlStreamWriter>

#include <algorithm>

namespace {

constexpr qsizetype MostLength = 50;
const QString ProjectExtension = u"qmp"_qs;
const QString ProjectType = u"application/x-quillmark-project"_qs;
const QString OwnTypes = u"text/x-quillmark-"_qs;

/// In letters that a type and a file name may hold; other bytes become "_" and two hexadecimal digits.
QString safeName(const QString& extension) {
    const QByteArray bytes = extension.toLower().toUtf8();
    QString name;
    for (const char byte : bytes) {
        const bool isSafe = (byte >= 'a' && byte <= 'z') || (byte >= '0' && byte <= '9') || byte == '-' || byte == '.';
        name += isSafe ? QString(QLatin1Char(byte)) : u'_' + QString::fromLatin1(QByteArray(1, byte).toHex());
    }
    return name;
}

QString ownTypeOf(const QString& extension) {
    return extension == ProjectExtension ? ProjectType : OwnTypes + safeName(extension);
}

/// The pattern that matches the ending and nothing else.
QString patternOf(const QString& extension) {
    QString pattern = u"*."_qs;
    for (const QChar each : extension)
        pattern += QStringView(u"*?[").contains(each) ? u'[' + QString(each) + u']' : QString(each);
    return pattern;
}

bool isAllowedInXml(QChar each) {
    return each.isPrint() && !each.isSurrogate() && each.unicode() < 0xfffe;
}

QString textForXml(QString text) {
    text.removeIf([](QChar each) { return !isAllowedInXml(each); });
    return text.trimmed();
}

}  // namespace

bool MimePackage::isUsable(const QString& extension) {
    return !extension.isEmpty() && extension.size() <= MostLength && !extension.contains(u'/') &&
           std::ranges::all_of(extension, isAllowedInXml);
}

QStringList MimePackage::typesOf(const QString& extension) {
    QStringList types;
    for (const QMimeType& type : QMimeDatabase().mimeTypesForFileName(u"name."_qs + extension)) {
        if (!type.isDefault())
            types.append(type.name());
    }
    return types.isEmpty() ? QStringList(ownTypeOf(extension)) : types;
}

bool MimePackage::isOwn(const QString& type) {
    return type == ProjectType || type.startsWith(OwnTypes);
}

QString MimePackage::fileName(const QString& extension) {
    return u"quillmark-"_qs + safeName(extension) + u".xml"_qs;
}

QByteArray MimePackage::bytes(const QString& type, const QString& extension, const QString& description, bool hasIcon) {
    const QString comment = textForXml(description);
    QByteArray bytes;
    QXmlStreamWriter xml(&bytes);
    xml.setAutoFormatting(true);
    xml.writeStartDocument();
    xml.writeStartElement(u"mime-info"_qs);
    xml.writeDefaultNamespace(u"http://www.freedesktop.org/standards/shared-mime-info"_qs);
    xml.writeStartElement(u"mime-type"_qs);
    xml.writeAttribute(u"type"_qs, type);
    xml.writeTextElement(u"comment"_qs, comment.isEmpty() ? u'.' + extension : comment);
    xml.writeEmptyElement(u"sub-class-of"_qs);
    xml.writeAttribute(u"type"_qs, u"text/plain"_qs);
    if (hasIcon) {
        xml.writeEmptyElement(u"icon"_qs);
        xml.writeAttribute(u"name"_qs, u"quillmark"_qs);
    }
    xml.writeEmptyElement(u"glob"_qs);
    xml.writeAttribute(u"pattern"_qs, patternOf(extension));
    xml.writeEndElement();
    xml.writeEndElement();
    xml.writeEndDocument();
    return bytes;
}
