#include "shell/frame/FrameDrops.h"

#include "shell/documents/DocumentOpening.h"
#include "shell/documents/PanelLink.h"
#include "shell/frame/FrameParts.h"
#include "shell/start/IgnoringErrors.h"

#include <QMimeData>
#include <QTimer>
#include <QUrl>
#include <QWidget>

#include <algorithm>

FrameDrops::FrameDrops(FrameParts& parts, DocumentOpening& files) : m_parts(parts), m_files(files) {}

bool FrameDrops::carriesFiles(const QMimeData& data) {
    return std::ranges::any_of(data.urls(), [](const QUrl& url) { return url.isLocalFile(); });
}

void FrameDrops::take(const QMimeData& data) {
    if (m_parts.explorer->Busy()) {
        ignoringErrors([this] { m_parts.explorer->OpenSelectedFiles(); });
        return;
    }
    QStringList paths;
    for (const QUrl& url : data.urls()) {
        if (url.isLocalFile())
            paths.append(url.toLocalFile());
    }
    QTimer::singleShot(0, m_parts.frame, [this, paths] {
        for (const QString& path : paths)
            ignoringErrors([&] { m_files.OpenFile(path, 0, true, true); });
    });
}
