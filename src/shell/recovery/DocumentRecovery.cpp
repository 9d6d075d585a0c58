#include "shell/recovery/DocumentRecovery.h"

#include "document/frmDocument.h"
#include "platform/BackgroundWork.h"
#include "platform/Paths.h"
#include "recovery/journals/FoundJournal.h"
#include "recovery/journals/Journals.h"
#include "recovery/journals/PassedJournals.h"
#include "shell/documents/ActiveDocument.h"
#include "shell/documents/DocumentOpening.h"
#include "shell/documents/MdiChildren.h"
#include "shell/documents/SystemClose.h"
#include "shell/start/IgnoringErrors.h"

#include <QPointer>

#include <algorithm>
#include <iterator>
#include <utility>

namespace {

constexpr const char* SetAside =
    "The unsaved changes of '%1' can't be brought back without its file; quillmark-recover has them.";
constexpr const char* Kept = "The unsaved changes of '%1' could not be brought back now. They are kept.";
constexpr const char* Unreachable =
    "The unsaved changes of '%1' can't be brought back, because its file can't be reached now. They are kept.";
constexpr const char* Late = "The unsaved changes of '%1' come back when its disk answers.";

QString nameOf(const JournalBase& base) {
    return base.path.isEmpty() ? base.caption : FileNameOf(base.path);
}

}  // namespace

/// Shared with the thread that reads the journal.
struct DocumentRecovery::Restoring {
    std::unique_ptr<FoundJournal> found;
    JournalOutcome outcome = JournalOutcome::Failed;
};

DocumentRecovery::DocumentRecovery(Journals* journals, MdiChildren& children, ActiveDocument& active,
                                   DocumentOpening& opening, SystemClose& systemClose, BringBack bringBack)
    : m_journals(journals),
      m_children(children),
      m_active(active),
      m_opening(opening),
      m_systemClose(systemClose),
      m_bringBack(std::move(bringBack)) {
    m_patience.setSingleShot(true);
    m_patience.setInterval(Patience);
    m_patience.callOnTimeout(this, [this] { passOver(); });
}

DocumentRecovery::~DocumentRecovery() = default;

void DocumentRecovery::start() {
    if (m_journals == nullptr || isAtWork())
        return;
    PassedJournals passed;
    std::ranges::move(m_journals->takeAbandoned(passed), std::back_inserter(m_waiting));
    if (passed.ofAnother > 0)
        Q_EMIT noticed(u"There are unsaved changes of another version of Quillmark. They are kept."_qs);
    if (passed.damaged > 0)
        Q_EMIT noticed(u"There are damaged unsaved changes; quillmark-recover has them."_qs);
    restoreNext();
}

void DocumentRecovery::stop() {
    m_patience.stop();
    m_waiting.clear();
    m_current = nullptr;
    m_readings.clear();
    m_restored.clear();
    m_ready.clear();
}

void DocumentRecovery::restoreNext() {
    if (m_waiting.empty())
        return;
    const auto restoring = std::make_shared<Restoring>();
    restoring->found = std::move(m_waiting.front());
    m_waiting.pop_front();
    const QString path = restoring->found->base().path;
    auto work = std::make_unique<BackgroundWork>(
        [restoring](const std::atomic<bool>&) { restoring->outcome = restoring->found->restore(); });
    connect(work.get(), &BackgroundWork::finished, this, [this, restoring] { takeOutcome(restoring); });
    m_readings.push_back({restoring, path, std::move(work)});
    m_current = restoring.get();
    m_patience.start();
}

void DocumentRecovery::passOver() {
    const Reading& late = m_readings.back();
    if (late.work->isDone())
        return;
    report(Late, late.restoring->found->base());
    m_current = nullptr;
    restoreNext();
}

void DocumentRecovery::takeOutcome(const std::shared_ptr<Restoring>& restoring) {
    const auto reading = std::ranges::find(m_readings, restoring, &Reading::restoring);
    if (reading == m_readings.end())
        return;
    reading->work.release()->deleteLater();  // the call comes from it
    const QString path = reading->path;
    m_readings.erase(reading);
    if (m_current == restoring.get()) {
        m_current = nullptr;
        m_patience.stop();
    }
    settle(*restoring);
    makeReady(path);
    showReady();
}

void DocumentRecovery::settle(Restoring& restoring) {
    std::unique_ptr<FoundJournal> found = std::move(restoring.found);
    switch (restoring.outcome) {
        case JournalOutcome::Restored:
            m_restored.push_back(std::move(found));
            break;
        case JournalOutcome::SameAsFile:
            found->discard();
            break;
        case JournalOutcome::Lost:
            if (found->setAside())
                report(SetAside, found->base());
            break;
        case JournalOutcome::Failed:
            report(found->file() == JournalFileNow::Unreachable ? Unreachable : Kept, found->base());
            break;
    }
}

void DocumentRecovery::report(const char* sentence, const JournalBase& base) {
    Q_EMIT noticed(QString::fromLatin1(sentence).arg(nameOf(base)));
}

bool DocumentRecovery::isAwaited(const QString& path) const {
    const auto isOfPath = [&path](const auto& found) { return found->base().path == path; };
    return !path.isEmpty() && (std::ranges::any_of(m_waiting, isOfPath) ||
                               std::ranges::find(m_readings, path, &Reading::path) != m_readings.end());
}

/// The one of a file that was edited last comes first; of two of the same time the one that was begun later.
void DocumentRecovery::makeReady(const QString& path) {
    if (isAwaited(path))
        return;
    const auto isOther = [&path](const auto& found) { return found->base().path != path; };
    const auto first = std::stable_partition(m_restored.begin(), m_restored.end(), isOther);
    std::reverse(first, m_restored.end());
    std::stable_sort(first, m_restored.end(),
                     [](const auto& one, const auto& other) { return one->time() > other->time(); });
    std::move(first, m_restored.end(), std::back_inserter(m_ready));
    m_restored.erase(first, m_restored.end());
}

void DocumentRecovery::showReady() {
    while (!m_ready.empty()) {
        if (waitsUntilFree())
            return;
        std::unique_ptr<FoundJournal> found = std::move(m_ready.front());
        m_ready.pop_front();
        bringBack(std::move(found));
    }
    if (m_current == nullptr)
        restoreNext();
}

/// A document that came up in the middle of another operation could become the one that the operation is about.
bool DocumentRecovery::waitsUntilFree() {
    if (m_systemClose.isGreyed())
        m_systemClose.whenFree([this] { showReady(); });
    else if (m_opening.isBusy())
        m_opening.whenIdle([this] { showReady(); });
    else
        return false;
    return true;
}

/// An unchanged document of the same file takes its changes over. Beside a changed one they come back untitled: two
/// documents of one file would overwrite each other. An untitled document that nobody has touched is used as in opening
/// a file.
void DocumentRecovery::bringBack(std::unique_ptr<FoundJournal> found) {
    const QPointer<frmDocument> before = m_active.get();
    const JournalBase base = found->base();
    frmDocument* present = documentOf(base.path);
    const bool isVersion = present != nullptr && present->isChange;
    QPointer<frmDocument> document = present != nullptr && !isVersion ? present : untouchedDocument();
    const bool isMade = !document;
    if (isMade) {
        m_opening.NewDocument();
        document = m_active.get();
    }
    m_opening.hold();
    m_systemClose.enable(false);
    RecoveryOutcome outcome = RecoveryOutcome::Failed;
    ignoringErrors("bringBack", [&] {
        outcome = m_bringBack(*document, std::move(found), isVersion ? RecoveredAs::Version : RecoveredAs::Document);
    });
    m_systemClose.enable(true);
    m_opening.release();
    if (outcome == RecoveryOutcome::Failed)
        report(Kept, base);
    if (document && outcome == RecoveryOutcome::Shown)
        reportShown(*document);
    else if (document && isMade)
        m_children.unload(document);
    if (before && before != document)
        m_active.activate(before);
}

void DocumentRecovery::reportShown(frmDocument& document) {
    if (!document.filename.isEmpty()) {
        document.setCaption(m_opening.captionFor(document.filename));
        m_active.reportOpened(&document, document.filename);
    }
    m_active.reportChange(&document, ActiveDocument::State | ActiveDocument::Loaded);
}

frmDocument* DocumentRecovery::documentOf(const QString& path) const {
    const QList<frmDocument*>& documents = m_children.documents();
    const auto found = std::ranges::find_if(
        documents, [&path](const frmDocument* document) { return !path.isEmpty() && document->filename == path; });
    return found == documents.end() ? nullptr : *found;
}

frmDocument* DocumentRecovery::untouchedDocument() const {
    frmDocument* active = m_active.get();
    return active != nullptr && active->isNew && !active->isChange ? active : nullptr;
}
