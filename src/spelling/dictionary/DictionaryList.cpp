#include "spelling/dictionary/DictionaryList.h"

#include <QDir>
#include <QFileInfo>
#include <QLocale>

#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <map>
#include <optional>
#include <utility>

namespace {

/// More files than any system has; the rest of a folder with more is not looked at.
constexpr int MostFiles = 5000;

QStringList foldersOf(const char* variable) {
    return qEnvironmentVariable(variable).split(u':', Qt::SkipEmptyParts);
}

/// Device and number.
using FileNumber = std::pair<dev_t, ino_t>;

/// Nothing for what is no regular file. Links are followed.
std::optional<FileNumber> numberOf(const QString& path) {
    struct stat status {};
    if (stat(QFile::encodeName(path).constData(), &status) != 0 || !S_ISREG(status.st_mode))
        return std::nullopt;
    return FileNumber{status.st_dev, status.st_ino};
}

/// "English (United States)"; what the name has beyond language and country is added. A name that is none of a locale
/// is its own title.
QString titleOf(const QString& name) {
    const QStringList parts = QString(name).replace(u'-', u'_').split(u'_');
    const QLocale locale(parts.mid(0, 2).join(u'_'));
    if (locale.language() == QLocale::C)
        return name;
    QString title = QLocale::languageToString(locale.language());
    qsizetype used = 1;
    if (parts.size() > 1 && QLocale::territoryToCode(locale.territory()) == parts[1]) {
        title += u" (%1)"_qs.arg(QLocale::territoryToString(locale.territory()));
        used = 2;
    }
    if (used < parts.size())
        title += u", "_qs + parts.mid(used).join(u' ');
    return title;
}

bool isLink(const Dictionary& dictionary) {
    return QFileInfo(dictionary.wordsPath).isSymLink();
}

/// Two with the same title are told apart by their names.
void distinguishTitles(std::vector<Dictionary>& list) {
    std::map<QString, int> counts;
    for (const Dictionary& each : list)
        ++counts[each.title];
    for (Dictionary& each : list) {
        if (counts[each.title] > 1)
            each.title += u" - "_qs + each.name;
    }
}

/// Collects dictionaries, each name and each pair of files once.
class Collector {
 public:
    void add(const QString& folder, const QString& name) {
        if (isKnown(name))
            return;
        Dictionary dictionary{
            name, titleOf(name), folder + u'/' + name + u".aff"_qs, folder + u'/' + name + u".dic"_qs, {}};
        const auto affix = numberOf(dictionary.affixPath);
        const auto words = numberOf(dictionary.wordsPath);
        if (!affix || !words)
            return;
        const auto [known, isNew] = m_byFiles.try_emplace({*affix, *words}, list.size());
        if (isNew)
            list.push_back(std::move(dictionary));
        else
            unite(list[known->second], std::move(dictionary));
    }

    std::vector<Dictionary> list;

 private:
    bool isKnown(const QString& name) const {
        return std::ranges::any_of(list, [&name](const Dictionary& each) { return each.isNamed(name); });
    }

    static void unite(Dictionary& known, Dictionary added) {
        if (isLink(known) && !isLink(added)) {
            std::swap(known, added);
            known.aliases = std::exchange(added.aliases, {});
        }
        known.aliases.append(added.name);
    }

    std::map<std::pair<FileNumber, FileNumber>, std::size_t> m_byFiles;
};

template <typename Matches>
std::optional<std::size_t> indexWhere(const std::vector<Dictionary>& list, Matches matches) {
    const auto found = std::ranges::find_if(list, matches);
    if (found == list.end())
        return std::nullopt;
    return static_cast<std::size_t>(found - list.begin());
}

}  // namespace

QStringList DictionaryList::searchFolders() {
    QStringList folders = foldersOf("DICPATH");
    const QString home = qEnvironmentVariable("XDG_DATA_HOME");
    QStringList data{QDir::isAbsolutePath(home) ? home : QDir::homePath() + u"/.local/share"_qs};
    const QStringList shared = foldersOf("XDG_DATA_DIRS");
    data += shared.isEmpty() ? QStringList{u"/usr/local/share"_qs, u"/usr/share"_qs} : shared;
    data += u"/usr/share"_qs;
    for (const QString& each : std::as_const(data))
        folders << each + u"/hunspell"_qs << each + u"/myspell/dicts"_qs << each + u"/myspell"_qs;
    QStringList cleaned;
    for (const QString& each : std::as_const(folders)) {
        if (QDir::isAbsolutePath(each))
            cleaned << QDir::cleanPath(each);
    }
    cleaned.removeDuplicates();
    return cleaned;
}

std::vector<Dictionary> DictionaryList::installed(const QStringList& folders) {
    Collector collector;
    for (const QString& folder : folders) {
        const QStringList files = QDir(folder).entryList({u"*.aff"_qs}, QDir::Files, QDir::Name).mid(0, MostFiles);
        for (const QString& file : files)
            collector.add(folder, file.chopped(4));
    }
    distinguishTitles(collector.list);
    std::ranges::sort(collector.list, [](const Dictionary& one, const Dictionary& other) {
        return std::pair(one.title, one.name) < std::pair(other.title, other.name);
    });
    return std::move(collector.list);
}

QString DictionaryList::localeName() {
    for (const char* variable : {"LC_ALL", "LC_CTYPE", "LANG"}) {
        const QString value = qEnvironmentVariable(variable);
        if (value.isEmpty())
            continue;
        const QString name = value.section(u'.', 0, 0).section(u'@', 0, 0);
        return name == u"C"_qs || name == u"POSIX"_qs ? QString() : name;
    }
    return {};
}

std::size_t DictionaryList::preferred(const std::vector<Dictionary>& list, const QString& name, const QString& locale) {
    const QString language = locale.section(u'_', 0, 0);
    const auto isNamed = [](const QString& wanted) {
        return [wanted](const Dictionary& each) { return !wanted.isEmpty() && each.isNamed(wanted); };
    };
    const auto isOfLanguage = [&language](const Dictionary& each) {
        return !language.isEmpty() && (each.name == language || each.name.startsWith(language + u'_') ||
                                       each.name.startsWith(language + u'-'));
    };
    for (const auto& found :
         {indexWhere(list, isNamed(name)), indexWhere(list, isNamed(locale)),
          indexWhere(list, isNamed(language.isEmpty() ? QString() : language + u'_' + language.toUpper())),
          indexWhere(list, isOfLanguage), indexWhere(list, isNamed(u"en_US"_qs))}) {
        if (found)
            return *found;
    }
    return 0;
}
