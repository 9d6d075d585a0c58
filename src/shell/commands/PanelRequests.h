#pragma once

#include <QString>

class ActiveDocument;
class DocumentOpening;
class FileCommands;
class MdiChildren;

/// What the side panel asks of the frame, one function for each of its events. Owned by the frame.
class PanelRequests {
 public:
    PanelRequests(MdiChildren& children, ActiveDocument& active, DocumentOpening& opening, FileCommands& commands);

    /// By key; it comes to the front.
    void selectDocument(const QString& key);
    void openFile(const QString& path);
    /// These two work on the active document, whichever row was clicked.
    void closeDocument();
    void saveDocument();
    /// A drag of rows out of the file list: while it runs no document takes a drop.
    void dragStarts();
    void dragEnds();

 private:
    void enableDocuments(bool enabled);

    MdiChildren& m_children;
    ActiveDocument& m_active;
    DocumentOpening& m_opening;
    FileCommands& m_commands;
};
