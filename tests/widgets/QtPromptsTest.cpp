#include "widgets/QtPrompts.h"

#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <functional>
#include <utility>

namespace {

/// Runs the action on the box or dialog once it stands.
template <typename Box>
void whenShown(std::function<void(Box&)> action) {
    QTimer::singleShot(0, qApp, [action = std::move(action)] {
        auto* box = qobject_cast<Box*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        action(*box);
    });
}

}  // namespace

TEST(QtPrompts, AMessageShowsItsTextAsItStands) {
    QtPrompts prompts;
    whenShown<QMessageBox>([](QMessageBox& box) {
        EXPECT_EQ(box.windowTitle(), QStringLiteral("Quillmark"));
        EXPECT_EQ(box.text(), QStringLiteral("/a <b>\nFile not found!"));
        EXPECT_EQ(box.textFormat(), Qt::PlainText);
        EXPECT_EQ(box.standardButtons(), QMessageBox::Ok);
        QTest::keyClick(&box, Qt::Key_Escape);
    });
    prompts.message(nullptr, QStringLiteral("/a <b>\nFile not found!"), QString());
}

TEST(QtPrompts, BoxesStandOverTheWindowAndStandItThatTheAskingPartGoes) {
    QtPrompts prompts;
    QWidget window;
    window.show();
    auto* part = new QWidget(&window);
    whenShown<QMessageBox>([&](QMessageBox& box) {
        EXPECT_EQ(box.parentWidget(), &window);
        delete std::exchange(part, nullptr);
        box.accept();
    });
    prompts.message(part, QStringLiteral("text"), QString());
    EXPECT_EQ(part, nullptr);
    part = new QWidget(&window);
    whenShown<QMessageBox>([&](QMessageBox& box) {
        EXPECT_EQ(box.parentWidget(), &window);
        delete std::exchange(part, nullptr);
        box.button(QMessageBox::Yes)->click();
    });
    EXPECT_TRUE(prompts.askYesNo(part, QStringLiteral("text"), QString()));
}

TEST(QtPrompts, AMessageOfAHundredThousandCharactersIsCutInTheMiddle) {
    QtPrompts prompts;
    const QString text = QString(100'000, u'x') + QLatin1String("\nFile not found!");
    whenShown<QMessageBox>([](QMessageBox& box) {
        EXPECT_LT(box.text().size(), 10'000);
        EXPECT_TRUE(box.text().endsWith(QLatin1String("\nFile not found!")));
        box.accept();
    });
    prompts.message(nullptr, text, QString());
}

TEST(QtPrompts, WhatIsTooMuchForTheScreenKeepsItsBeginningEndAndButtons) {
    QtPrompts prompts;
    for (const QString& middle : {QString(2'000, u'\n'), QStringLiteral("a b ").repeated(1'500),
                                  QStringLiteral("\u6F22 ").repeated(3'000), QStringLiteral("W ").repeated(50'000)}) {
        whenShown<QMessageBox>([](QMessageBox& box) {
            EXPECT_TRUE(box.text().startsWith(QLatin1String("first ")));
            EXPECT_TRUE(box.text().contains(u'\u2026'));
            EXPECT_TRUE(box.text().endsWith(QLatin1String("\nFile not found!")));
            EXPECT_LT(box.height(), box.screen()->availableGeometry().height());
            box.accept();
        });
        prompts.message(nullptr, QLatin1String("first ") + middle + QLatin1String("\nFile not found!"), {});
    }
}

TEST(QtPrompts, AnUsualPathIsShownWhole) {
    QtPrompts prompts;
    const QString text = QStringLiteral("/home/u/notes").repeated(20) + QLatin1String("\nFile not found!");
    whenShown<QMessageBox>([&](QMessageBox& box) {
        EXPECT_EQ(box.text(), text);
        box.accept();
    });
    prompts.message(nullptr, text, {});
}

TEST(QtPrompts, WithoutAFolderADialogBeginsWhereAFileWasChosenLast) {
    const QTemporaryDir folder;
    QtPrompts prompts;
    const FileQuestion question{QStringLiteral("Save"), {}, folder.filePath(QStringLiteral("x")), {}};
    whenShown<QFileDialog>([](QFileDialog& dialog) {
        dialog.setDirectory(QDir::root());
        static_cast<QDialog&>(dialog).done(QDialog::Accepted);
    });
    const QString file = prompts.askFileToSave(nullptr, question);
    whenShown<QFileDialog>([&](QFileDialog& dialog) {
        EXPECT_EQ(dialog.directory().absolutePath(), QFileInfo(file).absolutePath());
        dialog.reject();
    });
    prompts.askFileToSave(nullptr, {QStringLiteral("Save"), {}, {}, {}});
}

TEST(QtPrompts, AQuestionGoesAwayByItsButtonsOnly) {
    QtPrompts prompts;
    for (const auto button : {QMessageBox::Yes, QMessageBox::No}) {
        whenShown<QMessageBox>([button](QMessageBox& box) {
            EXPECT_EQ(box.windowTitle(), QStringLiteral("Title"));
            EXPECT_FALSE(box.windowFlags().testFlag(Qt::WindowCloseButtonHint));
            QTest::keyClick(&box, Qt::Key_Escape);
            EXPECT_TRUE(box.isVisible());
            box.close();
            EXPECT_TRUE(box.isVisible());
            box.button(button)->click();
        });
        EXPECT_EQ(prompts.askYesNo(nullptr, QStringLiteral("Save ?"), QStringLiteral("Title")),
                  button == QMessageBox::Yes);
    }
}

TEST(QtPrompts, TheOpenDialogHasTheReadOnlyBox) {
    const QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("a.txt")));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    QtPrompts prompts;
    whenShown<QFileDialog>([&](QFileDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), QStringLiteral("Open"));
        EXPECT_TRUE(dialog.testOption(QFileDialog::DontUseNativeDialog));
        EXPECT_EQ(dialog.directory().absolutePath(), folder.path());
        auto* box = dialog.findChild<QCheckBox*>(QStringLiteral("chkReadOnly"));
        ASSERT_NE(box, nullptr);
        EXPECT_TRUE(box->isVisible());
        box->setChecked(true);
        dialog.selectFile(file.fileName());
        static_cast<QDialog&>(dialog).accept();
        if (dialog.isVisible())
            static_cast<QDialog&>(dialog).done(QDialog::Accepted);
    });
    const OpenAnswer answer =
        prompts.askFilesToOpen(nullptr, {QStringLiteral("Open"), folder.path(), QString(), QStringLiteral("All|*.*")});
    EXPECT_EQ(answer.files, QStringList(file.fileName()));
    EXPECT_TRUE(answer.readOnly);
}

TEST(QtPrompts, TheSaveDialogNeitherAsksNorAddsASuffix) {
    const QTemporaryDir folder;
    QtPrompts prompts;
    whenShown<QFileDialog>([](QFileDialog& dialog) {
        EXPECT_TRUE(dialog.testOption(QFileDialog::DontConfirmOverwrite));
        EXPECT_EQ(dialog.defaultSuffix(), QString());
        static_cast<QDialog&>(dialog).accept();
        if (dialog.isVisible())
            static_cast<QDialog&>(dialog).done(QDialog::Accepted);
    });
    EXPECT_EQ(prompts.askFileToSave(nullptr, {QStringLiteral("Save"), folder.path(), QStringLiteral("x"), QString()}),
              folder.filePath(QStringLiteral("x")));
}

TEST(QtPrompts, ACancelledDialogGivesNothing) {
    QtPrompts prompts;
    whenShown<QFileDialog>([](QFileDialog& dialog) { dialog.reject(); });
    EXPECT_EQ(prompts.askFileToSave(nullptr, {QStringLiteral("Save"), QString(), QString(), QString()}), QString());
    whenShown<QFileDialog>([](QFileDialog& dialog) { dialog.reject(); });
    EXPECT_TRUE(
        prompts.askFilesToOpen(nullptr, {QStringLiteral("Open"), QString(), QString(), QString()}).files.isEmpty());
}

TEST(QtPrompts, FiltersKeepTheirDescriptionsAndTakePatternsApart) {
    EXPECT_EQ(nameFilters(QStringLiteral("Text Files (*.txt)|*.txt|All|*.*|C|*.c; *.h")),
              QStringList({QStringLiteral("Text Files (*.txt) (*.txt)"), QStringLiteral("All (*)"),
                           QStringLiteral("C (*.c *.h)")}));
    EXPECT_TRUE(nameFilters(QString()).isEmpty());
    EXPECT_TRUE(nameFilters(QStringLiteral("alone")).isEmpty());
}
