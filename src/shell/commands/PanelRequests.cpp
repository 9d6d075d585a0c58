#include "shell/commands/PanelRequests.h"

#include "document/frmDocument.h"
#include "platform/Yield.h"
#include "shell/commands/FileCommands.h"
#include "shell/documents/ActiveDocument.h"
#include "shell/documents/DocumentOpening.h"
#include "shell/documents/MdiChildren.h"

PanelRequests::PanelRequests(MdiChildren& children, ActiveDocument& active, DocumentOpening& opening,
                             FileCommands& commands)
    : m_children(children), m_active(active), m_opening(opening), m_commands(commands) {}

void PanelRequests::selectDocument(const QString& key) {
    m_active.activate(m_children.byKey(key));
    yieldOnce();
}

void PanelRequests::openFile(const QString& path) {
    m_opening.OpenFile(path, 0, true, true);
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
    for (frmDocument* document : m_children.documents())
        document->setDocEnabled(enabled);
}
