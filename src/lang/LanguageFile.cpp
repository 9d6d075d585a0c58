#include "lang/LanguageFile.h"

#include "lang/LanguageFileReader.h"
#include "settings/files/OwnTextFile.h"

namespace {

LanguageFile::Result wrong(const QString& path, qsizetype line, const QString& what) {
    return {std::nullopt, u"%1:%2: %3"_qs.arg(path, QString::number(line), what)};
}

}  // namespace

LanguageFile::Result LanguageFile::parse(QByteArrayView bytes, const QString& path) {
    if (bytes.size() > MostBytes)
        return wrong(path, 1, u"the file is longer than %1 bytes"_qs.arg(MostBytes));
    LanguageFileReader reader;
    const QStringList lines = OwnTextFile::linesOf(bytes);
    for (qsizetype line = 0; line < lines.size(); ++line) {
        if (lines[line].contains(QChar(u'\0')))
            return wrong(path, line + 1, u"a NUL stands in it"_qs);
        const QString fault = reader.take(lines[line].toUtf8());
        if (!fault.isEmpty())
            return wrong(path, line + 1, fault);
    }
    const QString fault = reader.finish();
    return fault.isEmpty() ? Result{reader.definition(), {}} : wrong(path, lines.size() + 1, fault);
}

LanguageFile::Result LanguageFile::read(const QString& path) {
    const OwnTextFile::Content file = OwnTextFile::read(path, MostBytes);
    return file.error ? Result{std::nullopt, file.error.description} : parse(file.bytes, path);
}
