// A document's unsaved changes: their journal, and those of an earlier run that are brought back.

#include "document/CloseStop.h"
#include "document/DocumentHost.h"
#include "document/DocumentIcon.h"
#include "document/DocumentJournal.h"
#include "document/DocumentServices.h"
#include "document/HexJournal.h"
#include "document/HexView.h"
#include "document/KeptChanges.h"
#include "document/RecoveredBar.h"
#include "document/frmDocument.h"
#include "document/rtCM.h"
#include "editor/control/ControlFile.h"
#include "editor/control/TextControl.h"
#include "hex/ucHex.h"
#include "platform/Paths.h"
#include "recovery/journals/FoundJournal.h"

#include <QBoxLayout>
#include <QPointer>

#include <utility>

namespace {

RecoveredBar::FileNow fileNow(FoundJournal::File file) {
    if (file == FoundJournal::File::Changed)
        return RecoveredBar::FileNow::Changed;
    return file == FoundJournal::File::Missing ? RecoveredBar::FileNow::Gone : RecoveredBar::FileNow::AsItWas;
}

}  // namespace

void frmDocument::keepJournal() {
    if (m_services.journals == nullptr)
        return;
    const auto describe = [this]() -> std::optional<DocumentJournal::About> {
        if (&savedView() != m_text)
            return std::nullopt;
        return DocumentJournal::About{Caption(), GetLang()};
    };
    m_journal = std::make_unique<DocumentJournal>(m_text->control(), *m_services.journals, describe);
}

void frmDocument::forgetChanges() {
    if (m_journal)
        m_journal->giveUp();
    m_hexJournal->discard();
    m_isUntouchedRecovery = false;
}

void frmDocument::completeJournals() {
    if (m_journal)
        m_journal->complete();
    m_hexJournal->noteFileChange();
}

void frmDocument::noteFileChange() {
    if (m_journal)
        m_journal->noteFileChange();
    m_hexJournal->noteFileChange();
}

/// The other view has loaded the file, so that this one shows its changes no more.
void frmDocument::dropChanges(bool ofBytes) {
    if (m_leavesChanges)
        leaveChanges(ofBytes);
    else if (ofBytes)
        m_hexJournal->discard();
    else if (m_journal)
        m_journal->giveUp();
}

/// They were to be saved before the switch and are not, so that they come back at the next start.
void frmDocument::leaveChanges(bool ofBytes) {
    m_leavesChanges = false;
    if (!m_journal)
        return;
    if (ofBytes)
        m_hexJournal->leave();
    else
        m_journal->leave();
    Q_EMIT PassingNotice(keptChangesSentence(Caption()));
}

RecoveryOutcome frmDocument::bringBack(std::unique_ptr<FoundJournal> found) {
    if (!m_journal || m_loads > 0)
        return RecoveryOutcome::Failed;
    const QPointer<frmDocument> alive(this);
    const bool isText = found->base().view == JournalBase::View::Text;
    const RecoveryOutcome outcome = isText ? bringBackText(*found) : bringBackBytes(*found);
    if (outcome == RecoveryOutcome::SameAsFile)
        found->discard();
    if (outcome != RecoveryOutcome::Shown || !alive)
        return outcome;
    takeRecovered(found->base());
    // A file that is as it was may have another number on its disk by now, and is not to be asked about.
    if (found->file() == FoundJournal::File::AsItWas)
        m_fileState = FileState::of(filename);
    showRecoveredBar(RecoveredBar::sentence(found->time(), QDateTime::currentDateTime(), fileNow(found->file())));
    return outcome;
}

RecoveryOutcome frmDocument::bringBackText(FoundJournal& found) {
    const JournalBase& base = found.base();
    const TextOrigin origin{base.path, base.state, base.format};
    if (m_text->control().file().openRecovered(found.textPath(), origin, base.lineEndMode))
        return RecoveryOutcome::Failed;
    m_journal->goOn(found);
    m_hexJournal->discard();
    m_text->FileChanged = true;
    m_text->SetLangFromFile(base.path);
    m_text->SetLang(base.language);
    bringUp(*m_text);
    return RecoveryOutcome::Shown;
}

RecoveryOutcome frmDocument::bringBackBytes(FoundJournal& found) {
    const QPointer<frmDocument> alive(this);
    const bool before = TextEdit();
    RecoveryOutcome outcome = RecoveryOutcome::Failed;
    {
        const CloseStop stop(*this, m_loads);
        const CloseStop opening(*this, m_openings);
        bringUp(*m_hex);
        outcome = m_hexJournal->bringBack(found);
    }
    if (!alive)
        return RecoveryOutcome::Failed;
    if (outcome == RecoveryOutcome::Shown)
        m_journal->giveUp();  // of the text that the bytes replace
    else if (!filename.isEmpty())
        OpenFile(filename, isReadOnly, false, before);
    return outcome;
}

/// The document is the changed one that it was. A file that was changed since is not asked about before somebody saves
/// over it: the bar says so.
void frmDocument::takeRecovered(const JournalBase& base) {
    m_holder = base.path.isEmpty() ? nullptr : &visibleView();
    m_fileState = base.state;
    filename = base.path;
    isNew = false;
    isChange = true;
    SetDocIcon(isReadOnly ? ReadOnlyIcon : ChangedIcon);
    setCaption(base.caption);
    refreshUpdateTimes();
    gParent->SetTabCaption(this, true);
    gParent->SetEditModeIcon(this);
    gParent->CheckLangMenu(this);
    Q_EMIT FileChange(this);
    Q_EMIT PositionChange(this);
}

void frmDocument::showRecoveredBar(const QString& sentence) {
    delete m_recoveredBar;
    m_recoveredBar = new RecoveredBar(this);
    m_recoveredBar->setSentence(sentence);
    static_cast<QBoxLayout*>(layout())->insertWidget(0, m_recoveredBar);
    m_recoveredBar->show();
    connect(m_recoveredBar, &RecoveredBar::keepRequested, this, &frmDocument::hideRecoveredBar);
    connect(m_recoveredBar, &RecoveredBar::discardRequested, this, &frmDocument::discardRecovered);
    connect(m_recoveredBar, &RecoveredBar::differencesRequested, this, [this] { Q_EMIT DifferencesRequest(this); });
    connect(m_recoveredBar, &RecoveredBar::left, this, [this] { setFocus(); });
    m_isUntouchedRecovery = true;
}

/// It may be one of its buttons that was pressed.
void frmDocument::hideRecoveredBar() {
    m_isUntouchedRecovery = false;
    if (m_recoveredBar == nullptr)
        return;
    if (m_recoveredBar->isAncestorOf(window()->focusWidget()))
        setFocus();
    m_recoveredBar->hide();
    m_recoveredBar->deleteLater();
    m_recoveredBar = nullptr;
}

/// The document becomes as its file is now; without a file it closes.
void frmDocument::discardRecovered() {
    if (m_loads > 0)
        return;
    if (!filename.isEmpty() && fileExists(filename)) {
        const QPointer<frmDocument> alive(this);
        OpenFile(filename, isReadOnly, false, TextEdit());
        if (alive)
            Q_EMIT FileChange(this);
        return;
    }
    forgetChanges();
    hideRecoveredBar();
    isChange = false;
    QWidget* child = parentWidget() == nullptr ? this : parentWidget();
    QMetaObject::invokeMethod(child, &QWidget::close, Qt::QueuedConnection);
}

int frmDocument::bytesHandle() const {
    return m_hex->control().workingCopy().handle();
}

QWidget* frmDocument::recoveredBar() const {
    return m_recoveredBar;
}
