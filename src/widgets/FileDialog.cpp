#include "widgets/FileDialog.h"

#include "platform/Paths.h"
#include "widgets/Prompts.h"

#include <QDir>
#include <QLineEdit>

#include <algorithm>

namespace {

/// The same folder without "..", which the dialog would resolve without regard to links.
QString withoutParents(const QString& folder) {
    const bool hasParents = (folder + u'/').contains(QLatin1String("/../"));
    const QString real = hasParents ? QDir(folder).canonicalPath() : QString();
    return real.isEmpty() ? folder : real;
}

QString nameWithoutParents(const QString& name) {
    const QString file = FileNameOf(name);
    if (file.size() == name.size())
        return name;
    const QString folder = name.chopped(file.size());
    const QString shown = withoutParents(folder);
    return shown.endsWith(u'/') ? shown + file : shown + u'/' + file;
}

}  // namespace

FileDialog::FileDialog(const FileQuestion& question, const QString& lastFolder, QWidget* parent) : QFileDialog(parent) {
    setOptions(QFileDialog::DontUseNativeDialog | QFileDialog::DontConfirmOverwrite |
               QFileDialog::HideNameFilterDetails);
    setWindowTitle(question.title);
    const QStringList filters = ::nameFilters(question.filters);
    if (!filters.isEmpty())
        setNameFilters(filters);
    const QString folder = question.folder.isEmpty() ? lastFolder : question.folder;
    setDirectory(folder.isEmpty() ? QDir::currentPath() : withoutParents(folder));
    if (!question.initialName.isEmpty())
        selectFile(nameWithoutParents(question.initialName));
}

QStringList FileDialog::paths() const {
    return m_paths.isEmpty() ? selectedFiles() : m_paths;
}

/// Where a file is wanted, what names a folder is left to Qt, which shows that folder, unless only the system knows
/// which folder it is.
void FileDialog::accept() {
    const QStringList named = namedPaths();
    const bool isFolder = named.size() == 1 && IsFolderPath(named.first());
    if (isFolder && fileMode() == Directory && nameField().text() != QLatin1String("..")) {
        m_paths = named;
        done(Accepted);
        return;
    }
    if (isFolder && nameField().text().contains(u'/')) {
        setDirectory(withoutParents(named.first()));
        nameField().clear();
        return;
    }
    if (named.isEmpty() || fileMode() == Directory || std::ranges::any_of(named, &IsFolderPath)) {
        QFileDialog::accept();
        return;
    }
    m_paths = named;
    done(Accepted);
}

/// Several names are in quotation marks, which a single name may contain too.
QStringList FileDialog::namedPaths() const {
    const QString text = nameField().text();
    if (text.isEmpty())
        return {};
    if (!text.contains(u'"') || fileExists(pathOf(text)))
        return {pathOf(text)};
    if (!text.contains(u'/'))
        return selectedFiles();
    QStringList paths;
    for (const QString& name : text.split(u'"')) {
        if (!name.trimmed().isEmpty())
            paths << pathOf(name);
    }
    return paths;
}

QString FileDialog::pathOf(const QString& name) const {
    const QString path = absolutePath(name, directory().absolutePath());
    const bool isInHome = name.startsWith(QLatin1String("~/")) && !fileExists(path);
    return isInHome ? absolutePath(name.mid(2), QDir::homePath()) : path;
}

QLineEdit& FileDialog::nameField() const {
    return *findChild<QLineEdit*>(u"fileNameEdit"_qs);
}

QStringList nameFilters(const QString& filters) {
    const QStringList parts = filters.split(u'|');
    QStringList names;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        QStringList patterns = parts.at(i + 1).split(u';', Qt::SkipEmptyParts);
        for (QString& pattern : patterns) {
            pattern = pattern.trimmed();
            if (pattern == QLatin1String("*.*"))
                pattern = u"*"_qs;
        }
        names.append(u"%1 (%2)"_qs.arg(parts.at(i), patterns.join(u' ')));
    }
    return names;
}
