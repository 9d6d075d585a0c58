#include "editor/windows/ControlProperties.h"

#include "editor/control/ControlBraces.h"
#include "editor/control/ControlFile.h"
#include "editor/control/ControlGlobals.h"
#include "editor/control/ControlLineNumbers.h"
#include "editor/control/ControlLook.h"
#include "editor/control/ControlMacros.h"
#include "editor/control/ControlMouse.h"
#include "editor/control/ControlTyping.h"
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

/// A property with a check box.
struct BoxRow {
    const char* name;
    const char* caption;
    bool (*value)(const TextControl& control);
    void (*set)(TextControl& control, bool on);
};

/// Of a property that a part of the control has.
template <auto Part, auto Value, auto Set>
constexpr BoxRow box(const char* name, const char* caption) {
    return {name, caption, [](const TextControl& control) { return ((control.*Part)().*Value)(); },
            [](TextControl& control, bool on) { ((control.*Part)().*Set)(on); }};
}

constexpr BoxRow ViewBoxes[] = {
    box<&TextControl::look, &ControlLook::WordWrap, &ControlLook::setWordWrap>("chkWordWrap",
                                                                               QT_TR_NOOP("&Wrap long lines")),
    box<&TextControl::look, &ControlLook::DisplayWhitespace, &ControlLook::setDisplayWhitespace>(
        "chkWhitespace", QT_TR_NOOP("Show &tabs and spaces")),
    box<&TextControl::lineNumbers, &ControlLineNumbers::LineNumbering, &ControlLineNumbers::setLineNumbering>(
        "chkLineNumbers", QT_TR_NOOP("Line &numbers")),
    box<&TextControl::look, &ControlLook::DisplayLeftMargin, &ControlLook::setDisplayLeftMargin>(
        "chkLeftMargin", QT_TR_NOOP("&Left margin")),
    box<&TextControl::braces, &ControlBraces::BraceMatching, &ControlBraces::setBraceMatching>(
        "chkBraces", QT_TR_NOOP("&Brace matching")),
};

constexpr BoxRow EditingBoxes[] = {
    box<&TextControl::typing, &ControlTyping::BlanksForTabs, &ControlTyping::setBlanksForTabs>(
        "chkBlanksForTabs", QT_TR_NOOP("&Blanks instead of tabs")),
    box<&TextControl::typing, &ControlTyping::AutoIndent, &ControlTyping::setAutoIndent>(
        "chkAutoIndent", QT_TR_NOOP("Begin new lines as &indented as the last")),
    box<&TextControl::mouse, &ControlMouse::DragDrop, &ControlMouse::setDragDrop>(
        "chkDragDrop", QT_TR_NOOP("&Drag text with the mouse")),
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
        box->setChecked(row.value(control));
        form.addRow(box);
    }
}

void takeBoxes(TextControl& control, const QDialog& dialog, std::span<const BoxRow> rows) {
    for (const BoxRow& row : rows) {
        const bool on = dialog.findChild<QCheckBox*>(QString::fromLatin1(row.name))->isChecked();
        if (on != row.value(control))
            row.set(control, on);
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
    if (TokenTheme* theme = control.look().theme()) {
        m_tokens = new TokenColourPage(*theme, control.look().baseColour());
        pages->addTab(m_tokens, tr("Lan&guages"));
    }
    pages->addTab(filePage(), tr("&File"));
    if (ControlGlobals* globals = control.macros().globals())
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
    m_control.typing().setTabWidth(m_tabWidth->value());
    for (const ColourRow& row : m_colours)
        m_control.look().setElementColour(static_cast<ControlLook::Element>(row.element), row.colour);
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
    m_tabWidth->setRange(1, ControlTyping::LargestTabWidth);
    m_tabWidth->setValue(m_control.typing().TabWidth());
    form->addRow(tr("Tab &width:"), m_tabWidth);
    addBoxes(m_control, *form, EditingBoxes);
    return page;
}

// Colours

QWidget* ControlProperties::colourPage() {
    auto* page = new QWidget;
    auto* form = new QFormLayout(page);
    addColour(*form, tr("&Background:"), u"Background"_qs, ControlLook::BackgroundElement);
    addColour(*form, tr("&Left margin:"), u"LeftMargin"_qs, ControlLook::LeftMarginElement);
    addColour(*form, tr("&Row of the caret:"), u"RowHighlight"_qs, ControlLook::RowHighlightElement);
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
        {element, plain, choose, reset, m_control.look().elementColour(static_cast<ControlLook::Element>(element))});
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
    m_lineEnds->setCurrentIndex(m_lineEnds->findData(m_control.file().lineEndMode()));
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
    m_convert->setEnabled(m_control.file().canConvertLineEnds());
    m_reopen->setEnabled(m_control.file().canReopen());
    QStringList notes;
    if (!m_control.file().canConvertLineEnds() && !m_control.Locked())
        notes << tr("Line ends cannot be converted while long lines are shown in pieces.");
    if (!m_control.file().canReopen())
        notes << tr("Only a saved file can be opened again in another encoding.");
    m_fileNote->setText(notes.join(u'\n'));
}

void ControlProperties::convertLineEnds() {
    m_control.file().convertLineEnds(m_lineEnds->currentData().toInt());
    refreshFile();
}

void ControlProperties::reopen() {
    const SystemError error = m_control.file().reopenAs(m_encoding->currentData().toInt());
    refreshFile();
    if (error)
        m_fileNote->setText(error.description);
    else
        m_lineEnds->setCurrentIndex(m_lineEnds->findData(m_control.file().lineEndMode()));
}
