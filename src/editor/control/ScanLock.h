#pragma once

#include "editor/control/EditView.h"

#include <QPointer>

/// Keeps a text from being edited while its matches are visited.
class ScanLock {
 public:
    explicit ScanLock(EditView& view) : m_view(&view) { set(true); }
    ~ScanLock() {
        if (m_view)
            set(m_view->Locked());
    }
    ScanLock(const ScanLock&) = delete;
    ScanLock& operator=(const ScanLock&) = delete;

 private:
    void set(bool on) { m_view->send(QsciScintillaBase::SCI_SETREADONLY, on); }

    QPointer<EditView> m_view;
};
