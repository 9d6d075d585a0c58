#pragma once

#include <QString>

class ActiveDocument;
class DocumentOpening;
class FileCommands;
class MdiChildren;

/// The requests of the side panel to the frame, one function for each of its events. Owned by the frame.
class PanelRequests {
 public:
    PanelRequests(MdiChildren& children, ActiveDocument& active, DocumentOpening& opening, FileCommands& commands);

    /// By key; the document is activated.
    void selectDocument(const QString& key);
    void openFile(const QString& path);
    /// These two work on the active document, whichever row was clicked.
    void closeDocument();
    void saveDocument();
    /// Rows are dragged out of the file list: meanwhile no document accepts a drop.
    void dragStarts();
    void dragEnds();

 private:
    void enableDocuments(bool enabled);

    MdiChildren& m_children;
    ActiveDocument& m_active;
    DocumentOpening& m_opening;
    FileCommands& m_commands;
};
