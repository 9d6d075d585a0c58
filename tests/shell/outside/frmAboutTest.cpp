#include "platform/Product.h"
#include "shell/outside/frmAbout.h"
#include "support/Mnemonics.h"
#include "support/ScriptedPrompts.h"

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QDesktopServices>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QUrl>

#include <gtest/gtest.h>

namespace {

class NotedOpener : public QObject {
    Q_OBJECT

 public:
    NotedOpener() { QDesktopServices::setUrlHandler(u"https"_qs, this, "open"); }
    ~NotedOpener() override { QDesktopServices::unsetUrlHandler(u"https"_qs); }
    Q_DISABLE_COPY_MOVE(NotedOpener)

    QList<QUrl> opened;

 public Q_SLOTS:
    void open(const QUrl& address) { opened << address; }
};

class AboutBox : public testing::Test {
 protected:
    AboutBox() {
        m_form.show();
        m_form.activateWindow();
        QApplication::processEvents();
    }

    QString caption(const char* name) const { return m_form.findChild<QLabel*>(QString::fromLatin1(name))->text(); }
    template <typename Type = QPushButton>
    Type* child(const char* name) const {
        return m_form.findChild<Type*>(QString::fromLatin1(name));
    }

    QString m_text = u"what there is to say"_qs;
    ScriptedPrompts m_prompts;
    frmAbout m_form{[this] { return m_text; }, m_prompts};
};

}  // namespace

TEST_F(AboutBox, ShowsNameVersionBuildAndLicence) {
    EXPECT_EQ(m_form.objectName(), u"frmAbout"_qs);
    EXPECT_EQ(caption("lblTitle"), u"Quillmark"_qs);
    EXPECT_EQ(caption("lblVersion"), u"Version 3.0.3"_qs);
    EXPECT_EQ(caption("lbVersion"), u"(%1)"_qs.arg(Product::buildNumber()));
    bool isNumber = false;
    Product::buildNumber().toInt(&isNumber);
    EXPECT_TRUE(isNumber) << Product::buildNumber().toStdString();
    EXPECT_TRUE(caption("lblLicence").contains(u"GPL-3.0-or-later"_qs));
    EXPECT_EQ(caption("Label2"), Product::webAddress());
}

TEST_F(AboutBox, IsClosedByOkAndByEscape) {
    EXPECT_TRUE(child("cmdOK")->hasFocus());
    QTest::keyClick(child("cmdOK"), Qt::Key_Return);
    EXPECT_FALSE(m_form.isVisible());
    m_form.show();
    child("cmdOK")->click();
    EXPECT_FALSE(m_form.isVisible());
    m_form.show();
    QTest::keyClick(&m_form, Qt::Key_Escape);
    EXPECT_FALSE(m_form.isVisible());
}

TEST_F(AboutBox, ItsLinkOpensTheWebAddressByMouseAndByKeyboard) {
    const NotedOpener opener;
    auto* link = child<QLabel>("Label2");
    QTest::mouseClick(link, Qt::LeftButton);
    link->setFocus(Qt::TabFocusReason);
    QTest::keyClick(link, Qt::Key_Return);
    EXPECT_EQ(opener.opened, QList<QUrl>({QUrl(Product::webAddress()), QUrl(Product::webAddress())}));
    EXPECT_TRUE(m_form.isVisible());
}

TEST_F(AboutBox, ItsLinkLooksLikeOneAndIsOneForScreenReaders) {
    auto* link = child<QLabel>("Label2");
    EXPECT_TRUE(link->font().underline());
    EXPECT_EQ(link->foregroundRole(), QPalette::Link);
    EXPECT_EQ(QAccessible::queryAccessibleInterface(link)->role(), QAccessible::Link);
}

TEST_F(AboutBox, TheKeyboardReachesEverything) {
    EXPECT_EQ(doubledMnemonics(m_form), QStringList());
    QStringList reached;
    for (int i = 0; i < 3; ++i) {
        reached << QApplication::focusWidget()->objectName();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    EXPECT_EQ(QApplication::focusWidget()->objectName(), u"cmdOK"_qs);
    reached.sort();
    EXPECT_EQ(reached, QStringList({u"Label2"_qs, u"cmdOK"_qs, u"cmdSysInfo"_qs}));
}

TEST_F(AboutBox, SystemInformationIsShownAndCopied) {
    bool shown = false;
    QTimer::singleShot(0, &m_form, [&] {
        auto* form = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(form, nullptr);
        shown = true;
        auto* text = form->findChild<QPlainTextEdit*>(u"txtInformation"_qs);
        EXPECT_EQ(text->toPlainText(), m_text);
        EXPECT_TRUE(text->isReadOnly());
        EXPECT_TRUE(text->textInteractionFlags().testFlag(Qt::TextSelectableByKeyboard));
        EXPECT_FALSE(text->accessibleName().isEmpty());
        EXPECT_EQ(doubledMnemonics(*form), QStringList());
        form->findChild<QPushButton*>(u"cmdCopy"_qs)->click();
        EXPECT_TRUE(form->isVisible());
        QTest::keyClick(text, Qt::Key_Escape);
    });
    child("cmdSysInfo")->click();
    EXPECT_TRUE(shown);
    EXPECT_EQ(QApplication::clipboard()->text(), m_text);
    EXPECT_TRUE(m_prompts.messages.isEmpty());
}

TEST_F(AboutBox, WithoutSystemInformationAMessageSaysSo) {
    m_text.clear();
    m_form.StartSysInfo();
    EXPECT_EQ(m_prompts.messages, QStringList(u"System Information Is Unavailable At This Time"_qs));
}

#include "frmAboutTest.moc"
