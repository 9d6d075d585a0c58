// Any bytes as the file of a kept list: the list keeps its capacity, and what it writes it reads again.

#include "FuzzEntry.h"
#include "shell/session/KeptList.h"

#include <QFile>
#include <QTemporaryDir>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const QTemporaryDir folder;
    for (const KeptList::Kind* kind :
         {&KeptList::RecentFiles, &KeptList::RecentProjects, &KeptList::FavoriteProjects}) {
        QFile file(folder.filePath(QLatin1String(kind->file)));
        require(file.open(QIODevice::WriteOnly));
        file.write(viewOf(data, size).toByteArray());
        file.close();

        KeptList list(*kind, folder.path());
        list.load();
        const QStringList& paths = list.paths();
        require(paths.size() <= list.capacity());
        require(!paths.contains(QString()));
        require(paths.isEmpty() || !list.hasPlaceholder());

        // Neither can stand in a line.
        QStringList written = paths;
        written.removeIf([](const QString& path) { return path.contains(u'\t') || path.contains(u'\r'); });
        if (!written.isEmpty() && written.last().startsWith(QChar::ByteOrderMark))
            continue;  // at the start of the file it would mean the encoding
        list.save();
        KeptList again(*kind, folder.path());
        again.load();
        require(again.paths() == written);
    }
    return 0;
}
