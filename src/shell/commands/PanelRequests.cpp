#include "shell/commands/PanelRequests.h"

#include "document/frmDocument.h"
#include "platform/Yield.h"
#include "shell/bars/DocumentTabs.h"
#include "shell/commands/FrameCommands.h"
#include "shell/documents/DocumentOpening.h"
#include "shell/documents/MdiChildren.h"
#include "shell/frame/FrameParts.h"

PanelRequests::PanelRequests(FrameParts& parts, DocumentOpening& files, FrameCommands& commands)
    : m_parts(parts), m_files(files), m_commands(commands) {}

void PanelRequests::selectDocument(const QString& key) {
    m_parts.tabs->selectKey(key);
    yieldOnce();
}

void PanelRequests::openFile(const QString& path) {
    m_files.OpenFile(path, 0, true, true);
}

void PanelRequests::closeDocument() {
    m_commands.Close();
}

void PanelRequests::saveDocument() {
    m_commands.Save();
}

void PanelRequests::dragStarts() {
    enableDocuments(false);
}

void PanelRequests::dragEnds() {
    enableDocuments(true);
}

void PanelRequests::enableDocuments(bool enabled) {
    for (frmDocument* document : m_parts.children->documents())
        document->setDocEnabled(enabled);
}
