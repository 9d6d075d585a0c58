#pragma once

#include "document/frmDocument.h"

#include <QPointer>

/// While it lives no close event ends the document: something that yields is at work in it.
class frmDocument::CloseStop {
 public:
    explicit CloseStop(frmDocument& document) : m_document(&document) { ++document.m_loads; }
    ~CloseStop() {
        if (m_document)
            --m_document->m_loads;
    }
    Q_DISABLE_COPY_MOVE(CloseStop)

 private:
    QPointer<frmDocument> m_document;
};
