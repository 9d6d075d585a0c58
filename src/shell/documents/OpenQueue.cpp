#include "shell/documents/OpenQueue.h"

#include "document/frmDocument.h"
#include "platform/Paths.h"
#include "shell/commands/CommandEntries.h"
#include "shell/documents/DocumentOpening.h"
#include "shell/documents/MdiChildren.h"
#include "shell/frame/FrameParts.h"
#include "shell/start/IgnoringErrors.h"
#include "widgets/Prompts.h"

#include <QPointer>
#include <QStringList>

#include <utility>

namespace {

constexpr int WaitMilliseconds = 100;
/// Of a file that was handed over and has none.
const QString defaultLanguage = u"html"_qs;

}  // namespace

OpenQueue::OpenQueue(FrameParts& parts, DocumentOpening& files) : m_parts(parts), m_files(files) {
    m_timer.setObjectName(u"TimerOpen"_qs);
    m_timer.setSingleShot(true);
    m_timer.setInterval(WaitMilliseconds);
    connect(&m_timer, &QTimer::timeout, this, &OpenQueue::openPending);
}

void OpenQueue::OpenFileFromCmd(const QString& pFile) {
    m_timer.stop();
    QString path = pFile;
    path.remove(u'"');
    m_pending += u'\t' + path;
    m_timer.start();
}

void OpenQueue::openPending() {
    if (m_files.isOpening()) {
        m_timer.start();
        return;
    }
    const QString round = std::exchange(m_pending, QString());
    for (const QString& path : round.split(u'\t', Qt::SkipEmptyParts))
        ignoringErrors([&] { openOne(path); });
}

void OpenQueue::openOne(const QString& path) {
    if (IsFolderPath(path)) {
        m_parts.prompts->message(m_parts.frame, QLatin1String("Directory search : ") + path);
        return;
    }
    if (m_files.FindOpenDocument(path))
        return;
    m_files.OpenFile(path, 0, true, true);
    const QPointer<frmDocument> document = m_parts.children->active();
    if (!document)
        return;
    if (document->GetLang().isEmpty()) {
        document->SetLang(defaultLanguage);
        m_parts.commands->SetDocumentEnv(document);
    }
    m_parts.children->maximise(document);
}
