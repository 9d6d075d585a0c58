#pragma once

class CommandEntries;
struct Options;

/// The four switches of text search. The program-wide options are their only place; the check marks of the menu entries
/// show them. Nothing is stored: at start they are read from the settings, which the properties dialog writes. Owned by
/// the frame.
class SearchToggles {
 public:
    SearchToggles(Options& options, CommandEntries& commands);

    void SetWholeWordOption(bool pOn);
    void SetRegExpOption(bool pOn);
    void SetCaseOption(bool pOn);
    void SetContinueSearchOption(bool pOn);

    /// A click on the menu entry.
    void toggle(const char* entry);
    /// Updates the marks from the options after other code has changed them.
    void showOptions();

 private:
    void set(const char* entry, bool on);

    Options& m_options;
    CommandEntries& m_commands;
};
