#include "settings/registry/RegistryPath.h"

namespace {

QString folded(const QString& name) {
    QString result;
    result.reserve(name.size());
    for (const char32_t character : name.toUcs4())
        result += QChar::fromUcs4(QChar::toCaseFolded(character));
    return result;
}

}  // namespace

RegistryName::RegistryName(const QString& name)
    : spelling(name.toUtf8()), folded(::folded(QString::fromUtf8(spelling)).toUtf8()) {}

RegistryPath::RegistryPath(const QString& path) {
    QByteArray above;
    for (const QString& part : path.split(u'/', Qt::SkipEmptyParts)) {
        RegistryName name(part);
        QByteArray whole = above.isEmpty() ? name.folded : above + '/' + name.folded;
        m_steps.push_back({above, std::move(name), whole});
        above = whole;
    }
}

bool isRegistryRoot(RegistryRoot root) {
    return root == HKEY_CLASSES_ROOT || root == HKEY_CURRENT_USER || root == HKEY_LOCAL_MACHINE;
}
