#include "shell/commands/ExplorerRequests.h"

#include "document/frmDocument.h"
#include "platform/Yield.h"
#include "shell/bars/DocumentTabs.h"
#include "shell/commands/FrameCommands.h"
#include "shell/documents/DocumentFiles.h"
#include "shell/documents/MdiChildren.h"
#include "shell/frame/FrameParts.h"

ExplorerRequests::ExplorerRequests(FrameParts& parts, DocumentFiles& files, FrameCommands& commands)
    : m_parts(parts), m_files(files), m_commands(commands) {}

void ExplorerRequests::selectDocument(const QString& key) {
    m_parts.tabs->selectKey(key);
    yieldOnce();
}

void ExplorerRequests::openFile(const QString& path) {
    m_files.OpenFile(path, 0, true, true);
}

void ExplorerRequests::closeDocument() {
    m_commands.Close();
}

void ExplorerRequests::saveDocument() {
    m_commands.Save();
}

void ExplorerRequests::dragStarts() {
    enableDocuments(false);
}

void ExplorerRequests::dragEnds() {
    enableDocuments(true);
}

void ExplorerRequests::enableDocuments(bool enabled) {
    for (frmDocument* document : m_parts.children->documents())
        document->setDocEnabled(enabled);
}
