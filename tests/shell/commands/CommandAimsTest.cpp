#include "shell/commands/CommandTable.h"
#include "shell/commands/FavoriteCommands.h"
#include "shell/commands/FileCommands.h"
#include "shell/commands/FileSearches.h"
#include "shell/commands/FrameCommands.h"
#include "shell/commands/OutsideCommands.h"
#include "shell/commands/ProjectCommands.h"
#include "shell/commands/ViewCommands.h"

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

TEST(CommandAims, FileCommandsAimAtTheirProcedures) {
    using File = FileCommands;
    static constexpr Aim<void (File::*)()> Aims[] = {
        {"mnuFileNew", &File::New},
        {"mnuFileOpen", &File::Open},
        {"mnuFileClose", &File::Close},
        {"mnuAllFileClose", &File::CloseAll},
        {"mnuFileCloseExcept", &File::CloseExcept},
        {"mnuFileSave", &File::Save},
        {"mnuFileSaveAs", &File::SaveAs},
        {"mnuANSI", &File::SaveAnsi},
        {"mnuUnicode", &File::SaveUnicode},
        {"mnuUTF8", &File::SaveUtf8},
        {"mnuNoBOM", &File::SaveNoBom},
        {"mnuFileSaveAll", &File::SaveAll},
        {"mnuFileExit", &File::Exit},
        {"mnuReadonly", &File::ChangeReadOnly},
    };
    expectAims<void (File::*)()>(Aims, &CommandTarget::file);
}

TEST(CommandAims, ViewCommandsAimAtTheirProcedures) {
    using View = ViewCommands;
    static constexpr Aim<void (View::*)()> Aims[] = {
        {"mnuWindowCascade", &View::Cascade},           {"mnuWindowTileHorizontal", &View::TileHorizontal},
        {"mnuWindowTileVertical", &View::TileVertical}, {"mnuWindowArrangeIcons", &View::ArrangeIcons},
        {"mnuShowLineNumber", &View::ToggleLineNumber}, {"mnuShowLeftMargin", &View::ToggleLeftMargin},
        {"mnuShowTabSpace", &View::ToggleTabSpace},     {"mnuBraceMatching", &View::ToggleBraceMatching},
        {"mnuHighlightRow", &View::ToggleRowHighlight}, {"mnuToggleHex", &View::ToggleHex},
        {"mnuEditExplorer", &View::ToggleExplorer},     {"mnulFindReplacePanel", &View::ToggleSearchPanel},
        {"mnuShowEditToolbar", &View::ToggleToolBand},  {"mnuShowFilesTab", &View::ToggleTabBand},
    };
    expectAims<void (View::*)()>(Aims, &CommandTarget::view);
}

TEST(CommandAims, CommandsOfTheFrameAimAtItsProcedures) {
    using Frame = FrameCommands;
    static constexpr Aim<void (Frame::*)()> Aims[] = {
        {"mnuFileProperties", &Frame::ShowProperties},
        {"mnuFindNext", &Frame::FindNext},
        {"mnuFindPrevious", &Frame::FindPrevious},
        {"mnuAnsiTable", &Frame::ShowAnsiTable},
        {"mnuConvertor", &Frame::ShowConvertor},
        {"mnuOrganizeMarco", &Frame::OrganizeMacros},
        {"mnuResetKey", &Frame::ResetKey},
        {"mnuSaveMarco", &Frame::SaveMacros},
        {"mnuWholeWord", &Frame::ToggleWholeWord},
        {"mnuCaseSensitive", &Frame::ToggleCase},
        {"mnuRegExp", &Frame::ToggleRegExp},
        {"mnuSearchContinue", &Frame::ToggleContinueSearch},
        {"mnuOrgLanguages", &Frame::OrganizeLanguages},
        {"mnuFilePageSetup", &Frame::SetUpPage},
        {"mnuFilePrintPreview", &Frame::PreviewPrint},
    };
    expectAims<void (Frame::*)()>(Aims, &CommandTarget::frame);
}

TEST(CommandAims, CommandsThatLeaveTheProgramAimAtTheirCalls) {
    using Outside = OutsideCommands;
    static constexpr Aim<void (Outside::*)()> Aims[] = {
        {"mnuCalculator", &Outside::StartCalculator},
        {"mnuWindowDirectory", &Outside::OpenWindowsDirectory},
        {"mnuSystemDirectory", &Outside::OpenSystemDirectory},
        {"mnuDesktop", &Outside::OpenDesktop},
        {"mnuMyDocuments", &Outside::OpenMyDocuments},
        {"mnuHelpContents", &Outside::ShowHelp},
        {"mnuHelpSearchForHelpOn", &Outside::OpenWebSite},
        {"mnuSendEmail", &Outside::SendEmail},
        {"mnuHelpAbout", &Outside::ShowAbout},
    };
    expectAims<void (Outside::*)()>(Aims, &CommandTarget::outside);
}

TEST(CommandAims, CommandsOfFavoritesAimAtTheirCalls) {
    static constexpr Aim<void (FavoriteCommands::*)()> Aims[] = {
        {"mnuAddFavorite", &FavoriteCommands::AddFavorite},
        {"mnuDeleteFavorite", &FavoriteCommands::DeleteFavorite},
    };
    expectAims<void (FavoriteCommands::*)()>(Aims, &CommandTarget::favorite);
}

TEST(CommandAims, CommandsOfProjectsAimAtTheirCalls) {
    using Project = ProjectCommands;
    static constexpr Aim<void (Project::*)()> Aims[] = {
        {"mnuNewProject", &Project::NewProject},           {"mnuOpenProject", &Project::ChooseProjectToOpen},
        {"mnuCloseProject", &Project::CloseProject},       {"mnuSaveProject", &Project::SaveProject},
        {"mnuSaveProjectAs", &Project::SaveProjectFileAs},
    };
    expectAims<void (Project::*)()>(Aims, &CommandTarget::project);
}

TEST(CommandAims, CommandsOfTheSearchAcrossFilesAimAtTheirCalls) {
    static constexpr Aim<void (FileSearches::*)()> Aims[] = {
        {"mnuFindInFiles", &FileSearches::FindInFiles},
        {"mnuReplaceInFiles", &FileSearches::ReplaceInFiles},
    };
    expectAims<void (FileSearches::*)()>(Aims, &CommandTarget::search);
}
