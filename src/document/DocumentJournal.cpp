#include "document/DocumentJournal.h"

#include "editor/control/ControlFile.h"
#include "editor/control/TextControl.h"
#include "recovery/journals/FoundJournal.h"
#include "recovery/journals/Journal.h"
#include "recovery/journals/Journals.h"

#include <chrono>
#include <string>
#include <utility>

namespace {

/// From an edit until the journal is asked whether it needs the whole text: by then its base was examined.
constexpr std::chrono::milliseconds LookDelay(2'500);

}  // namespace

DocumentJournal::DocumentJournal(TextControl& control, Journals& journals, Describe describe)
    : m_control(control),
      m_journals(journals),
      m_describe(std::move(describe)),
      m_isBaseHeld(control.heldText().length() == 0) {
    m_lookTimer.setSingleShot(true);
    m_lookTimer.setInterval(LookDelay);
    QObject::connect(&m_lookTimer, &QTimer::timeout, &m_lookTimer, [this] { look(); });
    control.edits().observe(this);
}

DocumentJournal::~DocumentJournal() {
    m_control.edits().observe(nullptr);
}

void DocumentJournal::giveUp() {
    m_control.edits().settle();
    end();
    m_isBaseHeld = false;
}

void DocumentJournal::goOn(FoundJournal& found) {
    const JointList& joints = m_control.map().joints();
    m_journal = found.continueAs(joints.kind(), joints.offsets());
}

void DocumentJournal::aboutToEdit() {
    if (m_journal == nullptr)
        begin();
    else if (m_journal->needsWhole())
        passWhole();
}

void DocumentJournal::inserted(qint64 at, std::string_view bytes) {
    if (m_journal == nullptr)
        return;
    m_journal->insert(at, bytes);
    lookLater();
}

void DocumentJournal::removed(qint64 at, qint64 length) {
    if (m_journal == nullptr)
        return;
    m_journal->remove(at, length);
    lookLater();
}

void DocumentJournal::jointKindChosen(JointKind kind) {
    if (m_journal != nullptr)
        m_journal->setJointKind(kind);
}

void DocumentJournal::loaded() {
    end();
    m_isBaseHeld = true;
}

void DocumentJournal::saved() {
    end();
    m_isBaseHeld = true;
}

void DocumentJournal::begin() {
    std::optional<About> about = m_describe();
    if (!about) {
        m_isBaseHeld = false;
        return;
    }
    const TextOrigin& origin = m_control.file().origin();
    const JointList& joints = m_control.map().joints();
    JournalBase base;
    base.path = origin.path;
    base.caption = std::move(about->caption);
    base.state = origin.state;
    base.format = origin.format;
    base.lineEndMode = m_control.file().lineEndMode();
    base.language = std::move(about->language);
    base.jointKind = joints.kind();
    base.joints = joints.offsets();
    base.heldLength = m_control.heldText().length();
    // A file that was gone at once after it was read or written is no base.
    const bool hasBase = m_isBaseHeld && (origin.state || origin.path.isEmpty());
    if (!hasBase) {
        base.jointKind = JointKind::None;
        base.joints.clear();
        base.heldLength = -1;
    }
    m_journal = m_journals.begin(std::move(base));
    if (!hasBase)
        passWhole();
}

void DocumentJournal::end() {
    if (m_journal != nullptr)
        m_journal->discard();
    m_journal.reset();
    m_lookTimer.stop();
}

void DocumentJournal::passWhole() {
    const HeldText& text = m_control.heldText();
    const JointList& joints = m_control.map().joints();
    std::string held;
    held.reserve(static_cast<std::size_t>(text.length()));
    text.forEachRun(0, text.length(), [&held](std::string_view run) { held += run; });
    const bool isListed = joints.kind() == JointKind::Listed;
    m_journal->setWhole(std::move(held), joints.kind(), isListed ? joints.offsets() : std::vector<qint64>());
}

/// The journal learns only some time after an edit that its base cannot be had any more; by then there may be no
/// further edit that would ask it.
void DocumentJournal::lookLater() {
    m_isLookDue = m_lookTimer.isActive();
    if (!m_isLookDue)
        m_lookTimer.start();
}

void DocumentJournal::look() {
    m_control.edits().settle();
    if (m_journal != nullptr && m_journal->needsWhole())
        passWhole();
    else if (m_journal != nullptr && m_isLookDue)
        m_lookTimer.start();
    m_isLookDue = false;
}
