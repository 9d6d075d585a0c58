#include "shell/documents/DocumentOpening.h"

#include "document/DocumentServices.h"
#include "document/frmDocument.h"
#include "platform/FileLookup.h"
#include "platform/Paths.h"
#include "platform/Yield.h"
#include "settings/Options.h"
#include "shell/documents/ActiveDocument.h"
#include "shell/documents/MdiChildren.h"
#include "shell/documents/SystemClose.h"
#include "shell/start/IgnoringErrors.h"
#include "widgets/Prompts.h"

#include <QPointer>
#include <QTimer>

#include <utility>

namespace {

constexpr int LockFlag = 1;

}  // namespace

DocumentOpening::DocumentOpening(DocumentHost& host, QWidget& window, const DocumentServices& services,
                                 MdiChildren& children, ActiveDocument& active, SystemClose& systemClose,
                                 FileLookup& lookup)
    : m_host(host),
      m_window(window),
      m_services(services),
      m_children(children),
      m_active(active),
      m_systemClose(systemClose),
      m_lookup(lookup) {}

void DocumentOpening::NewDocument() {
    ++m_documentCounter;
    auto* document = new frmDocument(&m_host, m_services);
    document->fIdx = u"F%1"_qs.arg(m_documentCounter);
    document->setCaption(u"Document%1"_qs.arg(m_documentCounter));
    m_active.add(document);
}

bool DocumentOpening::FindOpenDocument(const QString& path) {
    const QString spelled = absolutePath(path);
    for (frmDocument* document : m_children.documents()) {
        if (document->filename != spelled)
            continue;
        m_children.bringToFront(document);
        document->setFocus();  // it may have been active already
        yieldOnce();
        return true;
    }
    return false;
}

void DocumentOpening::OpenFile(const QString& path, int flags, bool checkBinary, bool openTextMode) {
    whenIdle([=, this, spelled = absolutePath(path)] { openNow(spelled, flags, checkBinary, openTextMode); });
}

/// While the disk does not answer, the event loop runs.
bool DocumentOpening::isThere(const QString& path) {
    m_opening = true;
    m_systemClose.enable(false);
    const bool exists = m_lookup.exists(path);
    m_systemClose.enable(true);
    endOpening();
    return exists;
}

void DocumentOpening::openNow(const QString& path, int flags, bool checkBinary, bool openTextMode) {
    if (!isThere(path)) {
        m_services.prompts.message(&m_window, path + QLatin1String("\nFile not found!"));
        yieldOnce();
        return;
    }
    if (FindOpenDocument(path)) {
        m_services.prompts.message(&m_window, u"'%1' already open!"_qs.arg(path));
        return;
    }
    m_opening = true;
    ignoringErrors("OpenFile", [&] { openExisting(path, flags, checkBinary, openTextMode); });
    endOpening();
}

void DocumentOpening::openExisting(const QString& path, int flags, bool checkBinary, bool openTextMode) {
    const frmDocument* present = m_active.get();
    if (present == nullptr || !present->isNew)
        NewDocument();
    const QPointer<frmDocument> document = m_active.get();
    if (!document)
        return;
    const bool locks = (flags & LockFlag) != 0 && !document->Locked();
    if (locks)
        document->setLocked(true);
    m_systemClose.enable(false);
    ignoringErrors("OpenFile", [&] {
        const bool loaded = document->OpenFile(path, document->Locked(), checkBinary, openTextMode);
        if (document && locks && !loaded)
            document->setLocked(false);
        if (document)
            showOpened(document, path);
    });
    yieldOnce();
    m_systemClose.enable(true);
}

/// While a document loads in blocks, another one may have been activated, which keeps the focus.
void DocumentOpening::showOpened(frmDocument* document, const QString& path) {
    document->setCaption(captionFor(path));
    m_active.reportOpened(document, path);
    m_active.reportChange(document, ActiveDocument::Loaded);
    if (m_active.is(document))
        document->setFocus();
}

void DocumentOpening::whenIdle(std::function<void()> task) {
    if (isBusy())
        m_waiting.push_back(std::move(task));
    else
        task();
}

void DocumentOpening::endOpening() {
    m_opening = false;
    runWaitingLater();
}

void DocumentOpening::release() {
    --m_holds;
    runWaitingLater();
}

void DocumentOpening::runWaitingLater() {
    if (!m_waiting.empty())
        QTimer::singleShot(0, &m_window, [this] { runNextWaiting(); });
}

void DocumentOpening::runNextWaiting() {
    if (isBusy() || m_waiting.empty())
        return;
    const std::function<void()> next = std::move(m_waiting.front());
    m_waiting.erase(m_waiting.begin());
    ignoringErrors("OpenFile", next);
    runWaitingLater();
}

QString DocumentOpening::captionFor(const QString& path) const {
    return m_services.options.ShowFullPath ? path : FileNameOf(path);
}
