// Any bytes as the index of languages: the table keeps its limit, and what it writes can be read again.

#include "FuzzEntry.h"
#include "lang/LanguageTable.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const QTemporaryDir home;
    const QString folder = home.path() + QLatin1String("/languages");
    QDir().mkpath(folder);
    QFile file(folder + QLatin1String("/languages.idx"));
    require(file.open(QIODevice::WriteOnly));
    file.write(viewOf(data, size).toByteArray());
    file.close();

    LanguageTable table(home.path(), home.path());
    table.LoadLanguageIndex();
    const auto& entries = table.entries();
    require(entries.size() <= LanguageTable::MostLanguages);
    for (const LanguageTable::Entry& entry : entries)
        require(!entry.LangName.contains(u'/') && entry.LangExt.size() >= 2);
    for (const char* name : {"a.c", "", ".", "/x.y/z"}) {
        const QString language = table.LanguageOfFile(QLatin1String(name));
        const bool isKnown = std::any_of(entries.begin(), entries.end(),
                                         [&](const LanguageTable::Entry& entry) { return entry.LangName == language; });
        require(isKnown || language.isEmpty());
    }

    require(table.saveIndex(table.rows()));
    LanguageTable again(home.path(), home.path());
    again.LoadLanguageIndex();
    require(again.entries().size() <= entries.size());
    return 0;
}
