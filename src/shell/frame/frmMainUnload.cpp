// The end of the frame, as named steps in their order: first the session is written, with the documents still open;
// then each document asks about its changes and closes; then the frame writes its lists and releases its parts. Nothing
// here can prevent the program from ending.

#include "document/frmDocument.h"
#include "shell/bars/FindBar.h"
#include "shell/documents/MdiChildren.h"
#include "shell/frame/House.h"
#include "shell/frame/frmMain.h"
#include "shell/start/FrameSteps.h"

#include <QCloseEvent>
#include <QPointer>

#include <utility>

namespace {

/// Not through the tabs: the active child stays the same while the others ask.
void unloadDocuments(MdiChildren& children) {
    const QList<frmDocument*>& open = children.documents();
    const QList<QPointer<frmDocument>> documents(open.begin(), open.end());
    for (const QPointer<frmDocument>& document : documents)
        children.unload(document);
}

void saveProfile(House& house) {
    house.globals.profile.save();
    house.globals.theme.save();
    house.globals.hotKeys.save(house.registry);
}

}  // namespace

void frmMain::closeEvent(QCloseEvent* event) {
    if (m_house->systemClose.isGreyed()) {
        event->ignore();
        return;
    }
    event->accept();
    if (std::exchange(m_unloaded, true))
        return;
    // A path that arrived from now on would be lost; a later start that waits opens its file itself.
    if (m_house->openCheck)
        m_house->openCheck->closeEndpoint();
    runSteps(unloadSteps(), m_services.noted);
}

std::vector<FrameStep> frmMain::unloadSteps() {
    House& house = *m_house;
    return {
        {"SaveSession", [&house] { house.session.SaveSession(); }},
        {"unloadDocuments", [&house] { unloadDocuments(house.children); }},
        {"SaveRecentFiles", [&house] { house.recentFiles.save(); }},
        {"SaveRecentProjects", [&house] { house.projectLists.recent().save(); }},
        {"SaveFavProjects", [&house] { house.projectLists.favorites().save(); }},
        {"SaveSearchKeys", [&house] { house.findBar.SaveSearchKeys(); }},
        {"PropertiesSave", [&house] { saveProfile(house); }},
        {"saveMacroFiles", [&house] { house.macroMenu.SaveMacros(); }},
        {"unloadForms", [&house] { house.openCheck.reset(); }},
        {"releaseTabMenu", [&house] { house.tabMenu.reset(); }},
        {"Unhook",
         [&house] {
             if (house.openCheck)
                 house.openCheck->Unhook();
         }},
    };
}
