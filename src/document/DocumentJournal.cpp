#include "document/DocumentJournal.h"

#include "document/TextCopy.h"
#include "editor/control/ControlFile.h"
#include "editor/control/TextControl.h"
#include "recovery/journals/FoundJournal.h"
#include "recovery/journals/Journal.h"
#include "recovery/journals/Journals.h"

#include <algorithm>
#include <new>
#include <string>
#include <utility>

namespace {

/// Bytes of the text that are copied at once: it takes a few milliseconds.
constexpr qint64 PartLength = 4LL * 1024 * 1024;

/// The offset into the held text of a byte of the text without joints.
qint64 heldOffset(const JointList& joints, qint64 plain) {
    std::size_t first = 0;
    std::size_t last = joints.count();
    while (first < last) {
        const std::size_t middle = first + (last - first) / 2;
        if (joints.offsetAt(middle) - static_cast<qint64>(middle) < plain)
            first = middle + 1;
        else
            last = middle;
    }
    return plain + static_cast<qint64>(first);
}

}  // namespace

DocumentJournal::DocumentJournal(TextControl& control, Journals& journals, Describe describe)
    : m_control(control),
      m_journals(journals),
      m_describe(std::move(describe)),
      m_isBaseHeld(control.heldText().length() == 0) {
    control.edits().observe(this);
    m_parts.callOnTimeout([this] { copyPart(); });
}

DocumentJournal::~DocumentJournal() {
    complete();
    m_control.edits().observe(nullptr);
}

void DocumentJournal::giveUp() {
    m_control.edits().settle();
    end();
    m_isBaseHeld = false;
}

void DocumentJournal::leave() {
    complete();
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

void DocumentJournal::noteFileChange() {
    m_control.edits().settle();
    if (m_copy == nullptr && m_journal != nullptr && (m_journal->needsWhole() || isBaseLost()))
        beginCopy();
}

void DocumentJournal::complete() {
    noteFileChange();
    while (m_copy != nullptr)
        copyPart();
}

void DocumentJournal::aboutToEdit() {
    if (m_copy != nullptr)
        return;
    if (m_journal == nullptr)
        begin();
    else if (m_journal->needsWhole())
        beginCopy();
}

/// While the text is copied the journal gets the edits too: if there is no memory for the copy, it lacks nothing.
void DocumentJournal::inserted(qint64 at, std::string_view bytes) {
    if (m_journal != nullptr)
        m_journal->insert(at, bytes);
    if (m_copy != nullptr)
        m_copy->inserted(at, bytes);
}

void DocumentJournal::removed(qint64 at, qint64 length) {
    if (m_journal != nullptr)
        m_journal->remove(at, length);
    if (m_copy != nullptr)
        m_copy->removed(at, length);
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
    if (hasBase) {
        base.textLength = m_control.heldText().length() - static_cast<qint64>(m_control.map().joints().count());
        return beginWith(std::move(base));
    }
    m_baseOfCopy = std::move(base);
    beginCopy();
}

void DocumentJournal::beginWith(JournalBase base) {
    m_journal = m_journals.begin(std::move(base));
    followNeeds();
}

void DocumentJournal::end() {
    endCopy();
    if (m_journal != nullptr)
        m_journal->discard();
    m_journal.reset();
}

void DocumentJournal::look() {
    m_control.edits().settle();
    if (m_copy == nullptr && m_journal != nullptr && m_journal->needsWhole())
        beginCopy();
}

/// Whether the journal starts from a file that is another one by now.
bool DocumentJournal::isBaseLost() const {
    const TextOrigin& origin = m_control.file().origin();
    return m_journal->dependsOnFile() && !(origin.state && origin.state->isStillAt(origin.path));
}

/// A small text is copied when this returns.
void DocumentJournal::beginCopy() {
    m_copy = std::make_unique<TextCopy>();
    m_parts.start(0);
    copyPart();
}

/// Without memory for the text it is tried again with the next edit.
void DocumentJournal::copyPart() {
    m_control.edits().settle();
    const qint64 from = heldOffset(m_control.map().joints(), m_copy->length());
    const qint64 end = m_control.heldText().length();
    const qint64 to = std::min(end, from + PartLength);
    try {
        std::string part;
        part.reserve(static_cast<std::size_t>(to - from));
        for (const std::string_view run : m_control.plainRuns(from, to))
            part += run;
        m_copy->append(std::move(part));
    } catch (const std::bad_alloc&) {
        return endCopy();
    }
    if (to == end)
        passCopy();
}

void DocumentJournal::endCopy() {
    m_parts.stop();
    m_copy.reset();
}

void DocumentJournal::passCopy() {
    if (m_journal == nullptr)
        beginWith(std::move(m_baseOfCopy));
    m_copy->passTo(*m_journal);
    endCopy();
}
