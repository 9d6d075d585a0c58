#pragma once

#include "editor/control/CodeMax.h"

#include <QPointer>

class CodeMax::Unrecorded {
 public:
    explicit Unrecorded(CodeMax& control) : m_control(&control) { ++m_control->m_unrecorded; }
    ~Unrecorded() {
        if (m_control)
            --m_control->m_unrecorded;
    }
    Unrecorded(const Unrecorded&) = delete;
    Unrecorded& operator=(const Unrecorded&) = delete;

 private:
    QPointer<CodeMax> m_control;
};
