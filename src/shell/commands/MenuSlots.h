#pragma once

#include <functional>
#include <span>

class CommandEntries;
class QAction;
class SlotCommands;

/// An array of entries at the end of a menu, created once and then only shown, hidden and renamed. Slot 0 is a disabled
/// placeholder, shown while no other is in use.
struct SlotArray {
    const char* menu;
    const char* name;         ///< an entry's object name is this and its number in brackets
    int first;                ///< number of the first slot
    int last;                 ///< of the last one
    const char* placeholder;  ///< caption of slot 0
    void (SlotCommands::*chosen)(int slot);
};

/// The entries that are filled while the program runs: recent files and projects, favourite projects, macros. A slot is
/// in use exactly when it is visible; its caption is its text, its tag the data of the action. Owned by the menus.
class MenuSlots {
 public:
    /// Called with the array and number of the slot that was chosen.
    using Runner = std::function<void(const SlotArray& array, int number)>;

    /// Creates the slots. The table outlives them.
    MenuSlots(CommandEntries& commands, std::span<const SlotArray> table, const Runner& run);

    QAction* slot(const char* array, int number) const;

 private:
    void addArray(const SlotArray& array, const Runner& run);

    CommandEntries& m_commands;
};
