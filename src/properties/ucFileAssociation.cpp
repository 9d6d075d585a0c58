#include "properties/ucFileAssociation.h"

#include "settings/desktop/ShellIntegration.h"
#include "settings/registry/modRegistry.h"
#include "widgets/Prompts.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QShortcut>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {

enum Column { Extension, Description };

constexpr int ExtensionWidth = 90;
constexpr int DigitsOfKey = 3;
constexpr QSize ListSize(340, 200);
const QString Section = u"AssociatedFiles"_qs;
const QString ExtensionValue = u"extension"_qs;
const QString DescriptionValue = u"desc"_qs;

constexpr const char* OfferedExtensions[] = {
    ".asm", ".bas",  ".bat", ".c",   ".cfm", ".cpp", ".h",  ".hpp", ".htm", ".html", ".inf", ".ini",
    ".jav", ".java", ".jsp", ".log", ".pas", ".php", ".pl", ".reg", ".sql", ".tcl",  ".txt",
};

QString sectionKey() {
    return programKey() + u'/' + Section;
}

QString withoutDot(const QString& extension) {
    return extension.startsWith(u'.') ? extension.mid(1) : extension;
}

}  // namespace

ucFileAssociation::ucFileAssociation(ShellIntegration& desktop, RegistryStore& store, Prompts& prompts, QWidget* parent)
    : QWidget(parent), m_desktop(desktop), m_store(store), m_prompts(prompts) {
    setObjectName(u"ucFileAssociation1"_qs);
    auto* columns = new QHBoxLayout;
    columns->addWidget(buildList(), 1);
    columns->addWidget(buildFields());
    auto* note = new QLabel(
        tr("Explorer or File Manager will automatically start Quillmark to edit files with the extensions that you set "
           "here."));
    note->setObjectName(u"lblNote"_qs);
    note->setWordWrap(true);
    auto* rows = new QVBoxLayout(this);
    rows->addLayout(columns, 1);
    rows->addWidget(note);
    connect(m_list, &QTreeWidget::currentItemChanged, this, &ucFileAssociation::selectRow);
    connect(m_extension, &QComboBox::editTextChanged, this, &ucFileAssociation::takeExtension);
    connect(m_description, &QLineEdit::textChanged, this, &ucFileAssociation::takeDescription);
    auto* key = new QShortcut(QKeySequence::Delete, m_list);
    key->setContext(Qt::WidgetShortcut);
    connect(key, &QShortcut::activated, m_delete, &QPushButton::click);
    enableDelete();
}

QWidget* ucFileAssociation::buildList() {
    m_list = new QTreeWidget;
    m_list->setObjectName(u"ListView1"_qs);
    m_list->setAccessibleName(tr("Association"));
    m_list->setRootIsDecorated(false);
    m_list->setUniformRowHeights(true);
    m_list->setAllColumnsShowFocus(true);
    m_list->setHeaderLabels({tr("Extension"), tr("Description")});
    m_list->header()->resizeSection(Extension, ExtensionWidth);
    m_list->header()->setSectionsClickable(false);
    m_list->setMinimumSize(ListSize);
    auto* caption = new QLabel(tr("A&ssociation:"));
    caption->setBuddy(m_list);
    auto* both = new QWidget;
    auto* rows = new QVBoxLayout(both);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->addWidget(caption);
    rows->addWidget(m_list, 1);
    return both;
}

QWidget* ucFileAssociation::buildFields() {
    m_extension = new QComboBox;
    m_extension->setObjectName(u"cmdFileType"_qs);
    m_extension->setAccessibleName(tr("File Types/Extensions"));
    m_extension->setEditable(true);
    m_extension->setInsertPolicy(QComboBox::NoInsert);
    // Completion would turn ".c" into ".cfm".
    m_extension->setCompleter(nullptr);
    m_description = new QLineEdit;
    m_description->setObjectName(u"txtDesc"_qs);
    auto* extensionLabel = new QLabel(tr("File Types/E&xtensions:"));
    extensionLabel->setBuddy(m_extension);
    auto* descriptionLabel = new QLabel(tr("Desc&ription:"));
    descriptionLabel->setBuddy(m_description);
    QPushButton* add = addButton(u"cmdAdd"_qs, tr("A&dd"), &ucFileAssociation::add);
    m_delete = addButton(u"cmdDelete"_qs, tr("Dele&te"), &ucFileAssociation::deleteChosen);
    auto* fields = new QWidget;
    auto* rows = new QVBoxLayout(fields);
    rows->setContentsMargins(0, 0, 0, 0);
    for (QWidget* each : {static_cast<QWidget*>(extensionLabel), static_cast<QWidget*>(m_extension),
                          static_cast<QWidget*>(descriptionLabel), static_cast<QWidget*>(m_description)})
        rows->addWidget(each);
    rows->addStretch(1);
    rows->addWidget(add);
    rows->addWidget(m_delete);
    return fields;
}

QPushButton* ucFileAssociation::addButton(const QString& name, const QString& caption,
                                          void (ucFileAssociation::*act)()) {
    auto* button = new QPushButton(caption);
    button->setObjectName(name);
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, act);
    return button;
}

void ucFileAssociation::InitValues() {
    const QScopedValueRollback filling(m_filling, true);
    m_extension->clear();
    for (const char* extension : OfferedExtensions)
        m_extension->addItem(QString::fromLatin1(extension));
    m_extension->setCurrentIndex(-1);
    m_extension->clearEditText();
    m_description->clear();
    fillList();
    enableDelete();
}

void ucFileAssociation::fillList() {
    m_list->clear();
    QStringList keys;
    EnumRegSections(m_store, Section, keys);
    for (const QString& each : keys) {
        const QString key = sectionKey() + u'/' + each;
        const QString extension = GetRegString(m_store, HKEY_CURRENT_USER, key, ExtensionValue);
        if (m_desktop.IsOurAssociation(withoutDot(extension)))
            new QTreeWidgetItem(m_list, {extension, GetRegString(m_store, HKEY_CURRENT_USER, key, DescriptionValue)});
    }
}

QTreeWidgetItem* ucFileAssociation::rowOf(const QString& extension) const {
    for (int i = 0; i < m_list->topLevelItemCount(); ++i) {
        if (m_list->topLevelItem(i)->text(Extension) == extension)
            return m_list->topLevelItem(i);
    }
    return nullptr;
}

void ucFileAssociation::enableDelete() {
    m_delete->setEnabled(m_list->currentItem() != nullptr);
}

/// The fields show the selected row.
void ucFileAssociation::selectRow() {
    enableDelete();
    const QTreeWidgetItem* row = m_list->currentItem();
    if (m_filling || row == nullptr)
        return;
    const QScopedValueRollback filling(m_filling, true);
    m_extension->setEditText(row->text(Extension));
    showDescription(row->text(Description));
}

/// A long one is shown from its beginning.
void ucFileAssociation::showDescription(const QString& text) {
    m_description->setText(text);
    m_description->setCursorPosition(0);
}

/// Selects the row of the extension, or none: a description for another extension must not change the row that was
/// selected before.
void ucFileAssociation::takeExtension(const QString& text) {
    if (m_filling)
        return;
    const QScopedValueRollback filling(m_filling, true);
    QTreeWidgetItem* row = rowOf(text.trimmed().toLower());
    m_list->setCurrentItem(row);
    showDescription(row != nullptr ? row->text(Description) : m_desktop.DescribeExtension(withoutDot(text.trimmed())));
}

void ucFileAssociation::takeDescription(const QString& text) {
    if (QTreeWidgetItem* row = m_list->currentItem(); row != nullptr && !m_filling)
        row->setText(Description, text);
}

void ucFileAssociation::add() {
    const QString text = m_extension->currentText();
    if (!text.startsWith(u'.')) {
        m_prompts.message(this, u"Invalid extension format!"_qs);
        return;
    }
    const QString extension = text.trimmed().toLower();
    if (rowOf(extension) != nullptr) {
        m_prompts.message(this, u"File type '"_qs + extension + u"' already associated."_qs);
        return;
    }
    m_desktop.RegisterExtension(withoutDot(extension), m_description->text(), false, true);
    const QScopedValueRollback filling(m_filling, true);
    m_list->setCurrentItem(new QTreeWidgetItem(m_list, {extension, m_description->text()}));
    SaveProp();
}

void ucFileAssociation::deleteChosen() {
    QTreeWidgetItem* row = m_list->currentItem();
    if (row == nullptr)
        return;
    const QString extension = row->text(Extension);
    delete row;
    m_desktop.UnregisterExtension(withoutDot(extension));
    SaveProp();
    enableDelete();
}

void ucFileAssociation::SaveProp() {
    DeleteRegTree(m_store, HKEY_CURRENT_USER, sectionKey());
    for (int i = 0; i < m_list->topLevelItemCount(); ++i) {
        const QTreeWidgetItem& row = *m_list->topLevelItem(i);
        const QString key = sectionKey() + u'/' + (u"000"_qs + QString::number(i + 1)).right(DigitsOfKey);
        SetRegString(m_store, HKEY_CURRENT_USER, key, ExtensionValue, row.text(Extension));
        SetRegString(m_store, HKEY_CURRENT_USER, key, DescriptionValue, row.text(Description));
    }
}
