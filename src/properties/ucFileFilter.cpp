#include "properties/ucFileFilter.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QShortcut>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace {

enum Column { Description, Patterns };

constexpr int DescriptionWidth = 200;
constexpr QSize ListSize(340, 200);
constexpr int FieldWidth = 190;

}  // namespace

ucFileFilter::ucFileFilter(RegistryStore& store, QWidget* parent)
    : QWidget(parent), m_store(store), m_list(new QTreeWidget) {
    setObjectName(u"ucFileFilter1"_qs);
    layOut();
    connect(m_list, &QTreeWidget::currentItemChanged, this, &ucFileFilter::selectRow);
    connect(m_description, &QLineEdit::textChanged, this, &ucFileFilter::takeTexts);
    connect(m_patterns, &QLineEdit::textChanged, this, &ucFileFilter::takeTexts);
    auto* key = new QShortcut(QKeySequence::Delete, m_list);
    key->setContext(Qt::WidgetShortcut);
    connect(key, &QShortcut::activated, m_delete, &QPushButton::click);
    selectRow();
}

void ucFileFilter::layOut() {
    auto* column = new QVBoxLayout;
    QWidget* list = buildList();
    m_description = addField(u"txtDesc"_qs, tr("&Description:"), *column);
    m_patterns = addField(u"txtFilters"_qs, tr("&Wild Cards:"), *column);
    m_patterns->setPlaceholderText(tr("*.abc;*.abd"));
    column->addStretch(1);
    m_new = addButton(u"cmdNew"_qs, tr("&New"), &ucFileFilter::addNew);
    m_delete = addButton(u"cmdDelete"_qs, tr("Dele&te"), &ucFileFilter::removeChosen);
    m_up = addButton(u"cmdUp"_qs, tr("Move &Up"), &ucFileFilter::moveUp);
    m_down = addButton(u"cmdDown"_qs, tr("Mo&ve Down"), &ucFileFilter::moveDown);
    m_reset = addButton(u"cmdReset"_qs, tr("&Reset"), &ucFileFilter::reset);
    m_reset->setToolTip(tr("Puts the default list in place of this one"));
    for (QPushButton* button : {m_new, m_delete, m_up, m_down, m_reset})
        column->addWidget(button);
    auto* row = new QHBoxLayout(this);
    row->addWidget(list, 1);
    row->addLayout(column);
}

QWidget* ucFileFilter::buildList() {
    m_list->setObjectName(u"ListView1"_qs);
    m_list->setAccessibleName(tr("File name filters"));
    m_list->setRootIsDecorated(false);
    m_list->setUniformRowHeights(true);
    m_list->setAllColumnsShowFocus(true);
    m_list->setHeaderLabels({tr("Description"), tr("Filter")});
    m_list->header()->resizeSection(Description, DescriptionWidth);
    m_list->header()->setSectionsClickable(false);
    m_list->setMinimumSize(ListSize);
    auto* caption = new QLabel(tr("File na&me filters:"));
    caption->setBuddy(m_list);
    auto* both = new QWidget;
    auto* rows = new QVBoxLayout(both);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->addWidget(caption);
    rows->addWidget(m_list, 1);
    return both;
}

QLineEdit* ucFileFilter::addField(const QString& name, const QString& caption, QVBoxLayout& column) {
    auto* field = new QLineEdit;
    field->setObjectName(name);
    field->setMinimumWidth(FieldWidth);
    auto* label = new QLabel(caption);
    label->setBuddy(field);
    column.addWidget(label);
    column.addWidget(field);
    return field;
}

QPushButton* ucFileFilter::addButton(const QString& name, const QString& caption, void (ucFileFilter::*act)()) {
    auto* button = new QPushButton(caption);
    button->setObjectName(name);
    connect(button, &QPushButton::clicked, this, act);
    return button;
}

void ucFileFilter::InitValues() {
    m_filters.load(m_store);
    showList();
    m_changed = false;
}

void ucFileFilter::SaveProp() {
    if (m_changed)
        m_changed = !m_filters.save(m_store);
}

int ucFileFilter::chosen() const {
    return m_list->indexOfTopLevelItem(m_list->currentItem());
}

void ucFileFilter::showList() {
    {
        const QScopedValueRollback filling(m_filling, true);
        m_list->clear();
        for (const FilterList::Row& row : m_filters.rows())
            new QTreeWidgetItem(m_list, {row.description, row.patterns});
        m_list->setCurrentItem(m_list->topLevelItem(0));
    }
    selectRow();
}

void ucFileFilter::showRow(int row) {
    const FilterList::Row& shown = m_filters.rows().at(row);
    QTreeWidgetItem* item = m_list->topLevelItem(row);
    item->setText(Description, shown.description);
    item->setText(Patterns, shown.patterns);
}

/// Fills the fields from the chosen row, and enables what can be done with it.
void ucFileFilter::selectRow() {
    if (m_filling)
        return;
    const QScopedValueRollback filling(m_filling, true);
    const int row = chosen();
    const FilterList::Row shown = row < 0 ? FilterList::Row() : m_filters.rows().at(row);
    m_description->setText(shown.description);
    m_patterns->setText(shown.patterns);
    for (QWidget* each :
         {static_cast<QWidget*>(m_description), static_cast<QWidget*>(m_patterns), static_cast<QWidget*>(m_delete)})
        each->setEnabled(row >= 0);
    m_up->setEnabled(row > 0);
    m_down->setEnabled(row >= 0 && row + 1 < m_filters.rows().size());
}

void ucFileFilter::takeTexts() {
    const int row = chosen();
    if (m_filling || row < 0)
        return;
    m_filters.setDescription(row, m_description->text());
    m_filters.setPatterns(row, m_patterns->text());
    showRow(row);
    alter();
}

void ucFileFilter::addNew() {
    m_filters.append();
    const FilterList::Row& added = m_filters.rows().constLast();
    m_list->setCurrentItem(new QTreeWidgetItem(m_list, {added.description, added.patterns}));
    m_description->setFocus();
    m_description->selectAll();
    alter();
}

/// The row that takes the place of the deleted one is selected, or else the one above it.
void ucFileFilter::removeChosen() {
    const int row = chosen();
    if (row < 0)
        return;
    {
        const QScopedValueRollback filling(m_filling, true);
        m_filters.remove(row);
        delete m_list->takeTopLevelItem(row);
        m_list->setCurrentItem(m_list->topLevelItem(std::min(row, m_list->topLevelItemCount() - 1)));
    }
    selectRow();
    alter();
}

void ucFileFilter::moveUp() {
    moveTo(chosen() - 1);
}

void ucFileFilter::moveDown() {
    moveTo(chosen() + 1);
}

void ucFileFilter::moveTo(int row) {
    const int from = chosen();
    if (from < 0 || row < 0 || row >= m_filters.rows().size())
        return;
    m_filters.swap(from, row);
    showRow(from);
    showRow(row);
    m_list->setCurrentItem(m_list->topLevelItem(row));
    alter();
}

void ucFileFilter::reset() {
    m_filters.reset();
    showList();
    alter();
}

void ucFileFilter::alter() {
    m_changed = true;
    Q_EMIT Changed();
}
