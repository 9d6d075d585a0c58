#pragma once

#include <QString>

struct FrameParts;

/// The macros in their menu: one slot for each that has a hot key and that the person wants to see there. Owned by the
/// frame.
class MacroMenu {
 public:
    explicit MacroMenu(FrameParts& parts);

    /// Brings the slots in line with hot keys and settings.
    void UpdateMacroMenu();
    /// Takes all hot keys, and so all macros, back to the defaults after a question.
    void ResetKeys();

 private:
    /// Caption of that macro's slot; empty: it is not shown.
    QString captionOf(int macro) const;

    FrameParts& m_parts;
};
