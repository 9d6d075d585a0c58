#include "settings/registry/RegistryText.h"

#include "settings/registry/RegistryData.h"

#include <QtEndian>

#include <algorithm>
#include <limits>

namespace {

using RegistryText::Entry;
using RegistryText::KeyName;

const QLatin1String Header("quillmark-registry 1");

constexpr struct {
    RegistryRoot root;
    const char* shortName;
    const char* longName;
} Roots[] = {
    {HKEY_CLASSES_ROOT, "HKCR", "HKEY_CLASSES_ROOT"},
    {HKEY_CURRENT_USER, "HKCU", "HKEY_CURRENT_USER"},
    {HKEY_LOCAL_MACHINE, "HKLM", "HKEY_LOCAL_MACHINE"},
};

constexpr struct {
    char16_t character;
    char16_t letter;
} Escapes[] = {{u'\\', u'\\'}, {u'"', u'"'}, {u'\n', u'n'}, {u'\r', u'r'}, {u'\t', u't'}};

/// An unpaired surrogate cannot be written in UTF-8; separators and the like would break a line or be invisible in it.
bool isSeen(char32_t character) {
    return QChar::isPrint(character) && character != QChar::LineSeparator && character != QChar::ParagraphSeparator;
}

/// The character at the index, or an unpaired surrogate.
char32_t characterAt(const QString& text, qsizetype at) {
    const bool pair = text[at].isHighSurrogate() && at + 1 < text.size() && text[at + 1].isLowSurrogate();
    return pair ? QChar::surrogateToUcs4(text[at], text[at + 1]) : text[at].unicode();
}

QString escaped(const QString& text) {
    QString result;
    for (qsizetype at = 0; at < text.size(); ++at) {
        const char32_t character = characterAt(text, at);
        at += QChar::requiresSurrogates(character) ? 1 : 0;
        const auto* escape = std::ranges::find_if(Escapes, [&](const auto& row) { return row.character == character; });
        if (escape != std::end(Escapes)) {
            result += u'\\';
            result += QChar(escape->letter);
        } else if (isSeen(character)) {
            result += QChar::fromUcs4(character);
        } else {
            result += u"\\u{%1}"_qs.arg(static_cast<uint>(character), 0, 16);
        }
    }
    return result;
}

QString quoted(const QString& text) {
    return u'"' + escaped(text) + u'"';
}

/// Reads the parts of one line from left to right; after the first missing one no other is found.
class LineReader {
 public:
    explicit LineReader(QStringView line) : m_rest(line) {}

    bool take(QStringView text) {
        m_rest = m_rest.trimmed();
        if (!m_rest.startsWith(text))
            return false;
        m_rest = m_rest.mid(text.size());
        return true;
    }

    /// The text up to `end`, which is consumed too, with its escapes resolved.
    std::optional<QString> takeUntil(QChar end) {
        QString text;
        while (!m_rest.isEmpty()) {
            const QChar character = m_rest.front();
            m_rest = m_rest.mid(1);
            if (character == end)
                return text;
            if (character != u'\\')
                text += character;
            else if (!takeEscape(text))
                return std::nullopt;
        }
        return std::nullopt;
    }

    std::optional<QString> takeQuoted() { return take(u"\"") ? takeUntil(u'"') : std::nullopt; }

    QStringView rest() const { return m_rest.trimmed(); }

 private:
    bool takeEscape(QString& text) {
        if (m_rest.startsWith(u"u{")) {
            const qsizetype end = m_rest.indexOf(u'}');
            bool valid = false;
            const uint character = m_rest.mid(0, std::max<qsizetype>(end, 0)).mid(2).toUInt(&valid, 16);
            m_rest = m_rest.mid(end + 1);
            text += QChar::fromUcs4(character);
            return valid && end > 0 && character <= 0x10FFFF;
        }
        const QChar letter = m_rest.isEmpty() ? QChar() : m_rest.front();
        const auto* escape = std::ranges::find_if(Escapes, [&](const auto& row) { return row.letter == letter; });
        if (escape == std::end(Escapes))
            return false;
        text += QChar(escape->character);
        m_rest = m_rest.mid(1);
        return true;
    }

    QStringView m_rest;
};

std::optional<QByteArray> fromHex(QStringView text) {
    QByteArray digits = text.toLatin1();
    digits.replace(' ', QByteArray());
    const QByteArray bytes = QByteArray::fromHex(digits);
    return bytes.size() * 2 == digits.size() && bytes.toHex() == digits.toLower() ? std::optional(bytes) : std::nullopt;
}

QString hexOf(const QByteArray& bytes) {
    return QString::fromLatin1(bytes.toHex(' '));
}

std::optional<qint32> numberFrom(const QString& text) {
    bool valid = false;
    const qint64 number = text.trimmed().toLongLong(&valid, 0);
    const bool fits = number >= std::numeric_limits<qint32>::min() && number <= std::numeric_limits<quint32>::max();
    return valid && fits ? std::optional(static_cast<qint32>(number)) : std::nullopt;
}

RegistryValue bigEndianValue(qint32 number) {
    QByteArray bytes(4, Qt::Uninitialized);
    qToBigEndian(number, bytes.data());
    return {RegistryType::IntegerBigEndian, bytes};
}

QStringList textsOf(const RegistryValue& value) {
    QStringList texts = RegistryData::units(value).split(QChar(QChar::Null));
    texts.resize(std::max<qsizetype>(0, texts.size() - 2));
    return texts;
}

QString textOf(const RegistryValue& value) {
    const QString units = RegistryData::units(value);
    return units.endsWith(QChar(QChar::Null)) ? units.chopped(1) : units;
}

/// How the types with a form of their own are written and read; `data` is the text after the colon.
struct TypeForm {
    qint32 type;
    const char* name;
    QString (*line)(const RegistryValue&);
    std::optional<RegistryValue> (*fromLine)(QStringView data);
    QString (*plain)(const RegistryValue&);
    std::optional<RegistryValue> (*fromPlain)(const QStringList& data);
};

template <qint32 Type>
std::optional<RegistryValue> stringFromLine(QStringView data) {
    LineReader reader(data);
    const std::optional<QString> text = reader.takeQuoted();
    return text && reader.rest().isEmpty() ? std::optional(RegistryData::fromText(*text, Type)) : std::nullopt;
}

template <qint32 Type>
std::optional<RegistryValue> stringFromPlain(const QStringList& data) {
    return data.size() == 1 ? std::optional(RegistryData::fromText(data.constFirst(), Type)) : std::nullopt;
}

QString stringLine(const RegistryValue& value) {
    return quoted(textOf(value));
}

QString listLine(const RegistryValue& value) {
    QStringList parts;
    for (const QString& text : textsOf(value))
        parts.append(quoted(text));
    return parts.join(u',');
}

std::optional<RegistryValue> listFromLine(QStringView data) {
    LineReader reader(data);
    QStringList texts;
    while (!reader.rest().isEmpty()) {
        if (!texts.isEmpty() && !reader.take(u","))
            return std::nullopt;
        const std::optional<QString> text = reader.takeQuoted();
        if (!text)
            return std::nullopt;
        texts.append(*text);
    }
    return RegistryData::fromTexts(texts);
}

std::optional<RegistryValue> listFromPlain(const QStringList& data) {
    return RegistryData::fromTexts(data);
}

std::optional<RegistryValue> integerFromLine(QStringView data) {
    const std::optional<qint32> number = numberFrom(data.toString());
    return number ? std::optional(RegistryData::fromInteger(*number)) : std::nullopt;
}

std::optional<RegistryValue> bigEndianFromLine(QStringView data) {
    const std::optional<qint32> number = numberFrom(data.toString());
    return number ? std::optional(bigEndianValue(*number)) : std::nullopt;
}

std::optional<RegistryValue> binaryFromLine(QStringView data) {
    const std::optional<QByteArray> bytes = fromHex(data);
    return bytes ? std::optional(RegistryValue{RegistryType::Binary, *bytes}) : std::nullopt;
}

template <auto FromLine>
std::optional<RegistryValue> oneFromPlain(const QStringList& data) {
    return data.size() == 1 ? FromLine(data.constFirst()) : std::nullopt;
}

QString littleEndianText(const RegistryValue& value) {
    return QString::number(RegistryData::littleEndian(value));
}

QString bigEndianText(const RegistryValue& value) {
    return QString::number(RegistryData::bigEndian(value));
}

QString binaryText(const RegistryValue& value) {
    return hexOf(value.data);
}

QString listPlain(const RegistryValue& value) {
    return textsOf(value).join(u'\n');
}

constexpr TypeForm Forms[] = {
    {RegistryType::String, "string", stringLine, stringFromLine<RegistryType::String>, textOf,
     stringFromPlain<RegistryType::String>},
    {RegistryType::ExpandString, "expand", stringLine, stringFromLine<RegistryType::ExpandString>, textOf,
     stringFromPlain<RegistryType::ExpandString>},
    {RegistryType::StringList, "multi", listLine, listFromLine, listPlain, listFromPlain},
    {RegistryType::Integer, "dword", littleEndianText, integerFromLine, littleEndianText,
     oneFromPlain<integerFromLine>},
    {RegistryType::IntegerBigEndian, "dword-be", bigEndianText, bigEndianFromLine, bigEndianText,
     oneFromPlain<bigEndianFromLine>},
    {RegistryType::Binary, "binary", binaryText, binaryFromLine, binaryText, oneFromPlain<binaryFromLine>},
};

/// The form of the value's type, if what it writes is read back as exactly the same value.
const TypeForm* formFor(const RegistryValue& value) {
    const auto* form = std::ranges::find_if(Forms, [&](const TypeForm& each) { return each.type == value.type; });
    const bool faithful = form != std::end(Forms) && form->fromLine(form->line(value)) == value;
    return faithful ? form : nullptr;
}

std::optional<RegistryValue> valueFromLine(QStringView text) {
    const qsizetype colon = text.indexOf(u':');
    const QStringView name = text.first(std::max<qsizetype>(colon, 0));
    const QStringView data = text.mid(colon + 1);
    for (const TypeForm& form : Forms) {
        if (name == QLatin1String(form.name))
            return form.fromLine(data);
    }
    if (!name.startsWith(u"hex(") || !name.endsWith(u')'))
        return std::nullopt;
    bool valid = false;
    const qint32 type = name.mid(4).chopped(1).toInt(&valid);
    const std::optional<QByteArray> bytes = fromHex(data);
    return valid && bytes ? std::optional(RegistryValue{type, *bytes}) : std::nullopt;
}

void exportInto(QString& text, RegistryStore& store, const KeyName& key) {
    text += u'\n' + RegistryText::keyLine(key) + u'\n';
    QStringList names;
    store.valueNames(key.root, key.path, names);
    for (const QString& name : names) {
        RegistryValue value;
        if (store.readValue(key.root, key.path, name, value) == RegistryCode::Ok)
            text += RegistryText::valueLine(name, value) + u'\n';
    }
    store.subKeys(key.root, key.path, names);
    for (const QString& name : names)
        exportInto(text, store, {key.root, key.path.isEmpty() ? name : key.path + u'/' + name});
}

/// The text between the brackets of a key's line; "]" is not escaped in it, since only the last one ends it.
std::optional<KeyName> keyFromLine(QStringView line) {
    if (!line.endsWith(u']'))
        return std::nullopt;
    const QString ended = line.mid(1).chopped(1).toString() + QChar(QChar::LineFeed);
    const std::optional<QString> text = LineReader(ended).takeUntil(QChar::LineFeed);
    return text ? RegistryText::keyFromText(*text) : std::nullopt;
}

/// Adds the content of the line to the entries. Returns what is wrong with it; null when nothing is.
const char* parseLine(QStringView line, QList<Entry>& entries) {
    if (line.startsWith(u'[')) {
        const std::optional<KeyName> key = keyFromLine(line);
        if (!key)
            return "no key in brackets that begins with HKCR, HKCU or HKLM";
        entries.append({*key, false, {}, {}});
        return nullptr;
    }
    if (entries.isEmpty())
        return "a value before the first key";
    LineReader reader(line);
    const bool isDefault = reader.take(u"@");
    const std::optional<QString> name = isDefault ? QString() : reader.takeQuoted();
    if (!name || !reader.take(u"="))
        return "neither a key nor a value";
    const std::optional<RegistryValue> value = valueFromLine(reader.rest());
    if (!value)
        return "no type and data that belong together";
    entries.append({entries.constLast().key, true, *name, *value});
    return nullptr;
}

bool saysNothing(QStringView line) {
    return line.isEmpty() || line.startsWith(u'#') || line.startsWith(u';');
}

}  // namespace

namespace RegistryText {

std::optional<KeyName> keyFromText(const QString& text) {
    const QString rootName = text.section(u'/', 0, 0);
    for (const auto& row : Roots) {
        if (rootName.compare(QLatin1String(row.shortName), Qt::CaseInsensitive) == 0 ||
            rootName.compare(QLatin1String(row.longName), Qt::CaseInsensitive) == 0)
            return KeyName{row.root, text.section(u'/', 1)};
    }
    return std::nullopt;
}

QString keyToText(const KeyName& key) {
    const auto* row = std::ranges::find_if(Roots, [&](const auto& each) { return each.root == key.root; });
    const QString root = row == std::end(Roots) ? QString::number(key.root) : QString::fromLatin1(row->shortName);
    return key.path.isEmpty() ? root : root + u'/' + key.path;
}

QString keyLine(const KeyName& key) {
    return u'[' + escaped(keyToText(key)) + u']';
}

QString valueLine(const QString& name, const RegistryValue& value) {
    const QString start = (name.isEmpty() ? u"@"_qs : quoted(name)) + u" = "_qs;
    if (const TypeForm* form = formFor(value))
        return start + QLatin1String(form->name) + u':' + form->line(value);
    return start + u"hex(%1):"_qs.arg(value.type) + hexOf(value.data);
}

QString plainValue(const RegistryValue& value) {
    const TypeForm* form = formFor(value);
    return form != nullptr ? form->plain(value) : hexOf(value.data);
}

std::optional<RegistryValue> valueFromPlain(const QString& type, const QStringList& data) {
    for (const TypeForm& form : Forms) {
        if (type == QLatin1String(form.name))
            return form.fromPlain(data);
    }
    bool valid = false;
    const qint32 number = type.toInt(&valid);
    const std::optional<QByteArray> bytes = data.size() == 1 ? fromHex(data.constFirst()) : std::nullopt;
    return valid && bytes ? std::optional(RegistryValue{number, *bytes}) : std::nullopt;
}

std::optional<QString> exportKey(RegistryStore& store, const KeyName& key) {
    if (store.openKey(key.root, key.path) != RegistryCode::Ok)
        return std::nullopt;
    QString text = Header + QString(u'\n');
    exportInto(text, store, key);
    return text;
}

Parsed parse(const QString& text) {
    Parsed parsed;
    bool begun = false;
    int number = 0;
    for (const QStringView whole : QStringView(text).split(u'\n')) {
        ++number;
        const QStringView line = whole.trimmed();
        if (saysNothing(line))
            continue;
        const char* problem = nullptr;
        if (!begun) {
            problem = line == Header ? nullptr : "the text does not begin with quillmark-registry 1";
            begun = true;
        } else {
            problem = parseLine(line, parsed.entries);
        }
        if (problem != nullptr)
            return {{}, number, QString::fromLatin1(problem)};
    }
    return begun ? parsed : Parsed{{}, number, u"the text is empty"_qs};
}

int import(RegistryStore& store, const QList<Entry>& entries) {
    return store.runBatch([&] {
        int code = RegistryCode::Ok;
        for (const Entry& entry : entries) {
            const KeyName& key = entry.key;
            code = entry.isValue ? store.writeValue(key.root, key.path, entry.name, entry.value)
                                 : store.createKey(key.root, key.path);
            if (code != RegistryCode::Ok)
                break;
        }
        return code;
    });
}

}  // namespace RegistryText
