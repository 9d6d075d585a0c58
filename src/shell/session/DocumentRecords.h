#pragma once

#include <QStringList>

class ActiveDocument;
class DocumentOpening;
class MdiChildren;
class frmDocument;
struct DocumentRecord;

/// Writes open documents as lines of text, and opens them again. Owned by the frame.
class DocumentRecords {
 public:
    DocumentRecords(MdiChildren& children, ActiveDocument& active, DocumentOpening& opening);

    /// The line of a document; empty when it has no file name. A minimised or maximised window has its normal place in
    /// it.
    QString WriteDocRecord(const frmDocument& pForm) const;
    /// The lines of all documents that have a file name, in the order of their creation.
    QStringList writeAll() const;
    /// Opens the file and gives its window the state and place of the line. When the file cannot be opened, the
    /// document that was active before gets them. Runs the event loop; while another file is being opened, it is done
    /// from there afterwards.
    void RestoreDocRecord(const QString& line);

 private:
    void restore(const DocumentRecord& record);
    void openAndPlace(const DocumentRecord& record);
    void place(const frmDocument& document, const DocumentRecord& record);

    MdiChildren& m_children;
    ActiveDocument& m_active;
    DocumentOpening& m_opening;
};
