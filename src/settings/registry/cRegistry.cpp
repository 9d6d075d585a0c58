#include "settings/registry/cRegistry.h"

#include "settings/registry/RegistryData.h"
#include "settings/registry/RegistryWalk.h"

namespace {

constexpr qint32 RaisedNumber = 26001;
constexpr int SectionBuffer = 255;
constexpr int Raising = -1;

/// "%NAME%" is replaced by the variable of that name; a "%" that ends no known name may begin the next.
QString withEnvironment(const QString& text) {
    QString result;
    qsizetype done = 0;
    qsizetype open = text.indexOf(u'%');
    while (open >= 0) {
        const qsizetype close = text.indexOf(u'%', open + 1);
        const QByteArray name = close < 0 ? QByteArray() : text.mid(open + 1, close - open - 1).toLocal8Bit();
        if (name.isEmpty() || !qEnvironmentVariableIsSet(name.constData())) {
            open = close;
            continue;
        }
        result += QStringView(text).mid(done, open - done);
        result += qEnvironmentVariable(name.constData());
        done = close + 1;
        open = text.indexOf(u'%', done);
    }
    return result + text.mid(done);
}

bool hasReference(const QString& text) {
    const qsizetype first = text.indexOf(u'%');
    return first >= 0 && text.indexOf(u'%', first + 2) >= 0;
}

QString textOf(const QVariant& value) {
    if (value.typeId() == QMetaType::Bool)
        return value.toBool() ? u"True"_qs : u"False"_qs;
    return value.toString();
}

/// A value written as a string ends in its terminating zero; an empty one has none to drop.
QString withoutLast(const QString& units) {
    return units.chopped(units.isEmpty() ? 0 : 1);
}

/// The length is taken as the upper bound less the lower bound less one: the last byte is not stored.
QByteArray withoutLast(const QByteArray& bytes) {
    return bytes.chopped(bytes.isEmpty() ? 0 : 1);
}

bool isShortOrLong(const QVariant& value) {
    const int type = value.typeId();
    return type == QMetaType::Short || type == QMetaType::UShort || type == QMetaType::Int || type == QMetaType::UInt;
}

QString quoted(const QString& path) {
    const bool already = path.size() > 1 && path.startsWith(u'"') && path.endsWith(u'"');
    return already ? path : u'"' + path + u'"';
}

QString orUsual(const QString& text, const QString& usual) {
    return text.isEmpty() ? usual : text;
}

}  // namespace

cRegistry::cRegistry(RegistryStore& store) : m_store(store) {}

bool cRegistry::KeyExists() {
    m_lastError = {};
    return m_store.openKey(ClassKey, SectionKey) == RegistryCode::Ok;
}

bool cRegistry::CreateKey() {
    m_lastError = {};
    if (m_store.createKey(ClassKey, SectionKey) != RegistryCode::Ok)
        return raise(u"Failed to create registry Key: '"_qs + SectionKey);
    return true;
}

bool cRegistry::DeleteKey() {
    m_lastError = {};
    if (m_store.deleteKey(ClassKey, SectionKey) != RegistryCode::Ok) {
        return raise(u"Failed to delete registry Key: '"_qs + QString::number(ClassKey) + u"',Section: '"_qs +
                     SectionKey);
    }
    return true;
}

bool cRegistry::DeleteValue() {
    m_lastError = {};
    if (m_store.openKey(ClassKey, SectionKey) != RegistryCode::Ok) {
        return raise(u"Failed to open key '"_qs + QString::number(ClassKey) + u"',Section: '"_qs + SectionKey +
                     u"' for delete access"_qs);
    }
    return m_store.deleteValue(ClassKey, SectionKey, ValueKey) == RegistryCode::Ok;
}

QVariant cRegistry::Value() {
    m_lastError = {};
    RegistryValue value;
    const int code = m_store.readValue(ClassKey, SectionKey, ValueKey, value);
    if (code != RegistryCode::Ok && code != RegistryCode::MoreData)
        return Default;
    ValueType = value.type;
    switch (value.type) {
        case RegistryType::String:
        case RegistryType::StringList:
            return withoutLast(RegistryData::units(value));
        case RegistryType::ExpandString:
            return withEnvironment(withoutLast(RegistryData::units(value)));
        case RegistryType::Integer:
            return RegistryData::littleEndian(value);
        case RegistryType::IntegerBigEndian:
            return RegistryData::bigEndian(value);
        default:
            return value.data;
    }
}

bool cRegistry::setValue(const QVariant& value) {
    m_lastError = {};
    if (m_store.createKey(ClassKey, SectionKey) != RegistryCode::Ok)
        return raiseNotSet(value);
    bool unfit = false;
    const int result = writeByType(value, unfit);
    if (unfit || result == Raising)
        return raiseNotSet(value);
    m_currentValue = value;
    return true;
}

int cRegistry::writeByType(const QVariant& value, bool& unfit) {
    const auto write = [this](const RegistryValue& stored) {
        return m_store.writeValue(ClassKey, SectionKey, ValueKey, stored);
    };
    switch (ValueType) {
        case RegistryType::String:
        case RegistryType::ExpandString: {
            const QString text = textOf(value);
            const qint32 type = hasReference(text) ? RegistryType::ExpandString : RegistryType::String;
            return write(RegistryData::fromText(text, type));
        }
        case RegistryType::Binary:
            unfit = value.typeId() != QMetaType::QByteArray;
            return unfit ? RegistryCode::InvalidData : write({RegistryType::Binary, withoutLast(value.toByteArray())});
        case RegistryType::Integer:
        case RegistryType::IntegerBigEndian:
            return isShortOrLong(value) ? write(RegistryData::fromInteger(static_cast<qint32>(value.toLongLong())))
                                        : RegistryCode::Ok;
        default:
            return RegistryCode::InvalidData;
    }
}

void cRegistry::EnumerateValues(QStringList& sKeyNames, qint32& iKeyCount) {
    m_lastError = {};
    iKeyCount = 0;
    sKeyNames.clear();
    if (m_store.valueNames(ClassKey, SectionKey, sKeyNames) == RegistryCode::Ok)
        iKeyCount = static_cast<qint32>(sKeyNames.size());
}

void cRegistry::EnumerateSections(QStringList& sSect, qint32& iSectCount) {
    m_lastError = {};
    sSect = walkSubKeys(m_store, ClassKey, SectionKey, SectionBuffer);
    iSectCount = static_cast<qint32>(sSect.size());
}

bool cRegistry::CreateEXEAssociation(const QString& sExePath, const QString& sClassName, const QString& sClassDesc,
                                     const QString& sAssociation, const QString& sOpenMenuText, bool bSupportPrint,
                                     const QString& sPrintMenuText, bool bSupportNew, const QString& sNewMenuText,
                                     bool bSupportInstall, const QString& sInstallMenuText, qint32 lDefaultIconIndex) {
    m_lastError = {};
    const QString path = quoted(sExePath);
    const struct {
        bool wanted;
        QString name;
        QString menuText;
        QString command;
    } verbs[] = {
        {true, u"open"_qs, orUsual(sOpenMenuText, u"&Open"_qs), u" \"%1\""_qs},
        {bSupportPrint, u"print"_qs, orUsual(sPrintMenuText, u"&Print"_qs), u" /p \"%1\""_qs},
        {bSupportInstall, u"add"_qs, orUsual(sInstallMenuText, u"&Install "_qs + sClassName), u" /a \"%1\""_qs},
        {bSupportNew, u"new"_qs, orUsual(sNewMenuText, u"&New"_qs), u" /n \"%1\""_qs},
    };
    if (!writeClassText(u'.' + sAssociation, sClassName) || !writeClassText(sClassName, sClassDesc))
        return false;
    for (const auto& verb : verbs) {
        const QString section = sClassName + u"/shell/"_qs + verb.name;
        if (verb.wanted && !writeVerb(section, verb.menuText, path + verb.command))
            return false;
    }
    return lDefaultIconIndex <= -1 ||
           writeClassText(sClassName + u"/DefaultIcon"_qs, path + u',' + QString::number(lDefaultIconIndex));
}

bool cRegistry::CreateAdditionalEXEAssociations(const QString& sClassName, const QStringList& vItems) {
    m_lastError = {};
    if (vItems.size() % 3 != 0) {
        return raise(
            u"Invalid parameter list passed to CreateAdditionalEXEAssociations - expected Name/Text/Command"_qs);
    }
    if (m_store.openKey(HKEY_CLASSES_ROOT, sClassName) != RegistryCode::Ok)
        return raise(u"Error - attempt to create additional associations before class defined."_qs);
    for (qsizetype i = 0; i < vItems.size(); i += 3) {
        if (!writeVerb(sClassName + u"/shell/"_qs + vItems[i], vItems[i + 1], vItems[i + 2]))
            return false;
    }
    return true;
}

/// Writes a default value below the classes root, with the fields of this object untouched.
bool cRegistry::writeClassText(const QString& section, const QString& text) {
    cRegistry classes(m_store);
    classes.ClassKey = HKEY_CLASSES_ROOT;
    classes.SectionKey = section;
    const bool written = classes.setValue(text);
    m_lastError = classes.lastError();
    return written;
}

bool cRegistry::writeVerb(const QString& section, const QString& menuText, const QString& command) {
    return writeClassText(section, menuText) && writeClassText(section + u"/command"_qs, command);
}

bool cRegistry::raise(const QString& description) {
    m_lastError = {RaisedNumber, u"Quillmark.cRegistry"_qs, description};
    return false;
}

bool cRegistry::raiseNotSet(const QVariant& value) {
    return raise(u"Failed to set registry value Key: '"_qs + QString::number(ClassKey) + u"',Section: '"_qs +
                 SectionKey + u"',Key: '"_qs + ValueKey + u"' to value: '"_qs + textOf(value) + u'\'');
}
