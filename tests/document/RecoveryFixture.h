#pragma once

#include "document/DocumentFixture.h"
#include "document/frmSwitch.h"
#include "editor/control/ControlTyping.h"
#include "editor/control/TextControl.h"
#include "recovery/journals/FoundJournal.h"
#include "recovery/journals/Journal.h"
#include "recovery/journals/Journals.h"

#include <QAbstractButton>
#include <QApplication>
#include <QPointer>
#include <QRadioButton>
#include <QTimer>

#include <chrono>
#include <memory>
#include <utility>
#include <vector>

/// Documents whose unsaved changes are kept in journals, and the starts that find them.
class RecoveryFixture : public testing::Test {
 protected:
    RecoveryFixture() {
        m_given.all.journals = m_journals.get();
        newDocument();
    }
    ~RecoveryFixture() override { document.reset(); }

    /// Nothing is written but by flush() and at the end.
    static Journals::Limits patient() {
        Journals::Limits limits;
        limits.afterLast = std::chrono::hours(1);
        limits.whileEditing = std::chrono::hours(1);
        return limits;
    }
    QString path(const QString& name) const { return m_folder.filePath(name); }
    QString fileOf(const QByteArray& bytes, const QString& name = u"a.txt"_qs) const {
        documenttest::writeFile(path(name), bytes);
        return path(name);
    }
    void newDocument() {
        document = std::make_unique<frmDocument>(&m_host, m_given.all);
        document->setCaption(u"Document1"_qs);
        document->show();
    }
    rtCM& view() { return *document->GetEditor(); }
    TextControl& control() { return view().control(); }
    bool open(const QString& file) { return document->OpenFile(file, false, false, true); }
    /// The file "one" is open, with an "x" typed before it.
    void openAndType() {
        ASSERT_TRUE(open(fileOf("one")));
        type(u"x"_qs);
    }
    void type(const QString& text) { control().typing().type(text); }
    bool flush() { return m_journals->flush(std::chrono::minutes(1)); }
    QStringList journalNames() {
        EXPECT_TRUE(flush());
        return QDir(folder()).entryList({u"*.journal"_qs}, QDir::Files);
    }

    /// The process ends without any farewell to the document, and another one starts.
    void endProcess() {
        document.reset();
        m_journals = std::make_unique<Journals>(folder(), FileSystemCalls::system(), patient());
        m_given.all.journals = m_journals.get();
        newDocument();
    }
    /// What the next start finds, restored.
    std::vector<std::unique_ptr<FoundJournal>> found() {
        std::vector<std::unique_ptr<FoundJournal>> restored;
        for (auto& journal : m_journals->takeAbandoned()) {
            if (journal->restore() == FoundJournal::Outcome::Restored)
                restored.push_back(std::move(journal));
        }
        return restored;
    }
    /// The only one of them; null: there is another number.
    std::unique_ptr<FoundJournal> foundOne() {
        auto all = found();
        EXPECT_EQ(all.size(), 1U);
        return all.size() == 1 ? std::move(all.front()) : nullptr;
    }
    /// The document takes over the only journal that the next start finds.
    void bringBackOne(RecoveredAs as = RecoveredAs::Document) {
        auto journal = foundOne();
        ASSERT_NE(journal, nullptr);
        ASSERT_EQ(document->bringBack(std::move(journal), as), RecoveryOutcome::Shown);
    }
    /// The recovered text of the only journal that the next start finds.
    QByteArray recoveredText() {
        endProcess();
        const auto journal = foundOne();
        return journal == nullptr ? QByteArray() : documenttest::readFile(journal->textPath());
    }
    /// The only document that the next start brings back.
    void comeBack() {
        endProcess();
        bringBackOne();
    }
    bool isAnyLeft() {
        endProcess();
        return !m_journals->takeAbandoned().empty();
    }
    void press(const char* button) {
        auto* found = document->findChild<QAbstractButton*>(QLatin1String(button));
        ASSERT_NE(found, nullptr);
        found->click();
    }
    /// Discards the changes when the switch to the other mode asks about them.
    static void discardAtSwitch() { answerSwitch(u"Option1(1)"_qs); }
    /// Asks for a save first, which the window of these tests does not carry out.
    static void saveAtSwitch() { answerSwitch(u"Option1(0)"_qs); }
    static void answerSwitch(const QString& option) {
        QTimer::singleShot(0, [option] {
            auto* form = qobject_cast<frmSwitch*>(QApplication::activeModalWidget());
            ASSERT_NE(form, nullptr);
            form->findChild<QRadioButton*>(option)->setChecked(true);
            form->findChild<QAbstractButton*>(u"cmdSwitch"_qs)->click();
        });
    }
    QString folder() const { return m_folder.filePath(u"state/recovery"_qs); }

    QTemporaryDir m_folder;
    std::unique_ptr<Journals> m_journals = std::make_unique<Journals>(folder(), FileSystemCalls::system(), patient());
    ScriptedServices m_given;
    ScriptedPrompts& m_prompts = m_given.prompts;
    RecordingHost m_host;
    std::unique_ptr<frmDocument> document;
};
