#pragma once

#include "JournalSubject.h"
#include "hex/bytes/HexEdits.h"
#include "tests/hex/bytes/MemoryBytes.h"

/// The bytes of a hex document, which are typed over, undone, replaced and filled. Its state has the undo log and the
/// marks of typed bytes too.
class ByteSubject : public JournalSubject {
 public:
    /// `workingCopy`: a name for the file that has the present bytes when they are passed on as a whole.
    explicit ByteSubject(QByteArray workingCopy) : m_workingCopy(std::move(workingCopy)) {}

    JournalBase begin(std::mt19937& random, const QString& document) override;
    void edit(std::mt19937& random, Journal& journal) override;
    void setWhole(Journal& journal) override;
    void written() override;
    void broughtBack() override { m_isUndoKept = true; }
    std::string state() const override;
    std::optional<std::string> stateOf(const FoundJournal& found) const override;

 private:
    void type(std::mt19937& random, Journal& journal);
    void takeBack(Journal& journal);
    void overwrite(std::mt19937& random, Journal& journal);
    void fill(std::mt19937& random, Journal& journal);
    void write(FilePosition at, std::string_view bytes, Journal& journal);
    void put(FilePosition at, std::string_view bytes);
    FilePosition anyPosition(std::mt19937& random) const;

    QByteArray m_workingCopy;
    MemoryBytes m_bytes;
    HexEdits m_edits{m_bytes};
    int m_handle = -1;         ///< of the bytes that were passed on as a whole and are being copied; -1: none are
    bool m_isUndoKept = true;  ///< false: what is undone is passed on as written
};
