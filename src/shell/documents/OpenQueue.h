#pragma once

#include <QString>
#include <QTimer>

class DocumentOpening;
struct FrameParts;

/// Paths that came from outside and wait to be opened, each behind one tab character, and the timer that opens them 100
/// ms after the last has come. Owned by the frame. While another file is being opened the round is put off.
class OpenQueue : public QObject {
    Q_OBJECT

 public:
    OpenQueue(FrameParts& parts, DocumentOpening& files);

    void OpenFileFromCmd(const QString& pFile);
    QString PendingOpenFiles() const { return m_pending; }

 private:
    void openPending();
    void openOne(const QString& path);

    FrameParts& m_parts;
    DocumentOpening& m_files;
    QString m_pending;
    QTimer m_timer;
};
