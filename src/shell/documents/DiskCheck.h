#pragma once

#include <QPointer>

class ActiveDocument;
class DocumentOpening;
class MdiChildren;
class frmDocument;
struct Options;

/// Checks whether other programs have changed the files of open documents. Owned by the frame. The documents ask the
/// user, so it runs the event loop; a second check requested meanwhile does not take place.
class DiskCheck {
 public:
    DiskCheck(MdiChildren& children, ActiveDocument& active, DocumentOpening& opening, const Options& options);

    /// Asks each document about changes on disk, and reloads those that return true. While a file is being opened it
    /// waits.
    void CheckFileUpdate();
    /// The program was activated: checks, if that option is on.
    void applicationActivated();

 private:
    void checkAll();
    void checkFile(const QPointer<frmDocument>& document);

    MdiChildren& m_children;
    ActiveDocument& m_active;
    DocumentOpening& m_opening;
    const Options& m_options;
    bool m_checking = false;
};
