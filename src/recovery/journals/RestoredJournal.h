#pragma once

#include "platform/FileSystemCalls.h"
#include "recovery/journals/JournalContents.h"
#include "recovery/journals/JournalOutcome.h"
#include "recovery/journals/ReplayedText.h"

#include <QString>

#include <memory>
#include <string>
#include <string_view>
#include <vector>

class HexEntryVisitor;

/// What a journal and its base hold together. Owned by the code that examines the journal; may be used in any thread,
/// in one at a time. The handle of the journal stays the caller's. Sizes are bytes.
class RestoredJournal {
 public:
    /// `stemPath`: what the paths of the files of the journal begin with.
    RestoredJournal(FileSystemCalls& calls, int handle, QString stemPath);
    ~RestoredJournal();
    Q_DISABLE_COPY_MOVE(RestoredJournal)

    JournalContents::Reading readHead() { return m_contents.readHead(m_calls, m_handle); }
    /// After readHead(). It takes long for a large text.
    JournalOutcome restore();
    /// The same without a look at what the file of the document holds, for a journal that is only made shorter.
    JournalOutcome replay();

    const JournalContents& contents() const { return m_contents; }
    const JournalBase& base() const { return m_contents.base(); }
    JournalFileNow file() const { return m_file; }
    /// Whether there are entries that do not fit and were left out, with all behind them.
    bool isPartial() const { return m_isPartial; }

    /// Of a text; valid as long as this object.
    const ReplayedText& text() const { return m_text; }
    /// Of a hex document: the file with the bytes from which its entries start. Empty: there are none.
    const QString& basePath() const { return m_basePath; }
    bool isBaseUnchanged() const;
    /// Passes on the entries of a hex document that fit. False: the visitor ended it early.
    bool visit(HexEntryVisitor& visitor) const;

    /// Frees the memory of the text.
    void forgetText();

 private:
    JournalOutcome restoreText();
    JournalOutcome restoreBytes();
    JournalOutcome takeBase();
    JournalOutcome loadBase();
    JournalOutcome findBase();
    bool holdsBase(const QString& path, bool isCopy, bool keeps, SystemError& error);
    bool isTheLoadedFile(const FileState& state) const;
    JournalFileNow lookAtFile();
    JournalFileNow withoutFile();
    bool hasSameTextAsFile();

    FileSystemCalls& m_calls;
    int m_handle;
    QString m_stemPath;
    JournalContents m_contents;
    JournalFileNow m_file = JournalFileNow::None;
    bool m_isPartial = false;
    std::unique_ptr<char[]> m_baseBytes;
    qint64 m_baseSize = 0;
    std::string m_baseText;
    ReplayedText m_text;
    QString m_basePath;
    std::optional<FileState> m_baseState;
    qint64 m_entriesThatFit = 0;
};
