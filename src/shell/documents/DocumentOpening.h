#pragma once

#include <QString>

#include <functional>
#include <vector>

class ActiveDocument;
class DocumentHost;
class FileLookup;
class MdiChildren;
class QWidget;
class SystemClose;
class frmDocument;
struct DocumentServices;

/// Making, finding and opening documents. Owned by the frame. OpenFile yields, and Close is greyed meanwhile; a second
/// OpenFile that arrives in the middle of one waits until the first has returned. Paths are brought to the one spelling
/// of absolutePath() here.
class DocumentOpening {
 public:
    /// `host` is passed to the documents, `window` is the parent of boxes.
    DocumentOpening(DocumentHost& host, QWidget& window, const DocumentServices& services, MdiChildren& children,
                    ActiveDocument& active, SystemClose& systemClose, FileLookup& lookup);

    /// Adds an untitled document with a tab, and activates it.
    void NewDocument();
    /// Activates the document that shows the file. The path is compared exactly.
    bool FindOpenDocument(const QString& path);
    /// Bit 1 of `flags` locks the document before it loads.
    void OpenFile(const QString& path, int flags, bool checkBinary, bool openTextMode);
    /// Between hold() and release(), which nest, nothing is opened: a document asks about its changes, and the answer
    /// is for the document that is active.
    void hold() { ++m_holds; }
    void release();
    /// A file is being opened, or nothing may be.
    bool isBusy() const { return m_opening || m_holds > 0; }
    /// Runs the task now, or, while isBusy(), from the event loop afterwards.
    void whenIdle(std::function<void()> task);

    /// Caption of the document's window: path or name, as the user set it.
    QString captionFor(const QString& path) const;

 private:
    bool isThere(const QString& path);
    void openNow(const QString& path, int flags, bool checkBinary, bool openTextMode);
    void openExisting(const QString& path, int flags, bool checkBinary, bool openTextMode);
    void showOpened(frmDocument* document, const QString& path);
    void endOpening();
    void runWaitingLater();
    void runNextWaiting();

    DocumentHost& m_host;
    QWidget& m_window;
    const DocumentServices& m_services;
    MdiChildren& m_children;
    ActiveDocument& m_active;
    SystemClose& m_systemClose;
    FileLookup& m_lookup;
    int m_documentCounter = 0;
    bool m_opening = false;
    int m_holds = 0;
    std::vector<std::function<void()>> m_waiting;
};
