// The end of the frame, as named steps in their order: first the session is written, with the documents still open;
// then each document asks about its changes and closes; then the frame writes its lists and releases its parts. Nothing
// here can prevent the program from ending.

#include "document/frmDocument.h"
#include "shell/bars/FindBar.h"
#include "shell/documents/MdiChildren.h"
#include "shell/frame/House.h"
#include "shell/frame/frmMain.h"
#include "shell/start/FrameSteps.h"
#include "shell/start/IgnoringErrors.h"

#include <QCloseEvent>
#include <QPointer>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <iterator>
#include <utility>

namespace {

/// For so long an end from outside waits for an operation that disables Close: a save should not be cut short, though
/// one that is will be completed at the next start.
constexpr std::chrono::milliseconds EndDelay(700);

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
    m_house->recovery.stop();
    m_house->closing.beginEnd();
    runSteps(unloadSteps(), m_services.noted);
    m_hasEnded = true;
}

std::vector<FrameStep> frmMain::unloadSteps() {
    House& house = *m_house;
    std::vector<FrameStep> steps{
        {"SaveSession", [&house] { house.session.SaveSession(); }},
        {"unloadDocuments", [&house] { unloadDocuments(house.children); }},
    };
    std::ranges::move(keepingSteps(), std::back_inserter(steps));
    std::ranges::move(std::vector<FrameStep>{{"unloadForms", [&house] { house.openCheck.reset(); }},
                                             {"releaseTabMenu", [&house] { house.tabMenu.reset(); }},
                                             {"Unhook",
                                              [&house] {
                                                  if (house.openCheck)
                                                      house.openCheck->Unhook();
                                              }}},
                      std::back_inserter(steps));
    return steps;
}

/// The lists and settings of the frame.
std::vector<FrameStep> frmMain::keepingSteps() {
    House& house = *m_house;
    return {
        {"SaveRecentFiles", [&house] { house.recentFiles.save(); }},
        {"SaveRecentProjects", [&house] { house.projectLists.recent().save(); }},
        {"SaveFavProjects", [&house] { house.projectLists.favorites().save(); }},
        {"SaveSearchKeys", [&house] { house.findBar.SaveSearchKeys(); }},
        {"PropertiesSave", [&house] { saveProfile(house); }},
        {"saveMacroFiles", [&house] { house.macroMenu.SaveMacros(); }},
    };
}

/// While the frame is being loaded, the lists in memory are not whole yet, and those on the disk are.
void frmMain::writeKept() {
    if (!m_isComplete)
        return;
    House& house = *m_house;
    if (!m_unloaded)
        ignoringErrors("SaveSession", [&house] { house.session.SaveSession(); });
    runSteps(keepingSteps(), {});
}

void frmMain::endFromOutside(std::function<void()> end) {
    const auto endOnce = [this, end = std::move(end)] {
        if (std::exchange(m_endsFromOutside, true))
            return;
        writeKept();
        for (frmDocument* document : m_house->children.documents())
            ignoringErrors("completeJournals", [document] { document->completeJournals(); });
        if (m_house->openCheck)
            m_house->openCheck->closeEndpoint();
        end();
    };
    QTimer::singleShot(EndDelay, this, endOnce);
    m_house->systemClose.whenFree(endOnce);
}
