#pragma once

#include "platform/FileState.h"
#include "recovery/journals/FoundJournal.h"
#include "recovery/journals/Journal.h"
#include "recovery/journals/Journals.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// A folder of journals, and documents of which they are.
class JournalFixture : public testing::Test {
 protected:
    using Outcome = FoundJournal::Outcome;
    using File = FoundJournal::File;

    QString folder() const { return m_folder.filePath(u"state/recovery"_qs); }
    QString at(const QString& name) const { return m_folder.filePath(name); }
    QStringList names(const QString& pattern = u"*"_qs) const {
        return QDir(folder()).entryList({pattern}, QDir::Files | QDir::Hidden, QDir::Name);
    }
    QString journalPath() const { return folder() + u'/' + names(u"*.journal"_qs).value(0); }

    static QByteArray bytesOf(const QString& path) {
        QFile in(path);
        EXPECT_TRUE(in.open(QFile::ReadOnly)) << path.toStdString();
        return in.readAll();
    }
    static void put(const QString& path, const QByteArray& bytes) {
        QFile out(path);
        EXPECT_TRUE(out.open(QFile::WriteOnly) && out.write(bytes) == bytes.size());
    }
    QString file(const QByteArray& bytes, const QString& name = u"file"_qs) const {
        put(at(name), bytes);
        return at(name);
    }

    static JournalBase baseOf(const QString& path, JournalBase::View view = JournalBase::View::Text) {
        JournalBase base;
        base.view = view;
        base.path = path;
        base.caption = path.mid(path.lastIndexOf(u'/') + 1);
        base.state = FileState::of(path);
        return base;
    }

    /// The delays are so long that nothing is written but by flush() and at the end.
    static Journals::Limits patient() {
        Journals::Limits limits;
        limits.afterLast = std::chrono::hours(1);
        limits.whileEditing = std::chrono::hours(1);
        return limits;
    }
    std::unique_ptr<Journals> makeJournals(FileSystemCalls& calls = FileSystemCalls::system(),
                                           Journals::Limits limits = patient()) const {
        return std::make_unique<Journals>(folder(), calls, limits);
    }

    /// The one that was left, brought back; null: there is none, or more than one.
    static std::unique_ptr<FoundJournal> only(std::vector<std::unique_ptr<FoundJournal>> found) {
        EXPECT_EQ(found.size(), 1u);
        return found.size() == 1 ? std::move(found.front()) : nullptr;
    }
    /// A journal with one insertion, left by a process that has ended, and its name.
    QString leave(const JournalBase& base, const std::string& text, qint64 at = 0) const {
        const auto journals = makeJournals();
        journals->begin(base)->insert(at, text);
        EXPECT_TRUE(journals->flush(Long));
        return names(u"*.journal"_qs).value(0);
    }
    /// One with "one two " inserted at the beginning, of which "two " was written by itself.
    void leaveTwoBatches(const JournalBase& base) const {
        const auto journals = makeJournals();
        const auto journal = journals->begin(base);
        journal->insert(0, "one ");
        EXPECT_TRUE(journals->flush(Long));
        journal->insert(4, "two ");
    }

    /// A process that has brought back the only journal that was left.
    struct Start {
        std::unique_ptr<Journals> journals;
        std::unique_ptr<FoundJournal> found;
        std::optional<Outcome> outcome;  ///< nothing: there is no journal, or more than one
    };
    Start nextStart(FileSystemCalls& calls = FileSystemCalls::system()) const {
        Start start{makeJournals(calls), nullptr, std::nullopt};
        start.found = only(start.journals->takeAbandoned());
        if (start.found != nullptr)
            start.outcome = start.found->restore();
        return start;
    }
    /// The recovered text of the only journal, and how bringing it back went.
    std::string recovered(Outcome expected = Outcome::Restored) const {
        const auto [journals, found, outcome] = nextStart();
        EXPECT_EQ(outcome, expected);
        if (outcome != expected)
            return "no journal";
        return expected == Outcome::Restored ? bytesOf(found->textPath()).toStdString() : std::string();
    }

    static constexpr std::chrono::seconds Long{60};

 private:
    QTemporaryDir m_folder;
};
