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

/// What the bar says of recovered changes.
QString sentenceOf(const FoundJournal& found, RecoveredAs as) {
    const QDateTime now = QDateTime::currentDateTime();
    return as == RecoveredAs::Version ? RecoveredBar::versionSentence(found.time(), now, FileNameOf(found.base().path))
                                      : RecoveredBar::sentence(found.time(), now, found.file());
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

/// The other view has loaded the file, so that this one shows its changes no more.
void frmDocument::dropChanges(bool ofBytes) {
    if (m_leavesChanges)
        leaveChanges(ofBytes);
    else if (ofBytes)
        m_hexJournal->discard();
    else if (m_journal)
        m_journal->giveUp();
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

RecoveryOutcome frmDocument::bringBack(std::unique_ptr<FoundJournal> found, RecoveredAs as) {
    if (!m_journal || m_loads > 0)
        return RecoveryOutcome::Failed;
    const QPointer<frmDocument> alive(this);
    const bool isText = found->base().view == JournalBase::View::Text;
    const RecoveryOutcome outcome = isText ? bringBackText(*found, as) : bringBackBytes(*found);
    if (outcome == RecoveryOutcome::SameAsFile)
        found->discard();
    if (outcome != RecoveryOutcome::Shown || !alive)
        return outcome;
    takeRecovered(found->base(), as);
    // A file that is as it was may have another number on its disk by now, and is not to be asked about.
    if (as == RecoveredAs::Document && found->file() == FoundJournal::File::AsItWas)
        m_fileState = FileState::of(filename);
    if (as == RecoveredAs::Version)
        keepApart(*found);
    showRecoveredBar(sentenceOf(*found, as));
    return outcome;
}

RecoveryOutcome frmDocument::bringBackText(FoundJournal& found, RecoveredAs as) {
    const JournalBase& base = found.base();
    const bool isVersion = as == RecoveredAs::Version;
    const TextOrigin origin =
        isVersion ? TextOrigin{{}, {}, base.format} : TextOrigin{base.path, base.state, base.format};
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
/// over it: the bar says so. An untitled document keeps its own name, because the one of the earlier run may by now be
/// that of another document.
void frmDocument::takeRecovered(const JournalBase& base, RecoveredAs as) {
    const bool isVersion = as == RecoveredAs::Version;
    m_recoveredPath = base.path;
    filename = isVersion ? QString() : base.path;
    m_holder = filename.isEmpty() ? nullptr : &visibleView();
    m_fileState = isVersion ? std::nullopt : base.state;
    isNew = false;
    isChange = true;
    SetDocIcon(isReadOnly ? ReadOnlyIcon : ChangedIcon);
    if (!filename.isEmpty())
        setCaption(base.caption);
    refreshUpdateTimes();
    gParent->SetTabCaption(this, true);
    gParent->SetEditModeIcon(this);
    gParent->CheckLangMenu(this);
    Q_EMIT FileChange(this);
    Q_EMIT PositionChange(this);
}

/// The other document of the file may be saved to it: from then on the journal could not start from its bytes.
void frmDocument::keepApart(const FoundJournal& found) {
    if (found.basePath() != found.base().path)
        return;
    if (found.base().view == JournalBase::View::Text)
        m_journal->keepWhole();
    else
        m_hexJournal->keepWhole();
}

void frmDocument::showRecoveredBar(const QString& sentence) {
    delete m_recoveredBar;
    m_recoveredBar = new RecoveredBar(this);
    m_recoveredBar->setSentence(sentence);
    m_recoveredBar->setPath(m_recoveredPath);
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
