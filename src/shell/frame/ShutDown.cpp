#include "shell/frame/ShutDown.h"

#include "document/DocumentServices.h"
#include "document/EditorGlobals.h"
#include "document/frmDocument.h"
#include "shell/bars/FindBar.h"
#include "shell/commands/MacroMenu.h"
#include "shell/commands/RoomsToCome.h"
#include "shell/documents/MdiChildren.h"
#include "shell/frame/FrameParts.h"
#include "shell/frame/frmMain.h"

#include <QApplication>
#include <QPointer>

namespace {

using Step = FrameStep<ShutDown>;

}  // namespace

ShutDown::ShutDown(frmMain& frame, FrameParts& parts) : m_frame(frame), m_parts(parts) {}

std::span<const Step> ShutDown::steps() {
    static constexpr Step List[] = {
        {"SaveSession", &ShutDown::SaveSession},
        {"unloadDocuments", &ShutDown::unloadDocuments},
        {"releaseMenus", &ShutDown::releaseMenus},
        {"SaveRecentFiles", &ShutDown::SaveRecentFiles},
        {"SaveRecentProjects", &ShutDown::SaveRecentProjects},
        {"SaveFavProjects", &ShutDown::SaveFavProjects},
        {"SaveSearchKeys", &ShutDown::SaveSearchKeys},
        {"PropertiesSave", &ShutDown::PropertiesSave},
        {"saveMacroFiles", &ShutDown::saveMacroFiles},
        {"unloadForms", &ShutDown::unloadForms},
        {"releaseTabMenu", &ShutDown::releaseTabMenu},
        {"Unhook", &ShutDown::Unhook},
    };
    return List;
}

void ShutDown::SaveSession() {
    m_parts.rooms->SaveSession();
}

void ShutDown::unloadDocuments() {
    // Not by tabs: the active child stays what it is while the others ask.
    QList<QPointer<frmDocument>> documents;
    for (frmDocument* document : m_parts.children->documents())
        documents.append(document);
    for (const QPointer<frmDocument>& document : documents)
        m_parts.children->unload(document);
}

void ShutDown::releaseMenus() {
    // The menus belong to the frame's windows and go with them.
}

void ShutDown::SaveRecentFiles() {
    m_parts.rooms->SaveRecentFiles();
}

void ShutDown::SaveRecentProjects() {
    m_parts.rooms->SaveRecentProjects();
}

void ShutDown::SaveFavProjects() {
    m_parts.rooms->SaveFavProjects();
}

void ShutDown::SaveSearchKeys() {
    m_parts.findBar->SaveSearchKeys();
}

void ShutDown::PropertiesSave() {
    EditorGlobals& globals = m_parts.documentServices->globals;
    globals.profile.save();
    globals.theme.save();
    globals.hotKeys.save(*m_parts.registry);
}

void ShutDown::saveMacroFiles() {
    m_parts.macroMenu->SaveMacros();
}

void ShutDown::unloadForms() {
    m_frame.unloadForms();
}

void ShutDown::releaseTabMenu() {
    m_frame.releaseTabMenu();
}

void ShutDown::Unhook() {
    m_frame.unhookOpenCheck();
}
