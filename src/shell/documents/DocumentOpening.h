#pragma once

#include <QString>

#include <functional>
#include <vector>

class ActiveDocument;
class DocumentHost;
class MdiChildren;
class QWidget;
class SystemClose;
class frmDocument;
struct DocumentServices;

/// Making, finding and opening documents. Owned by the frame. OpenFile runs the event loop, and greys Close meanwhile;
/// a second OpenFile that arrives in the middle of one waits until the first has returned.
class DocumentOpening {
 public:
    /// `host` is passed to the documents, `window` is the parent of boxes.
    DocumentOpening(DocumentHost& host, QWidget& window, const DocumentServices& services, MdiChildren& children,
                    ActiveDocument& active, SystemClose& systemClose);

    /// Adds an untitled document with a tab, and activates it.
    void NewDocument();
    /// Activates the document that shows the file. The path is compared exactly.
    bool FindOpenDocument(const QString& path);
    /// Bit 1 of `flags` locks the document before it loads.
    void OpenFile(const QString& path, int flags, bool checkBinary, bool openTextMode);
    bool isOpening() const { return m_opening; }
    /// Runs the task now, or, while a file is being opened, from the event loop afterwards.
    void whenIdle(std::function<void()> task);

    /// Caption of the document's window: path or name, as the user set it.
    QString captionFor(const QString& path) const;

 private:
    void openNow(const QString& path, int flags, bool checkBinary, bool openTextMode);
    void openExisting(const QString& path, int flags, bool checkBinary, bool openTextMode);
    void showOpened(frmDocument* document, const QString& path);
    void endOpening();
    void runNextWaiting();

    DocumentHost& m_host;
    QWidget& m_window;
    const DocumentServices& m_services;
    MdiChildren& m_children;
    ActiveDocument& m_active;
    SystemClose& m_systemClose;
    int m_documentCounter = 0;
    bool m_opening = false;
    std::vector<std::function<void()>> m_waiting;
};
