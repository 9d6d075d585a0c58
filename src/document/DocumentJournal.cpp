#include "document/DocumentJournal.h"

#include "editor/control/ControlFile.h"
#include "editor/control/TextControl.h"
#include "recovery/journals/FoundJournal.h"
#include "recovery/journals/Journal.h"
#include "recovery/journals/Journals.h"

#include <string>
#include <utility>

DocumentJournal::DocumentJournal(TextControl& control, Journals& journals, Describe describe)
    : m_control(control),
      m_journals(journals),
      m_describe(std::move(describe)),
      m_isBaseHeld(control.heldText().length() == 0) {
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

void DocumentJournal::leave() {
    m_control.edits().settle();
    m_journal.reset();
    giveUp();
}

void DocumentJournal::goOn(FoundJournal& found) {
    m_journal = found.continueAs();
    followNeeds();
}

/// The journal learns only some time after an edit that its base cannot be had any more; by then there may be no
/// further edit that would ask it.
void DocumentJournal::followNeeds() {
    m_journal->setWholeNeeded([this] {
        QMetaObject::invokeMethod(
            &m_looks, [this] { look(); }, Qt::QueuedConnection);
    });
}

void DocumentJournal::aboutToEdit() {
    if (m_journal == nullptr)
        begin();
    else if (m_journal->needsWhole())
        passWhole();
}

void DocumentJournal::inserted(qint64 at, std::string_view bytes) {
    if (m_journal != nullptr)
        m_journal->insert(at, bytes);
}

void DocumentJournal::removed(qint64 at, qint64 length) {
    if (m_journal != nullptr)
        m_journal->remove(at, length);
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
    JournalBase base;
    base.path = origin.path;
    base.caption = std::move(about->caption);
    base.state = origin.state;
    base.format = origin.format;
    base.lineEndMode = m_control.file().lineEndMode();
    base.language = std::move(about->language);
    // A file that was gone at once after it was read or written is no base.
    const bool hasBase = m_isBaseHeld && (origin.state || origin.path.isEmpty());
    if (hasBase)
        base.textLength = m_control.heldText().length() - static_cast<qint64>(m_control.map().joints().count());
    m_journal = m_journals.begin(std::move(base));
    followNeeds();
    if (!hasBase)
        passWhole();
}

void DocumentJournal::end() {
    if (m_journal != nullptr)
        m_journal->discard();
    m_journal.reset();
}

void DocumentJournal::passWhole() {
    const qint64 length = m_control.heldText().length();
    std::string text;
    text.reserve(static_cast<std::size_t>(length));
    for (const std::string_view run : m_control.plainRuns(0, length))
        text += run;
    m_journal->setWhole(std::move(text));
}

void DocumentJournal::look() {
    m_control.edits().settle();
    if (m_journal != nullptr && m_journal->needsWhole())
        passWhole();
}
