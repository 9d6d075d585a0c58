#include "editor/windows/TokenColourPage.h"

#include "editor/language/TokenTheme.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QFontDatabase>
#include <QGridLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

constexpr int SwatchSize = 16;
/// Letters of the column before the examples.
constexpr int CaptionWidth = 16;

/// The name of each class, and an example of it.
struct ClassRow {
    const char* caption;
    const char* example;
};

/// In the order of the classes.
constexpr ClassRow Classes[] = {
    {QT_TRANSLATE_NOOP("TokenColourPage", "Plain text"), "total"},
    {QT_TRANSLATE_NOOP("TokenColourPage", "Comment"), "// why it is so"},
    {QT_TRANSLATE_NOOP("TokenColourPage", "Documentation"), "/** what it does */"},
    {QT_TRANSLATE_NOOP("TokenColourPage", "Keyword"), "return"},
    {QT_TRANSLATE_NOOP("TokenColourPage", "Type"), "int"},
    {QT_TRANSLATE_NOOP("TokenColourPage", "Name"), "self"},
    {QT_TRANSLATE_NOOP("TokenColourPage", "String"), "\"text\""},
    {QT_TRANSLATE_NOOP("TokenColourPage", "Number"), "0x2A"},
    {QT_TRANSLATE_NOOP("TokenColourPage", "Operator"), "+= ( )"},
    {QT_TRANSLATE_NOOP("TokenColourPage", "Preprocessor"), "#include"},
    {QT_TRANSLATE_NOOP("TokenColourPage", "Markup"), "<title>"},
    {QT_TRANSLATE_NOOP("TokenColourPage", "Error"), "\"not closed"},
};
static_assert(std::size(Classes) == TokenClasses::Count);

TokenClass classOf(int row) {
    return static_cast<TokenClass>(std::max(row, 0));
}

}  // namespace

TokenColourPage::TokenColourPage(TokenTheme& theme, const QColor& ground, QWidget* parent)
    : QWidget(parent), m_theme(theme), m_ground(ground), m_kind(TokenLooks::groundOf(ground)), m_looks(theme.looks()) {
    auto* columns = new QGridLayout(this);
    auto* label = new QLabel(m_kind == TokenLooks::Dark ? tr("&Looks on a dark background:")
                                                        : tr("&Looks on a light background:"));
    buildList();
    label->setBuddy(m_list);
    columns->addWidget(label, 0, 0, 1, 2);
    columns->addWidget(m_list, 1, 0);
    columns->addWidget(buildChoices(), 1, 1);
    columns->setColumnStretch(0, 1);
    m_list->setCurrentRow(0);
}

void TokenColourPage::buildList() {
    m_list = new QListWidget;
    m_list->setObjectName(u"lstClasses"_qs);
    m_list->setAccessibleName(tr("Kinds of text"));
    QPalette shown = m_list->palette();
    shown.setColor(QPalette::Base, m_ground);
    m_list->setPalette(shown);
    for (int row = 0; row < TokenClasses::Count; ++row) {
        m_list->addItem(QString());
        showClass(row);
    }
    connect(m_list, &QListWidget::currentRowChanged, this, &TokenColourPage::showChosen);
}

QWidget* TokenColourPage::buildChoices() {
    auto* choices = new QWidget;
    auto* rows = new QVBoxLayout(choices);
    rows->setContentsMargins(0, 0, 0, 0);
    m_colour = new QPushButton;
    m_colour->setObjectName(u"cmdTokenColor"_qs);
    m_default = new QPushButton(tr("&Default"));
    m_default->setObjectName(u"cmdTokenDefault"_qs);
    m_default->setAccessibleName(tr("Default color"));
    m_bold = new QCheckBox(tr("&Bold"));
    m_bold->setObjectName(u"chkTokenBold"_qs);
    m_italic = new QCheckBox(tr("&Italic"));
    m_italic->setObjectName(u"chkTokenItalic"_qs);
    m_note = new QLabel;
    m_note->setObjectName(u"lblTokenNote"_qs);
    m_note->setWordWrap(true);
    auto* all = new QPushButton(tr("Default for &all"));
    all->setObjectName(u"cmdTokenDefaultAll"_qs);
    for (QPushButton* button : {m_colour, m_default, all})
        button->setAutoDefault(false);
    rows->addWidget(m_colour);
    rows->addWidget(m_default);
    rows->addWidget(m_bold);
    rows->addWidget(m_italic);
    rows->addWidget(m_note);
    rows->addStretch(1);
    rows->addWidget(all);
    connect(m_colour, &QPushButton::clicked, this, &TokenColourPage::chooseColour);
    connect(m_default, &QPushButton::clicked, this, [this] { setOwnColour(QColor()); });
    connect(all, &QPushButton::clicked, this, &TokenColourPage::resetAll);
    connect(m_bold, &QCheckBox::clicked, this, [this](bool on) {
        m_looks.setBold(chosen(), on);
        showClass(m_list->currentRow());
    });
    connect(m_italic, &QCheckBox::clicked, this, [this](bool on) {
        m_looks.setItalic(chosen(), on);
        showClass(m_list->currentRow());
    });
    return choices;
}

TokenClass TokenColourPage::chosen() const {
    return classOf(m_list->currentRow());
}

void TokenColourPage::showClass(int row) {
    const TokenLook look = m_looks.on(m_ground, classOf(row));
    const QString caption = tr(Classes[row].caption);
    QListWidgetItem* item = m_list->item(row);
    item->setText(caption.leftJustified(CaptionWidth) + QString::fromLatin1(Classes[row].example));
    item->setData(Qt::AccessibleTextRole, caption);
    item->setForeground(look.colour);
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setBold(look.bold);
    font.setItalic(look.italic);
    item->setFont(font);
}

void TokenColourPage::showChosen() {
    const QColor own = m_looks.ownColour(m_kind, chosen());
    const TokenLook look = m_looks.on(m_ground, chosen());
    QPixmap swatch(SwatchSize, SwatchSize);
    swatch.fill(look.colour);
    m_colour->setIcon(QIcon(swatch));
    m_colour->setText(tr("Colo&r: %1").arg(own.isValid() ? own.name().toUpper() : tr("Default")));
    m_default->setEnabled(own.isValid());
    m_bold->setChecked(look.bold);
    m_italic->setChecked(look.italic);
    const bool adapted = own.isValid() && look.colour != own;
    m_note->setText(adapted ? tr("Shown as %1, to be readable on the background.").arg(look.colour.name().toUpper())
                            : QString());
}

void TokenColourPage::setOwnColour(const QColor& colour) {
    m_looks.setOwnColour(m_kind, chosen(), colour);
    showClass(m_list->currentRow());
    showChosen();
}

void TokenColourPage::chooseColour() {
    auto* dialog = new QColorDialog(m_looks.on(m_ground, chosen()).colour, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setOption(QColorDialog::DontUseNativeDialog);
    connect(dialog, &QColorDialog::colorSelected, this, &TokenColourPage::setOwnColour);
    dialog->open();
}

void TokenColourPage::resetAll() {
    m_looks = TokenLooks();
    for (int row = 0; row < TokenClasses::Count; ++row)
        showClass(row);
    showChosen();
}

void TokenColourPage::apply() {
    m_theme.setLooks(m_looks);
}
