#include "properties/ucFont.h"

#include "document/rtCM.h"
#include "settings/Options.h"
#include "settings/SettingText.h"
#include "settings/Settings.h"

#include <QComboBox>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QScopedValueRollback>
#include <QVBoxLayout>

namespace {

constexpr int Sizes[] = {6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 18, 20, 22, 24, 28, 32, 36, 48, 72};
constexpr int SmallestSize = 1;
/// No larger size than 999 can be typed.
constexpr int SizeDigits = 3;
constexpr int FontNameLength = 24;
constexpr QSize SampleSize(420, 220);

const QString SampleText =
    u"<html>\n"
    "<body>\n"
    "<p>\n"
    "An image: <img src='hello.gif' width='144' height='50'>\n"
    "</p>\n"
    "<p>\n"
    "Hello, this is Quillmark\n"
    "</p>\n"
    "</body>"_qs;

}  // namespace

ucFont::ucFont(const DocumentServices& services, Options& options, Settings& settings, QWidget* parent)
    : QWidget(parent),
      m_options(options),
      m_settings(settings),
      m_sample(new rtCM(services)),
      m_fresh(m_sample->textFont()) {
    setObjectName(u"ucFont1"_qs);
    auto* lists = new QHBoxLayout;
    m_font = addList(u"cmbFont"_qs, tr("Font &Name:"), *lists);
    lists->addSpacing(fontMetrics().averageCharWidth());
    m_size = addList(u"cmbSize"_qs, tr("Font &Size:"), *lists);
    lists->addStretch(1);
    fillFonts();
    fillSizes();
    auto* rows = new QVBoxLayout(this);
    rows->addLayout(lists);
    rows->addWidget(buildSample(), 1);
    connect(m_font, &QComboBox::currentTextChanged, this, &ucFont::takeFont);
    connect(m_size, &QComboBox::currentTextChanged, this, &ucFont::takeSize);
}

QComboBox* ucFont::addList(const QString& name, const QString& caption, QLayout& row) {
    auto* list = new QComboBox;
    list->setObjectName(name);
    auto* label = new QLabel(caption);
    label->setBuddy(list);
    row.addWidget(label);
    row.addWidget(list);
    return list;
}

/// The tab key would be taken by the text, so the keyboard skips the sample.
QWidget* ucFont::buildSample() {
    m_sample->setTextName(tr("Sample text"));
    m_sample->setMinimumSize(SampleSize);
    m_sample->setText(SampleText);
    m_sample->SetLang(u"HTML"_qs);
    m_sample->setLocked(true);
    m_sample->setFocusPolicy(Qt::ClickFocus);
    return m_sample;
}

/// The fonts of fixed width first: they are what most people want to see code in.
void ucFont::fillFonts() {
    QStringList fixed;
    QStringList proportional;
    for (const QString& family : QFontDatabase::families()) {
        if (!QFontDatabase::isPrivateFamily(family))
            (QFontDatabase::isFixedPitch(family) ? fixed : proportional) << family;
    }
    m_font->addItems(fixed);
    if (!fixed.isEmpty() && !proportional.isEmpty())
        m_font->insertSeparator(m_font->count());
    m_font->addItems(proportional);
    m_font->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_font->setMinimumContentsLength(FontNameLength);
}

void ucFont::fillSizes() {
    m_size->setEditable(true);
    m_size->setInsertPolicy(QComboBox::NoInsert);
    m_size->setCompleter(nullptr);
    m_size->lineEdit()->setMaxLength(SizeDigits);
    m_size->setMinimumContentsLength(SizeDigits + 1);
    for (const int size : Sizes)
        m_size->addItem(QString::number(size));
    // What is no size gives way to the one that the sample has.
    connect(m_size->lineEdit(), &QLineEdit::editingFinished, this, &ucFont::showSize);
}

void ucFont::LoadProp() {
    const QString name = m_settings.PropertyValue(u"FontName"_qs, m_fresh.family(), false);
    const int points = SettingText::toShort(m_settings.forDialog(u"FontSize"_qs)).value_or(0);
    m_sample->setTextFont(name, points < SmallestSize ? m_fresh.pointSize() : points);
    showFont();
    showSize();
    m_changed = false;
}

/// A chosen font that is not installed is added at the top of the list.
void ucFont::showFont() {
    const QScopedValueRollback filling(m_filling, true);
    const QString name = m_sample->FontName();
    if (m_font->findText(name, Qt::MatchFixedString) < 0)
        m_font->insertItem(0, name);
    m_font->setCurrentIndex(m_font->findText(name, Qt::MatchFixedString));
}

void ucFont::showSize() {
    const QScopedValueRollback filling(m_filling, true);
    m_size->setCurrentText(QString::number(m_sample->FontSize()));
}

void ucFont::takeFont(const QString& name) {
    if (m_filling)
        return;
    m_sample->setTextFont(name, m_sample->FontSize());
    alter();
}

void ucFont::takeSize(const QString& text) {
    const std::optional<qint16> points = SettingText::toShort(text);
    if (m_filling || !points || *points < SmallestSize || *points == m_sample->FontSize())
        return;
    m_sample->setTextFont(m_sample->FontName(), *points);
    alter();
}

void ucFont::alter() {
    m_changed = true;
    Q_EMIT Changed();
}

void ucFont::SaveProp() {
    if (!m_changed)
        return;
    m_options.FontName = m_sample->FontName();
    m_options.FontSize = static_cast<qint16>(m_sample->FontSize());
    m_settings.write(u"FontName"_qs, m_options.FontName);
    m_settings.write(u"FontSize"_qs, QString::number(m_options.FontSize));
    m_changed = false;
}
