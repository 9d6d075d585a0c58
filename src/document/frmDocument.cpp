#include "document/frmDocument.h"

#include "document/CloseStop.h"
#include "document/DiskChange.h"
#include "document/DocumentHost.h"
#include "document/DocumentIcon.h"
#include "document/DocumentJournal.h"
#include "document/DocumentServices.h"
#include "document/HexJournal.h"
#include "document/HexView.h"
#include "document/OpenMode.h"
#include "document/rtCM.h"
#include "hex/ucHex.h"
#include "platform/FileInfo.h"
#include "platform/FileType.h"
#include "platform/Paths.h"
#include "platform/WriteWitness.h"
#include "platform/Yield.h"
#include "settings/Options.h"
#include "widgets/BusyPointer.h"
#include "widgets/Icons.h"
#include "widgets/Prompts.h"
#include "widgets/Twips.h"

#include <QCloseEvent>
#include <QIcon>
#include <QPointer>
#include <QVBoxLayout>

#include <array>
#include <exception>

namespace {

constexpr int MarginInTwips = 10;
constexpr int Margin = (MarginInTwips + TwipsPerPixel - 1) / TwipsPerPixel;

constexpr std::array IconNames{"doc-normal", "doc-changed", "doc-locked"};

// In a window title Qt replaces these three characters by a mark of its own; doubled they stand for themselves.
const QLatin1String titleMark("[*]");
const QLatin1String doubledTitleMark("[*][*]");

}  // namespace

frmDocument::frmDocument(DocumentHost* parent, const DocumentServices& services)
    : gParent(parent),
      m_prompts(services.prompts),
      m_options(services.options),
      m_services(services),
      m_text(new rtCM(services, this)),
      m_hex(std::make_unique<HexView>(services, this)),
      m_hexJournal(std::make_unique<HexJournal>(services.journals, m_hex->control())),
      m_views{m_text, m_hex.get()} {
    setObjectName(u"frmDocument"_qs);
    m_text->PropertiesLoad();
    layOut();
    if (!m_options.FontName.isEmpty())
        m_text->setTextFont(m_options.FontName, m_options.FontSize);
    m_text->HighLightLine();  // nothing moves the caret of an empty document
    connectTextView();
    connectHexView();
    makeMenus();
    keepJournal();
    SetDocIcon(NormalIcon);
}

/// Closed without changes: what was replaced or filled does not count as one, and nobody was asked about it. The views
/// lose the focus when they are hidden, which completes a byte that is being typed: the document is not one any more.
frmDocument::~frmDocument() {
    m_hex->control().disconnect(this);
    m_text->disconnect(this);
    if (m_life == Life::Unloaded && !isChange)
        m_hexJournal->discard();
}

void frmDocument::layOut() {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(Margin, Margin, Margin, Margin);
    layout->setSpacing(0);
    for (DocumentView* view : m_views)
        layout->addWidget(view->viewWidget());
    bringUp(*m_text);
}

void frmDocument::connectTextView() {
    connect(m_text, &rtCM::Change, this, &frmDocument::MarkChanged);
    connect(m_text, &rtCM::AfterFind, this, &frmDocument::reportDialogSearch);
    connect(m_text, &rtCM::Notice, this, &frmDocument::Notice);
    connect(m_text, &rtCM::RepeatCountChanged, this, [this] { Q_EMIT RepeatCountChange(this); });
    connect(m_text, &rtCM::SelChange, this, [this] {
        Q_EMIT SelChange(this);
        if (m_positionReport.isNewAfterMove(m_text->caretPlace()))
            Q_EMIT PositionChange(this);
    });
    connect(m_text, &rtCM::propertiesChanged, this, [this] { Q_EMIT ViewChange(this); });
    connect(m_text, &rtCM::ShowMenu, this,
            [this](int x, int y) { showMenu(u"EditText"_qs, m_text->mapToGlobal(QPoint(x, y))); });
    connect(m_text, &rtCM::DropFile, this, [this](const QString& path) { gParent->OpenFile(path, 0, true, true); });
}

QString frmDocument::Caption() const {
    return windowTitle().replace(doubledTitleMark, titleMark);
}

void frmDocument::setCaption(const QString& caption) {
    setWindowTitle(QString(caption).replace(titleMark, doubledTitleMark));
    m_text->setTextName(caption);
}

bool frmDocument::OpenFile(const QString& pFilename, bool pReadonly, bool pCheckBinary, bool pTextMode) {
    const QPointer<frmDocument> alive(this);
    BusyPointer::show();
    bool loaded = false;
    QString failure;
    try {
        const CloseStop stop(*this, m_loads);
        const CloseStop opening(*this, m_openings);
        loaded = loadChosenView(pFilename, pReadonly, pCheckBinary, pTextMode);
    } catch (const std::exception& error) {
        failure = QString::fromLocal8Bit(error.what());
    }
    if (alive && m_openings == 0 && std::exchange(m_wasRefused, false))
        Q_EMIT Notice({});
    if (failure.isNull()) {
        BusyPointer::restore();
        return loaded;
    }
    // Here the pointer stays busy until the next operation has ended.
    if (alive) {
        m_holder = nullptr;
        m_prompts.message(this, failure);
    }
    return false;
}

bool frmDocument::loadChosenView(const QString& path, bool readOnly, bool checkBinary, bool textMode) {
    const QPointer<frmDocument> alive(this);
    WriteWitness::settleFile(path);
    const bool text =
        chooseTextMode(checkBinary, textMode, m_options.CheckHexModeWhenOpen, [&] { return IsBinaryFile(path); });
    DocumentView& view = viewFor(text);
    bringUp(view);
    view.viewWidget()->setFocus();
    yieldOnce();
    if (!alive)
        return false;
    const std::optional<FileState> state = FileState::of(path);
    const bool loaded = view.load(path);
    if (!alive)
        return false;
    if (!loaded && m_holder == &view)
        m_holder = nullptr;
    // A load that yields may have been overtaken by one into the other view.
    if (loaded && &visibleView() == &view) {
        takeFile(path, readOnly);
        m_fileState = state;
        keepBytes(view, state);
    }
    refreshUpdateTimes();
    gParent->SetTabCaption(this, true);
    gParent->SetEditModeIcon(this);
    return loaded;
}

void frmDocument::takeFile(const QString& path, bool readOnly) {
    m_holder = &visibleView();
    filename = path;
    isNew = false;
    isChange = false;
    isReadOnly = readOnly;
    SetDocIcon(readOnly ? ReadOnlyIcon : NormalIcon);
    hideRecoveredBar();
    if (m_holder != m_text)
        dropChanges(false);
}

bool frmDocument::SaveFile(const QString& pFilename, int pFormat, bool pFlag) {
    const QPointer<frmDocument> alive(this);
    const CloseStop stop(*this, m_loads);
    BusyPointer::show();
    DocumentView& view = savedView();
    const bool isHex = &view == m_hex.get();
    if (isHex)
        m_hexJournal->beginSave();
    const bool saved = view.save(pFilename, pFormat, pFlag);
    if (!alive) {
        BusyPointer::restore();
        return saved;
    }
    if (saved)
        takeSaved(pFilename, view);
    if (pFilename == filename)
        takeFileState(saved);
    if (isHex)
        m_hexJournal->endSave(saved, pFilename);
    refreshUpdateTimes();
    gParent->SetTabCaption(this, true);
    BusyPointer::restore();
    return saved;
}

/// After a failed save too: the file may be partly written. One that cannot be reached just now stays the one that it
/// was, so that a change by somebody else is still seen when it is back.
void frmDocument::takeFileState(bool saved) {
    const std::optional<FileState> now = FileState::of(filename);
    if (saved || now)
        m_fileState = now;
}

/// What was typed while the view wrote its blocks is not in the file, and still counts as a change.
void frmDocument::takeSaved(const QString& path, const DocumentView& view) {
    m_holder = &view;
    filename = path;
    isNew = false;
    isChange = visibleView().isModified();
    hideRecoveredBar();
    SetDocIcon(isChange ? ChangedIcon : NormalIcon);  // of a read-only document too, until it is toggled again
}

bool frmDocument::maySave() {
    if (m_openings == 0)
        return visibleView().maySave();
    m_wasRefused = true;
    Q_EMIT Notice(u"Not saved: the file is still being read or written."_qs);
    return false;
}

bool frmDocument::holdsFile() const {
    return !filename.isEmpty() && m_holder == &visibleView();
}

void frmDocument::ReloadFile() {
    OpenFile(filename, isReadOnly, false, true);
}

void frmDocument::ReloadTextFile(const QString& pFilename, int pFormat) {
    const QPointer<frmDocument> alive(this);
    const bool before = Locked();
    WriteWitness::settleFile(pFilename);
    m_fileState = FileState::of(pFilename);
    if (TextEdit())
        m_text->ReloadFile(pFilename, false, pFormat);
    if (alive && Locked() != before)  // a text with lines too long for the control is locked
        Q_EMIT FileChange(this);
}

void frmDocument::LastUpdateTime(QString& pLastUpdate, QString& pFileSize) const {
    pLastUpdate.clear();
    pFileSize.clear();
    if (filename.isEmpty())
        return;
    const FileInfo info = GetFileInfo(filename);
    pLastUpdate = info.modified;
    pFileSize = QString::number(info.size);
}

void frmDocument::refreshUpdateTimes() {
    QString size;
    LastUpdateTime(LastUpdate, size);
    KnownUpdate = LastUpdate;
}

bool frmDocument::FileNeedToReload() {
    if (m_loads > 0)
        return false;  // the document itself is reading the file
    QString now;
    QString size;
    LastUpdateTime(now, size);
    const DiskChange change = checkDiskChange(now, LastUpdate, KnownUpdate, [this] { return fileExists(filename); });
    if (change != DiskChange::None)
        noteFileChange();
    if (change == DiskChange::Rewritten)
        return askToReload();
    if (change == DiskChange::Deleted)
        m_prompts.message(this, u"'%1' has been deleted!"_qs.arg(filename));
    return false;
}

bool frmDocument::askToReload() {
    m_hex->finishTyping();
    const QString loss = isChange ? u"Unsaved changes will be lost."_qs : QString();
    const QPointer<frmDocument> alive(this);
    const std::optional<FileState> told = FileState::of(filename);
    const QString question = u"'%1' has been changed, do you want to reload it."_qs.arg(filename);
    const bool reloads = m_prompts.askYesNo(this, question, {}, loss);
    if (alive)
        m_fileState = told;
    return reloads;
}

bool frmDocument::IsChangedOnDisk() const {
    return !filename.isEmpty() && m_fileState && FileState::of(filename) && !m_fileState->isStillAt(filename);
}

void frmDocument::ChangeToReadOnly() {
    isReadOnly = !isReadOnly;
    setLocked(isReadOnly);
    const DocumentIcon byChange = isChange ? ChangedIcon : NormalIcon;
    SetDocIcon(isReadOnly ? ReadOnlyIcon : byChange);
}

bool frmDocument::Locked() const {
    return visibleView().Locked();
}

void frmDocument::setLocked(bool locked) {
    const bool before = Locked();
    for (DocumentView* view : m_views)
        view->setLocked(locked);
    if (Locked() != before)
        Q_EMIT FileChange(this);
}

bool frmDocument::DocEnabled() const {
    return m_text->isEnabledTo(this);
}

void frmDocument::setDocEnabled(bool enabled) {
    m_text->setEnabled(enabled);
}

QString frmDocument::GetCursorPos() const {
    return visibleView().GetCursorPos();
}

QString frmDocument::limitations() const {
    return visibleView().limitations();
}

void frmDocument::SetDocIcon(int icon) {
    if (icon < NormalIcon || icon > ReadOnlyIcon)
        return;
    m_icon = icon;
    if (const QIcon picture = Icons::named(IconNames[static_cast<size_t>(icon)]); !picture.isNull())
        setWindowIcon(picture);
}

DocumentView& frmDocument::viewFor(bool text) const {
    return text ? static_cast<DocumentView&>(*m_text) : *m_hex;
}

DocumentView& frmDocument::visibleView() const {
    return viewFor(TextEdit());
}

/// In hex mode without bytes a save writes the text that waits in the text view, if there is one.
DocumentView& frmDocument::savedView() const {
    const bool textWaits = !TextEdit() && !m_hex->hasContent() && m_text->hasContent();
    return viewFor(TextEdit() || textWaits);
}

/// The document has the focus while views are shown and hidden, so that none of them passes it to another widget.
void frmDocument::bringUp(DocumentView& chosen) {
    const bool holdsFocus = isAncestorOf(window()->focusWidget());
    setFocusProxy(nullptr);
    if (holdsFocus)
        setFocus();
    for (DocumentView* view : m_views)
        view->viewWidget()->setVisible(view == &chosen);
    chosen.viewWidget()->raise();
    setFocusProxy(chosen.viewWidget());
    if (holdsFocus)
        chosen.viewWidget()->setFocus();
}

void frmDocument::MarkChanged() {
    m_isUntouchedRecovery = false;
    if (!isChange) {
        SetDocIcon(ChangedIcon);
        isChange = true;
        Q_EMIT FileChange(this);
    }
    Q_EMIT DocChange(this);
    if (TextEdit()) {
        m_positionReport.edited(m_text->caretPlace());
        Q_EMIT PositionChange(this);
    }
    isNew = false;
}

void frmDocument::closeEvent(QCloseEvent* event) {
    if (m_closeGreyed || m_loads > 0 || m_life == Life::Unloading) {
        event->ignore();
        return;
    }
    if (m_life == Life::Open)
        unload();
    event->accept();
}

void frmDocument::unload() {
    const QPointer<frmDocument> alive(this);
    m_hex->finishTyping();
    m_life = Life::Unloading;
    gParent->DocClose(this);
    if (!alive)
        return;
    gParent->DelTab(this);
    if (alive)
        m_life = Life::Unloaded;
}
