#include "properties/ucPropGeneral.h"

#include "properties/ColourText.h"
#include "settings/Options.h"
#include "widgets/StoredColour.h"

#include <QCheckBox>
#include <QColorDialog>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScopedValueRollback>
#include <QStyle>
#include <QVBoxLayout>

namespace {

struct BoxCaption {
    const char* name;
    const char* caption;
};

constexpr BoxCaption Captions[] = {
    {"chkLoadLastFiles", QT_TRANSLATE_NOOP("ucPropGeneral", "&Reload last files at startup")},
    {"chkWorkFolder", QT_TRANSLATE_NOOP("ucPropGeneral", "&Working folder follows active document")},
    {"chkNewDocument", QT_TRANSLATE_NOOP("ucPropGeneral", "&Start with new document")},
    {"chkShowPath", QT_TRANSLATE_NOOP("ucPropGeneral", "Show file pat&h in document caption")},
    {"chkShowIcon", QT_TRANSLATE_NOOP("ucPropGeneral", "Show &document icon in explorer")},
    {"chkLoadLastFolder",
     QT_TRANSLATE_NOOP("ucPropGeneral", "Load &the last accessed folder in explorer when startup")},
    {"chkRowHighlight", QT_TRANSLATE_NOOP("ucPropGeneral", "Highlight the c&ursor row")},
    {"chkCheckHex", QT_TRANSLATE_NOOP("ucPropGeneral", "Check for Hex &mode when opening files")},
    {"chkClearRedo", QT_TRANSLATE_NOOP("ucPropGeneral", "Clear undo/redo chain after successful sa&ve")},
    {"chkXP", QT_TRANSLATE_NOOP("ucPropGeneral", "Using &XP Skin")},
};
static_assert(std::size(Captions) == GeneralValues::Boxes);

/// Room for six digits and "#", in the widest letters.
constexpr int ColourDigits = 7;
constexpr int SwatchSize = 16;

}  // namespace

ucPropGeneral::ucPropGeneral(Settings& settings, Options& options, ShellServices& shell, QWidget* parent)
    : QWidget(parent), m_properties(settings, options, shell) {
    setObjectName(u"ucPropGeneral1"_qs);
    auto* frames = new QHBoxLayout;
    frames->addWidget(buildNotice());
    frames->addWidget(buildShortcuts(), 1);
    auto* rows = new QVBoxLayout(this);
    rows->addLayout(buildBoxes());
    rows->addSpacing(style()->pixelMetric(QStyle::PM_LayoutVerticalSpacing));
    rows->addLayout(frames);
    rows->addStretch(1);
}

QLayout* ucPropGeneral::buildBoxes() {
    auto* rows = new QVBoxLayout;
    for (std::size_t i = 0; i < m_boxes.size(); ++i) {
        auto* box = new QCheckBox(tr(Captions[i].caption));
        box->setObjectName(QString::fromLatin1(Captions[i].name));
        connect(box, &QCheckBox::toggled, this, &ucPropGeneral::alter);
        rows->addWidget(box);
        m_boxes.at(i) = box;
        if (i == GeneralValues::RowHighlight)
            rows->addLayout(buildColour());
    }
    connect(m_boxes[GeneralValues::RowHighlight], &QCheckBox::toggled, this, &ucPropGeneral::enableColour);
    return rows;
}

/// The colour of the highlight stands below its box, indented like the caption.
QLayout* ucPropGeneral::buildColour() {
    m_colourText = new QLineEdit;
    m_colourText->setObjectName(u"txtCursorColor"_qs);
    m_colourText->setAccessibleName(tr("Color of the cursor row"));
    m_colourText->setToolTip(tr("Six hexadecimal digits: red, green, blue"));
    m_colourText->setMaximumWidth(m_colourText->fontMetrics().horizontalAdvance(QString(ColourDigits + 3, u'D')));
    m_selectColour = new QPushButton(tr("Color"));
    m_selectColour->setObjectName(u"cmdSelectColor"_qs);
    m_reset = new QPushButton(tr("Reset"));
    m_reset->setObjectName(u"cmdReset"_qs);
    m_reset->setAccessibleName(tr("Reset the color of the cursor row"));
    connect(m_colourText, &QLineEdit::textChanged, this, &ucPropGeneral::typeColour);
    // What is no colour gives way to the last one that was.
    connect(m_colourText, &QLineEdit::editingFinished, this, &ucPropGeneral::showColour);
    connect(m_selectColour, &QPushButton::clicked, this, &ucPropGeneral::chooseColour);
    connect(m_reset, &QPushButton::clicked, this, [this] { takeColour(Options().RowHighlightColor); });
    auto* row = new QHBoxLayout;
    row->addSpacing(style()->pixelMetric(QStyle::PM_IndicatorWidth) +
                    style()->pixelMetric(QStyle::PM_CheckBoxLabelSpacing));
    row->addWidget(m_colourText);
    row->addWidget(m_selectColour);
    row->addWidget(m_reset);
    row->addStretch(1);
    return row;
}

QWidget* ucPropGeneral::buildNotice() {
    auto* frame = new QGroupBox(u" When files are modified by another process: "_qs);
    m_ignore = new QRadioButton(tr("Ig&nore"));
    m_ignore->setObjectName(u"optFileMod(0)"_qs);
    m_prompt = new QRadioButton(tr("&Prompt"));
    m_prompt->setObjectName(u"optFileMod(1)"_qs);
    connect(m_prompt, &QRadioButton::toggled, this, &ucPropGeneral::alter);
    auto* rows = new QVBoxLayout(frame);
    rows->addWidget(m_ignore);
    rows->addWidget(m_prompt);
    rows->addStretch(1);
    return frame;
}

QWidget* ucPropGeneral::buildShortcuts() {
    auto* frame = new QGroupBox(u" Put shortcuts to Quillmark on:  "_qs);
    auto* grid = new QGridLayout(frame);
    addShortcut(*grid, 0, m_contextMenu, u"chkSTContext"_qs, tr("Context menu"));
    addShortcut(*grid, 1, m_shortcuts[GeneralValues::Desktop], u"chkSTDesktop"_qs, tr("Desktop"));
    addShortcut(*grid, 2, m_shortcuts[GeneralValues::Program], u"chkSCProgram"_qs, tr("Program"));
    addShortcut(*grid, 3, m_shortcuts[GeneralValues::Startup], u"chkSCStartup"_qs, tr("Startup menu"));
    grid->setRowStretch(2, 1);
    return frame;
}

/// The places are counted line by line, two to a line.
void ucPropGeneral::addShortcut(QGridLayout& grid, int place, QCheckBox*& box, const QString& name,
                                const QString& caption) {
    box = new QCheckBox(caption);
    box->setObjectName(name);
    connect(box, &QCheckBox::toggled, this, &ucPropGeneral::alter);
    grid.addWidget(box, place / 2, place % 2);
}

void ucPropGeneral::LoadProp() {
    showValues(m_properties.load());
    m_changed = false;
}

void ucPropGeneral::SaveProp() {
    if (!m_changed)
        return;
    GeneralValues saved = values();
    m_properties.save(saved);
    m_properties.readDesktop(saved);
    showValues(saved);
    m_changed = false;
}

void ucPropGeneral::showValues(const GeneralValues& values) {
    const QScopedValueRollback filling(m_filling, true);
    for (std::size_t i = 0; i < m_boxes.size(); ++i)
        m_boxes.at(i)->setChecked(values.boxes.at(i));
    for (std::size_t i = 0; i < m_shortcuts.size(); ++i)
        m_shortcuts.at(i)->setChecked(values.shortcuts.at(i));
    (values.modifyNotice ? m_prompt : m_ignore)->setChecked(true);
    m_contextMenu->setChecked(values.contextMenu);
    m_colour = values.highlightColour;
    showColour();
    enableColour(values.boxes[GeneralValues::RowHighlight]);
}

GeneralValues ucPropGeneral::values() const {
    GeneralValues values;
    for (std::size_t i = 0; i < m_boxes.size(); ++i)
        values.boxes.at(i) = m_boxes.at(i)->isChecked();
    for (std::size_t i = 0; i < m_shortcuts.size(); ++i)
        values.shortcuts.at(i) = m_shortcuts.at(i)->isChecked();
    values.modifyNotice = m_prompt->isChecked();
    values.contextMenu = m_contextMenu->isChecked();
    values.highlightColour = m_colour;
    return values;
}

void ucPropGeneral::enableColour(bool on) {
    m_colourText->setEnabled(on);
    m_selectColour->setEnabled(on);
    m_reset->setEnabled(on);
}

void ucPropGeneral::showColour() {
    const QScopedValueRollback filling(m_filling, true);
    m_colourText->setText(ColourText::textOf(m_colour));
    showSwatch();
}

void ucPropGeneral::showSwatch() {
    QPixmap swatch(SwatchSize, SwatchSize);
    swatch.fill(StoredColour::colourOf(m_colour));
    m_selectColour->setIcon(QIcon(swatch));
}

void ucPropGeneral::takeColour(qint32 colour) {
    m_colour = colour;
    showColour();
    alter();
}

void ucPropGeneral::typeColour(const QString& text) {
    const std::optional<qint32> colour = ColourText::numberOf(text);
    if (m_filling || !colour || *colour == m_colour)
        return;
    m_colour = *colour;
    showSwatch();
    alter();
}

void ucPropGeneral::chooseColour() {
    auto* dialog = new QColorDialog(StoredColour::colourOf(m_colour), this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setOption(QColorDialog::DontUseNativeDialog);
    connect(dialog, &QColorDialog::colorSelected, this,
            [this](const QColor& colour) { takeColour(StoredColour::numberOf(colour)); });
    dialog->open();
}

void ucPropGeneral::alter() {
    if (m_filling)
        return;
    m_changed = true;
    Q_EMIT Changed();
}
