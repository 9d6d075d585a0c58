#include "editor/print/PageSetup.h"
#include "editor/print/PageSetupDialog.h"
#include "settings/registry/MemoryRegistry.h"
#include "settings/registry/RegistryData.h"
#include "settings/registry/modRegistry.h"
#include "support/Mnemonics.h"

#include <QAccessible>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QGroupBox>
#include <QLocale>
#include <QPushButton>
#include <QRadioButton>
#include <QScopeGuard>
#include <QTest>

#include <gtest/gtest.h>

#include <memory>

namespace {

QString storedUnder() {
    return programKey() + u"/Printing"_qs;
}

QPageLayout landscapeLegal() {
    return {QPageSize(QPageSize::Legal), QPageLayout::Landscape, QMarginsF(10, 20, 30, 40), QPageLayout::Millimeter};
}

struct PageSetupInAStore : testing::Test {
    MemoryRegistry store;

    void write(const char* name, const RegistryValue& value) {
        ASSERT_EQ(store.writeValue(HKEY_CURRENT_USER, storedUnder(), QString::fromLatin1(name), value),
                  RegistryCode::Ok);
    }
    QPageLayout stored() { return PageSetup(store).layout(); }
};

struct DialogForThePage : testing::Test {
    std::unique_ptr<PageSetupDialog> dialog = std::make_unique<PageSetupDialog>(PageSetup::defaultLayout());

    template <typename Widget>
    Widget& part(const char* name) const {
        return *dialog->findChild<Widget*>(QString::fromLatin1(name));
    }
    qreal margin(const char* name) const { return part<QDoubleSpinBox>(name).value(); }
};

}  // namespace

TEST_F(PageSetupInAStore, BeginsWithTheUsualPaperUpright) {
    EXPECT_EQ(stored(), PageSetup::defaultLayout());
    EXPECT_EQ(stored().pageSize().id(), QPageSize::A4);
    EXPECT_EQ(stored().orientation(), QPageLayout::Portrait);
    EXPECT_EQ(stored().margins(), QMarginsF(15, 15, 15, 15));
}

TEST_F(PageSetupInAStore, BeginsWithLetterWhereThatIsUsual) {
    const auto restore = qScopeGuard([] { QLocale::setDefault(QLocale::c()); });
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    EXPECT_EQ(stored().pageSize().id(), QPageSize::Letter);
}

TEST_F(PageSetupInAStore, IsKeptFromRunToRun) {
    EXPECT_TRUE(PageSetup(store).setLayout(landscapeLegal()));
    EXPECT_EQ(stored(), landscapeLegal());
}

TEST_F(PageSetupInAStore, IsKeptInMillimetresWhateverItsUnitIs) {
    QPageLayout inches = landscapeLegal();
    inches.setUnits(QPageLayout::Inch);
    EXPECT_TRUE(PageSetup(store).setLayout(inches));
    const QMarginsF margins = stored().margins(QPageLayout::Millimeter);
    EXPECT_NEAR(margins.left(), 10, 0.2);
    EXPECT_NEAR(margins.bottom(), 40, 0.2);
}

TEST_F(PageSetupInAStore, OfAPaperWithoutANameKeepsTheRest) {
    QPageLayout own = landscapeLegal();
    own.setPageSize(QPageSize(QSizeF(150, 250), QPageSize::Millimeter, u"Mine"_qs));
    PageSetup setup(store);
    EXPECT_TRUE(setup.setLayout(own));
    EXPECT_EQ(setup.layout(), own);
    EXPECT_EQ(stored().pageSize().id(), QPageSize::A4);
    EXPECT_EQ(stored().orientation(), QPageLayout::Landscape);
    EXPECT_EQ(stored().margins(), QMarginsF(10, 20, 30, 40));
}

TEST_F(PageSetupInAStore, DamagedValuesAreTheUsualOnes) {
    write("Paper", RegistryData::fromText(u"Papyrus"_qs));
    write("Landscape", RegistryData::fromInteger(7));
    write("LeftMargin", RegistryData::fromText(u"wide"_qs));
    write("TopMargin", RegistryData::fromInteger(-5));
    write("RightMargin", {RegistryType::Integer, "x"});
    EXPECT_EQ(stored(), PageSetup::defaultLayout());
}

TEST_F(PageSetupInAStore, MarginsThatLeaveNothingToPrintOnAreCut) {
    write("LeftMargin", RegistryData::fromInteger(99999));
    write("RightMargin", RegistryData::fromInteger(99999));
    EXPECT_EQ(stored().margins(), QMarginsF(95, 15, 95, 15));
    EXPECT_NEAR(stored().paintRect(QPageLayout::Millimeter).width(), 20, 0.2);
}

TEST_F(DialogForThePage, IsNamedAndShowsTheLayout) {
    dialog = std::make_unique<PageSetupDialog>(landscapeLegal());
    EXPECT_EQ(dialog->objectName(), u"frmPageSetup"_qs);
    EXPECT_EQ(dialog->windowTitle(), u"Page Setup"_qs);
    EXPECT_EQ(part<QComboBox>("cmbPaper").currentData().value<QPageSize>().id(), QPageSize::Legal);
    EXPECT_TRUE(part<QRadioButton>("optLandscape").isChecked());
    EXPECT_EQ(margin("txtLeft"), 10);
    EXPECT_EQ(margin("txtTop"), 20);
    EXPECT_EQ(margin("txtRight"), 30);
    EXPECT_EQ(margin("txtBottom"), 40);
    EXPECT_EQ(dialog->layoutChosen(), landscapeLegal());
}

TEST_F(DialogForThePage, GivesWhatIsChosen) {
    QComboBox& paper = part<QComboBox>("cmbPaper");
    paper.setCurrentIndex(paper.findText(QPageSize::name(QPageSize::A5)));
    part<QRadioButton>("optLandscape").click();
    part<QDoubleSpinBox>("txtTop").setValue(7.5);
    const QPageLayout chosen = dialog->layoutChosen();
    EXPECT_EQ(chosen.pageSize().id(), QPageSize::A5);
    EXPECT_EQ(chosen.orientation(), QPageLayout::Landscape);
    EXPECT_EQ(chosen.margins(), QMarginsF(15, 7.5, 15, 15));
}

TEST_F(DialogForThePage, OffersThePaperInUseWhateverItIs) {
    const QPageSize own(QSizeF(150, 250), QPageSize::Millimeter, u"Mine"_qs);
    QPageLayout layout = PageSetup::defaultLayout();
    layout.setPageSize(own);
    dialog = std::make_unique<PageSetupDialog>(layout);
    EXPECT_EQ(part<QComboBox>("cmbPaper").currentText(), u"Mine"_qs);
    EXPECT_EQ(dialog->layoutChosen().pageSize(), own);
}

TEST_F(DialogForThePage, LimitsTheMarginsByThePaper) {
    EXPECT_EQ(part<QDoubleSpinBox>("txtLeft").maximum(), 95);
    EXPECT_EQ(part<QDoubleSpinBox>("txtTop").maximum(), 138.5);
    part<QDoubleSpinBox>("txtTop").setValue(138.5);
    part<QRadioButton>("optLandscape").click();
    EXPECT_EQ(part<QDoubleSpinBox>("txtLeft").maximum(), 138.5);
    EXPECT_EQ(margin("txtTop"), 95) << "what is too wide for the new paper is cut";
}

TEST_F(DialogForThePage, CountsInInchesWhereThatIsUsual) {
    const auto restore = qScopeGuard([] { QLocale::setDefault(QLocale::c()); });
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    QPageLayout layout = PageSetup::defaultLayout();
    layout.setMargins(QMarginsF(25.4, 12.7, 25.4, 12.7));
    dialog = std::make_unique<PageSetupDialog>(layout);
    EXPECT_EQ(margin("txtLeft"), 1);
    EXPECT_EQ(margin("txtTop"), 0.5);
    EXPECT_NEAR(dialog->layoutChosen().margins().left(), 25.4, 0.01);
}

TEST_F(DialogForThePage, IsAtHandForKeyboardAndScreenReader) {
    dialog->show();
    EXPECT_EQ(doubledMnemonics(*dialog), QStringList());
    EXPECT_EQ(dialog->focusWidget(), &part<QComboBox>("cmbPaper"));
    for (const char* name : {"cmbPaper", "optPortrait", "optLandscape", "txtLeft", "txtTop", "txtRight", "txtBottom"}) {
        EXPECT_FALSE(part<QWidget>(name).accessibleName().isEmpty()) << name;
    }
    QStringList order;
    for (QWidget* widget = dialog->nextInFocusChain(); widget != dialog.get(); widget = widget->nextInFocusChain()) {
        const QString name = widget->objectName();
        if (name.startsWith(u"txt"_qs) || name.startsWith(u"opt"_qs) || name.startsWith(u"cmb"_qs))
            order << name;
    }
    EXPECT_EQ(order, QStringList({u"cmbPaper"_qs, u"optPortrait"_qs, u"optLandscape"_qs, u"txtLeft"_qs, u"txtTop"_qs,
                                  u"txtRight"_qs, u"txtBottom"_qs}));
    QTest::keyClick(dialog.get(), Qt::Key_Return);
    EXPECT_EQ(dialog->result(), QDialog::Accepted);
    dialog->show();
    QTest::keyClick(dialog.get(), Qt::Key_Escape);
    EXPECT_EQ(dialog->result(), QDialog::Rejected);
}
