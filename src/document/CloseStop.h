#pragma once

#include <QObject>
#include <QPointer>

/// While an object of this class exists, no close event ends the document, which counts them: some operation of it runs
/// the event loop. The document may be destroyed meanwhile all the same.
class CloseStop {
 public:
    CloseStop(QObject& document, int& count) : m_document(&document), m_count(count) { ++m_count; }
    ~CloseStop() {
        if (m_document)
            --m_count;
    }
    Q_DISABLE_COPY_MOVE(CloseStop)

 private:
    QPointer<QObject> m_document;
    int& m_count;
};
