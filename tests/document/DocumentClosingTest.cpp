#include "document/DocumentFixture.h"
#include "document/EditorGlobals.h"
#include "editor/control/TextControl.h"
#include "keys/MacroDialog.h"
#include "keys/StrokeEdit.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPointer>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <functional>
#include <stdexcept>
#include <utility>

/// How a document unloads, and when it does not.
class DocumentClosing : public DocumentFixture {
 protected:
    const QStringList m_unloadCalls{u"DocClose"_qs, u"DelTab"_qs};
};

TEST_F(DocumentClosing, TheFrameIsToldOfTheUnloadThenOfTheTab) {
    m_document.show();
    EXPECT_TRUE(m_document.close());
    EXPECT_EQ(m_host.calls, m_unloadCalls);
}

TEST_F(DocumentClosing, TheFrameIsToldOnce) {
    m_document.show();
    EXPECT_TRUE(m_document.close());
    m_document.close();
    m_document.show();
    m_document.close();
    EXPECT_EQ(m_host.calls, m_unloadCalls);
}

TEST_F(DocumentClosing, ASecondCloseDuringTheQuestionIsIgnored) {
    m_host.during[u"DocClose"_qs] = [&] {
        QCloseEvent second;
        QCoreApplication::sendEvent(&m_document, &second);
        EXPECT_FALSE(second.isAccepted());
    };
    m_document.show();
    EXPECT_TRUE(m_document.close());
    EXPECT_EQ(m_host.calls, m_unloadCalls);
}

class RecordedDocumentClosing : public DocumentClosing {
 protected:
    RecordedDocumentClosing() { m_document.show(); }
    void record(const QString& typed) {
        m_document.RecordMarco();
        type(typed);
    }
    MacroDialog* dialog() { return control().findChild<MacroDialog*>(); }
    /// Called when the close waits for an answer.
    void whileItWaits(std::function<void()> act) { QTimer::singleShot(0, &m_document, std::move(act)); }
    MacroStore& macros() { return m_services.globals.macros; }
};

TEST_F(RecordedDocumentClosing, TheRecordingEndsByItsDialog) {
    record(u"abc"_qs);
    whileItWaits([&] {
        EXPECT_TRUE(m_host.calls.isEmpty());
        QTest::keyClick(dialog()->findChild<StrokeEdit*>(), Qt::Key_M, Qt::ControlModifier);
        dialog()->findChild<QPushButton*>(u"cmdKeep"_qs)->click();
    });
    EXPECT_TRUE(m_document.close());
    EXPECT_EQ(m_host.calls, m_unloadCalls);
    ASSERT_TRUE(macros().macro(0).has_value());
    EXPECT_EQ(macros().macro(0)->steps().first().text, u"abc"_qs);
    EXPECT_FALSE(m_services.globals.control.recorder().isRecording());
}

TEST_F(RecordedDocumentClosing, TheStepsAreDroppedAfterAQuestion) {
    record(u"abc"_qs);
    whileItWaits([&] {
        m_prompts.answerNo();
        dialog()->reject();
        EXPECT_TRUE(dialog()->isVisible());
        EXPECT_TRUE(m_host.calls.isEmpty());
        m_prompts.answerYes();
        dialog()->reject();
    });
    EXPECT_TRUE(m_document.close());
    EXPECT_EQ(m_prompts.questions, QStringList(2, u"Drop the recorded steps?"_qs));
    EXPECT_EQ(m_host.calls, m_unloadCalls);
    EXPECT_FALSE(macros().macro(0).has_value());
}

TEST_F(RecordedDocumentClosing, ADialogThatIsOpenAlreadyIsWaitedFor) {
    record(u"abc"_qs);
    m_document.RecordMarco();
    ASSERT_NE(dialog(), nullptr);
    whileItWaits([&] {
        EXPECT_EQ(control().findChildren<MacroDialog*>().size(), 1);
        EXPECT_TRUE(m_host.calls.isEmpty());
        m_prompts.answerYes();
        dialog()->reject();
    });
    EXPECT_TRUE(m_document.close());
    EXPECT_EQ(m_host.calls, m_unloadCalls);
}

TEST_F(RecordedDocumentClosing, InHexModeTooTheDialogComes) {
    ASSERT_TRUE(open(fileOf("one")));
    m_document.RecordMarco();
    type(u"x"_qs);
    m_document.isChange = false;
    view().FileChanged = false;
    m_document.setTextEdit(false);
    whileItWaits([&] {
        ASSERT_NE(dialog(), nullptr);
        m_prompts.answerYes();
        dialog()->reject();
    });
    EXPECT_TRUE(m_document.close());
}

TEST_F(RecordedDocumentClosing, WithoutAStepItEndsQuietly) {
    m_document.RecordMarco();
    EXPECT_TRUE(m_document.close());
    EXPECT_EQ(dialog(), nullptr);
    EXPECT_FALSE(m_services.globals.control.recorder().isRecording());
}

TEST_F(RecordedDocumentClosing, TheRecordingOfAnotherGoesOn) {
    frmDocument other(&m_host, m_services);
    other.RecordMarco();
    documenttest::typeInto(*other.GetEditor()->focusProxy(), u"x"_qs);
    EXPECT_TRUE(m_document.close());
    EXPECT_TRUE(m_services.globals.control.recorder().isRecording());
}

TEST_F(DocumentClosing, AnUntouchedDocumentAsksNothing) {
    ASSERT_TRUE(open(fileOf("one")));
    m_host.during[u"DocClose"_qs] = [&] { EXPECT_FALSE(m_document.isChange); };
    EXPECT_TRUE(m_document.close());
    EXPECT_TRUE(m_prompts.questions.isEmpty());
}

TEST_F(DocumentClosing, WhileCloseIsGreyedACloseEventIsIgnored) {
    m_document.show();
    m_document.setCloseGreyed(true);
    EXPECT_FALSE(m_document.close());
    EXPECT_TRUE(m_document.isVisible());
    EXPECT_TRUE(m_host.calls.isEmpty());
    m_document.setCloseGreyed(false);
    EXPECT_TRUE(m_document.close());
    EXPECT_EQ(m_host.calls, m_unloadCalls);
}

TEST_F(DocumentClosing, AnEventThatClosesItWhileItLoadsIsIgnored) {
    bool tried = false;
    bool closed = false;
    m_document.show();
    QTimer::singleShot(0, &m_document, [&] {
        tried = true;
        closed = m_document.close();
        EXPECT_EQ(m_document.filename, QString());
    });
    EXPECT_TRUE(open(fileOf("one")));
    EXPECT_TRUE(tried);
    EXPECT_FALSE(closed);
    EXPECT_FALSE(m_host.calls.contains(u"DocClose"_qs));
    EXPECT_TRUE(m_document.close());
}

TEST_F(DocumentClosing, ACloseWhileItTellsItsFailedLoadIsIgnored) {
    bool closed = true;
    m_prompts.whileShown([&] { closed = m_document.close(); });
    EXPECT_FALSE(open(path(u"missing"_qs)));
    EXPECT_FALSE(closed);
    EXPECT_TRUE(m_document.close());
}

TEST_F(DocumentClosing, CloseStaysGreyedUntilTheOuterOfTwoLoadsHasEnded) {
    const QString inner = fileOf("inner", u"inner.txt"_qs);
    bool closed = true;
    QTimer::singleShot(0, &m_document, [&] {
        EXPECT_TRUE(open(inner));
        closed = m_document.close();
    });
    EXPECT_TRUE(open(fileOf("outer")));
    EXPECT_FALSE(closed);
    EXPECT_EQ(view().Text(), u"outer"_qs);
    EXPECT_TRUE(m_document.close());
}

TEST_F(DocumentClosing, ADocumentThatGoesWhileItLetsEventsRunIsNotTouchedAgain) {
    auto* document = new frmDocument(&m_host, m_services);
    QTimer::singleShot(0, &m_document, [&] { delete document; });
    EXPECT_FALSE(document->OpenFile(fileOf("one"), false, false, true));
    EXPECT_TRUE(m_host.calls.isEmpty());
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST_F(DocumentClosing, ADocumentThatGoesWhileItsFailedLoadIsToldIsNotTouchedAgain) {
    auto* document = new frmDocument(&m_host, m_services);
    m_prompts.whileShown([&] { delete document; });
    EXPECT_FALSE(document->OpenFile(path(u"missing"_qs), false, false, true));
    EXPECT_TRUE(m_host.calls.isEmpty());
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST_F(DocumentClosing, AFailureOutsideTheViewsIsToldAndFreesClose) {
    m_host.during[u"SetTabCaption"_qs] = [] { throw std::runtime_error("the tab is gone"); };
    EXPECT_FALSE(open(fileOf("one")));
    EXPECT_EQ(m_prompts.messages, QStringList(u"the tab is gone"_qs));
    // The pointer stays busy until the next operation has ended.
    EXPECT_NE(QGuiApplication::overrideCursor(), nullptr);
    m_host.during.clear();
    EXPECT_TRUE(open(fileOf("one")));
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    EXPECT_TRUE(m_document.close());
}

TEST_F(DocumentClosing, AsAChildWindowItClosesWithItsFrameAndStaysWhenCloseIsGreyed) {
    QMdiArea area;
    QPointer<frmDocument> document = new frmDocument(&m_host, m_services);
    document->setCaption(u"Document1"_qs);
    QPointer<QMdiSubWindow> child = area.addSubWindow(document);
    child->setAttribute(Qt::WA_DeleteOnClose);
    area.show();
    document->show();
    EXPECT_EQ(child->windowTitle(), u"Document1"_qs);

    document->setCloseGreyed(true);
    EXPECT_FALSE(child->close());
    EXPECT_TRUE(m_host.calls.isEmpty());
    document->setCloseGreyed(false);
    EXPECT_TRUE(child->close());
    EXPECT_EQ(m_host.calls, m_unloadCalls);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(document.isNull());
}
