#include "widgets/FileDialog.h"
#include "widgets/QtPrompts.h"

#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QWindow>

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <utility>

namespace {

/// Runs the action on the box or dialog once it is shown.
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
        EXPECT_EQ(box.windowTitle(), u"Quillmark"_qs);
        EXPECT_EQ(box.text(), u"/a <b>\nFile not found!"_qs);
        EXPECT_EQ(box.textFormat(), Qt::PlainText);
        EXPECT_EQ(box.standardButtons(), QMessageBox::Ok);
        EXPECT_EQ(box.icon(), QMessageBox::NoIcon);
        QTest::keyClick(&box, Qt::Key_Escape);
    });
    prompts.message(nullptr, u"/a <b>\nFile not found!"_qs, QString());
}

TEST(QtPrompts, AStopIsAMessageWithAPicture) {
    QtPrompts prompts;
    whenShown<QMessageBox>([](QMessageBox& box) {
        EXPECT_EQ(box.windowTitle(), u"The title"_qs);
        EXPECT_EQ(box.text(), u"Not ready"_qs);
        EXPECT_EQ(box.standardButtons(), QMessageBox::Ok);
        EXPECT_EQ(box.icon(), QMessageBox::Critical);
        QTest::keyClick(&box, Qt::Key_Return);
    });
    prompts.stop(nullptr, u"Not ready"_qs, u"The title"_qs);
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
    prompts.message(part, u"text"_qs, QString());
    EXPECT_EQ(part, nullptr);
    part = new QWidget(&window);
    whenShown<QMessageBox>([&](QMessageBox& box) {
        EXPECT_EQ(box.parentWidget(), &window);
        delete std::exchange(part, nullptr);
        box.button(QMessageBox::Yes)->click();
    });
    EXPECT_TRUE(prompts.askYesNo(part, u"text"_qs, QString()));
}

TEST(QtPrompts, AnEmptyTextIsAnAnswerAndACancelledBoxIsNone) {
    QtPrompts prompts;
    const auto answerAfter = [&](const QString& typed, Qt::Key end) {
        whenShown<QInputDialog>([=](QInputDialog& box) {
            EXPECT_EQ(box.textValue(), u"before"_qs);
            box.setTextValue(typed);
            QTest::keyClick(&box, end);
        });
        return prompts.askText(nullptr, u"Title"_qs, u"Prompt:"_qs, u"before"_qs);
    };
    EXPECT_EQ(answerAfter(u" typed "_qs, Qt::Key_Return), u" typed "_qs);
    EXPECT_EQ(answerAfter({}, Qt::Key_Return), QString());
    EXPECT_EQ(answerAfter(u"typed"_qs, Qt::Key_Escape), std::nullopt);
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
    for (const QString& middle : {QString(2'000, u'\n'), u"a b "_qs.repeated(1'500), u"\u6F22 "_qs.repeated(3'000),
                                  u"W "_qs.repeated(50'000)}) {
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
    const QString text = u"/home/u/notes"_qs.repeated(20) + QLatin1String("\nFile not found!");
    whenShown<QMessageBox>([&](QMessageBox& box) {
        EXPECT_EQ(box.text(), text);
        box.accept();
    });
    prompts.message(nullptr, text, {});
}

TEST(QtPrompts, WithoutAFolderADialogBeginsWhereAFileWasChosenLast) {
    const QTemporaryDir folder;
    QtPrompts prompts;
    const FileQuestion question{u"Save"_qs, {}, folder.filePath(u"x"_qs), {}};
    whenShown<QFileDialog>([](QFileDialog& dialog) {
        dialog.setDirectory(QDir::root());
        static_cast<QDialog&>(dialog).done(QDialog::Accepted);
    });
    const QString file = prompts.askFileToSave(nullptr, question);
    whenShown<QFileDialog>([&](QFileDialog& dialog) {
        EXPECT_EQ(dialog.directory().absolutePath(), QFileInfo(file).absolutePath());
        dialog.reject();
    });
    prompts.askFileToSave(nullptr, {u"Save"_qs, {}, {}, {}});
}

TEST(QtPrompts, AQuestionGoesAwayByItsButtonsOnly) {
    QtPrompts prompts;
    for (const auto button : {QMessageBox::Yes, QMessageBox::No}) {
        whenShown<QMessageBox>([button](QMessageBox& box) {
            EXPECT_EQ(box.windowTitle(), u"Title"_qs);
            EXPECT_FALSE(box.windowFlags().testFlag(Qt::WindowCloseButtonHint));
            QTest::keyClick(&box, Qt::Key_Escape);
            EXPECT_TRUE(box.isVisible());
            box.close();
            EXPECT_TRUE(box.isVisible());
            box.button(button)->click();
        });
        EXPECT_EQ(prompts.askYesNo(nullptr, u"Save ?"_qs, u"Title"_qs), button == QMessageBox::Yes);
    }
}

TEST(QtPrompts, EnterGivesThePresetAnswer) {
    QtPrompts prompts;
    for (const Prompts::Answer preset : {Prompts::Answer::Yes, Prompts::Answer::No}) {
        whenShown<QMessageBox>([](QMessageBox& box) { QTest::keyClick(&box, Qt::Key_Return); });
        EXPECT_EQ(prompts.askYesNo(nullptr, u"Overwrite it ?"_qs, {}, {}, preset), preset == Prompts::Answer::Yes);
    }
}

TEST(QtPrompts, AQuestionShowsItsInformativeTextBelow) {
    QtPrompts prompts;
    for (const QString& text : {QString(), u"Unsaved changes will be lost."_qs}) {
        whenShown<QMessageBox>([&](QMessageBox& box) {
            EXPECT_EQ(box.text(), u"reload it."_qs);
            EXPECT_EQ(box.informativeText(), text);
            const auto* small = box.findChild<QLabel*>(u"qt_msgbox_informativelabel"_qs);
            EXPECT_EQ(small == nullptr, text.isEmpty());
            if (small != nullptr) {
                EXPECT_LT(small->font().pointSizeF(), box.font().pointSizeF());
            }
            box.button(QMessageBox::No)->click();
        });
        EXPECT_FALSE(prompts.askYesNo(nullptr, u"reload it."_qs, {}, text));
    }
}

// Paths of the file dialogs

namespace {

void touch(const QString& path) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
}

/// A folder with a link to a folder elsewhere, and dialogs that are answered by keyboard.
class FileDialogs : public testing::Test {
 protected:
    void SetUp() override {
        ASSERT_TRUE(QDir(m_folder.path()).mkpath(u"far/inner"_qs));
        ASSERT_TRUE(QDir(m_folder.path()).mkpath(u"near"_qs));
        ASSERT_TRUE(QFile::link(path("far/inner"), path("link")));
        touch(path("x.txt"));
        touch(path("far/x.txt"));
    }
    QString path(const char* name) const { return m_folder.filePath(QLatin1String(name)); }
    static QLineEdit& field(QFileDialog& dialog) { return *dialog.findChild<QLineEdit*>(u"fileNameEdit"_qs); }

    /// The dialog changes the text of a field without the focus.
    static bool focusField(QFileDialog& dialog) {
        dialog.activateWindow();
        field(dialog).setFocus();
        return QTest::qWaitFor([&] { return field(dialog).hasFocus(); });
    }

    /// Enters each text in turn and presses Return.
    void whenAsked(const QStringList& texts) {
        whenShown<QFileDialog>([texts](QFileDialog& dialog) {
            for (const QString& text : texts) {
                ASSERT_TRUE(dialog.isVisible()) << "before " << text.toStdString();
                ASSERT_TRUE(focusField(dialog));
                field(dialog).setText(text);
                EXPECT_EQ(field(dialog).text(), text);
                QTest::keyClick(&field(dialog), Qt::Key_Return);
            }
            EXPECT_FALSE(dialog.isVisible());
            if (dialog.isVisible())
                dialog.reject();
        });
    }
    QStringList opened(const QStringList& texts) {
        whenAsked(texts);
        return m_prompts.askFilesToOpen(nullptr, {u"Open"_qs, m_folder.path(), {}, {}}).files;
    }
    QString saved(const QStringList& texts) {
        whenAsked(texts);
        return m_prompts.askFileToSave(nullptr, {u"Save"_qs, m_folder.path(), {}, {}});
    }

    QString folder(const QStringList& texts) {
        whenAsked(texts);
        return m_prompts.askFolder(nullptr, u"Select folder"_qs);
    }

    QTemporaryDir m_folder;
    QtPrompts m_prompts;
};

}  // namespace

TEST_F(FileDialogs, LeaveTheParentOfALinkToTheSystem) {
    for (const QString& typed : {path("link/../x.txt"), u"link/../x.txt"_qs}) {
        EXPECT_EQ(opened({typed}), QStringList(path("link/../x.txt")));
        EXPECT_EQ(saved({typed}), path("link/../x.txt"));
        EXPECT_EQ(saved({u"link/../new.txt"_qs}), path("link/../new.txt"));
    }
}

TEST_F(FileDialogs, GiveAnAbsolutePathForEveryName) {
    EXPECT_EQ(opened({u"x.txt"_qs}), QStringList(path("x.txt")));
    EXPECT_EQ(opened({u"./far//x.txt"_qs}), QStringList(path("far/x.txt")));
    EXPECT_EQ(saved({u"new.txt"_qs}), path("new.txt"));
    EXPECT_EQ(saved({u"far/new.txt"_qs}), path("far/new.txt"));
}

TEST_F(FileDialogs, TakeSeveralNamesInQuotationMarks) {
    EXPECT_EQ(opened({u"\"link/../x.txt\" \"x.txt\""_qs}), QStringList({path("link/../x.txt"), path("x.txt")}));
}

TEST_F(FileDialogs, TakeANameWithAQuotationMark) {
    touch(path("a\"b.txt"));
    EXPECT_EQ(opened({u"a\"b.txt"_qs}), QStringList(path("a\"b.txt")));
}

TEST_F(FileDialogs, LeaveItToTheProgramToReportAMissingFile) {
    EXPECT_EQ(opened({u"gone.txt"_qs}), QStringList(path("gone.txt")));
    EXPECT_EQ(opened({u"gone/gone.txt"_qs}), QStringList(path("gone/gone.txt")));
}

TEST_F(FileDialogs, ShowTheFolderThatIsNamed) {
    EXPECT_EQ(opened({u"far"_qs, u"x.txt"_qs}), QStringList(path("far/x.txt")));
    EXPECT_EQ(opened({u"far/inner"_qs, u".."_qs, u"x.txt"_qs}), QStringList(path("far/x.txt")));
    EXPECT_EQ(opened({u"link/.."_qs, u"x.txt"_qs}), QStringList(QFileInfo(path("far/x.txt")).canonicalFilePath()));
    EXPECT_EQ(saved({path("far/"), u"new.txt"_qs}), path("far/new.txt"));
}

TEST_F(FileDialogs, ChooseAFolderThatExists) {
    whenShown<QFileDialog>([&](QFileDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), u"Select folder"_qs);
        EXPECT_TRUE(dialog.testOption(QFileDialog::DontUseNativeDialog));
        EXPECT_TRUE(dialog.testOption(QFileDialog::ShowDirsOnly));
        EXPECT_EQ(dialog.fileMode(), QFileDialog::Directory);
        dialog.reject();
    });
    EXPECT_EQ(m_prompts.askFolder(nullptr, u"Select folder"_qs), QString());
    EXPECT_EQ(folder({path("far")}), path("far"));
    EXPECT_EQ(folder({u"near"_qs}), path("near"));
    EXPECT_EQ(folder({u"far/inner/"_qs}), path("far/inner"));
    EXPECT_EQ(folder({u"inner/.."_qs}), path("far/inner/.."));
    EXPECT_EQ(folder({path("link/..")}), path("link/.."));
    EXPECT_EQ(folder({u"/"_qs}), u"/"_qs);
}

TEST_F(FileDialogs, StartBesideTheFolderThatWasChosenLast) {
    EXPECT_EQ(folder({path("far/inner")}), path("far/inner"));
    whenShown<QFileDialog>([&](QFileDialog& dialog) {
        EXPECT_EQ(dialog.directory().absolutePath(), path("far"));
        dialog.reject();
    });
    m_prompts.askFolder(nullptr, u"Select folder"_qs);
    EXPECT_EQ(opened({path("x.txt")}), QStringList(path("x.txt")));
    whenShown<QFileDialog>([&](QFileDialog& dialog) {
        EXPECT_EQ(dialog.directory().absolutePath(), m_folder.path()) << "files have a place of their own";
        dialog.reject();
    });
    m_prompts.askFilesToOpen(nullptr, {u"Open"_qs, {}, {}, {}});
}

TEST_F(FileDialogs, TakeTheShownFolderWhenNoneIsNamed) {
    EXPECT_EQ(folder({path("far/inner")}), path("far/inner"));
    whenShown<QFileDialog>([&](QFileDialog& dialog) {
        field(dialog).clear();
        static_cast<QDialog&>(dialog).accept();
        EXPECT_FALSE(dialog.isVisible());
        if (dialog.isVisible())
            dialog.reject();
    });
    EXPECT_EQ(m_prompts.askFolder(nullptr, u"Select folder"_qs), path("far"));
}

TEST_F(FileDialogs, StartInTheRealFolderOfAFileBelowTheParentOfALink) {
    whenShown<QFileDialog>([&](QFileDialog& dialog) {
        EXPECT_EQ(field(dialog).text(), u"x.txt"_qs);
        QTest::keyClick(&field(dialog), Qt::Key_Return);
        if (dialog.isVisible())
            dialog.reject();
    });
    const QString answer =
        m_prompts.askFileToSave(nullptr, {u"Save As"_qs, path("link/../"), path("link/../x.txt"), {}});
    EXPECT_EQ(answer, QFileInfo(path("far/x.txt")).canonicalFilePath());
}

TEST_F(FileDialogs, FindTheHomeFolder) {
    const QByteArray before = qgetenv("HOME");
    qputenv("HOME", QFile::encodeName(m_folder.path()));
    EXPECT_EQ(opened({u"~/x.txt"_qs}), QStringList(path("x.txt")));
    qputenv("HOME", before);
}

TEST(QtPrompts, TheOpenDialogHasTheReadOnlyBox) {
    const QTemporaryDir folder;
    QFile file(folder.filePath(u"a.txt"_qs));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    QtPrompts prompts;
    whenShown<QFileDialog>([&](QFileDialog& dialog) {
        EXPECT_EQ(dialog.windowTitle(), u"Open"_qs);
        EXPECT_TRUE(dialog.testOption(QFileDialog::DontUseNativeDialog));
        EXPECT_EQ(dialog.directory().absolutePath(), folder.path());
        auto* box = dialog.findChild<QCheckBox*>(u"chkReadOnly"_qs);
        ASSERT_NE(box, nullptr);
        EXPECT_TRUE(box->isVisible());
        box->setChecked(true);
        dialog.selectFile(file.fileName());
        static_cast<QDialog&>(dialog).accept();
        if (dialog.isVisible())
            static_cast<QDialog&>(dialog).done(QDialog::Accepted);
    });
    const OpenAnswer answer = prompts.askFilesToOpen(nullptr, {u"Open"_qs, folder.path(), QString(), u"All|*.*"_qs});
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
    EXPECT_EQ(prompts.askFileToSave(nullptr, {u"Save"_qs, folder.path(), u"x"_qs, QString()}),
              folder.filePath(u"x"_qs));
}

TEST(QtPrompts, ACancelledDialogGivesNothing) {
    QtPrompts prompts;
    whenShown<QFileDialog>([](QFileDialog& dialog) { dialog.reject(); });
    EXPECT_EQ(prompts.askFileToSave(nullptr, {u"Save"_qs, QString(), QString(), QString()}), QString());
    whenShown<QFileDialog>([](QFileDialog& dialog) { dialog.reject(); });
    EXPECT_TRUE(prompts.askFilesToOpen(nullptr, {u"Open"_qs, QString(), QString(), QString()}).files.isEmpty());
}

TEST(QtPrompts, FiltersKeepTheirDescriptionsAndTakePatternsApart) {
    EXPECT_EQ(nameFilters(u"Text Files (*.txt)|*.txt|All|*.*|C|*.c; *.h"_qs),
              QStringList({u"Text Files (*.txt) (*.txt)"_qs, u"All (*)"_qs, u"C (*.c *.h)"_qs}));
    EXPECT_TRUE(nameFilters(QString()).isEmpty());
    EXPECT_TRUE(nameFilters(u"alone"_qs).isEmpty());
}

namespace {

/// Calls with the box that is shown, modal or not, once it is.
void whenBehind(std::function<void(QMessageBox&)> action) {
    QTimer::singleShot(0, qApp, [action = std::move(action)] {
        QMessageBox* shown = nullptr;
        for (QWidget* window : QApplication::topLevelWidgets()) {
            if (window->isVisible() && qobject_cast<QMessageBox*>(window) != nullptr)
                shown = qobject_cast<QMessageBox*>(window);
        }
        ASSERT_NE(shown, nullptr);
        action(*shown);
    });
}

/// The program has had the keyboard, and another one has it now.
class QtPromptsBehind : public testing::Test {
 protected:
    void SetUp() override {  // once m_prompts is there to notice
        Q_EMIT qGuiApp->applicationStateChanged(Qt::ApplicationActive);
        ASSERT_NE(QGuiApplication::applicationState(), Qt::ApplicationActive);
    }
    QtPrompts m_prompts;
};

}  // namespace

TEST_F(QtPromptsBehind, AMessageLeavesTheKeyboardWhereItIs) {
    bool asked = false;
    whenBehind([&](QMessageBox& box) {
        asked = true;
        EXPECT_TRUE(box.testAttribute(Qt::WA_ShowWithoutActivating));
        EXPECT_NE(QGuiApplication::modalWindow(), box.windowHandle());
        EXPECT_EQ(box.text(), u"text"_qs);
        QTest::keyClick(&box, Qt::Key_Escape);
    });
    m_prompts.message(nullptr, u"text"_qs, {});
    EXPECT_TRUE(asked);
}

TEST_F(QtPromptsBehind, AQuestionIsAnsweredByItsButtons) {
    for (const bool answer : {true, false}) {
        whenBehind([answer](QMessageBox& box) {
            QTest::keyClick(&box, Qt::Key_Escape);
            EXPECT_TRUE(box.isVisible());
            QTest::mouseClick(box.button(answer ? QMessageBox::Yes : QMessageBox::No), Qt::LeftButton);
        });
        EXPECT_EQ(m_prompts.askYesNo(nullptr, u"text"_qs, {}), answer);
    }
}

TEST_F(QtPromptsBehind, NoOtherWindowTakesInputMeanwhile) {
    QLineEdit field;
    field.show();
    whenBehind([&](QMessageBox& box) {
        QTest::keyClicks(&field, u"abc"_qs);
        EXPECT_FALSE(field.close());
        QTest::keyClick(&box, Qt::Key_Return);
    });
    m_prompts.stop(nullptr, u"text"_qs, {});
    EXPECT_TRUE(field.text().isEmpty());
    EXPECT_TRUE(field.isVisible());
}

TEST(QtPrompts, ABoxOfAProgramThatIsStartingIsModal) {
    QtPrompts prompts;
    whenShown<QMessageBox>([](QMessageBox& box) {
        EXPECT_FALSE(box.testAttribute(Qt::WA_ShowWithoutActivating));
        EXPECT_EQ(QGuiApplication::modalWindow(), box.windowHandle());
        QTest::keyClick(&box, Qt::Key_Return);
    });
    prompts.message(nullptr, u"text"_qs, {});
}
