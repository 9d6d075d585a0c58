#include "keys/MacroDialog.h"

#include "editor/control/CommandNumbers.h"
#include "keys/HotKeys.h"
#include "keys/MacroStore.h"
#include "keys/MenuKeys.h"
#include "keys/StrokeEdit.h"
#include "platform/SystemError.h"
#include "widgets/Prompts.h"

#include <QAccessible>
#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

/// The dialog lists at most this many steps.
constexpr qsizetype MostRows = 1000;
constexpr qsizetype LongestText = 60;
constexpr int VerdictLines = 3;
constexpr int ListWidth = 380;

QString shortened(QString text) {
    text.replace(u'\n', QChar(0x21B5)).replace(u'\t', QChar(0x2192));
    return text.size() <= LongestText ? text : text.left(LongestText) + QChar(0x2026);
}

QString rowOf(const MacroStep& step) {
    if (step.kind == MacroStep::Kind::Text)
        return MacroDialog::tr("Type \"%1\"").arg(shortened(step.text));
    const QString caption = Command::captionOf(step.command);
    return step.text.isEmpty() ? caption : caption + u": "_qs + shortened(step.text);
}

}  // namespace

MacroDialog::MacroDialog(Prompts& prompts, HotKeys& hotKeys, MacroStore& macros, const QList<MacroStep>& steps,
                         int missed, QWidget& control)
    : QDialog(&control),
      m_prompts(prompts),
      m_hotKeys(hotKeys),
      m_macros(macros),
      m_steps(steps),
      m_control(&control),
      m_list(new QListWidget),
      m_hotKey(new StrokeEdit),
      m_name(new QLineEdit),
      m_display(new QCheckBox(tr("&Display in Marco Menu"))),
      m_verdict(new QLabel) {
    setObjectName(u"MacroDialog"_qs);
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(tr("Record Marco"));
    m_list->setObjectName(u"lstSteps"_qs);
    m_list->setAccessibleName(tr("Recorded"));
    m_list->setMinimumWidth(ListWidth);
    m_list->setSelectionMode(QAbstractItemView::NoSelection);
    m_hotKey->setObjectName(u"txtHotKey"_qs);
    m_name->setObjectName(u"txtName"_qs);
    m_display->setObjectName(u"chkDisplay"_qs);
    m_verdict->setObjectName(u"lblVerdict"_qs);
    m_verdict->setWordWrap(true);
    m_verdict->setAlignment(Qt::AlignTop);
    m_verdict->setMinimumHeight(VerdictLines * m_verdict->fontMetrics().lineSpacing());
    auto* recorded = new QLabel(tr("&Recorded:"));
    recorded->setBuddy(m_list);
    auto* note =
        new QLabel(tr("Left out, and not played, is what was done with the mouse, with Undo, or by commands of "
                      "the program that are none of the text view: %1 in all.")
                       .arg(missed));
    note->setObjectName(u"lblMissed"_qs);
    note->setWordWrap(true);
    note->setVisible(missed > 0);

    auto* buttons = new QDialogButtonBox;
    m_keep = buttons->addButton(tr("&Keep"), QDialogButtonBox::AcceptRole);
    m_keep->setObjectName(u"cmdKeep"_qs);
    m_keep->setDefault(true);
    QPushButton* cancel = buttons->addButton(QDialogButtonBox::Cancel);
    cancel->setObjectName(u"cmdCancel"_qs);
    connect(buttons, &QDialogButtonBox::accepted, this, &MacroDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &MacroDialog::reject);

    auto* form = new QFormLayout;
    form->addRow(tr("&Hot key:"), m_hotKey);
    form->addRow(m_verdict);
    form->addRow(tr("&Name:"), m_name);
    form->addRow(m_display);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(recorded);
    layout->addWidget(m_list, 1);
    layout->addWidget(note);
    layout->addLayout(form);
    layout->addWidget(buttons);
    fillSteps();
    connect(m_hotKey, &StrokeEdit::hotKeyChanged, this, &MacroDialog::judge);
    connect(m_hotKey, &StrokeEdit::refused, this, [this] {
        tell({false, tr("A hot key is made of letters, digits, and keys such as F1, Home or Insert.")});
    });
    judge({});
    m_hotKey->setFocus();
}

void MacroDialog::fillSteps() {
    for (const MacroStep& step : m_steps.first(std::min(m_steps.size(), MostRows)))
        m_list->addItem(rowOf(step));
    if (m_steps.size() > MostRows)
        m_list->addItem(tr("and %1 more").arg(m_steps.size() - MostRows));
}

std::optional<int> MacroDialog::slotOf(const HotKey& hotKey) const {
    for (int n = 1; n <= MacroStore::Slots; ++n) {
        if (m_hotKeys.hotKeysOf(Command::MacroBase + n).contains(hotKey))
            return n;
    }
    return std::nullopt;
}

HotKeyVerdict MacroDialog::verdictOf(const HotKey& hotKey) const {
    if (hotKey.first.isEmpty())
        return {false, tr("Press the hot key that is to play the macro.")};
    const auto menuCommand = [this](const HotKeyStroke& stroke) {
        return m_control ? MenuKeys::commandOf(stroke, *m_control) : QString();
    };
    const auto slot = slotOf(hotKey);
    const int command = Command::MacroBase + slot.value_or(m_macros.freeSlot().value_or(0));
    HotKeyVerdict verdict = HotKeyVerdict::of(hotKey, command, m_hotKeys, m_macros, menuCommand);
    if (verdict.accepted && slot) {
        verdict.sentence = tr("The macro \"%1\" has this hot key. It will be replaced.")
                               .arg(commandName(Command::MacroBase + *slot, m_macros));
    }
    if (verdict.accepted && !slot && !m_macros.freeSlot())
        return {false, tr("There are ten macros already. Choose the hot key of the one to replace.")};
    return verdict;
}

void MacroDialog::judge(const HotKey& hotKey) {
    tell(verdictOf(hotKey));
}

void MacroDialog::tell(const HotKeyVerdict& verdict) {
    m_keep->setEnabled(verdict.accepted);
    m_verdict->setText(verdict.sentence);
    m_hotKey->setAccessibleDescription(verdict.sentence);
    QAccessibleEvent told(m_verdict, QAccessible::Alert);
    QAccessible::updateAccessibility(&told);
}

void MacroDialog::nameSlot(int slot, bool isReplaced) {
    if (!isReplaced || !m_name->text().isEmpty())
        m_macros.setNameOf(slot, m_name->text());
    if (!isReplaced || m_display->isChecked())
        m_macros.setDisplayOf(slot, m_display->isChecked());
}

void MacroDialog::accept() {
    const HotKey hotKey = m_hotKey->hotKey();
    if (!verdictOf(hotKey).accepted)
        return;
    const auto replaced = slotOf(hotKey);
    const int slot = replaced.value_or(m_macros.freeSlot().value_or(0));
    if (!m_macros.setMacro(slot - 1, Macro(m_steps)))
        return tell({false, tr("The macro is too long to be kept.")});
    if (!replaced)
        m_hotKeys.bind(Command::MacroBase + slot, hotKey);
    nameSlot(slot, replaced.has_value());
    const QPointer<MacroDialog> alive(this);
    Q_EMIT kept();
    saveSlot(slot);
    if (alive)
        QDialog::accept();
}

void MacroDialog::saveSlot(int slot) {
    if (const SystemError error = m_macros.saveSlot(slot)) {
        m_prompts.message(this, tr("The macro can be played until the program ends, but it could not be saved.\n%1")
                                    .arg(error.description));
    }
}

void MacroDialog::reject() {
    const QPointer<MacroDialog> alive(this);
    if (m_prompts.askYesNo(this, tr("Drop the recorded steps?")) && alive)
        QDialog::reject();
}
