#include "properties/ucLangProperties.h"

#include "document/DocumentServices.h"
#include "document/EditorGlobals.h"
#include "document/rtCM.h"
#include "settings/Options.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {

constexpr int KeyRole = Qt::UserRole;
constexpr int TagRole = Qt::UserRole + 1;
constexpr int ListWidth = 180;
constexpr QSize SampleSize(420, 280);
const QString HelpPage = u"languages.html"_qs;

QPushButton* buttonOf(const QString& caption, const char* name) {
    auto* button = new QPushButton(caption);
    button->setObjectName(QString::fromLatin1(name));
    // Enter in the field of patterns must not press any button.
    button->setAutoDefault(false);
    return button;
}

/// A hidden label for a reason, which may be long and can be copied.
QLabel* reasonLabel(const QString& name) {
    auto* label = new QLabel;
    label->setObjectName(name);
    label->setWordWrap(true);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    label->hide();
    return label;
}

}  // namespace

ucLangProperties::ucLangProperties(const DocumentServices& services, ShowHelp showHelp, QWidget* parent)
    : QWidget(parent), m_services(services), m_showHelp(std::move(showHelp)) {
    setObjectName(u"ucLangProperties1"_qs);
    auto* columns = new QHBoxLayout;
    columns->addWidget(buildList());
    columns->addWidget(buildDetails(), 1);
    auto* rows = new QVBoxLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);  // the surrounding layout has margins
    rows->addLayout(columns, 1);
    m_indexFault = reasonLabel(u"lblIndexFault"_qs);
    rows->addWidget(m_indexFault);
    rows->addWidget(buildButtons());
}

QWidget* ucLangProperties::buildList() {
    m_list = new QTreeWidget;
    m_list->setObjectName(u"lvLang"_qs);
    m_list->setAccessibleName(tr("Languages"));
    m_list->setHeaderLabels({tr("Languages")});
    m_list->header()->setSectionsClickable(false);
    m_list->setRootIsDecorated(false);
    m_list->setUniformRowHeights(true);
    m_list->setMinimumWidth(ListWidth);
    m_list->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
    connect(m_list, &QTreeWidget::currentItemChanged, this, &ucLangProperties::showRow);
    return m_list;
}

QWidget* ucLangProperties::buildDetails() {
    auto* details = new QWidget;
    auto* rows = new QVBoxLayout(details);
    rows->setContentsMargins(0, 0, 0, 0);
    auto* patternsLabel = new QLabel(tr("Associated File Extension:"));
    m_patterns = new QLineEdit;
    m_patterns->setObjectName(u"txtExt"_qs);
    m_patterns->setAccessibleName(tr("Associated File Extension"));
    m_patterns->setPlaceholderText(tr("*.abc,*.abd"));
    patternsLabel->setBuddy(m_patterns);
    connect(m_patterns, &QLineEdit::textChanged, this, &ucLangProperties::takeEdit);

    m_sample = new rtCM(m_services);
    m_sample->setTextName(tr("Sample Syntax Highlight"));
    m_sample->setMinimumSize(SampleSize);
    // The tab key would be taken by the text, so the keyboard skips the sample.
    m_sample->setFocusPolicy(Qt::ClickFocus);
    const Options& options = m_services.options;
    if (!options.FontName.isEmpty())
        m_sample->setTextFont(options.FontName, options.FontSize);

    rows->addWidget(patternsLabel);
    rows->addWidget(m_patterns);
    rows->addSpacing(style()->pixelMetric(QStyle::PM_LayoutVerticalSpacing));
    rows->addWidget(new QLabel(tr("Sample Syntax Highlight:")));
    rows->addWidget(m_sample, 1);
    m_fault = reasonLabel(u"lblFault"_qs);
    rows->addWidget(m_fault);
    return details;
}

QWidget* ucLangProperties::buildButtons() {
    auto* buttons = new QWidget;
    auto* row = new QHBoxLayout(buttons);
    row->setContentsMargins(0, 0, 0, 0);
    QPushButton* properties = buttonOf(tr("&Properties..."), "cmdProperties");
    m_save = buttonOf(tr("&Save"), "cmdSaveProperties");
    QPushButton* help = buttonOf(tr("&Help"), "cmdHelp");
    row->addWidget(properties);
    row->addWidget(m_save);
    row->addStretch(1);
    row->addWidget(help);
    connect(properties, &QPushButton::clicked, this, &ucLangProperties::openProperties);
    connect(m_save, &QPushButton::clicked, this, &ucLangProperties::writeIndex);
    connect(help, &QPushButton::clicked, this, [this] { m_showHelp(HelpPage); });
    return buttons;
}

void ucLangProperties::InitObjects(bool pSave) {
    m_shown.clear();
    m_list->clear();
    m_patterns->clear();
    m_changed = false;
    m_services.globals.languages.LoadLanguageIndex();
    m_save->setEnabled(pSave && canSave());
    showIndexFault();
    for (const LanguageRow& row : m_services.globals.languages.rows())
        addRow(row.name, row.patterns);
    m_list->setCurrentItem(m_list->topLevelItem(0));
    m_sample->PropertiesLoad();
}

void ucLangProperties::refresh() {
    if (!m_changed)
        InitObjects(false);
}

void ucLangProperties::addRow(const QString& name, const QString& patterns) {
    auto* row = new QTreeWidgetItem(m_list, {name});
    row->setData(0, KeyRole, name);
    row->setData(0, TagRole, patterns);
}

QTreeWidgetItem* ucLangProperties::rowOf(const QString& key) const {
    for (int i = 0; i < m_list->topLevelItemCount(); ++i) {
        QTreeWidgetItem* row = m_list->topLevelItem(i);
        if (row->data(0, KeyRole).toString() == key)
            return row;
    }
    return nullptr;
}

/// An empty field does not overwrite the patterns, so that a language does not lose all of them by mistake.
void ucLangProperties::keepEditedPatterns() {
    QTreeWidgetItem* row = rowOf(m_shown);
    if (row != nullptr && !m_patterns->text().isEmpty())
        row->setData(0, TagRole, m_patterns->text());
}

void ucLangProperties::showRow(QTreeWidgetItem* row) {
    if (row == nullptr)
        return;
    keepEditedPatterns();
    m_shown = row->data(0, KeyRole).toString();
    m_patterns->setText(row->data(0, TagRole).toString());
    const QString name = m_shown;
    m_sample->OpenFile(m_services.globals.languages.samplePath(name));
    m_sample->SetLang(name);
    showFault(name);
}

/// Shows why the definition of the language can't be used; its author looks for errors here.
void ucLangProperties::showFault(const QString& name) {
    const LanguageTable& languages = m_services.globals.languages;
    const bool loaded = languages.definition(name) != nullptr;
    m_fault->setText(loaded ? QString() : tr("No colors: %1").arg(languages.lastError()));
    m_fault->setVisible(!loaded);
}

bool ucLangProperties::canSave() const {
    return m_services.globals.languages.indexFault().isEmpty();
}

void ucLangProperties::showIndexFault() {
    m_indexFault->setText(canSave() ? QString()
                                    : tr("The list can't be saved: %1").arg(m_services.globals.languages.indexFault()));
    m_indexFault->setVisible(!canSave());
}

void ucLangProperties::takeEdit(const QString& text) {
    const QTreeWidgetItem* row = rowOf(m_shown);
    if (row == nullptr || text == row->data(0, TagRole).toString())
        return;
    m_changed = true;
    m_save->setEnabled(canSave());
    Q_EMIT Changed();
}

void ucLangProperties::openProperties() {
    m_sample->Properties();
    m_sample->PropertiesSave();
}

void ucLangProperties::SaveProp() {
    if (!m_changed)
        return;
    m_sample->PropertiesSave();
    writeIndex();
}

void ucLangProperties::writeIndex() {
    keepEditedPatterns();
    QList<LanguageRow> rows;
    for (int i = 0; i < m_list->topLevelItemCount(); ++i) {
        const QTreeWidgetItem* row = m_list->topLevelItem(i);
        rows.append({row->text(0), row->data(0, TagRole).toString()});
    }
    m_changed = !m_services.globals.languages.saveIndex(rows);
}
