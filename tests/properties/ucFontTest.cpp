#include "RecordedServices.h"
#include "document/rtCM.h"
#include "editor/control/ControlLook.h"
#include "editor/control/TextControl.h"
#include "editor/held/Colouring.h"
#include "properties/ucFont.h"
#include "settings/Settings.h"
#include "support/ScriptedServices.h"

#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QFontDatabase>
#include <QLabel>
#include <QLineEdit>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

namespace {

class FontPanel : public testing::Test {
 protected:
    FontPanel() {
        put("languages.idx", "<<HTML>>\r\n*.html\r\n");
        put("HTML.lng", "lexer hypertext\nclass markup 1 11\n");
        services.globals.languages.LoadLanguageIndex();
        services.options.FontName = ControlLook::defaultFont().family();
        services.options.FontSize = 11;
    }
    void put(const char* name, const QByteArray& bytes) const {
        QDir().mkpath(services.programFolder.filePath(u"languages"_qs));
        QFile file(services.programFolder.filePath(u"languages/"_qs + QLatin1String(name)));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    void open() {
        panel = std::make_unique<ucFont>(services.all, services.options, settings);
        panel->LoadProp();
        panel->show();
        changed = std::make_unique<QSignalSpy>(panel.get(), &ucFont::Changed);
    }
    template <typename Widget>
    Widget& part(const char* name) {
        return *panel->findChild<Widget*>(QLatin1String(name));
    }
    QComboBox& fonts() { return part<QComboBox>("cmbFont"); }
    QComboBox& sizes() { return part<QComboBox>("cmbSize"); }
    rtCM& sample() { return part<rtCM>("rtCM1"); }
    QStringList saved() {
        calls.clear();
        panel->SaveProp();
        return calls;
    }
    /// A font of the list that is not chosen.
    QString anotherFont() {
        for (int i = 0; i < fonts().count(); ++i) {
            if (!fonts().itemText(i).isEmpty() && i != fonts().currentIndex())
                return fonts().itemText(i);
        }
        return {};
    }

    ScriptedServices services;
    QStringList calls;
    RecordedRegistry registry{calls};
    Settings settings{registry};
    std::unique_ptr<ucFont> panel;
    std::unique_ptr<QSignalSpy> changed;
};

}  // namespace

TEST_F(FontPanel, TheSampleIsSomeHtmlInItsColours) {
    open();
    EXPECT_EQ(sample().Text(),
              u"<html>\n<body>\n<p>\nAn image: <img src='hello.gif' width='144' height='50'>\n</p>\n<p>\n"
              "Hello, this is Quillmark\n</p>\n</body>"_qs);
    EXPECT_EQ(sample().GetLang(), u"HTML"_qs);
    const TextControl& control = sample().control();
    control.colouring().completeTo(60);
    EXPECT_EQ(control.colouring().classAt(1), TokenClass::Markup);
    EXPECT_EQ(control.colouring().classAt(20), TokenClass::Text);
}

TEST_F(FontPanel, ListsTheFontsOfTheSystemThoseOfFixedWidthFirst) {
    open();
    QStringList listed;
    for (int i = 0; i < fonts().count(); ++i)
        listed << fonts().itemText(i);
    const int gap = static_cast<int>(listed.indexOf(QString()));
    for (int i = 0; i < listed.size(); ++i) {
        if (i != gap && QFontDatabase::hasFamily(listed.at(i))) {
            EXPECT_EQ(QFontDatabase::isFixedPitch(listed.at(i)), i < gap || gap < 0) << listed.at(i).toStdString();
        }
    }
    for (const QString& family : QFontDatabase::families()) {
        if (!QFontDatabase::isPrivateFamily(family)) {
            EXPECT_TRUE(listed.contains(family)) << family.toStdString();
        }
    }
}

TEST_F(FontPanel, ShowsTheFontOfAFreshTextWhileNoneIsStored) {
    open();
    EXPECT_EQ(fonts().currentText().toLower(), ControlLook::defaultFont().family().toLower());
    EXPECT_EQ(sizes().currentText(), QString::number(ControlLook::defaultFont().pointSize()));
    EXPECT_EQ(calls, QStringList());
}

TEST_F(FontPanel, ShowsTheStoredFont) {
    settings.write(u"FontName"_qs, u"A font that is nowhere"_qs);
    settings.write(u"FontSize"_qs, u"17"_qs);
    open();
    EXPECT_EQ(fonts().currentText(), u"A font that is nowhere"_qs);
    EXPECT_EQ(sizes().currentText(), u"17"_qs);
    EXPECT_EQ(sample().FontName(), u"A font that is nowhere"_qs);
    EXPECT_EQ(sample().FontSize(), 17);
    EXPECT_EQ(changed->count(), 0);
}

TEST_F(FontPanel, AStoredSizeThatIsNoneCountsAsTheFreshOne) {
    for (const char* size : {"large", "0", "-3", "99999", ""}) {
        settings.write(u"FontSize"_qs, QLatin1String(size));
        open();
        EXPECT_EQ(sample().FontSize(), ControlLook::defaultFont().pointSize()) << size;
    }
}

TEST_F(FontPanel, AFontAppliesToTheSampleAtOnce) {
    open();
    const QString name = anotherFont();
    if (name.isEmpty())
        GTEST_SKIP() << "only one font is installed";
    fonts().setCurrentText(name);
    EXPECT_EQ(sample().FontName(), name);
    EXPECT_EQ(changed->count(), 1);
}

TEST_F(FontPanel, ASizeAppliesToTheSampleAtOnce) {
    open();
    sizes().setCurrentIndex(sizes().findText(u"24"_qs));
    EXPECT_EQ(sample().FontSize(), 24);
    EXPECT_EQ(changed->count(), 1);
    sizes().lineEdit()->selectAll();
    QTest::keyClicks(sizes().lineEdit(), u"13"_qs);
    EXPECT_EQ(sample().FontSize(), 13);
}

TEST_F(FontPanel, ASizeThatIsNoNumberIsIgnored) {
    open();
    const int before = sample().FontSize();
    for (const char* size : {"", "x", "1x", "0", "-4", "&Hx", "1e9"}) {
        sizes().setEditText(QLatin1String(size));
        EXPECT_EQ(sample().FontSize(), before) << size;
    }
    EXPECT_EQ(changed->count(), 0);
    EXPECT_EQ(saved(), QStringList());
    QTest::keyClick(sizes().lineEdit(), Qt::Key_Return);
    EXPECT_EQ(sizes().currentText(), QString::number(before)) << "and gives way to the size that counts";
}

TEST_F(FontPanel, TypingASizeAddsNothingToTheList) {
    open();
    const int count = sizes().count();
    sizes().lineEdit()->selectAll();
    QTest::keyClicks(sizes().lineEdit(), u"123456"_qs);
    QTest::keyClick(sizes().lineEdit(), Qt::Key_Return);
    EXPECT_EQ(sizes().count(), count);
    EXPECT_EQ(sample().FontSize(), 123) << "three digits at most";
}

TEST_F(FontPanel, SavesTheFontOfTheSampleWhenItWasChanged) {
    open();
    EXPECT_EQ(saved(), QStringList());
    sizes().setEditText(u"24"_qs);
    const QString name = ControlLook::defaultFont().family();
    EXPECT_EQ(saved(), QStringList({u"editor/FontName="_qs + name, u"editor/FontSize=24"_qs}));
    EXPECT_EQ(services.options.FontName, name);
    EXPECT_EQ(services.options.FontSize, 24);
    EXPECT_EQ(saved(), QStringList());
}

TEST_F(FontPanel, UntilItIsSavedTheProgramKeepsItsFont) {
    open();
    sizes().setEditText(u"24"_qs);
    EXPECT_EQ(services.options.FontSize, 11);
}

TEST_F(FontPanel, TheKeyboardReachesTheListsAndPassesTheSampleBy) {
    open();
    EXPECT_TRUE(fonts().focusPolicy() & Qt::TabFocus);
    EXPECT_TRUE(sizes().focusPolicy() & Qt::TabFocus);
    EXPECT_FALSE(part<QWidget>("TextControl1").focusPolicy() & Qt::TabFocus);
    EXPECT_EQ(part<QWidget>("TextControl1").accessibleName(), u"Sample text"_qs);
    EXPECT_TRUE(sample().Locked());
    QStringList labels;
    for (const QLabel* label : panel->findChildren<QLabel*>()) {
        if (label->buddy() != nullptr)
            labels << label->text().remove(u'&');
    }
    EXPECT_EQ(labels, QStringList({u"Font Name:"_qs, u"Font Size:"_qs}));
}
