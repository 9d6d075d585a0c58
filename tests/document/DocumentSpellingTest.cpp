#include "document/DocumentFixture.h"
#include "settings/Settings.h"
#include "spelling/frmSpelling.h"
#include "spelling/words/OwnWords.h"
#include "support/DictionaryFolder.h"
#include "support/SpellingSettle.h"

#include <QApplication>
#include <QFile>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QWindow>

namespace {

const QString Complete = u"Spell Check Complete"_qs;
const QString Failed = u"\nError when opening the spell checker."_qs;

/// A document that is checked by a small dictionary.
class DocumentSpelling : public DocumentFixture {
 protected:
    void SetUp() override {
        QFile::remove(OwnWords::standardPath());
        m_dictionaries.make(u"en_US"_qs, "the\ncat\nsat\non\nmat");
        m_given.all.dictionaryFolders = QStringList(m_dictionaries.folder());
    }

    /// Checks the text with keys pressed in the form, one for each mistake; then Esc if it is still open.
    void check(const QList<Qt::Key>& keys = {}) {
        QTimer::singleShot(0, &m_document, [this, keys] {
            auto* form = qobject_cast<frmSpelling*>(QApplication::activeModalWidget());
            if (form == nullptr)
                return;
            ++m_forms;
            form->activateWindow();
            for (const Qt::Key key : keys) {
                settle(*form);
                QTest::keyClick(form->windowHandle(), key, key == Qt::Key_Return ? Qt::NoModifier : Qt::AltModifier);
            }
            settle(*form);
            if (form->isVisible())
                form->reject();
        });
        m_document.Spelling();
    }

    DictionaryFolder m_dictionaries;
    int m_forms = 0;  ///< forms that were on the screen
};

}  // namespace

TEST_F(DocumentSpelling, WhatWasCorrectedIsPutBackInOneStep) {
    ASSERT_TRUE(open(fileOf("the kat\r\nsat on\nteh mat\r\n")));
    QSignalSpy changes(&m_document, &frmDocument::DocChange);
    check({Qt::Key_Return, Qt::Key_Return});
    EXPECT_EQ(view().Text(), u"the cat\r\nsat on\nthe mat\r\n"_qs);
    EXPECT_EQ(changes.count(), 1);
    EXPECT_TRUE(m_document.isChange);
    EXPECT_EQ(m_prompts.messages, QStringList(Complete));
    m_document.Undo();
    EXPECT_EQ(view().Text(), u"the kat\r\nsat on\nteh mat\r\n"_qs);
    EXPECT_FALSE(canUndo());
    m_document.Redo();
    EXPECT_EQ(view().Text(), u"the cat\r\nsat on\nthe mat\r\n"_qs);
}

TEST_F(DocumentSpelling, ATextWithoutMistakesStaysUnchanged) {
    ASSERT_TRUE(open(fileOf("the cat\rsat on\nthe mat\r\n")));
    QSignalSpy changes(&m_document, &frmDocument::DocChange);
    check();
    EXPECT_EQ(m_forms, 0);
    EXPECT_EQ(changes.count(), 0);
    EXPECT_FALSE(m_document.isChange);
    EXPECT_FALSE(canUndo());
    EXPECT_EQ(m_prompts.messages, QStringList(Complete));
}

TEST_F(DocumentSpelling, AMistakeThatIsLeftChangesNothing) {
    ASSERT_TRUE(open(fileOf("the kat")));
    check({Qt::Key_I});
    EXPECT_EQ(m_forms, 1);
    EXPECT_FALSE(m_document.isChange);
    EXPECT_FALSE(canUndo());
    EXPECT_EQ(m_prompts.messages, QStringList(Complete));
}

TEST_F(DocumentSpelling, TheSelectionDoesNotNarrowTheCheck) {
    ASSERT_TRUE(open(fileOf("kat teh cat sat")));
    select(8, 11);
    check({Qt::Key_Return, Qt::Key_Return});
    EXPECT_EQ(view().Text(), u"cat the cat sat"_qs);
    EXPECT_EQ(view().SelText(), u"cat"_qs);
    EXPECT_EQ(view().SelStart(), 8);
}

TEST_F(DocumentSpelling, TheCaretStaysAtItsPlaceInTheText) {
    m_dictionaries.make(u"en_US"_qs, "longer\nthe");
    ASSERT_TRUE(open(fileOf("loonger loonger the")));
    select(16, 16);
    check({Qt::Key_L});
    EXPECT_EQ(view().Text(), u"longer longer the"_qs);
    EXPECT_EQ(view().SelStart(), 14);
}

TEST_F(DocumentSpelling, EndingTheCheckKeepsWhatWasCorrected) {
    ASSERT_TRUE(open(fileOf("kat teh")));
    check({Qt::Key_Return});
    EXPECT_EQ(view().Text(), u"cat teh"_qs);
    EXPECT_EQ(m_prompts.messages, QStringList(Complete));
}

TEST_F(DocumentSpelling, EndingTheCheckAtOnceChangesNothing) {
    ASSERT_TRUE(open(fileOf("kat teh")));
    check();
    EXPECT_EQ(m_forms, 1);
    EXPECT_FALSE(m_document.isChange);
    EXPECT_EQ(m_prompts.messages, QStringList(Complete));
}

TEST_F(DocumentSpelling, AnUntitledDocumentIsCheckedToo) {
    insert(u"kat"_qs);
    check({Qt::Key_Return});
    EXPECT_EQ(view().Text(), u"cat"_qs);
}

TEST_F(DocumentSpelling, BookmarksStayAtTheirLines) {
    ASSERT_TRUE(open(fileOf("the\nkat\nmat")));
    m_document.EnableBookmarkAt(2, true);
    check({Qt::Key_Return});
    EXPECT_TRUE(isBookmarked(1));
    EXPECT_FALSE(isBookmarked(0));
}

TEST_F(DocumentSpelling, ALockedDocumentIsNotChecked) {
    ASSERT_TRUE(open(fileOf("kat"), true));
    check();
    EXPECT_EQ(m_forms, 0);
    EXPECT_EQ(m_prompts.messages, QStringList(u"The document is locked, so its spelling can't be corrected."_qs));
}

TEST_F(DocumentSpelling, InHexModeNothingIsMade) {
    m_given.all.dictionaryFolders.clear();
    ASSERT_TRUE(m_document.OpenFile(fileOf("kat"), false, false, false));
    check();
    EXPECT_EQ(m_forms, 0);
    EXPECT_EQ(m_prompts.messages, QStringList(u"Spell check is not allowed in Hex mode."_qs));
}

TEST_F(DocumentSpelling, WithoutADictionaryAPackageIsNamed) {
    m_given.all.dictionaryFolders = QStringList(m_dictionaries.path(u"nowhere"_qs));
    ASSERT_TRUE(open(fileOf("kat")));
    check();
    EXPECT_EQ(m_forms, 0);
    ASSERT_EQ(m_prompts.messages.size(), 1);
    EXPECT_TRUE(m_prompts.messages[0].startsWith(
        u"There is no dictionary to check the spelling by. The package hunspell-en-us "_qs));
    EXPECT_TRUE(m_prompts.messages[0].endsWith(Failed));
    EXPECT_FALSE(m_document.isChange);
}

TEST_F(DocumentSpelling, ADamagedDictionaryIsReportedAndTheTextStays) {
    m_dictionaries.write(u"en_US.dic"_qs, "damaged");
    ASSERT_TRUE(open(fileOf("kat")));
    check();
    EXPECT_EQ(m_forms, 0);
    EXPECT_EQ(m_prompts.messages,
              QStringList(u"The dictionary '%1' is damaged: it does not begin with the number of its words."_qs.arg(
                              m_dictionaries.path(u"en_US.dic"_qs)) +
                          Failed));
    EXPECT_EQ(view().Text(), u"kat"_qs);
    EXPECT_FALSE(m_document.isChange);
}

TEST_F(DocumentSpelling, TheDictionaryLastChosenIsKept) {
    m_dictionaries.make(u"de_DE"_qs, "die\nkatze");
    ASSERT_TRUE(open(fileOf("die katse")));
    Settings(m_given.registry).write(u"SpellingDictionary"_qs, u"de_DE"_qs);
    check({Qt::Key_Return});
    EXPECT_EQ(view().Text(), u"die katze"_qs);
    QTimer::singleShot(0, &m_document, [] {
        auto* form = qobject_cast<frmSpelling*>(QApplication::activeModalWidget());
        ASSERT_NE(form, nullptr);
        settle(*form);
        auto* dictionaries = form->findChild<QWidget*>(u"cmbDictionary"_qs);
        QTest::keyClick(dictionaries, Qt::Key_Home);
        settle(*form);
        form->reject();
    });
    view().setText(u"dei kat"_qs);
    m_document.Spelling();
    EXPECT_EQ(Settings(m_given.registry).PropertyValue(u"SpellingDictionary"_qs, QString(), false), u"en_US"_qs);
}

TEST_F(DocumentSpelling, ATextThatChangedMeanwhileIsNotWrittenOver) {
    ASSERT_TRUE(open(fileOf("kat teh")));
    QTimer::singleShot(0, &m_document, [this] {
        auto* form = qobject_cast<frmSpelling*>(QApplication::activeModalWidget());
        ASSERT_NE(form, nullptr);
        settle(*form);
        view().setText(u"something else"_qs);
        QTest::keyClick(form->focusWidget(), Qt::Key_Return);
        settle(*form);
        form->reject();
    });
    m_document.Spelling();
    EXPECT_EQ(view().Text(), u"something else"_qs);
    EXPECT_EQ(m_prompts.messages,
              QStringList(u"The text was changed while it was checked, so nothing was corrected."_qs + Failed));
}

TEST_F(DocumentSpelling, TheDocumentDoesNotCloseMeanwhile) {
    m_document.show();
    ASSERT_TRUE(open(fileOf("kat")));
    QTimer::singleShot(0, &m_document, [this] {
        EXPECT_FALSE(m_document.close());
        QApplication::activeModalWidget()->close();
    });
    m_document.Spelling();
    EXPECT_EQ(m_prompts.messages, QStringList(Complete));
}

TEST_F(DocumentSpelling, TheDocumentMayBeDestroyedMeanwhile) {
    auto* document = new frmDocument(&m_host, m_services);
    document->GetEditor()->setText(u"kat"_qs);
    QTimer::singleShot(0, document, [document] { delete document; });
    document->Spelling();
    EXPECT_TRUE(m_prompts.messages.isEmpty());
}
