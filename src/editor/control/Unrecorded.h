#pragma once

#include "editor/control/TextControl.h"

#include <QPointer>

class TextControl::Unrecorded {
 public:
    explicit Unrecorded(TextControl& control) : m_control(&control) { ++m_control->m_unrecorded; }
    ~Unrecorded() {
        if (m_control)
            --m_control->m_unrecorded;
    }
    Unrecorded(const Unrecorded&) = delete;
    Unrecorded& operator=(const Unrecorded&) = delete;

 private:
    QPointer<TextControl> m_control;
};
