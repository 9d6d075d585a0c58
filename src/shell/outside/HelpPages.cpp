#include "shell/outside/HelpPages.h"

#include "platform/Paths.h"
#include "widgets/OpenOutside.h"

#include <QUrl>

HelpPages::HelpPages(const QString& programFolder, const QString& shareFolder)
    : m_programFolder(programFolder + QLatin1String("/help/")), m_shareFolder(shareFolder + QLatin1String("/help/")) {}

QString HelpPages::pathOf(const QString& page) const {
    const QString own = m_programFolder + page;
    return fileExists(own) ? own : m_shareFolder + page;
}

void HelpPages::show(const QString& page) const {
    const QString path = pathOf(page);
    if (fileExists(path))
        OpenOutside::address(QUrl::fromLocalFile(path));
}
