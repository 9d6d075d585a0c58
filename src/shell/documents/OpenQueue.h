#pragma once

#include <QString>
#include <QTimer>

class ActiveDocument;
class DocumentOpening;
class MdiChildren;
class Prompts;
class QWidget;

/// Paths from outside that are waiting to be opened, each after one tab character, and the timer that opens them 100 ms
/// after the last one was added. Owned by the frame. While another file is being opened, or a document that closes asks
/// about its changes, the timer is started again.
class OpenQueue : public QObject {
    Q_OBJECT

 public:
    /// `window` is the parent of boxes and of the timer.
    OpenQueue(QWidget& window, Prompts& prompts, MdiChildren& children, ActiveDocument& active,
              DocumentOpening& opening);

    void OpenFileFromCmd(const QString& pFile);
    QString PendingOpenFiles() const { return m_pending; }

 private:
    void openPending();
    void openOne(const QString& path);

    QWidget& m_window;
    Prompts& m_prompts;
    MdiChildren& m_children;
    ActiveDocument& m_active;
    DocumentOpening& m_opening;
    QString m_pending;
    QTimer m_timer;
};
