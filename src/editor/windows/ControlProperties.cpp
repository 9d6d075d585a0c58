#include "editor/windows/ControlProperties.h"

#include "editor/control/ControlGlobals.h"
#include "editor/control/TextControl.h"
#include "editor/profile/ControlProfile.h"
#include "editor/windows/ControlPage.h"
#include "editor/windows/TokenColourPage.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>
#include <QTabWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <span>

namespace {

/// A property that a box stands for.
struct BoxRow {
    const char* name;
    const char* caption;
    bool (TextControl::*value)() const;
    void (TextControl::*set)(bool on);
};

constexpr BoxRow ViewBoxes[] = {
    {"chkWordWrap", QT_TR_NOOP("&Wrap long lines"), &TextControl::WordWrap, &TextControl::setWordWrap},
    {"chkWhitespace", QT_TR_NOOP("Show &tabs and spaces"), &TextControl::DisplayWhitespace,
     &TextControl::setDisplayWhitespace},
    {"chkLineNumbers", QT_TR_NOOP("Line &numbers"), &TextControl::LineNumbering, &TextControl::setLineNumbering},
    {"chkLeftMargin", QT_TR_NOOP("&Left margin"), &TextControl::DisplayLeftMargin, &TextControl::setDisplayLeftMargin},
    {"chkBraces", QT_TR_NOOP("&Brace matching"), &TextControl::BraceMatching, &TextControl::setBraceMatching},
};

constexpr BoxRow EditingBoxes[] = {
    {"chkBlanksForTabs", QT_TR_NOOP("&Blanks instead of tabs"), &TextControl::BlanksForTabs,
     &TextControl::setBlanksForTabs},
    {"chkAutoIndent", QT_TR_NOOP("Begin new lines as &indented as the last"), &TextControl::AutoIndent,
     &TextControl::setAutoIndent},
    {"chkDragDrop", QT_TR_NOOP("&Drag text with the mouse"), &TextControl::DragDrop, &TextControl::setDragDrop},
};

struct LineEndRow {
    const char* caption;
    int mode;
};

constexpr LineEndRow LineEnds[] = {
    {QT_TR_NOOP("LF (Unix)"), TextControl::SC_EOL_LF},
    {QT_TR_NOOP("CR LF (Windows)"), TextControl::SC_EOL_CRLF},
    {QT_TR_NOOP("CR (old Macintosh)"), TextControl::SC_EOL_CR},
};

struct EncodingRow {
    const char* caption;
    int flagWord;
};

constexpr EncodingRow Encodings[] = {
    {QT_TR_NOOP("As the file tells"), SaveFlags::AsLoaded},
    {QT_TR_NOOP("ANSI (Windows-1252)"), SaveFlags::Ansi},
    {QT_TR_NOOP("UTF-8"), SaveFlags::Utf8},
    {QT_TR_NOOP("UTF-8 with byte order mark"), SaveFlags::Utf8WithMark},
    {QT_TR_NOOP("Unicode (UTF-16)"), SaveFlags::Utf16WithMark},
};

void addBoxes(const TextControl& control, QFormLayout& form, std::span<const BoxRow> rows) {
    for (const BoxRow& row : rows) {
        auto* box = new QCheckBox(ControlProperties::tr(row.caption));
        box->setObjectName(QString::fromLatin1(row.name));
        box->setChecked((control.*row.value)());
        form.addRow(box);
    }
}

void takeBoxes(TextControl& control, const QDialog& dialog, std::span<const BoxRow> rows) {
    for (const BoxRow& row : rows) {
        const bool on = dialog.findChild<QCheckBox*>(QString::fromLatin1(row.name))->isChecked();
        if (on != (control.*row.value)())
            (control.*row.set)(on);
    }
}

QHBoxLayout* beside(QWidget* first, QWidget* second) {
    auto* layout = new QHBoxLayout;
    layout->addWidget(first, 1);
    layout->addWidget(second);
    return layout;
}

}  // namespace

void ControlProperties::show(TextControl& control) {
    auto* dialog = control.findChild<ControlProperties*>();
    if (dialog == nullptr)
        dialog = new ControlProperties(control);
    dialog->open();
    dialog->activateWindow();
}

ControlProperties::ControlProperties(TextControl& control) : QDialog(&control), m_control(control) {
    setObjectName(u"ControlProperties"_qs);
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(tr("Properties"));

    auto* pages = new QTabWidget;
    pages->setObjectName(u"tabPages"_qs);
    pages->addTab(viewPage(), tr("&View"));
    pages->addTab(editingPage(), tr("&Editing"));
    pages->addTab(colourPage(), tr("&Colors"));
    if (TokenTheme* theme = control.theme()) {
        m_tokens = new TokenColourPage(*theme, control.baseColour());
        pages->addTab(m_tokens, tr("Lan&guages"));
    }
    pages->addTab(filePage(), tr("&File"));
    if (ControlGlobals* globals = control.globals())
        m_brought = globals->propertyPages(control);
    for (ControlPage* page : m_brought)
        pages->addTab(page, page->caption());

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    buttons->button(QDialogButtonBox::Ok)->setObjectName(u"cmdOK"_qs);
    buttons->button(QDialogButtonBox::Cancel)->setObjectName(u"cmdCancel"_qs);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(pages);
    layout->addWidget(buttons);
}

void ControlProperties::accept() {
    const ControlProfile before = ControlProfile::of(m_control);
    takeBoxes(m_control, *this, ViewBoxes);
    takeBoxes(m_control, *this, EditingBoxes);
    m_control.setTabWidth(m_tabWidth->value());
    for (const ColourRow& row : m_colours)
        m_control.setElementColour(static_cast<TextControl::Element>(row.element), row.colour);
    if (m_tokens != nullptr)
        m_tokens->apply();
    for (ControlPage* page : m_brought)
        page->apply();
    const ControlProfile after = ControlProfile::of(m_control);
    if (after != before)
        Q_EMIT m_control.PropertiesChanged(before, after);
    QDialog::accept();
}

QWidget* ControlProperties::viewPage() {
    auto* page = new QWidget;
    auto* form = new QFormLayout(page);
    addBoxes(m_control, *form, ViewBoxes);
    return page;
}

QWidget* ControlProperties::editingPage() {
    auto* page = new QWidget;
    auto* form = new QFormLayout(page);
    m_tabWidth = new QSpinBox;
    m_tabWidth->setObjectName(u"numTabWidth"_qs);
    m_tabWidth->setRange(1, TextControl::LargestTabWidth);
    m_tabWidth->setValue(m_control.TabWidth());
    form->addRow(tr("Tab &width:"), m_tabWidth);
    addBoxes(m_control, *form, EditingBoxes);
    return page;
}

// Colours

QWidget* ControlProperties::colourPage() {
    auto* page = new QWidget;
    auto* form = new QFormLayout(page);
    addColour(*form, tr("&Background:"), u"Background"_qs, TextControl::BackgroundElement);
    addColour(*form, tr("&Left margin:"), u"LeftMargin"_qs, TextControl::LeftMarginElement);
    addColour(*form, tr("&Row of the caret:"), u"RowHighlight"_qs, TextControl::RowHighlightElement);
    return page;
}

void ControlProperties::addColour(QFormLayout& form, const QString& caption, const QString& name, int element) {
    auto* choose = new QPushButton;
    choose->setObjectName(u"cmd"_qs + name);
    auto* reset = new QPushButton(tr("Reset"));
    reset->setObjectName(u"cmdReset"_qs + name);
    const QString plain = QString(caption).remove(u'&').remove(u':');
    reset->setAccessibleName(tr("Reset") + u' ' + plain);
    m_colours.push_back(
        {element, plain, choose, reset, m_control.elementColour(static_cast<TextControl::Element>(element))});
    connect(choose, &QPushButton::clicked, this, [this, element] { chooseColour(element); });
    connect(reset, &QPushButton::clicked, this, [this, element] {
        colourRow(element).colour = QColor();
        showColour(element);
    });
    QHBoxLayout* both = beside(choose, reset);
    form.addRow(caption, both);
    if (auto* label = qobject_cast<QLabel*>(form.labelForField(both)))
        label->setBuddy(choose);
    showColour(element);
}

ControlProperties::ColourRow& ControlProperties::colourRow(int element) {
    return *std::ranges::find(m_colours, element, &ColourRow::element);
}

void ControlProperties::showColour(int element) {
    const ColourRow& row = colourRow(element);
    row.reset->setEnabled(row.colour.isValid());
    row.choose->setText(row.colour.isValid() ? row.colour.name().toUpper() : tr("Default"));
    row.choose->setAccessibleName(row.caption + u' ' + row.choose->text());
    QPixmap swatch(16, 16);
    swatch.fill(row.colour);
    row.choose->setIcon(row.colour.isValid() ? QIcon(swatch) : QIcon());
}

void ControlProperties::chooseColour(int element) {
    auto* dialog = new QColorDialog(colourRow(element).colour, this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setOption(QColorDialog::DontUseNativeDialog);
    connect(dialog, &QColorDialog::colorSelected, this, [this, element](const QColor& colour) {
        colourRow(element).colour = colour;
        showColour(element);
    });
    dialog->open();
}

// The file

QWidget* ControlProperties::filePage() {
    auto* page = new QWidget;
    auto* form = new QFormLayout(page);
    m_lineEnds = new QComboBox;
    m_lineEnds->setObjectName(u"cmbLineEnds"_qs);
    for (const LineEndRow& row : LineEnds)
        m_lineEnds->addItem(tr(row.caption), row.mode);
    m_lineEnds->setCurrentIndex(m_lineEnds->findData(m_control.lineEndMode()));
    m_convert = new QPushButton(tr("Conver&t"));
    m_convert->setObjectName(u"cmdConvert"_qs);
    m_convert->setToolTip(tr("Cannot be undone"));
    m_encoding = new QComboBox;
    m_encoding->setObjectName(u"cmbEncoding"_qs);
    for (const EncodingRow& row : Encodings)
        m_encoding->addItem(tr(row.caption), row.flagWord);
    m_reopen = new QPushButton(tr("&Open again"));
    m_reopen->setObjectName(u"cmdReopen"_qs);
    m_fileNote = new QLabel;
    m_fileNote->setObjectName(u"lblFileNote"_qs);
    m_fileNote->setWordWrap(true);

    QHBoxLayout* ends = beside(m_lineEnds, m_convert);
    form->addRow(tr("&Line ends:"), ends);
    QHBoxLayout* encoding = beside(m_encoding, m_reopen);
    form->addRow(tr("E&ncoding:"), encoding);
    form->addRow(m_fileNote);
    qobject_cast<QLabel*>(form->labelForField(ends))->setBuddy(m_lineEnds);
    qobject_cast<QLabel*>(form->labelForField(encoding))->setBuddy(m_encoding);
    connect(m_convert, &QPushButton::clicked, this, &ControlProperties::convertLineEnds);
    connect(m_reopen, &QPushButton::clicked, this, &ControlProperties::reopen);
    refreshFile();
    return page;
}

void ControlProperties::refreshFile() {
    m_convert->setEnabled(m_control.canConvertLineEnds());
    m_reopen->setEnabled(m_control.canReopen());
    QStringList notes;
    if (!m_control.canConvertLineEnds() && !m_control.Locked())
        notes << tr("Line ends cannot be converted while long lines are shown in pieces.");
    if (!m_control.canReopen())
        notes << tr("Only a saved file can be opened again in another encoding.");
    m_fileNote->setText(notes.join(u'\n'));
}

void ControlProperties::convertLineEnds() {
    m_control.convertLineEnds(m_lineEnds->currentData().toInt());
    refreshFile();
}

void ControlProperties::reopen() {
    const SystemError error = m_control.reopenAs(m_encoding->currentData().toInt());
    refreshFile();
    if (error)
        m_fileNote->setText(error.description);
    else
        m_lineEnds->setCurrentIndex(m_lineEnds->findData(m_control.lineEndMode()));
}
