#pragma once

#include "editor/control/CodeMax.h"

#include <QPointer>

/// Keeps a text as it is while its matches are visited.
class ScanLock {
 public:
    explicit ScanLock(CodeMax& control) : m_control(&control) { set(true); }
    ~ScanLock() {
        if (m_control)
            set(m_control->Locked());
    }
    ScanLock(const ScanLock&) = delete;
    ScanLock& operator=(const ScanLock&) = delete;

 private:
    void set(bool on) { m_control->SendScintilla(QsciScintillaBase::SCI_SETREADONLY, static_cast<unsigned long>(on)); }

    QPointer<CodeMax> m_control;
};
