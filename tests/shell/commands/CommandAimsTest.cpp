#include "shell/commands/CommandTable.h"
#include "shell/commands/FrameCommands.h"
#include "shell/commands/RoomsToCome.h"

#include <gtest/gtest.h>

#include <span>

namespace {

template <typename Method>
struct Aim {
    const char* name;
    Method method;
};

/// Each of the commands aims at its method, and no other command at any.
template <typename Method>
void expectAims(std::span<const Aim<Method>> Aims, Method CommandTarget::*target) {
    for (const Aim<Method>& aim : Aims) {
        const CommandRow* row = findCommand(aim.name);
        ASSERT_NE(row, nullptr) << aim.name;
        EXPECT_TRUE(row->target.*target == aim.method) << aim.name;
    }
    size_t aiming = 0;
    for (const CommandRow& row : commandTable())
        aiming += row.target.*target == nullptr ? 0U : 1U;
    EXPECT_EQ(aiming, Aims.size());
}

}  // namespace

TEST(CommandAims, CommandsOfTheFrameAimAtItsProcedures) {
    using Frame = FrameCommands;
    static constexpr Aim<void (Frame::*)()> Aims[] = {
        {"mnuFileNew", &Frame::New},
        {"mnuFileOpen", &Frame::Open},
        {"mnuFileClose", &Frame::Close},
        {"mnuAllFileClose", &Frame::CloseAll},
        {"mnuFileCloseExcept", &Frame::CloseExcept},
        {"mnuFileSave", &Frame::Save},
        {"mnuFileSaveAs", &Frame::SaveAs},
        {"mnuANSI", &Frame::SaveAnsi},
        {"mnuUnicode", &Frame::SaveUnicode},
        {"mnuUTF8", &Frame::SaveUtf8},
        {"mnuNoBOM", &Frame::SaveNoBom},
        {"mnuFileSaveAll", &Frame::SaveAll},
        {"mnuFileExit", &Frame::Exit},
        {"mnuFindNext", &Frame::FindNext},
        {"mnuFindPrevious", &Frame::FindPrevious},
        {"mnuFindInFiles", &Frame::FindInFiles},
        {"mnuAnsiTable", &Frame::ShowAnsiTable},
        {"mnuConvertor", &Frame::ShowConvertor},
        {"mnuCalculator", &Frame::StartCalculator},
        {"mnuOrganizeMarco", &Frame::OrganizeMacros},
        {"mnuResetKey", &Frame::ResetKey},
        {"mnuSaveMarco", &Frame::SaveMacros},
        {"mnuWindowCascade", &Frame::Cascade},
        {"mnuWindowTileHorizontal", &Frame::TileHorizontal},
        {"mnuWindowTileVertical", &Frame::TileVertical},
        {"mnuWindowArrangeIcons", &Frame::ArrangeIcons},
        {"mnuReadonly", &Frame::ChangeReadOnly},
        {"mnuWholeWord", &Frame::ToggleWholeWord},
        {"mnuCaseSensitive", &Frame::ToggleCase},
        {"mnuRegExp", &Frame::ToggleRegExp},
        {"mnuSearchContinue", &Frame::ToggleContinueSearch},
        {"mnuShowLineNumber", &Frame::ToggleLineNumber},
        {"mnuShowLeftMargin", &Frame::ToggleLeftMargin},
        {"mnuShowTabSpace", &Frame::ToggleTabSpace},
        {"mnuBraceMatching", &Frame::ToggleBraceMatching},
        {"mnuHighlightRow", &Frame::ToggleRowHighlight},
        {"mnuToggleHex", &Frame::ToggleHex},
        {"mnuEditExplorer", &Frame::ToggleExplorer},
        {"mnulFindReplacePanel", &Frame::ToggleSearchPanel},
        {"mnuShowEditToolbar", &Frame::ToggleToolBand},
        {"mnuShowFilesTab", &Frame::ToggleTabBand},
        {"mnuOrgLanguages", &Frame::OrganizeLanguages},
    };
    expectAims<void (Frame::*)()>(Aims, &CommandTarget::frame);
}

TEST(CommandAims, CommandsOfOtherRoomsAimAtTheirCalls) {
    using Rooms = RoomsToCome;
    static constexpr Aim<void (Rooms::*)()> Aims[] = {
        {"mnuFileProperties", &Rooms::ShowProperties},
        {"mnuReplaceInFiles", &Rooms::ReplaceInFiles},
        {"mnuAddFavorite", &Rooms::AddFavorite},
        {"mnuDeleteFavorite", &Rooms::DeleteFavorite},
        {"mnuNewProject", &Rooms::NewProject},
        {"mnuOpenProject", &Rooms::AskProject},
        {"mnuCloseProject", &Rooms::CloseProject},
        {"mnuSaveProject", &Rooms::SaveProject},
        {"mnuSaveProjectAs", &Rooms::SaveProjectAs},
        {"mnuWindowDirectory", &Rooms::OpenWindowsDirectory},
        {"mnuSystemDirectory", &Rooms::OpenSystemDirectory},
        {"mnuDesktop", &Rooms::OpenDesktop},
        {"mnuMyDocuments", &Rooms::OpenMyDocuments},
        {"mnuHelpContents", &Rooms::ShowHelp},
        {"mnuHelpSearchForHelpOn", &Rooms::OpenWebSite},
        {"mnuSendEmail", &Rooms::SendEmail},
        {"mnuHelpAbout", &Rooms::ShowAbout},
    };
    expectAims<void (Rooms::*)()>(Aims, &CommandTarget::room);
}
