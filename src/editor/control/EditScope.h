#pragma once

#include "editor/control/TextControl.h"

#include <QPointer>

/// One call, key or click from outside. When the outermost scope closes, long lines are cut again and the control tells
/// what came of it: first Change, then SelChange, once each. A grouped scope makes one undo step of all edits in it.
class TextControl::EditScope {
 public:
    enum Grouping { Separate, Grouped };

    explicit EditScope(TextControl& control, Grouping grouping = Separate) : m_control(&control) {
        if (control.m_scopes++ == 0)
            control.m_failed = false;
        if (grouping == Grouped && !control.m_grouped) {
            control.m_grouped = true;
            control.send(SCI_BEGINUNDOACTION);
        }
    }
    ~EditScope() {
        if (m_control)
            m_control->closeScope();
    }
    EditScope(const EditScope&) = delete;
    EditScope& operator=(const EditScope&) = delete;

 private:
    QPointer<TextControl> m_control;  ///< what is done within may yield, and the control go
};
