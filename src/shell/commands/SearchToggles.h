#pragma once

class CommandEntries;
struct Options;

/// The four switches of text search. Each setter writes the program-wide variable and the check mark of its menu entry
/// in one step. Nothing is stored: at start they come from the settings, and the properties dialog writes those. Owned
/// by the frame.
class SearchToggles {
 public:
    SearchToggles(Options& options, CommandEntries& commands);

    void SetWholeWordOption(bool pOn);
    void SetRegExpOption(bool pOn);
    void SetCaseOption(bool pOn);
    void SetContinueSearchOption(bool pOn);

    /// A click on the menu entry: the inverse of its mark.
    void toggle(const char* entry);
    /// Marks what the variables say, once they were read.
    void showOptions();

 private:
    void set(const char* entry, bool on);

    Options& m_options;
    CommandEntries& m_commands;
};
