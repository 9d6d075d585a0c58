#include "platform/Folders.h"
#include "spelling/check/Corrections.h"
#include "spelling/frmSpelling.h"
#include "support/DictionaryFolder.h"
#include "support/Mnemonics.h"
#include "support/ScriptedPrompts.h"
#include "support/SpellingSettle.h"

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTextEdit>
#include <QTimer>
#include <QWindow>

#include <gtest/gtest.h>

#include <memory>

namespace {

/// A form over small dictionaries; what the user does runs while it is on the screen.
class SpellingForm : public testing::Test {
 protected:
    template <typename Widget>
    Widget& child(const char* name) const {
        return *m_form->findChild<Widget*>(QLatin1String(name));
    }
    QLineEdit& word() const { return child<QLineEdit>("txtWord"); }
    QListWidget& suggestions() const { return child<QListWidget>("lstSuggestions"); }
    QPushButton& button(const char* name) const { return child<QPushButton>(name); }
    QString context() const { return child<QTextEdit>("txtContext").toPlainText(); }
    QString status() const { return m_form->findChild<QLabel*>(u"lbStatus"_qs)->text(); }
    QString mistake() const { return m_form->session().word(); }

    /// True: the check went through.
    bool run(const QString& text, const std::function<void()>& user = {}) {
        m_form = std::make_unique<frmSpelling>(text, m_dictionaries, m_first, m_prompts);
        QTimer::singleShot(0, m_form.get(), [this, user] {
            m_wasShown = true;
            m_form->activateWindow();
            settle();
            if (user)
                user();
            if (m_form->isVisible())
                m_form->reject();
        });
        return m_form->run();
    }
    void settle() const { ::settle(*m_form); }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const {
        QTest::keyClick(m_form->windowHandle(), key, modifiers);
        settle();
    }
    void type(const QString& text) const { QTest::keyClicks(m_form->focusWidget(), text); }
    QString result() const { return m_form->session().result(); }

    void SetUp() override { QFile::remove(OwnWords::standardPath()); }

    DictionaryFolder m_folder;
    std::vector<Dictionary> m_dictionaries{m_folder.make(u"en"_qs, "the\ncat\nsat\non\nmat\nhello"),
                                           m_folder.make(u"de"_qs, "die\nkatze\nsat\nkat")};
    std::size_t m_first = 0;
    ScriptedPrompts m_prompts;
    std::unique_ptr<frmSpelling> m_form;
    bool m_wasShown = false;
};

}  // namespace

TEST_F(SpellingForm, ATextWithoutMistakesShowsNothing) {
    EXPECT_TRUE(run(u"The cat sat on the mat."_qs));
    EXPECT_FALSE(m_form->isVisible());
    EXPECT_FALSE(m_wasShown);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST_F(SpellingForm, ShowsTheMistakeInItsLineWithSuggestions) {
    EXPECT_TRUE(run(u"the mat\non the kat sat"_qs, [this] {
        EXPECT_EQ(m_form->objectName(), u"frmSpelling"_qs);
        EXPECT_TRUE(m_form->isModal());
        EXPECT_EQ(context(), u"on the kat sat"_qs);
        EXPECT_EQ(word().text(), u"cat"_qs);
        EXPECT_EQ(word().selectedText(), u"cat"_qs);
        EXPECT_TRUE(word().hasFocus());
        EXPECT_EQ(suggestions().item(0)->text(), u"cat"_qs);
        EXPECT_EQ(status(), u"Line 2"_qs);
        EXPECT_EQ(child<QComboBox>("cmbDictionary").currentData().toString(), u"en"_qs);
        EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    }));
    EXPECT_EQ(result(), u"the mat\non the kat sat"_qs);
}

TEST_F(SpellingForm, TheWordIsMarkedInItsLine) {
    run(u"on the kat sat"_qs, [this] {
        QTextCursor cursor(child<QTextEdit>("txtContext").document());
        cursor.setPosition(9);
        EXPECT_TRUE(cursor.charFormat().fontUnderline());
        EXPECT_EQ(cursor.charFormat().fontWeight(), QFont::Bold);
        cursor.setPosition(4);
        EXPECT_FALSE(cursor.charFormat().fontUnderline());
    });
}

TEST_F(SpellingForm, ReturnChangesToTheFirstSuggestion) {
    EXPECT_TRUE(run(u"kat teh"_qs, [this] {
        press(Qt::Key_Return);
        EXPECT_EQ(mistake(), u"teh"_qs);
        EXPECT_EQ(button("cmdCancel").text(), u"Close"_qs);
        press(Qt::Key_Return);
        EXPECT_FALSE(m_form->isVisible());
    }));
    EXPECT_EQ(result(), u"cat the"_qs);
}

TEST_F(SpellingForm, AnotherSuggestionIsChosenByTheArrowKeys) {
    m_dictionaries[0] = m_folder.make(u"two"_qs, "hello\nhallo");
    EXPECT_TRUE(run(u"hxllo"_qs, [this] {
        ASSERT_EQ(suggestions().count(), 2);
        press(Qt::Key_Tab);
        EXPECT_TRUE(suggestions().hasFocus());
        press(Qt::Key_Down);
        EXPECT_EQ(word().text(), suggestions().item(1)->text());
        press(Qt::Key_Return);
        EXPECT_FALSE(m_form->isVisible());
    }));
    EXPECT_EQ(m_form->session().corrections().count(), 1U);
    EXPECT_NE(result(), u"hxllo"_qs);
}

TEST_F(SpellingForm, ADoubleClickChanges) {
    EXPECT_TRUE(run(u"kat"_qs, [this] {
        const QPoint place = suggestions().visualItemRect(suggestions().item(0)).center();
        QTest::mouseClick(suggestions().viewport(), Qt::LeftButton, Qt::NoModifier, place);
        QTest::mouseDClick(suggestions().viewport(), Qt::LeftButton, Qt::NoModifier, place);
        settle();
        EXPECT_FALSE(m_form->isVisible());
    }));
    EXPECT_EQ(result(), u"cat"_qs);
}

TEST_F(SpellingForm, ATypedTextIsTaken) {
    EXPECT_TRUE(run(u"kat"_qs, [this] {
        type(u"my cat"_qs);
        press(Qt::Key_Return);
    }));
    EXPECT_EQ(result(), u"my cat"_qs);
}

TEST_F(SpellingForm, NothingIsChangedToNothingOrToItself) {
    run(u"kat"_qs, [this] {
        press(Qt::Key_Delete);
        EXPECT_FALSE(button("cmdChange").isEnabled());
        press(Qt::Key_Return);
        EXPECT_TRUE(m_form->isVisible());
        type(u"kat"_qs);
        EXPECT_FALSE(button("cmdChange").isEnabled());
        EXPECT_FALSE(button("cmdChangeAll").isEnabled());
        type(u"s"_qs);
        EXPECT_TRUE(button("cmdChange").isEnabled());
    });
    EXPECT_EQ(result(), u"kat"_qs);
}

TEST_F(SpellingForm, EveryButtonHasItsKey) {
    EXPECT_TRUE(run(u"kat kat foo bar bar quux quux zzz teh kat"_qs, [this] {
        press(Qt::Key_L, Qt::AltModifier);
        EXPECT_EQ(mistake(), u"foo"_qs);
        press(Qt::Key_I, Qt::AltModifier);
        EXPECT_EQ(mistake(), u"bar"_qs);
        press(Qt::Key_G, Qt::AltModifier);
        EXPECT_EQ(mistake(), u"quux"_qs);
        press(Qt::Key_A, Qt::AltModifier);
        EXPECT_EQ(mistake(), u"zzz"_qs);
        press(Qt::Key_U, Qt::AltModifier);
        EXPECT_EQ(mistake(), u"quux"_qs);
        press(Qt::Key_G, Qt::AltModifier);
        EXPECT_EQ(mistake(), u"zzz"_qs);
        press(Qt::Key_I, Qt::AltModifier);
        EXPECT_EQ(mistake(), u"teh"_qs);
        press(Qt::Key_C, Qt::AltModifier);
        EXPECT_FALSE(m_form->isVisible());
    }));
    EXPECT_EQ(result(), u"cat cat foo bar bar quux quux zzz the cat"_qs);
}

TEST_F(SpellingForm, TheKeyboardStaysAtTheButtonThatWasPressed) {
    run(u"foo bar quux"_qs, [this] {
        button("cmdIgnore").setFocus();
        press(Qt::Key_Space);
        press(Qt::Key_Space);
        EXPECT_EQ(mistake(), u"quux"_qs);
        EXPECT_TRUE(button("cmdIgnore").hasFocus());
    });
}

TEST_F(SpellingForm, EscapeEndsTheCheckAndKeepsWhatWasChanged) {
    EXPECT_TRUE(run(u"kat teh"_qs, [this] {
        EXPECT_EQ(button("cmdCancel").text(), u"Cancel"_qs);
        press(Qt::Key_Return);
        press(Qt::Key_Escape);
        EXPECT_FALSE(m_form->isVisible());
    }));
    EXPECT_EQ(result(), u"cat teh"_qs);
}

TEST_F(SpellingForm, AnAddedWordStaysAdded) {
    EXPECT_TRUE(run(u"quux quux"_qs, [this] { press(Qt::Key_A, Qt::AltModifier); }));
    m_wasShown = false;
    EXPECT_TRUE(run(u"the quux"_qs));
    EXPECT_FALSE(m_wasShown);
}

TEST_F(SpellingForm, AWordThatCannotBeAddedIsReported) {
    ASSERT_TRUE(QDir().mkpath(OwnWords::standardPath()));
    run(u"quux"_qs, [this] {
        press(Qt::Key_A, Qt::AltModifier);
        EXPECT_EQ(mistake(), u"quux"_qs);
        EXPECT_TRUE(m_form->isVisible());
    });
    ASSERT_EQ(m_prompts.messages.size(), 1);
    EXPECT_TRUE(m_prompts.messages[0].contains(u"words.txt"_qs));
    QDir(OwnWords::standardPath()).removeRecursively();
}

TEST_F(SpellingForm, AnotherDictionaryIsChosenInTheMiddle) {
    EXPECT_TRUE(run(u"the kat teh"_qs, [this] {
        EXPECT_EQ(mistake(), u"kat"_qs);
        QSignalSpy chosen(m_form.get(), &frmSpelling::dictionaryChosen);
        child<QComboBox>("cmbDictionary").setFocus();
        press(Qt::Key_Down);
        EXPECT_EQ(mistake(), u"teh"_qs);
        ASSERT_EQ(chosen.count(), 1);
        EXPECT_EQ(chosen[0][0].toString(), u"de"_qs);
    }));
}

TEST_F(SpellingForm, ADamagedDictionaryChosenInTheMiddleLeavesTheOther) {
    m_folder.write(u"de.dic"_qs, "damaged");
    run(u"kat"_qs, [this] {
        QSignalSpy chosen(m_form.get(), &frmSpelling::dictionaryChosen);
        child<QComboBox>("cmbDictionary").setFocus();
        press(Qt::Key_Down);
        settle();
        EXPECT_EQ(child<QComboBox>("cmbDictionary").currentData().toString(), u"en"_qs);
        EXPECT_EQ(mistake(), u"kat"_qs);
        EXPECT_TRUE(m_form->isVisible());
        EXPECT_EQ(chosen.count(), 0);
        EXPECT_EQ(word().text(), u"cat"_qs);
    });
    ASSERT_EQ(m_prompts.messages.size(), 1);
    EXPECT_TRUE(m_prompts.messages[0].contains(u"de.dic"_qs));
}

TEST_F(SpellingForm, ADamagedDictionaryAtTheBeginningGivesWayToAnother) {
    m_folder.write(u"en.dic"_qs, "damaged");
    EXPECT_TRUE(run(u"katze kats"_qs, [this] {
        EXPECT_EQ(mistake(), u"kats"_qs);
        EXPECT_EQ(child<QComboBox>("cmbDictionary").currentData().toString(), u"de"_qs);
        EXPECT_TRUE(status().contains(u"en.dic"_qs));
    }));
    EXPECT_TRUE(m_prompts.messages.isEmpty());
}

TEST_F(SpellingForm, WithoutAnyGoodDictionaryItFails) {
    m_folder.write(u"en.dic"_qs, "damaged");
    m_folder.write(u"de.dic"_qs, "damaged");
    EXPECT_FALSE(run(u"kat"_qs));
    EXPECT_FALSE(m_wasShown);
    EXPECT_TRUE(m_form->error().contains(u"en.dic"_qs));
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST_F(SpellingForm, ALargeTextIsCheckedWithALivingWindow) {
    const QString text = u"the cat sat on the mat "_qs.repeated(700'000) + u"kat"_qs;
    EXPECT_TRUE(run(text, [this] {
        EXPECT_EQ(mistake(), u"kat"_qs);
        EXPECT_TRUE(word().hasFocus());
        EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
        press(Qt::Key_Return);
    }));
    EXPECT_TRUE(result().endsWith(u" cat"_qs));
}

TEST_F(SpellingForm, ALargeTextCanBeLeftInTheMiddle) {
    const QString text = u"the cat sat on the mat "_qs.repeated(4'000'000);
    m_form = std::make_unique<frmSpelling>(text, m_dictionaries, m_first, m_prompts);
    QTimer::singleShot(0, m_form.get(), [this] {
        EXPECT_TRUE(m_form->isVisible());
        QTest::keyClick(m_form.get(), Qt::Key_Escape);
    });
    EXPECT_TRUE(m_form->run());
    EXPECT_LT(m_form->session().percent(), 100);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST_F(SpellingForm, MayBeDestroyedWhileItIsShown) {
    auto* form = new frmSpelling(u"kat"_qs, m_dictionaries, m_first, m_prompts);
    QTimer::singleShot(0, form, [form] { delete form; });
    EXPECT_FALSE(form->run());
}

TEST_F(SpellingForm, EveryFieldHasItsNameAndEveryKeyIsUsedOnce) {
    const frmSpelling form(u"kat"_qs, m_dictionaries, m_first, m_prompts);
    for (const char* name : {"txtContext", "txtWord", "lstSuggestions", "cmbDictionary"}) {
        EXPECT_FALSE(form.findChild<QWidget*>(QLatin1String(name))->accessibleName().isEmpty()) << name;
    }
    for (const char* name :
         {"cmdChange", "cmdChangeAll", "cmdIgnore", "cmdIgnoreAll", "cmdAdd", "cmdUndo", "cmdCancel"}) {
        EXPECT_FALSE(form.findChild<QPushButton*>(QLatin1String(name))->toolTip().isEmpty()) << name;
    }
    EXPECT_EQ(doubledMnemonics(form), QStringList());
}
