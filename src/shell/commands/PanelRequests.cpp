#include "shell/commands/PanelRequests.h"

#include "document/frmDocument.h"
#include "platform/Yield.h"
#include "shell/bars/SidePanel.h"
#include "shell/commands/FileCommands.h"
#include "shell/documents/ActiveDocument.h"
#include "shell/documents/DocumentOpening.h"
#include "shell/documents/MdiChildren.h"
#include "shell/start/IgnoringErrors.h"

PanelRequests::PanelRequests(MdiChildren& children, ActiveDocument& active, DocumentOpening& opening,
                             FileCommands& commands, SidePanel& sidePanel)
    : m_children(children), m_active(active), m_opening(opening), m_commands(commands), m_sidePanel(sidePanel) {}

void PanelRequests::selectDocument(const QString& key) {
    ignoringErrors("selectDocument", [&] { m_active.activate(m_children.byKey(key)); });
    yieldOnce();
}

void PanelRequests::openFile(const QString& path) {
    ignoringErrors("openFile", [&] { m_opening.OpenFile(path, 0, true, true); });
}

void PanelRequests::closeDocument() {
    ignoringErrors("closeDocument", [this] { m_commands.Close(); });
}

void PanelRequests::saveDocument() {
    ignoringErrors("saveDocument", [this] { m_commands.Save(); });
}

void PanelRequests::dragStarts() {
    enableDocuments(false);
}

void PanelRequests::dragEnds() {
    enableDocuments(true);
}

void PanelRequests::hidePanel() {
    m_sidePanel.setShown(false);
}

void PanelRequests::enableDocuments(bool enabled) {
    for (frmDocument* document : m_children.documents())
        document->setDocEnabled(enabled);
}
