#pragma once

#include "workspace/host/WorkspaceHost.h"

class ActiveDocument;
class DocumentOpening;
class FileCommands;
class MdiChildren;
class SidePanel;

/// The requests of the side panel to the frame. Owned by the frame. A request that fails has no effect.
class PanelRequests : public WorkspaceHost {
 public:
    PanelRequests(MdiChildren& children, ActiveDocument& active, DocumentOpening& opening, FileCommands& commands,
                  SidePanel& sidePanel);

    void selectDocument(const QString& key) override;
    void openFile(const QString& path) override;
    void closeDocument() override;
    void saveDocument() override;
    void dragStarts() override;
    void dragEnds() override;
    void hidePanel() override;

 private:
    void enableDocuments(bool enabled);

    MdiChildren& m_children;
    ActiveDocument& m_active;
    DocumentOpening& m_opening;
    FileCommands& m_commands;
    SidePanel& m_sidePanel;
};
