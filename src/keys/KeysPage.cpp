#include "keys/KeysPage.h"

#include "editor/control/CommandNumbers.h"
#include "keys/KeyNames.h"
#include "keys/MacroStore.h"
#include "keys/MenuKeys.h"
#include "keys/StrokeEdit.h"

#include <QAccessible>
#include <QComboBox>
#include <QGridLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeWidget>

#include <array>

namespace {

enum Column { Name, Keys };

constexpr int NameWidth = 220;
constexpr int ListWidth = 420;
constexpr int VerdictLines = 3;

QLabel* labelFor(QWidget& field, const QString& caption) {
    auto* label = new QLabel(caption);
    label->setBuddy(&field);
    return label;
}

}  // namespace

KeysPage::KeysPage(RegistryStore& registry, HotKeys& hotKeys, const MacroStore& macros, QWidget& control)
    : m_registry(registry),
      m_hotKeys(hotKeys),
      m_edited(hotKeys),
      m_macros(macros),
      m_control(&control),
      m_filter(new QLineEdit),
      m_list(new QTreeWidget),
      m_present(new QComboBox),
      m_new(new StrokeEdit),
      m_verdict(new QLabel) {
    setObjectName(u"KeysPage"_qs);
    m_filter->setObjectName(u"txtFilter"_qs);
    m_filter->setClearButtonEnabled(true);
    m_list->setObjectName(u"lvKeys"_qs);
    m_list->setAccessibleName(tr("Commands and their keys"));
    m_list->setRootIsDecorated(false);
    m_list->setHeaderLabels({tr("Command"), tr("Keys")});
    m_list->setMinimumWidth(ListWidth);
    m_list->header()->resizeSection(Name, NameWidth);
    m_present->setObjectName(u"cmbPresent"_qs);
    m_new->setObjectName(u"txtNewKey"_qs);
    m_verdict->setObjectName(u"lblVerdict"_qs);
    m_verdict->setWordWrap(true);
    m_verdict->setAlignment(Qt::AlignTop);
    m_verdict->setMinimumHeight(VerdictLines * m_verdict->fontMetrics().lineSpacing());
    m_add = addButton(u"cmdAddKey"_qs, tr("&Add"), &KeysPage::add);
    m_remove = addButton(u"cmdRemoveKey"_qs, tr("Re&move"), &KeysPage::remove);
    m_reset = addButton(u"cmdResetKey"_qs, tr("Re&set"), &KeysPage::reset);
    m_reset->setToolTip(tr("Gives this command the keys it had at first"));
    m_resetAll = addButton(u"cmdResetAllKeys"_qs, tr("Reset a&ll"), &KeysPage::resetAll);
    m_resetAll->setToolTip(tr("Gives all commands the keys they had at first; macros keep theirs"));
    layOut();
    fill();
    connect(m_filter, &QLineEdit::textChanged, this, &KeysPage::filter);
    connect(m_list, &QTreeWidget::currentItemChanged, this, &KeysPage::select);
    connect(m_new, &StrokeEdit::hotKeyChanged, this, &KeysPage::judge);
    connect(m_new, &StrokeEdit::refused, this, [this] {
        tell({false, tr("A hot key is made of letters, digits, and keys such as F1, Home or Insert.")});
    });
    m_list->setCurrentItem(m_list->topLevelItem(0));
    select();
}

QPushButton* KeysPage::addButton(const QString& name, const QString& caption, void (KeysPage::*act)()) {
    auto* button = new QPushButton(caption);
    button->setObjectName(name);
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, act);
    return button;
}

void KeysPage::layOut() {
    auto* grid = new QGridLayout(this);
    grid->addWidget(labelFor(*m_filter, tr("S&how:")), 0, 0);
    grid->addWidget(m_filter, 0, 1, 1, 2);
    grid->addWidget(m_list, 1, 0, 1, 3);
    grid->addWidget(labelFor(*m_present, tr("&Present keys:")), 2, 0);
    grid->addWidget(m_present, 2, 1);
    grid->addWidget(m_remove, 2, 2);
    grid->addWidget(labelFor(*m_new, tr("Ne&w key:")), 3, 0);
    grid->addWidget(m_new, 3, 1);
    grid->addWidget(m_add, 3, 2);
    grid->addWidget(m_verdict, 4, 0, 1, 3);
    auto* resets = new QHBoxLayout;
    resets->addStretch(1);
    resets->addWidget(m_reset);
    resets->addWidget(m_resetAll);
    grid->addLayout(resets, 5, 0, 1, 3);
    grid->setRowStretch(1, 1);
    grid->setColumnStretch(1, 1);
}

/// Macros without a hot key do not exist for the user, so they are not listed.
void KeysPage::fill() {
    for (const Command::Info& row : Command::all()) {
        if (row.kind == Command::Kind::Sets)
            continue;
        if (row.kind == Command::Kind::Plays && m_edited.hotKeysOf(row.number).isEmpty())
            continue;
        auto* item = new QTreeWidgetItem({commandName(row.number, m_macros)});
        item->setData(Name, Qt::UserRole, row.number);
        m_list->addTopLevelItem(item);
    }
    showKeys();
}

void KeysPage::showKeys() {
    for (int i = 0; i < m_list->topLevelItemCount(); ++i) {
        QTreeWidgetItem* item = m_list->topLevelItem(i);
        QStringList texts;
        for (const HotKey& hotKey : m_edited.hotKeysOf(item->data(Name, Qt::UserRole).toInt()))
            texts << KeyNames::text(hotKey);
        item->setText(Keys, texts.join(u"; "_qs));
    }
}

void KeysPage::filter(const QString& words) {
    for (int i = 0; i < m_list->topLevelItemCount(); ++i) {
        QTreeWidgetItem* item = m_list->topLevelItem(i);
        const bool fits = item->text(Name).contains(words, Qt::CaseInsensitive) ||
                          item->text(Keys).contains(words, Qt::CaseInsensitive);
        item->setHidden(!fits);
    }
}

int KeysPage::chosen() const {
    const QTreeWidgetItem* item = m_list->currentItem();
    return item == nullptr ? 0 : item->data(Name, Qt::UserRole).toInt();
}

void KeysPage::select() {
    m_present->clear();
    for (const HotKey& hotKey : m_edited.hotKeysOf(chosen()))
        m_present->addItem(KeyNames::text(hotKey), QVariant::fromValue(hotKey));
    m_present->setEnabled(m_present->count() > 0);
    m_remove->setEnabled(m_present->count() > 0);
    m_reset->setEnabled(chosen() != 0);
    m_new->setHotKey({});
}

HotKeyVerdict KeysPage::verdictOf(const HotKey& hotKey) const {
    const auto menuCommand = [this](const HotKeyStroke& stroke) {
        return m_control ? MenuKeys::commandOf(stroke, *m_control) : QString();
    };
    return HotKeyVerdict::of(hotKey, chosen(), m_edited, m_macros, menuCommand);
}

void KeysPage::judge(const HotKey& hotKey) {
    tell(verdictOf(hotKey));
}

QString KeysPage::lossSentence() const {
    QStringList lost;
    for (int n = 1; n <= Command::Macros; ++n) {
        const int command = Command::MacroBase + n;
        if (!m_hotKeys.hotKeysOf(command).isEmpty() && m_edited.hotKeysOf(command).isEmpty())
            lost << u"\"%1\""_qs.arg(commandName(command, m_macros));
    }
    return lost.isEmpty() ? QString() : tr("OK will delete %1: no hot key is left.").arg(lost.join(u", "_qs));
}

void KeysPage::tell(const HotKeyVerdict& verdict) {
    m_add->setEnabled(verdict.accepted && chosen() != 0);
    const QString sentence = verdict.sentence.isEmpty() ? lossSentence() : verdict.sentence;
    m_verdict->setText(sentence);
    m_new->setAccessibleDescription(sentence);
    if (sentence.isEmpty())
        return;
    QAccessibleEvent told(m_verdict, QAccessible::Alert);
    QAccessible::updateAccessibility(&told);
}

void KeysPage::add() {
    m_edited.bind(chosen(), m_new->hotKey());
    changed();
}

void KeysPage::remove() {
    m_edited.remove(m_present->currentData().value<HotKey>());
    changed();
}

void KeysPage::reset() {
    m_edited.reset(chosen());
    changed();
}

void KeysPage::resetAll() {
    const HotKeys before = m_edited;
    m_edited.reset();
    for (const HotKeys::Binding& binding : before.bindings()) {
        const Command::Info* row = Command::infoOf(binding.command);
        if (row != nullptr && row->kind == Command::Kind::Plays)
            m_edited.bind(binding.command, binding.hotKey);
    }
    changed();
}

void KeysPage::changed() {
    showKeys();
    select();
}

void KeysPage::apply() {
    if (m_edited == m_hotKeys)
        return;
    m_hotKeys = m_edited;
    m_hotKeys.save(m_registry);
    Q_EMIT applied();
}
