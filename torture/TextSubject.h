#pragma once

#include "JournalSubject.h"

/// A text into which words are typed, and of which parts are deleted.
class TextSubject : public JournalSubject {
 public:
    JournalBase begin(std::mt19937& random, const QString& document) override;
    void edit(std::mt19937& random, Journal& journal) override;
    void setWhole(Journal& journal) override;
    std::string state() const override { return m_text; }
    std::optional<std::string> stateOf(const FoundJournal& found) const override;

 private:
    std::string m_text;
};
