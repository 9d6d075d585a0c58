#include "spelling/words/OwnWords.h"

#include "platform/Folders.h"
#include "platform/Paths.h"
#include "settings/files/OwnTextFile.h"

#include <QFileInfo>
#include <QStringList>

namespace {

constexpr QChar SoftHyphen(0xAD);
constexpr QChar TypographicApostrophe(0x2019);

/// The form in which words are compared.
QString keyOf(const QString& word) {
    return lookedUpForm(word.trimmed()).replace(TypographicApostrophe, u'\'');
}

}  // namespace

QString lookedUpForm(QStringView word) {
    bool isPlain = true;
    for (const QChar each : word)
        isPlain = isPlain && each.unicode() < 0x80;
    if (isPlain)
        return word.toString();
    return word.toString().remove(SoftHyphen).normalized(QString::NormalizationForm_C);
}

QString OwnWords::standardPath() {
    return OwnTextFile::path(u"words.txt"_qs);
}

OwnWords::OwnWords(const QString& path) : m_path(path) {
    QStringList lines;
    read(lines);
}

bool OwnWords::contains(const QString& word) const {
    if (m_words.isEmpty())
        return false;
    QString key = keyOf(word);
    if (m_words.contains(key))
        return true;
    if (key.isEmpty() || !key.front().isUpper())
        return false;
    key.front() = key.front().toLower();
    return m_words.contains(key);
}

/// A file that is not there has no words.
SystemError OwnWords::read(QStringList& lines) {
    if (fileExists(m_path)) {
        const OwnTextFile::Content content = OwnTextFile::read(m_path, OwnTextFile::MostListBytes);
        if (content.error)
            return content.error;
        lines = OwnTextFile::linesOf(content.bytes);
    }
    m_words.clear();
    for (const QString& line : std::as_const(lines))
        m_words.insert(keyOf(line));
    m_words.remove(QString());
    return {};
}

SystemError OwnWords::write(const QStringList& lines) {
    if (SystemError error = makeFolder(QFileInfo(m_path).path()))
        return error;
    return OwnTextFile::replace(m_path, lines);
}

SystemError OwnWords::add(const QString& word) {
    QStringList lines;
    if (SystemError error = read(lines))
        return error;
    const QString key = keyOf(word);
    if (key.isEmpty() || m_words.contains(key))
        return {};
    lines.append(key);
    if (SystemError error = write(lines))
        return error;
    m_words.insert(key);
    return {};
}

SystemError OwnWords::remove(const QString& word) {
    QStringList lines;
    if (SystemError error = read(lines))
        return error;
    const QString key = keyOf(word);
    if (lines.removeIf([&key](const QString& line) { return keyOf(line) == key; }) == 0)
        return {};
    if (SystemError error = write(lines))
        return error;
    m_words.remove(key);
    return {};
}
