#include "document/DocumentFixture.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QDialog>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

namespace {

const QString NotFound = u"The search string not found."_qs;

}  // namespace

class DocumentSearch : public DocumentFixture {
 protected:
    DocumentSearch() {
        m_options.ContinueSearch = false;
        view().setText(u"one two\nthree two"_qs);
    }
};

TEST_F(DocumentSearch, WhatIsFoundIsSelectedWithoutAWord) {
    m_document.FindNext(u"two"_qs);
    EXPECT_EQ(m_document.SelStart(), 4);
    EXPECT_EQ(m_document.SelLength(), 3);
    m_document.FindNext(QString());
    EXPECT_EQ(m_document.SelStart(), 14);
    m_document.FindPrev(QString());
    EXPECT_EQ(m_document.SelStart(), 4);
    EXPECT_TRUE(m_document.FindText(u"THREE"_qs, false, false, true));
    EXPECT_EQ(m_document.SelStart(), 8);
    EXPECT_EQ(m_prompts.messages, QStringList());
}

TEST_F(DocumentSearch, WhatIsNotFoundIsTold) {
    m_document.FindNext(u"four"_qs);
    m_document.FindPrev(u"four"_qs);
    EXPECT_FALSE(m_document.FindText(u"four"_qs, false, false, false));
    EXPECT_EQ(m_prompts.messages, (QStringList{NotFound, NotFound, NotFound}));
}

TEST_F(DocumentSearch, TextThatOccursOnceIsFoundFromBehindItOnlyWithContinueSearch) {
    m_document.setSelStart(12);
    m_document.setSelLength(0);
    m_document.FindNext(u"one"_qs);
    EXPECT_EQ(m_prompts.messages, QStringList{NotFound});
    EXPECT_EQ(m_document.SelStart(), 12);
    EXPECT_EQ(m_document.SelLength(), 0);
    m_options.ContinueSearch = true;
    m_document.FindNext(u"one"_qs);
    EXPECT_EQ(m_document.SelStart(), 0);
    m_document.FindPrev(u"three"_qs);
    EXPECT_EQ(m_document.SelStart(), 8);
    EXPECT_EQ(m_prompts.messages, QStringList{NotFound});
}

TEST_F(DocumentSearch, AnEmptyTextWithoutAnEarlierSearchIsNotFound) {
    m_document.FindNext(QString());
    EXPECT_EQ(m_prompts.messages, QStringList{NotFound});
}

TEST_F(DocumentSearch, ADocumentThatGoesWhileTheSearchYieldsTellsNothing) {
    auto* mortal = new frmDocument(&m_host, m_services);
    const QPointer<frmDocument> alive(mortal);
    QTimer::singleShot(0, mortal, [mortal] { delete mortal; });
    mortal->FindNext(u"four"_qs);
    EXPECT_FALSE(alive);
    EXPECT_EQ(m_prompts.messages, QStringList());
}

TEST_F(DocumentSearch, WhatWasNotLookedForToTheEndIsNotToldAsNotFound) {
    view().setText(u"aaaaaaaaaaaaaaaaaaaaaa!\n"_qs.repeated(3000));
    m_options.RegExpOn = true;
    QSignalSpy told(&m_document, &frmDocument::Notice);
    QTimer typist;
    QObject::connect(&typist, &QTimer::timeout, &m_document, [&] {
        if (told.isEmpty())
            QTest::keyClick(&textWidget(), Qt::Key_Escape);
    });
    typist.start(0);
    m_document.FindNext(u"(a|aa)+$"_qs);
    ASSERT_EQ(told.count(), 1);
    EXPECT_EQ(told.takeFirst()[0].toString(), u"The search was stopped."_qs);
    EXPECT_FALSE(m_document.FindText(u"(a|aa)+$"_qs, true, false, false));
    typist.stop();
    ASSERT_FALSE(told.isEmpty());
    EXPECT_EQ(told.last()[0].toString(), u"The search was stopped."_qs);
    EXPECT_EQ(m_prompts.messages, QStringList());
    m_document.FindNext(u"b"_qs);
    EXPECT_EQ(m_prompts.messages, QStringList{NotFound});
    EXPECT_EQ(told.last()[0].toString(), QString());
}

TEST_F(DocumentSearch, AWrongExpressionIsToldInTheStatusBarToo) {
    m_options.RegExpOn = true;
    const QSignalSpy told(&m_document, &frmDocument::Notice);
    m_document.FindNext(u"(two"_qs);
    EXPECT_EQ(m_prompts.messages, QStringList{NotFound});
    ASSERT_EQ(told.count(), 1);
    EXPECT_EQ(told[0][0].toString(), u"Wrong at character 5: missing closing parenthesis"_qs);
}

TEST_F(DocumentSearch, AllMatchesAreListedAndReplaced) {
    QString list;
    m_document.FindAllMatch(u"two"_qs, list, false, false, false);
    EXPECT_EQ(list, u"0,4,3\t1,14,3\t"_qs);
    m_document.isChange = false;
    m_document.ReplaceAllMatch(u"TWO"_qs, u"2"_qs, list, false, true, false, false);
    EXPECT_EQ(list, QString());
    EXPECT_FALSE(m_document.isChange);
    m_document.ReplaceAllMatch(u"two"_qs, u"2"_qs, list, false, false, false, false);
    EXPECT_EQ(list, u"0,4,1\t1,12,1\t"_qs);
    EXPECT_TRUE(m_document.isChange);
    EXPECT_EQ(m_prompts.messages, QStringList());
}

TEST_F(DocumentSearch, IsNotClosedWhileItsMatchesAreListed) {
    view().setText(u"a "_qs.repeated(1'000'000));
    bool closed = false;
    QTimer closer;
    QObject::connect(&closer, &QTimer::timeout, [&] {
        closed |= m_document.close();
        m_document.StopSearch();
    });
    closer.start(0);
    QString list;
    for (int round = 0; round < 100; ++round) {
        m_document.FindAllMatch(u"a"_qs, list, false, false, false);
        if (list.count(u'\t') < 1'000'000)
            break;
    }
    closer.stop();
    EXPECT_LT(list.count(u'\t'), 1'000'000);
    EXPECT_FALSE(closed);
    EXPECT_TRUE(m_document.close());
}

TEST_F(DocumentSearch, BookmarksAreThoseOfItsView) {
    m_document.EnableBookmarkAt(2, true);
    m_document.FirstBookmark();
    EXPECT_EQ(view().CurrentLine(), 1);
    m_document.GotoTextLine(0);
    EXPECT_EQ(view().CurrentLine(), 0);
    m_document.ToggleBookmark();
    m_document.NextBookmark();
    EXPECT_EQ(view().CurrentLine(), 1);
    m_document.PrevBookmark();
    EXPECT_EQ(view().CurrentLine(), 0);
    m_document.LastBookmark();
    EXPECT_EQ(view().CurrentLine(), 1);
}

TEST_F(DocumentSearch, AllBookmarksAreClearedAfterAYes) {
    m_document.EnableBookmarkAt(1, true);
    m_document.EnableBookmarkAt(2, true);
    m_prompts.answerNo();
    m_document.ClearAllBookmark();
    EXPECT_TRUE(isBookmarked(0));
    EXPECT_TRUE(isBookmarked(1));
    m_prompts.answerYes();
    m_document.ClearAllBookmark();
    EXPECT_FALSE(isBookmarked(0));
    EXPECT_FALSE(isBookmarked(1));
    EXPECT_EQ(m_prompts.questions, (QStringList{u"Clear all bookmarks?"_qs, u"Clear all bookmarks?"_qs}));
}

TEST_F(DocumentSearch, TellsItsFrameWhatADialogSearchedFor) {
    QSignalSpy told(&m_document, &frmDocument::AfterFind);
    m_options.WholeWord = true;
    m_document.show();
    m_document.Find();
    EXPECT_EQ(told.count(), 0);
    auto* dialog = m_document.findChild<QDialog*>(u"FindDialog"_qs);
    ASSERT_NE(dialog, nullptr);
    dialog->findChild<QComboBox*>(u"cboFind"_qs)->setEditText(u" two"_qs);
    dialog->findChild<QAbstractButton*>(u"chkMatchCase"_qs)->click();
    dialog->findChild<QAbstractButton*>(u"cmdFindNext"_qs)->click();
    ASSERT_EQ(told.count(), 1);
    EXPECT_EQ(told[0], (QVariantList{u"two"_qs, true, false, true}));
    dialog->close();
    EXPECT_EQ(told.count(), 2);
    m_document.ReplaceText();
    m_document.IncrementalSearch();
    m_document.ReverseIncrementalSearch();
    EXPECT_NE(m_document.findChild<QWidget*>(u"IncrementalSearchBar"_qs), nullptr);
    EXPECT_EQ(told.count(), 2);
}
