#include "properties/ucMarco.h"

#include "keys/HotKeys.h"
#include "keys/MacroStore.h"
#include "settings/Settings.h"
#include "widgets/Prompts.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QTreeWidget>

namespace {

enum Column { Name, Key };

constexpr int NameWidth = 180;
constexpr QSize ListSize(340, 200);

QString displayOf(int n) {
    return QString::number(n) + QLatin1String("Display");
}

QString descriptionOf(int n) {
    return QString::number(n) + QLatin1String("Desc");
}

int slotOf(const QTreeWidgetItem& row) {
    return row.data(Name, Qt::UserRole).toString().toInt();
}

}  // namespace

ucMarco::ucMarco(const MacroPanelServices& services, QWidget* parent)
    : QWidget(parent),
      m_services(services),
      m_list(new QTreeWidget),
      m_id(new QLineEdit(this)),
      m_display(new QCheckBox(tr("Display in &Marco Menu"))) {
    setObjectName(u"ucMarco1"_qs);
    m_list->setObjectName(u"ListView1"_qs);
    m_list->setAccessibleName(u"Available Marco(s)"_qs);
    m_list->setRootIsDecorated(false);
    m_list->setAllColumnsShowFocus(true);
    m_list->setHeaderLabels({tr("Name"), tr("Hot Key")});
    m_list->header()->resizeSection(Name, NameWidth);
    m_list->setMinimumSize(ListSize);
    m_id->setObjectName(u"txtID"_qs);
    m_id->hide();
    m_display->setObjectName(u"chkDisplay"_qs);
    m_delete = addButton(u"cmdDelete"_qs, tr("&Delete"), &ucMarco::deleteChosen);
    m_reset = addButton(u"cmdReset"_qs, tr("&Reset"), &ucMarco::reset);
    m_reset->setToolTip(tr("Resets all hot keys, and so deletes all macros"));
    m_help = addButton(u"cmdHelp"_qs, tr("&Help"), &ucMarco::help);
    layOut();
    connect(m_list, &QTreeWidget::currentItemChanged, this, &ucMarco::selectRow);
    connect(m_list, &QTreeWidget::itemChanged, this, &ucMarco::takeRow);
    connect(m_name, &QLineEdit::textChanged, this, &ucMarco::renameRow);
    connect(m_display, &QCheckBox::toggled, this, &ucMarco::displayRow);
    LoadMacro();
}

QString ucMarco::ResetQuestion() {
    return u"Reset all hot keys will delete all marcos, do you want to reset all hot keys ?"_qs;
}

QPushButton* ucMarco::addButton(const QString& name, const QString& caption, void (ucMarco::*act)()) {
    auto* button = new QPushButton(caption);
    button->setObjectName(name);
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, act);
    return button;
}

QLineEdit* ucMarco::addField(const QString& name, const QString& caption, QVBoxLayout& column) {
    auto* field = new QLineEdit;
    field->setObjectName(name);
    auto* label = new QLabel(caption);
    label->setBuddy(field);
    column.addWidget(label);
    column.addWidget(field);
    return field;
}

void ucMarco::layOut() {
    auto* frame = new QGroupBox(u" Available Marco(s) "_qs);
    auto* inner = new QVBoxLayout(frame);
    inner->addWidget(m_list);
    auto* column = new QVBoxLayout;
    m_name = addField(u"txtName"_qs, tr("&Name:"), *column);
    m_key = addField(u"txtKey"_qs, tr("Hot &key:"), *column);
    m_key->setReadOnly(true);
    column->addWidget(m_display);
    column->addStretch(1);
    column->addWidget(m_delete);
    column->addWidget(m_reset);
    column->addWidget(m_help);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(frame, 1);
    row->addLayout(column);
}

void ucMarco::LoadMacro() {
    {
        const QScopedValueRollback filling(m_filling, true);
        m_list->clear();
        for (int n = 1; n <= MacroStore::Slots; ++n)
            addRow(n);
        m_list->setCurrentItem(m_list->topLevelItem(0));
    }
    enableFields(m_list->topLevelItemCount() > 0);
    selectRow();
}

void ucMarco::addRow(int n) {
    const QString hotKey = m_services.hotKeys.HotKeyText(QString::number(n));
    if (hotKey.isEmpty())
        return;
    auto* row = new QTreeWidgetItem({m_services.settings.forDialog(descriptionOf(n)), hotKey});
    row->setData(Name, Qt::UserRole, QString::number(n));
    const bool display = m_services.settings.forDialog(displayOf(n)) == QLatin1String("1");
    row->setCheckState(Name, display ? Qt::Checked : Qt::Unchecked);
    m_list->addTopLevelItem(row);
}

void ucMarco::enableFields(bool on) {
    for (QWidget* field : {static_cast<QWidget*>(m_name), static_cast<QWidget*>(m_display),
                           static_cast<QWidget*>(m_delete), static_cast<QWidget*>(m_list)})
        field->setEnabled(on);
}

void ucMarco::selectRow() {
    const QScopedValueRollback filling(m_filling, true);
    const QTreeWidgetItem* row = m_list->currentItem();
    m_name->setText(row == nullptr ? QString() : row->text(Name));
    m_key->setText(row == nullptr ? QString() : row->text(Key));
    m_id->setText(row == nullptr ? QString() : row->data(Name, Qt::UserRole).toString());
    m_display->setChecked(row != nullptr && row->checkState(Name) == Qt::Checked);
}

void ucMarco::renameRow(const QString& name) {
    if (QTreeWidgetItem* row = m_list->currentItem(); row != nullptr && !m_filling)
        row->setText(Name, name);
}

void ucMarco::displayRow(bool display) {
    if (QTreeWidgetItem* row = m_list->currentItem(); row != nullptr && !m_filling)
        row->setCheckState(Name, display ? Qt::Checked : Qt::Unchecked);
}

/// Called when a row has changed, either through the fields or by its check box.
void ucMarco::takeRow(QTreeWidgetItem* row) {
    if (m_filling)
        return;
    if (row == m_list->currentItem()) {
        const QScopedValueRollback filling(m_filling, true);
        m_display->setChecked(row->checkState(Name) == Qt::Checked);
    }
    StoreMacroRow(*row);
    Q_EMIT Changed();
}

void ucMarco::StoreMacroRow(const QTreeWidgetItem& row) {
    const int n = slotOf(row);
    m_services.settings.write(displayOf(n), QString::number(row.checkState(Name) == Qt::Checked ? 1 : 0));
    m_services.settings.write(descriptionOf(n), row.text(Name));
    Q_EMIT UpdateMacroMenu();
}

void ucMarco::deleteChosen() {
    const QTreeWidgetItem* row = m_list->currentItem();
    if (row == nullptr)
        return;
    const int n = slotOf(*row);
    if (!m_services.prompts.askYesNo(this, u"Delete macro "_qs + row->text(Name)))
        return;
    m_services.macros.DeleteMacro(n);
    LoadMacro();
    Q_EMIT UpdateMacroMenu();
}

void ucMarco::reset() {
    if (!m_services.prompts.askYesNo(this, ResetQuestion()))
        return;
    m_services.macros.ResetHotKeys();
    LoadMacro();
    Q_EMIT UpdateMacroMenu();
}

void ucMarco::help() {
    Q_EMIT helpWanted(u"macro.html"_qs);
}

void ucMarco::SaveProp() {
    Q_EMIT UpdateMacroMenu();
}
