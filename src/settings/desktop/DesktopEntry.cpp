#include "settings/desktop/DesktopEntry.h"

#include "platform/Folders.h"
#include "platform/Paths.h"

#include <QFileInfo>

#include <algorithm>

namespace {

/// As the value of a key: line ends, tabs, backslashes and a blank at the start have escapes.
QString escapedValue(const QString& text) {
    QString escaped = text;
    escaped.replace(u'\\', u"\\\\"_qs).replace(u'\n', u"\\n"_qs).replace(u'\r', u"\\r"_qs).replace(u'\t', u"\\t"_qs);
    if (escaped.startsWith(u' '))
        escaped.replace(0, 1, u"\\s"_qs);
    return escaped;
}

bool isPlain(QChar each) {
    return (each.unicode() < 128 && each.isLetterOrNumber()) || QStringView(u"/._-+").contains(each);
}

/// As an argument of a command: in quotes when it holds anything unusual, and "%" doubled, which begins a field code.
QString quotedArgument(const QString& text) {
    if (!text.isEmpty() && std::ranges::all_of(text, isPlain))
        return text;
    QString quoted;
    for (const QChar each : text) {
        if (QStringView(u"\"`$\\").contains(each))
            quoted += u'\\';
        quoted += each;
        if (each == u'%')
            quoted += each;
    }
    return u'"' + quoted + u'"';
}

void addLine(QByteArray& bytes, const char* key, const QString& value) {
    bytes += QByteArray(key) + '=' + escapedValue(value).toUtf8() + '\n';
}

}  // namespace

DesktopEntry DesktopEntry::ofProgram(const QString& program) {
    const QString folder = QFileInfo(program).path();
    const QString icon = shareFolder(folder) + u"/icons/quillmark.svg"_qs;
    DesktopEntry entry;
    entry.name = u"Quillmark"_qs;
    entry.comment = u"Quillmark Access Shortcut"_qs;
    entry.program = program;
    entry.workingFolder = folder;
    entry.icon = isNormalFile(icon) ? icon : u"quillmark"_qs;
    return entry;
}

QByteArray DesktopEntry::bytes() const {
    QByteArray bytes = "[Desktop Entry]\nType=Application\n";
    addLine(bytes, "Name", name);
    addLine(bytes, "Comment", comment);
    addLine(bytes, "Exec", quotedArgument(program) + u" %f"_qs);
    addLine(bytes, "TryExec", program);
    if (!workingFolder.isEmpty())
        addLine(bytes, "Path", workingFolder);
    addLine(bytes, "Icon", icon);
    bytes += "Terminal=false\nStartupNotify=true\nStartupWMClass=quillmark\nCategories=Utility;TextEditor;\n";
    if (!types.isEmpty())
        addLine(bytes, "MimeType", types.join(u';') + u';');
    if (hidden)
        bytes += "NoDisplay=true\n";
    return bytes;
}
