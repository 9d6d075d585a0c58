#include "shell/documents/OpenQueue.h"

#include "document/frmDocument.h"
#include "platform/Paths.h"
#include "shell/documents/ActiveDocument.h"
#include "shell/documents/DocumentOpening.h"
#include "shell/documents/MdiChildren.h"
#include "shell/start/IgnoringErrors.h"
#include "widgets/Prompts.h"

#include <QPointer>
#include <QStringList>

#include <utility>

namespace {

constexpr int WaitMilliseconds = 100;
/// For a file that was passed without a language.
const QString defaultLanguage = u"html"_qs;

}  // namespace

OpenQueue::OpenQueue(QWidget& window, Prompts& prompts, MdiChildren& children, ActiveDocument& active,
                     DocumentOpening& opening)
    : m_window(window),
      m_prompts(prompts),
      m_children(children),
      m_active(active),
      m_opening(opening),
      m_timer(&window) {
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
    if (m_opening.isBusy()) {
        m_timer.start();
        return;
    }
    const QString round = std::exchange(m_pending, QString());
    for (const QString& path : round.split(u'\t', Qt::SkipEmptyParts))
        ignoringErrors("OpenFileFromCmd", [&] { openOne(path); });
}

void OpenQueue::openOne(const QString& path) {
    if (IsFolderPath(path)) {
        m_prompts.message(&m_window, QLatin1String("Directory search : ") + path);
        return;
    }
    if (m_opening.FindOpenDocument(path))
        return;
    m_opening.OpenFile(path, 0, true, true);
    const QPointer<frmDocument> document = m_active.get();
    if (!document)
        return;
    if (document->GetLang().isEmpty()) {
        document->SetLang(defaultLanguage);
        m_active.reportChange(document, ActiveDocument::View);
    }
    m_children.maximise(document);
}
