#include "editor/print/PageSetupDialog.h"

#include "editor/print/PageSetup.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QPageSize>
#include <QRadioButton>
#include <QVBoxLayout>

namespace {

constexpr qreal MillimetresPerInch = 25.4;

constexpr QPageSize::PageSizeId Papers[] = {
    QPageSize::A3, QPageSize::A4,     QPageSize::A5,    QPageSize::A6,        QPageSize::B4,
    QPageSize::B5, QPageSize::Letter, QPageSize::Legal, QPageSize::Executive, QPageSize::Tabloid,
};

struct SideRow {
    const char* name;
    const char* caption;
    qreal (QMarginsF::*value)() const;
    void (QMarginsF::*set)(qreal value);
    bool isBeside;  ///< at the left or right
};

constexpr SideRow SideRows[] = {
    {"txtLeft", QT_TR_NOOP("&Left:"), &QMarginsF::left, &QMarginsF::setLeft, true},
    {"txtTop", QT_TR_NOOP("&Top:"), &QMarginsF::top, &QMarginsF::setTop, false},
    {"txtRight", QT_TR_NOOP("&Right:"), &QMarginsF::right, &QMarginsF::setRight, true},
    {"txtBottom", QT_TR_NOOP("&Bottom:"), &QMarginsF::bottom, &QMarginsF::setBottom, false},
};

}  // namespace

PageSetupDialog::PageSetupDialog(const QPageLayout& layout, QWidget* parent)
    : QDialog(parent),
      m_paper(new QComboBox(this)),
      m_portrait(new QRadioButton(tr("P&ortrait"), this)),
      m_landscape(new QRadioButton(tr("L&andscape"), this)),
      m_inInches(QLocale().measurementSystem() == QLocale::ImperialUSSystem) {
    setObjectName(u"frmPageSetup"_qs);
    setWindowTitle(tr("Page Setup"));
    m_paper->setObjectName(u"cmbPaper"_qs);
    m_portrait->setObjectName(u"optPortrait"_qs);
    m_landscape->setObjectName(u"optLandscape"_qs);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* all = new QVBoxLayout(this);
    all->addWidget(makePaperBox(layout));
    all->addWidget(makeMarginBox(layout));
    all->addWidget(buttons);
    all->setSizeConstraint(QLayout::SetFixedSize);
    limitMargins();
    connect(m_paper, &QComboBox::currentIndexChanged, this, &PageSetupDialog::limitMargins);
    connect(m_portrait, &QRadioButton::toggled, this, &PageSetupDialog::limitMargins);
    m_paper->setFocus();
}

QWidget* PageSetupDialog::makePaperBox(const QPageLayout& layout) {
    auto* box = new QGroupBox(tr("Paper"), this);
    auto* form = new QFormLayout(box);
    form->addRow(tr("&Size:"), m_paper);
    m_paper->setAccessibleName(tr("Paper size"));
    addPapers(layout);
    auto* both = new QHBoxLayout;
    both->addWidget(m_portrait);
    both->addWidget(m_landscape);
    both->addStretch();
    form->addRow(tr("Orientation:"), both);
    m_portrait->setAccessibleName(tr("Orientation: portrait"));
    m_landscape->setAccessibleName(tr("Orientation: landscape"));
    (layout.orientation() == QPageLayout::Landscape ? m_landscape : m_portrait)->setChecked(true);
    return box;
}

/// The paper in use is offered too, whatever it is.
void PageSetupDialog::addPapers(const QPageLayout& layout) {
    for (const QPageSize::PageSizeId paper : Papers)
        m_paper->addItem(QPageSize::name(paper), QVariant::fromValue(QPageSize(paper)));
    int current = -1;
    for (int i = 0; current < 0 && i < m_paper->count(); ++i) {
        if (m_paper->itemData(i).value<QPageSize>().isEquivalentTo(layout.pageSize()))
            current = i;
    }
    if (current < 0) {
        current = m_paper->count();
        m_paper->addItem(layout.pageSize().name(), QVariant::fromValue(layout.pageSize()));
    }
    m_paper->setCurrentIndex(current);
}

QWidget* PageSetupDialog::makeMarginBox(const QPageLayout& layout) {
    auto* box = new QGroupBox(m_inInches ? tr("Margins (inches)") : tr("Margins (millimetres)"), this);
    auto* grid = new QGridLayout(box);
    const QMarginsF margins = layout.margins(QPageLayout::Millimeter);
    for (int side = 0; side < Sides; ++side) {
        const SideRow& row = SideRows[side];
        auto* edit = new QDoubleSpinBox(box);
        edit->setObjectName(QString::fromLatin1(row.name));
        edit->setDecimals(m_inInches ? 2 : 1);
        edit->setSingleStep(m_inInches ? 0.1 : 1);
        edit->setMaximum(layout.fullRect(QPageLayout::Millimeter).height());
        edit->setValue((margins.*row.value)() / (m_inInches ? MillimetresPerInch : 1));
        auto* label = new QLabel(tr(row.caption), box);
        label->setBuddy(edit);
        edit->setAccessibleName(tr("Margin %1").arg(label->text().remove(u'&').remove(u':').toLower()));
        grid->addWidget(label, side % 2, 2 * (side / 2));
        grid->addWidget(edit, side % 2, 2 * (side / 2) + 1);
        m_margins[static_cast<std::size_t>(side)] = edit;
    }
    return box;
}

void PageSetupDialog::limitMargins() {
    const QSizeF paper = layoutChosen().fullRect(QPageLayout::Millimeter).size();
    for (int side = 0; side < Sides; ++side) {
        const qreal most = PageSetup::largestMargin(SideRows[side].isBeside ? paper.width() : paper.height());
        m_margins[static_cast<std::size_t>(side)]->setMaximum(most / (m_inInches ? MillimetresPerInch : 1));
    }
}

QPageLayout PageSetupDialog::layoutChosen() const {
    QMarginsF margins;
    for (int side = 0; side < Sides; ++side) {
        const qreal shown = m_margins[static_cast<std::size_t>(side)]->value();
        (margins.*SideRows[side].set)(shown * (m_inInches ? MillimetresPerInch : 1));
    }
    return {m_paper->currentData().value<QPageSize>(),
            m_landscape->isChecked() ? QPageLayout::Landscape : QPageLayout::Portrait, margins,
            QPageLayout::Millimeter};
}
