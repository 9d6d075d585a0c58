#pragma once

#include "editor/control/TextControl.h"

#include <QPointer>

/// Keeps a text as it is while its matches are visited.
class ScanLock {
 public:
    explicit ScanLock(TextControl& control) : m_control(&control) { set(true); }
    ~ScanLock() {
        if (m_control)
            set(m_control->Locked());
    }
    ScanLock(const ScanLock&) = delete;
    ScanLock& operator=(const ScanLock&) = delete;

 private:
    void set(bool on) { m_control->SendScintilla(QsciScintillaBase::SCI_SETREADONLY, static_cast<unsigned long>(on)); }

    QPointer<TextControl> m_control;
};
