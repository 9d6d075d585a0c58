#include "support/Mnemonics.h"
#include "support/ScriptedPrompts.h"
#include "workspace/files/FolderFixture.h"
#include "workspace/lists/frmFileProperties.h"

#include <QApplication>
#include <QPointer>
#include <QPushButton>
#include <QTest>

namespace {

class FileProperties : public FolderFixture {
 protected:
    void TearDown() override { delete m_dialog.data(); }

    bool show(const QString& path) {
        if (!ShowProperties(path, m_prompts, nullptr))
            return false;
        for (QWidget* window : QApplication::topLevelWidgets()) {
            if (window->objectName() == QLatin1String("frmFileProperties"))
                m_dialog = qobject_cast<QDialog*>(window);
        }
        return m_dialog != nullptr;
    }
    QString text(const char* name) const {
        const auto* label = m_dialog->findChild<QLabel*>(QString::fromLatin1(name));
        return label == nullptr ? u"none"_qs : label->text();
    }

    ScriptedPrompts m_prompts;
    QPointer<QDialog> m_dialog;
};

TEST_F(FileProperties, AFileIsDescribedLineByLine) {
    ASSERT_TRUE(show(makeFile(u"a.txt"_qs, QByteArray(1234, 'x'))));
    EXPECT_EQ(m_dialog->windowTitle(), u"Properties of a.txt"_qs);
    EXPECT_EQ(text("lblPath"), in(u"a.txt"_qs));
    EXPECT_EQ(text("lblSize"), u"1,234 bytes"_qs);
    EXPECT_EQ(text("lblTarget"), u"none"_qs);
    for (const char* name : {"lblType", "lblModified", "lblAccessed", "lblOwner", "lblMode"}) {
        EXPECT_NE(text(name), u"none"_qs) << name;
    }
    EXPECT_TRUE(m_dialog->findChild<QPushButton*>(u"cmdStop"_qs)->isHidden());
    EXPECT_EQ(doubledMnemonics(*m_dialog), QStringList());
}

TEST_F(FileProperties, ALinkShowsItsTarget) {
    ASSERT_TRUE(show(makeLink(u"link"_qs, u"/no/such/target"_qs)));
    EXPECT_EQ(text("lblTarget"), u"/no/such/target"_qs);
}

TEST_F(FileProperties, TheRootIsNamedByItsPath) {
    ASSERT_TRUE(show(u"/"_qs));
    EXPECT_EQ(m_dialog->windowTitle(), u"Properties of /"_qs);
}

TEST_F(FileProperties, AFolderIsCountedWhileTheDialogIsShown) {
    makeFolder(u"a"_qs);
    makeFile(u"a/one"_qs, "1");
    ASSERT_TRUE(show(root()));
    EXPECT_TRUE(QTest::qWaitFor([&] { return text("lblSize") == u"1 byte in 1 file and 1 folder"_qs; }))
        << text("lblSize").toStdString();
    EXPECT_TRUE(m_dialog->findChild<QPushButton*>(u"cmdStop"_qs)->isHidden());
}

TEST_F(FileProperties, CountingCanBeStopped) {
    ASSERT_TRUE(show(u"/usr"_qs));
    m_dialog->findChild<QPushButton*>(u"cmdStop"_qs)->click();
    EXPECT_TRUE(text("lblSize").startsWith(u"At least "_qs)) << text("lblSize").toStdString();
}

TEST_F(FileProperties, ClosingItDestroysItAlsoWhileItCounts) {
    ASSERT_TRUE(show(u"/usr"_qs));
    m_dialog->findChild<QPushButton*>(u"cmdClose"_qs)->click();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(m_dialog, nullptr);
}

TEST_F(FileProperties, APathThatCannotBeExaminedIsTold) {
    EXPECT_FALSE(show(in(u"nothing"_qs)));
    EXPECT_EQ(m_prompts.titles, QStringList(u"Error"_qs));
    EXPECT_EQ(m_prompts.messages, QStringList(u"No such file or directory"_qs));
}

}  // namespace
