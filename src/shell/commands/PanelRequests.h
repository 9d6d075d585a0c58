#pragma once

#include <QString>

class FrameCommands;
class DocumentOpening;
struct FrameParts;

/// What the side panel asks of the frame, one function for each of its events. Owned by the frame.
class PanelRequests {
 public:
    PanelRequests(FrameParts& parts, DocumentOpening& files, FrameCommands& commands);

    /// By key: the tab click does the rest.
    void selectDocument(const QString& key);
    void openFile(const QString& path);
    /// These two work on the active document, whatever row the panel had in mind.
    void closeDocument();
    void saveDocument();
    /// A drag of rows out of the file list: while it runs no document takes a drop.
    void dragStarts();
    void dragEnds();

 private:
    void enableDocuments(bool enabled);

    FrameParts& m_parts;
    DocumentOpening& m_files;
    FrameCommands& m_commands;
};
