#pragma once

#include <QString>

/// What the side panel asks of the frame, one function for each of its events. Implemented by the frame's room, which
/// owns it; it outlives the panel.
class WorkspaceHost {
 public:
    virtual ~WorkspaceHost() = default;

    /// Brings the document of the key to the front. Runs the event loop.
    virtual void selectDocument(const QString& key) = 0;
    virtual void openFile(const QString& path) = 0;
    /// These two work on the active document, whichever row was clicked.
    virtual void closeDocument() = 0;
    virtual void saveDocument() = 0;
    /// A drag of rows out of the file list: while it runs no document takes a drop.
    virtual void dragStarts() = 0;
    virtual void dragEnds() = 0;
    virtual void hidePanel() = 0;
};
