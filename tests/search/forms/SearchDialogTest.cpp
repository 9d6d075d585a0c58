#include "platform/Folders.h"
#include "search/forms/frmReplaceInFiles.h"
#include "search/forms/frmSearchInFiles.h"
#include "support/Mnemonics.h"
#include "support/ScriptedPrompts.h"

#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace {

struct Control {
    const char* name;
    const char* text;
};

constexpr Control SharedCaptions[] = {
    {"Option1(0)", "Files Listed"},
    {"Option1(1)", "Open Files"},
    {"Option1(2)", "Project Files"},
    {"cmdBrowse", "Browsse"},
    {"chkSubdir", "Search sub directories"},
    {"chkRegular", "Regular expression"},
    {"chkMatchCase", "Match case"},
    {"chkWholeWord", "Match whole word only"},
    {"cmdCancel", "Cancel"},
};
constexpr Control SharedLabels[] = {{"cmbDir", "Directory:"}, {"cmbFiles", "In Files:"}, {"cmbFind", "Find:"}};
constexpr Control SharedTags[] = {
    {"cmbDir", "infiles_dir.txt"}, {"cmbFiles", "infiles_files.txt"}, {"cmbFind", "infiles_find.txt"}};

QString plain(QString caption) {
    return caption.remove(u'&');
}

QByteArray stored(const char* name) {
    QFile file(ProgramFolder() + u'/' + QLatin1String(name));
    return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray("(no such file)");
}

void store(const char* name, const QByteArray& bytes) {
    QFile file(ProgramFolder() + u'/' + QLatin1String(name));
    ASSERT_TRUE(file.open(QFile::WriteOnly) && file.write(bytes) == bytes.size());
}

QByteArray numbers(int from, int to) {
    QByteArray lines;
    for (int i = from; i <= to; ++i)
        lines += QByteArray::number(i) + "\r\n";
    return lines;
}

/// Both dialogs, and a way to use one while it is shown.
class SearchDialogs : public testing::Test {
 protected:
    SearchDialogs() {
        QDir(ProgramFolder()).removeRecursively();
        EXPECT_TRUE(QDir().mkpath(ProgramFolder()));
    }

    template <typename Widget>
    static Widget* part(const QDialog& dialog, const char* name) {
        auto* widget = dialog.findChild<Widget*>(QString::fromLatin1(name));
        EXPECT_NE(widget, nullptr) << name;
        return widget;
    }
    static QComboBox* box(const QDialog& dialog, const char* name) { return part<QComboBox>(dialog, name); }
    static QAbstractButton* button(const QDialog& dialog, const char* name) {
        return part<QAbstractButton>(dialog, name);
    }
    static QString textOf(const QDialog& dialog, const char* name) { return box(dialog, name)->currentText(); }
    static void set(const QDialog& dialog, const char* name, const QString& text) {
        box(dialog, name)->setEditText(text);
    }
    static QStringList list(const QDialog& dialog, const char* name) {
        QStringList texts;
        for (int i = 0; i < box(dialog, name)->count(); ++i)
            texts << box(dialog, name)->itemText(i);
        return texts;
    }
    static bool field(const QDialog& dialog, const char* name) {
        EXPECT_TRUE(dialog.property(name).isValid()) << name;
        return dialog.property(name).toBool();
    }
    static QString focus() {
        return QApplication::focusWidget() ? QApplication::focusWidget()->objectName() : QString();
    }

    /// Opens the dialog and does something with it; it is cancelled if it is still open afterwards.
    bool use(SearchDialog& dialog, const std::function<void()>& act, bool hasProject = true,
             const QString& directory = {}) {
        QTimer::singleShot(0, &dialog, [&] {
            ASSERT_TRUE(dialog.isVisible());
            dialog.activateWindow();
            EXPECT_TRUE(QTest::qWaitForWindowActive(&dialog));
            act();
            if (dialog.isVisible())
                dialog.reject();
        });
        return dialog.ask(hasProject, directory);
    }
    void fill(const QDialog& dialog, const QString& directory, const QString& files, const QString& find) {
        set(dialog, "cmbDir", directory);
        set(dialog, "cmbFiles", files);
        set(dialog, "cmbFind", find);
    }
    /// Searches for a text in "*" of "/a".
    bool search(SearchDialog& dialog, const QString& text) {
        return use(dialog, [&] {
            fill(dialog, u"/a"_qs, u"*"_qs, text);
            button(dialog, "cmdFind")->click();
        });
    }

    ScriptedPrompts m_prompts;
    frmSearchInFiles m_find{m_prompts};
    frmReplaceInFiles m_replace{m_prompts};
    const std::array<SearchDialog*, 2> m_both{&m_find, &m_replace};
};

}  // namespace

// Controls

TEST_F(SearchDialogs, BearTheirNamesAndCaptions) {
    EXPECT_EQ(m_find.objectName(), u"frmSearchInFiles"_qs);
    EXPECT_EQ(m_replace.objectName(), u"frmReplaceInFiles"_qs);
    for (const SearchDialog* dialog : m_both) {
        for (const Control& each : SharedCaptions) {
            EXPECT_EQ(plain(button(*dialog, each.name)->text()), QLatin1String(each.text)) << each.name;
        }
        for (const Control& each : SharedLabels) {
            const auto labels = dialog->findChildren<QLabel*>();
            const auto label = std::ranges::find_if(
                labels, [&](const QLabel* one) { return one->buddy() == box(*dialog, each.name); });
            ASSERT_NE(label, labels.end()) << each.name;
            EXPECT_EQ(plain((*label)->text()), QLatin1String(each.text));
        }
        for (const Control& each : SharedTags) {
            EXPECT_EQ(box(*dialog, each.name)->property("Tag").toString(), QLatin1String(each.text));
        }
        EXPECT_EQ(part<QGroupBox>(*dialog, "fmCondition")->title(), u" Conditions "_qs);
        for (int i = 0; i < 3; ++i) {
            const auto* option = button(*dialog, u"Option1(%1)"_qs.arg(i).toLatin1().constData());
            EXPECT_EQ(option->parentWidget(), part<QGroupBox>(*dialog, "Frame1"));
        }
    }
    EXPECT_EQ(part<QGroupBox>(m_find, "Frame1")->title(), u"Search In"_qs);
    EXPECT_EQ(part<QGroupBox>(m_replace, "Frame1")->title(), u"Replace In"_qs);
    EXPECT_EQ(plain(button(m_find, "cmdFind")->text()), u"Find"_qs);
    EXPECT_EQ(plain(button(m_replace, "cmdFind")->text()), u"Replace All"_qs);
}

TEST_F(SearchDialogs, HaveWhatIsForReplacingInOneOfThem) {
    EXPECT_EQ(plain(button(m_replace, "chkPreserve")->text()), u"Preserve case"_qs);
    EXPECT_EQ(plain(button(m_replace, "chkChanged")->text()), u"List Changed Files"_qs);
    EXPECT_EQ(box(m_replace, "cmbReplace")->property("Tag").toString(), u"infiles_replace.txt"_qs);
    EXPECT_EQ(box(m_replace, "cmbReplace")->accessibleName(), u"Replace"_qs);
    for (const char* name : {"chkPreserve", "chkChanged", "cmbReplace"}) {
        EXPECT_EQ(m_find.findChild<QWidget*>(QLatin1String(name)), nullptr) << name;
    }
    for (const char* name : {"PreserveCase", "ListResult"}) {
        EXPECT_FALSE(m_find.property(name).isValid()) << name;
        EXPECT_TRUE(m_replace.property(name).isValid()) << name;
    }
}

TEST_F(SearchDialogs, BeginWithFilesListedAndNothingTicked) {
    for (const SearchDialog* dialog : m_both) {
        EXPECT_TRUE(button(*dialog, "Option1(0)")->isChecked());
        for (const QCheckBox* check : dialog->findChildren<QCheckBox*>()) {
            EXPECT_FALSE(check->isChecked()) << check->objectName().toStdString();
        }
        for (const char* name : {"rtnSearch", "WholeWord", "CaseSenstive", "RegExp", "SubDir"}) {
            EXPECT_FALSE(field(*dialog, name)) << name;
        }
    }
}

TEST_F(SearchDialogs, AreUsedByKeyboardAndNamedForReaders) {
    for (SearchDialog* dialog : m_both) {
        EXPECT_EQ(doubledMnemonics(*dialog), QStringList());
        for (const QAbstractButton* each : dialog->findChildren<QAbstractButton*>()) {
            if (each->objectName() != u"cmdCancel"_qs) {
                EXPECT_FALSE(QKeySequence::mnemonic(each->text()).isEmpty()) << each->objectName().toStdString();
                EXPECT_FALSE(each->toolTip().isEmpty() && each->objectName() != u"cmdFind"_qs)
                    << each->objectName().toStdString();
            }
        }
        for (QComboBox* each : dialog->findChildren<QComboBox*>()) {
            EXPECT_FALSE(each->toolTip().isEmpty());
            EXPECT_EQ(QAccessible::queryAccessibleInterface(each)->text(QAccessible::Name), each->accessibleName());
        }
        EXPECT_EQ(box(*dialog, "cmbDir")->accessibleName(), u"Directory"_qs);
    }
}

TEST_F(SearchDialogs, LeadTheTabKeyThroughAllControlsInTheOrderOfTheEye) {
    const QStringList finding = {u"cmbFind"_qs,    u"Option1(0)"_qs, u"cmbDir"_qs,       u"cmdBrowse"_qs,
                                 u"cmbFiles"_qs,   u"chkSubdir"_qs,  u"chkMatchCase"_qs, u"chkWholeWord"_qs,
                                 u"chkRegular"_qs, u"cmdFind"_qs,    u"cmdCancel"_qs};
    QStringList replacing = finding;
    replacing.insert(1, u"cmbReplace"_qs);
    replacing.insert(10, u"chkPreserve"_qs);
    replacing.insert(11, u"chkChanged"_qs);
    for (SearchDialog* dialog : m_both) {
        QStringList round;
        use(*dialog, [&] {
            for (qsizetype i = 0; i < (dialog == &m_find ? finding : replacing).size(); ++i) {
                round << focus();
                QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            }
            EXPECT_EQ(focus(), u"cmbFind"_qs);
        });
        EXPECT_EQ(round, dialog == &m_find ? finding : replacing);
    }
}

TEST_F(SearchDialogs, EnableTheListOfFilesOnlyWhereItIsSearched) {
    for (SearchDialog* dialog : m_both) {
        use(*dialog, [&] {
            for (const char* option : {"Option1(1)", "Option1(2)", "Option1(0)"}) {
                button(*dialog, option)->click();
                QStringList disabled;
                for (const QWidget* each : dialog->findChildren<QWidget*>()) {
                    if (each->testAttribute(Qt::WA_ForceDisabled))
                        disabled << each->objectName();
                }
                disabled.sort();
                const QStringList expected = {u"chkSubdir"_qs, u"cmbDir"_qs, u"cmbFiles"_qs};
                EXPECT_EQ(disabled, qstrcmp(option, "Option1(0)") == 0 ? QStringList() : expected) << option;
            }
        });
    }
}

TEST_F(SearchDialogs, OfferTheFilesOfAProjectOnlyWithAProject) {
    for (SearchDialog* dialog : m_both) {
        use(
            *dialog, [&] { EXPECT_TRUE(button(*dialog, "Option1(2)")->isVisible()); }, true);
        use(
            *dialog, [&] { EXPECT_FALSE(button(*dialog, "Option1(2)")->isVisible()); }, false);
    }
}

TEST_F(SearchDialogs, KeepTheSelectedProjectWhileItIsHiddenAndStayUsableByKeyboard) {
    for (SearchDialog* dialog : m_both) {
        use(
            *dialog, [&] { button(*dialog, "Option1(2)")->click(); }, true);
        const bool isConfirmed = use(
            *dialog,
            [&] {
                set(*dialog, "cmbFind", u"x"_qs);
                button(*dialog, "cmdFind")->click();
            },
            false);
        EXPECT_TRUE(isConfirmed);
        EXPECT_EQ(dialog->request().in, SearchIn::ProjectFiles);
        use(
            *dialog,
            [&] {
                EXPECT_TRUE(button(*dialog, "Option1(2)")->isChecked());
                QStringList round;
                for (int i = 0; i < 4 && !round.contains(u"Option1(0)"_qs); ++i) {
                    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
                    round << focus();
                }
                EXPECT_TRUE(round.contains(u"Option1(0)"_qs)) << round.join(u' ').toStdString();
                QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
                EXPECT_TRUE(button(*dialog, "Option1(0)")->isChecked());
            },
            false);
    }
}

// Opening

TEST_F(SearchDialogs, BeginInTheTextToFindSelectedWhole) {
    store("infiles_find.txt", "one\r\ntwo\r\n");
    for (SearchDialog* dialog : m_both) {
        for (int times = 0; times < 2; ++times) {
            use(*dialog, [&] {
                EXPECT_EQ(focus(), u"cmbFind"_qs);
                EXPECT_EQ(box(*dialog, "cmbFind")->lineEdit()->selectedText(), u"two"_qs);
                button(*dialog, "chkSubdir")->setFocus();
            });
        }
    }
}

TEST_F(SearchDialogs, TakeADirectoryInPlaceOfTheLastOne) {
    store("infiles_dir.txt", "/old\r\n");
    use(m_find, [&] { EXPECT_EQ(textOf(m_find, "cmbDir"), u"/old"_qs); });
    use(
        m_find, [&] { EXPECT_EQ(textOf(m_find, "cmbDir"), u"/new dir;/other"_qs); }, true, u"/new dir;/other"_qs);
    use(m_find, [&] { EXPECT_EQ(textOf(m_find, "cmbDir"), u"/old"_qs); });
}

TEST_F(SearchDialogs, AreNotOpenedTwice) {
    use(m_find, [&] {
        set(m_find, "cmbFind", u"typed"_qs);
        EXPECT_FALSE(m_find.ask(true, u"/other"_qs));
        EXPECT_TRUE(m_find.isVisible());
        EXPECT_EQ(textOf(m_find, "cmbFind"), u"typed"_qs);
        EXPECT_NE(textOf(m_find, "cmbDir"), u"/other"_qs);
    });
}

TEST_F(SearchDialogs, KeepOptionsAndCheckBoxesBetweenOpenings) {
    for (SearchDialog* dialog : m_both) {
        use(*dialog, [&] {
            button(*dialog, "Option1(1)")->click();
            for (QCheckBox* check : dialog->findChildren<QCheckBox*>())
                check->setChecked(true);
        });
        use(*dialog, [&] {
            EXPECT_TRUE(button(*dialog, "Option1(1)")->isChecked());
            for (const QCheckBox* check : dialog->findChildren<QCheckBox*>()) {
                EXPECT_TRUE(check->isChecked()) << check->objectName().toStdString();
            }
        });
    }
    const frmSearchInFiles another(m_prompts);
    EXPECT_TRUE(button(another, "Option1(0)")->isChecked());
    EXPECT_FALSE(button(another, "chkMatchCase")->isChecked());
    EXPECT_TRUE(QDir(ProgramFolder()).entryList(QDir::Files).isEmpty());
}

TEST_F(SearchDialogs, SurviveTheirOwnEndWhileTheyAreShown) {
    auto dialog = std::make_unique<frmSearchInFiles>(m_prompts);
    QTimer::singleShot(0, dialog.get(), [&] { dialog.reset(); });
    EXPECT_FALSE(dialog->ask(true));

    dialog = std::make_unique<frmSearchInFiles>(m_prompts);
    m_prompts.whileShown([&] { dialog.reset(); });
    dialog->accept();
    EXPECT_EQ(m_prompts.messages, QStringList(u"Please select a searching directory."_qs));

    dialog = std::make_unique<frmSearchInFiles>(m_prompts);
    m_prompts.answerFolder(u"/a"_qs);
    m_prompts.whileShown([&] { dialog.reset(); });
    button(*dialog, "cmdBrowse")->click();
    EXPECT_EQ(dialog, nullptr);
}

// Input that is missing

TEST_F(SearchDialogs, AskForDirectoryThenFilterThenText) {
    for (SearchDialog* dialog : m_both) {
        m_prompts.messages.clear();
        EXPECT_FALSE(use(*dialog, [&] {
            const auto refused = [&](const QString& message, const QString& name) {
                button(*dialog, "chkSubdir")->setFocus();
                button(*dialog, "cmdFind")->click();
                EXPECT_EQ(m_prompts.messages.takeLast(), message);
                EXPECT_EQ(m_prompts.titles.takeLast(), QString());
                EXPECT_TRUE(m_prompts.messages.isEmpty());
                EXPECT_EQ(focus(), name);
                EXPECT_TRUE(dialog->isVisible());
                EXPECT_FALSE(field(*dialog, "rtnSearch"));
            };
            for (const QString& blank : {QString(), u"   "_qs, u" \t"_qs}) {
                fill(*dialog, blank, blank, QString());
                refused(u"Please select a searching directory."_qs, u"cmbDir"_qs);
                set(*dialog, "cmbDir", u"/a"_qs);
                refused(u"Please enter file filter."_qs, u"cmbFiles"_qs);
            }
            set(*dialog, "cmbFiles", u"*"_qs);
            for (const QString& blank : {QString(), u"    "_qs}) {
                set(*dialog, "cmbFind", blank);
                refused(u"Please enter find text."_qs, u"cmbFind"_qs);
            }
        }));
        EXPECT_EQ(stored("infiles_dir.txt"), "(no such file)");
    }
}

TEST_F(SearchDialogs, NeedNeitherDirectoryNorFilterForOpenDocumentsAndProjects) {
    for (SearchDialog* dialog : m_both) {
        for (const char* option : {"Option1(1)", "Option1(2)"}) {
            EXPECT_TRUE(use(*dialog, [&] {
                button(*dialog, option)->click();
                fill(*dialog, {}, u" "_qs, u"x"_qs);
                button(*dialog, "cmdFind")->click();
            })) << option;
            EXPECT_FALSE(use(*dialog, [&] {
                fill(*dialog, {}, {}, u" "_qs);
                button(*dialog, "cmdFind")->click();
                EXPECT_EQ(focus(), u"cmbFind"_qs);
            })) << option;
            EXPECT_EQ(std::exchange(m_prompts.messages, {}), QStringList(u"Please enter find text."_qs));
        }
    }
}

TEST_F(SearchDialogs, TakeTheTextAsItStands) {
    for (const QString& text : {u"  x "_qs, u"\t"_qs, u"\u00A0"_qs, u"a\nb"_qs, u"\u6F22 \U0001F600"_qs}) {
        EXPECT_TRUE(search(m_find, text));
        EXPECT_EQ(m_find.request().text, text);
    }
}

TEST_F(SearchDialogs, ReplaceByNothing) {
    EXPECT_TRUE(search(m_replace, u"x"_qs));
    EXPECT_TRUE(m_replace.request().replaces);
    EXPECT_EQ(m_replace.request().replacement, QString());
    use(m_replace, [&] { EXPECT_EQ(textOf(m_replace, "cmbReplace"), QString()); });
}

// The answer

TEST_F(SearchDialogs, SetEachFieldFromItsCheckBox) {
    constexpr Control Fields[] = {{"WholeWord", "chkWholeWord"},   {"CaseSenstive", "chkMatchCase"},
                                  {"RegExp", "chkRegular"},        {"SubDir", "chkSubdir"},
                                  {"PreserveCase", "chkPreserve"}, {"ListResult", "chkChanged"}};
    for (SearchDialog* dialog : m_both) {
        const std::size_t count = dialog == &m_find ? 4 : 6;
        for (std::size_t ticked = 0; ticked < count; ++ticked) {
            for (std::size_t i = 0; i < count; ++i)
                part<QCheckBox>(*dialog, Fields[i].text)->setChecked(i == ticked);
            EXPECT_TRUE(search(*dialog, u"x"_qs));
            for (std::size_t i = 0; i < count; ++i) {
                EXPECT_EQ(field(*dialog, Fields[i].name), i == ticked) << Fields[i].name;
            }
        }
    }
}

TEST_F(SearchDialogs, KeepTheFieldsOfTheLastSearchWhenCancelled) {
    button(m_find, "chkRegular")->click();
    EXPECT_TRUE(search(m_find, u"x"_qs));
    EXPECT_TRUE(field(m_find, "rtnSearch"));
    use(m_find, [&] {
        EXPECT_FALSE(field(m_find, "rtnSearch"));
        button(m_find, "chkRegular")->click();
        button(m_find, "cmdCancel")->click();
    });
    EXPECT_TRUE(field(m_find, "RegExp"));
}

TEST_F(SearchDialogs, DescribeTheSearch) {
    for (SearchDialog* dialog : m_both) {
        EXPECT_TRUE(use(*dialog, [&] {
            fill(*dialog, u" /a ; /b/"_qs, u"*.c; *.h"_qs, u"x(y)"_qs);
            for (const char* name : {"chkSubdir", "chkRegular", "chkWholeWord"})
                button(*dialog, name)->click();
            if (dialog == &m_replace)
                set(*dialog, "cmbReplace", u"$1"_qs);
            button(*dialog, "cmdFind")->click();
        }));
        const SearchRequest request = dialog->request();
        EXPECT_EQ(request.directories, u" /a ; /b/"_qs);
        EXPECT_EQ(request.patterns, u"*.c; *.h"_qs);
        EXPECT_EQ(request.text, u"x(y)"_qs);
        EXPECT_TRUE(request.subDirectories);
        EXPECT_EQ(request.in, SearchIn::FilesListed);
        EXPECT_EQ(request.flags, (SearchFlags{.caseSensitive = false, .regExp = true, .wholeWord = true}));
    }
    EXPECT_FALSE(m_find.request().replaces);
    EXPECT_FALSE(m_find.request().preserveCase);
    EXPECT_TRUE(m_find.request().listsResults);
    EXPECT_EQ(m_find.request().replacement, QString());
    EXPECT_TRUE(m_replace.request().replaces);
    EXPECT_EQ(m_replace.request().replacement, u"$1"_qs);
    EXPECT_FALSE(m_replace.request().listsResults);
    EXPECT_FALSE(m_replace.request().preserveCase);
    for (const char* name : {"chkPreserve", "chkChanged"})
        button(m_replace, name)->click();
    EXPECT_TRUE(search(m_replace, u"x"_qs));
    EXPECT_TRUE(m_replace.request().listsResults);
    EXPECT_TRUE(m_replace.request().preserveCase);
}

TEST_F(SearchDialogs, SearchWhereTheOptionSays) {
    constexpr std::pair<const char*, SearchIn> Places[] = {{"Option1(1)", SearchIn::OpenFiles},
                                                           {"Option1(2)", SearchIn::ProjectFiles},
                                                           {"Option1(0)", SearchIn::FilesListed}};
    for (SearchDialog* dialog : m_both) {
        for (const auto& [option, place] : Places) {
            button(*dialog, option)->click();
            EXPECT_TRUE(search(*dialog, u"x"_qs));
            EXPECT_EQ(dialog->request().in, place);
        }
    }
}

TEST_F(SearchDialogs, StartByEnterInAnyBox) {
    for (SearchDialog* dialog : m_both) {
        EXPECT_TRUE(part<QPushButton>(*dialog, "cmdFind")->isDefault());
        for (QComboBox* each : dialog->findChildren<QComboBox*>()) {
            EXPECT_TRUE(use(*dialog, [&] {
                fill(*dialog, u"/a"_qs, u"*"_qs, u"x"_qs);
                each->setFocus();
                QTest::keyClick(each, Qt::Key_Return);
                EXPECT_FALSE(dialog->isVisible());
            })) << each->objectName().toStdString();
        }
    }
}

TEST_F(SearchDialogs, EndByButtonEscapeAndClosingWithoutASearch) {
    for (SearchDialog* dialog : m_both) {
        const std::function<void()> ways[] = {[&] { button(*dialog, "cmdCancel")->click(); },
                                              [&] { QTest::keyClick(dialog, Qt::Key_Escape); },
                                              [&] { dialog->close(); }};
        for (const auto& way : ways) {
            EXPECT_FALSE(use(*dialog, [&] {
                fill(*dialog, u"/a"_qs, u"*"_qs, u"x"_qs);
                way();
                EXPECT_FALSE(dialog->isVisible());
            }));
            EXPECT_FALSE(field(*dialog, "rtnSearch"));
            EXPECT_EQ(stored("infiles_find.txt"), "(no such file)");
        }
    }
}

TEST_F(SearchDialogs, ForgetAnOldAnswerOnceTheyAreCancelled) {
    EXPECT_TRUE(search(m_find, u"x"_qs));
    EXPECT_TRUE(field(m_find, "rtnSearch"));
    use(m_find, [] {});
    EXPECT_FALSE(field(m_find, "rtnSearch"));
}

// Histories

TEST_F(SearchDialogs, StoreEachBoxInItsFile) {
    use(m_replace, [&] {
        fill(m_replace, u"/a"_qs, u"*.c"_qs, u"old"_qs);
        set(m_replace, "cmbReplace", u"new"_qs);
        button(m_replace, "cmdFind")->click();
    });
    EXPECT_EQ(stored("infiles_dir.txt"), "/a\r\n/a\r\n");
    EXPECT_EQ(stored("infiles_files.txt"), "*.c\r\n*.c\r\n");
    EXPECT_EQ(stored("infiles_find.txt"), "old\r\nold\r\n");
    EXPECT_EQ(stored("infiles_replace.txt"), "new\r\nnew\r\n");
}

TEST_F(SearchDialogs, SeeWhatTheOtherHasStored) {
    for (SearchDialog* dialog : m_both)
        use(*dialog, [] {});
    EXPECT_TRUE(search(m_find, u"from find"_qs));
    use(m_replace, [&] {
        EXPECT_EQ(list(m_replace, "cmbFind"), QStringList(u"from find"_qs));
        EXPECT_EQ(textOf(m_replace, "cmbFind"), u"from find"_qs);
        EXPECT_EQ(textOf(m_replace, "cmbDir"), u"/a"_qs);
        EXPECT_EQ(textOf(m_replace, "cmbFiles"), u"*"_qs);
    });
    EXPECT_TRUE(search(m_replace, u"from replace"_qs));
    use(m_find, [&] {
        EXPECT_EQ(list(m_find, "cmbFind"), QStringList({u"from replace"_qs, u"from find"_qs}));
        EXPECT_EQ(textOf(m_find, "cmbFind"), u"from replace"_qs);
    });
}

TEST_F(SearchDialogs, DropTheOldestEntryForTheThirtyFirst) {
    store("infiles_find.txt", numbers(1, 30));
    EXPECT_TRUE(search(m_find, u"31"_qs));
    EXPECT_EQ(m_find.request().text, u"31"_qs);
    EXPECT_EQ(stored("infiles_find.txt"), numbers(2, 31) + "31\r\n");
    use(m_find, [&] {
        EXPECT_EQ(list(m_find, "cmbFind").size(), 30);
        EXPECT_EQ(list(m_find, "cmbFind").first(), u"31"_qs);
        EXPECT_EQ(list(m_find, "cmbFind").last(), u"2"_qs);
    });
}

TEST_F(SearchDialogs, ReadTheThirtyLatestOfALongerFile) {
    store("infiles_find.txt", numbers(1, 45));
    use(m_find, [&] {
        EXPECT_EQ(list(m_find, "cmbFind").size(), 30);
        EXPECT_EQ(list(m_find, "cmbFind").first(), u"45"_qs);
        EXPECT_EQ(list(m_find, "cmbFind").last(), u"16"_qs);
    });
}

TEST_F(SearchDialogs, KeepEntriesApartThatDifferInCaseOrBlanks) {
    for (const QString& text : {u"word"_qs, u"Word"_qs, u" Word"_qs, u"word"_qs}) {
        EXPECT_TRUE(search(m_find, text));
    }
    EXPECT_EQ(stored("infiles_find.txt"), "Word\r\n Word\r\nword\r\nword\r\n");
    EXPECT_EQ(m_find.request().text, u"word"_qs);
}

TEST_F(SearchDialogs, ChooseTheTypedCaseByEnter) {
    store("infiles_find.txt", "Word\r\nlast\r\n");
    EXPECT_TRUE(use(m_find, [&] {
        fill(m_find, u"/a"_qs, u"*"_qs, {});
        QTest::keyClicks(QApplication::focusWidget(), u"word"_qs);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    }));
    EXPECT_EQ(m_find.request().text, u"word"_qs);
}

TEST_F(SearchDialogs, WalkTheHistoryFromTheNewestEntry) {
    store("infiles_find.txt", "one\r\ntwo\r\nthree\r\nthree\r\n");
    use(m_find, [&] {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
        EXPECT_EQ(textOf(m_find, "cmbFind"), u"two"_qs);
    });
}

TEST_F(SearchDialogs, WorkWithoutHistoriesThatCanBeReadOrWritten) {
    for (const char* name : {"infiles_dir.txt", "infiles_files.txt", "infiles_find.txt", "infiles_replace.txt"}) {
        ASSERT_TRUE(QDir(ProgramFolder()).mkdir(QLatin1String(name)));
    }
    for (SearchDialog* dialog : m_both) {
        EXPECT_TRUE(search(*dialog, u"x"_qs));
        EXPECT_EQ(dialog->request().text, u"x"_qs);
    }
    EXPECT_TRUE(m_prompts.messages.isEmpty());
}

TEST_F(SearchDialogs, LoadAndSaveHistoriesByTheirProcedures) {
    store("infiles_dir.txt", "/a\r\n");
    store("infiles_replace.txt", "new\r\n");
    for (SearchDialog* dialog : m_both) {
        EXPECT_TRUE(QMetaObject::invokeMethod(dialog, "LoadHistory"));
        EXPECT_EQ(textOf(*dialog, "cmbDir"), u"/a"_qs);
        set(*dialog, "cmbDir", u"/b"_qs);
        EXPECT_TRUE(QMetaObject::invokeMethod(dialog, "SaveHistory"));
        EXPECT_EQ(stored("infiles_dir.txt"), "/a\r\n/b\r\n");
        store("infiles_dir.txt", "/a\r\n");
    }
    EXPECT_EQ(textOf(m_replace, "cmbReplace"), u"new"_qs);
}

// Browsing

TEST_F(SearchDialogs, PutTheFirstFolderInAnEmptyBoxAndAppendTheNext) {
    for (SearchDialog* dialog : m_both) {
        m_prompts.folderDialogs.clear();
        use(*dialog, [&] {
            set(*dialog, "cmbDir", u"  "_qs);
            for (const QString& folder : {u"/a"_qs, u"/b"_qs, u"/a"_qs, QString()}) {
                m_prompts.answerFolder(folder);
                button(*dialog, "cmdBrowse")->click();
            }
            EXPECT_EQ(textOf(*dialog, "cmbDir"), u"/a;/b;/a"_qs);
            EXPECT_EQ(list(*dialog, "cmbDir"), QStringList({u"/a"_qs, u"/b"_qs, u"/a"_qs}));
        });
        EXPECT_EQ(m_prompts.folderDialogs, QStringList(4, u"Select folder"_qs));
    }
}

TEST_F(SearchDialogs, KeepTheTypedDirectoryInFrontOfTheChosenOne) {
    use(m_find, [&] {
        set(m_find, "cmbDir", u"/typed; "_qs);
        m_prompts.answerFolder(u"/b"_qs);
        button(m_find, "cmdBrowse")->click();
        EXPECT_EQ(textOf(m_find, "cmbDir"), u"/typed; ;/b"_qs);
        set(m_find, "cmbFiles", u"*"_qs);
        set(m_find, "cmbFind", u"x"_qs);
        button(m_find, "cmdFind")->click();
    });
    EXPECT_EQ(m_find.request().directories, u"/typed; ;/b"_qs);
    EXPECT_EQ(stored("infiles_dir.txt"), "/b\r\n/typed; ;/b\r\n/typed; ;/b\r\n");
}

TEST_F(SearchDialogs, BrowseIntoAFullHistory) {
    store("infiles_dir.txt", numbers(1, 30));
    use(m_find, [&] {
        set(m_find, "cmbDir", {});
        m_prompts.answerFolder(u"/b"_qs);
        button(m_find, "cmdBrowse")->click();
        EXPECT_EQ(list(m_find, "cmbDir").size(), 31);
        set(m_find, "cmbFiles", u"*"_qs);
        set(m_find, "cmbFind", u"x"_qs);
        button(m_find, "cmdFind")->click();
    });
    EXPECT_EQ(m_find.request().directories, u"/b"_qs);
    use(m_find, [&] {
        EXPECT_EQ(list(m_find, "cmbDir").size(), 30);
        EXPECT_EQ(textOf(m_find, "cmbDir"), u"/b"_qs);
        EXPECT_EQ(list(m_find, "cmbDir").first(), u"/b"_qs);
    });
}
