#pragma once

#include "editor/CodeMax.h"

/// One call, key or click from outside. When the outermost scope closes, long lines are cut again and the control tells
/// what came of it: first Change, then SelChange, once each. A grouped scope makes one undo step of all edits in it.
class CodeMax::EditScope {
 public:
    enum Grouping { Separate, Grouped };

    explicit EditScope(CodeMax& control, Grouping grouping = Separate) : m_control(&control) {
        if (m_control->m_scopes++ == 0)
            m_control->m_failed = false;
        if (grouping == Grouped && !m_control->m_grouped) {
            m_control->m_grouped = true;
            m_control->send(SCI_BEGINUNDOACTION);
        }
    }
    ~EditScope() {
        if (m_control != nullptr)
            m_control->closeScope();
    }
    EditScope(const EditScope&) = delete;
    EditScope& operator=(const EditScope&) = delete;

    /// The control is gone.
    void abandon() { m_control = nullptr; }

 private:
    CodeMax* m_control;
};
