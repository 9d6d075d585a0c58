#include "shell/frame/FrameDrops.h"

#include "shell/documents/DocumentOpening.h"
#include "shell/start/IgnoringErrors.h"
#include "workspace/panel/PanelLink.h"

#include <QMimeData>
#include <QTimer>
#include <QUrl>

#include <algorithm>

FrameDrops::FrameDrops(QObject& frame, PanelLink& panel, DocumentOpening& opening)
    : m_frame(frame), m_panel(panel), m_opening(opening) {}

bool FrameDrops::carriesFiles(const QMimeData& data) {
    return std::ranges::any_of(data.urls(), [](const QUrl& url) { return url.isLocalFile(); });
}

void FrameDrops::take(const QMimeData& data) {
    if (m_panel.Busy()) {
        ignoringErrors("OpenSelectedFiles", [this] { m_panel.OpenSelectedFiles(); });
        return;
    }
    QStringList paths;
    for (const QUrl& url : data.urls()) {
        if (url.isLocalFile())
            paths.append(url.toLocalFile());
    }
    QTimer::singleShot(0, &m_frame, [this, paths] {
        for (const QString& path : paths)
            ignoringErrors("OpenFile", [&] { m_opening.OpenFile(path, 0, true, true); });
    });
}
