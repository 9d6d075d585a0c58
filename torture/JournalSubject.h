#pragma once

#include "recovery/journals/JournalBase.h"

#include <QString>

#include <optional>
#include <random>
#include <string>

class FoundJournal;
class Journal;

/// What somebody edits while JournalRun cuts the power: a text or bytes. It has the present state, with all that a
/// journal must bring back of it, in a form that can be compared.
class JournalSubject {
 public:
    virtual ~JournalSubject() = default;

    /// Begins anew: makes the file of the document, which has not been changed yet.
    virtual JournalBase begin(std::mt19937& random, const QString& document) = 0;
    /// Makes some change and passes it on.
    virtual void edit(std::mt19937& random, Journal& journal) = 0;
    /// Passes on the whole contents.
    virtual void setWhole(Journal& journal) = 0;
    /// Everything so far was written by the journal.
    virtual void written() {}
    /// It was killed and brought back.
    virtual void broughtBack() {}
    virtual std::string state() const = 0;
    /// That of a journal that was restored; nothing: it cannot be had.
    virtual std::optional<std::string> stateOf(const FoundJournal& found) const = 0;
};
