#include "shell/frame/FrameLists.h"

#include "shell/bars/FindBar.h"
#include "shell/frame/House.h"

void FrameLists::AddLRUFile(const QString& pFile) {
    house().recentFiles.add(pFile);
}

void FrameLists::AddLRUProject(const QString& pFile) {
    house().projectLists.AddLRUProject(pFile);
}

void FrameLists::AddFavProject(const QString& pFile) {
    house().projectLists.AddFavProject(pFile);
}

void FrameLists::DeleteFavProject(const QString& pFile) {
    house().projectLists.DeleteFavProject(pFile);
}

QString FrameLists::ProjectDisplayName(const QString& pFile) const {
    return ::ProjectDisplayName(pFile);
}

void FrameLists::LoadRecentFiles() {
    house().recentFiles.load();
}

void FrameLists::LoadRecentProjects() {
    house().projectLists.recent().load();
}

void FrameLists::LoadFavProjects() {
    house().projectLists.favorites().load();
}

void FrameLists::LoadSearchKeys() {
    house().findBar.LoadSearchKeys();
}

void FrameLists::SaveRecentFiles() {
    house().recentFiles.save();
}

void FrameLists::SaveRecentProjects() {
    house().projectLists.recent().save();
}

void FrameLists::SaveFavProjects() {
    house().projectLists.favorites().save();
}

void FrameLists::SaveSearchKeys() {
    house().findBar.SaveSearchKeys();
}

void FrameLists::SaveSession() {
    house().session.SaveSession();
}

void FrameLists::RestoreSession() {
    house().session.RestoreSession();
}

QString FrameLists::WriteDocRecord(frmDocument* pForm) const {
    return pForm == nullptr ? QString() : house().documentRecords.WriteDocRecord(*pForm);
}

void FrameLists::RestoreDocRecord(const QString& line) {
    house().documentRecords.RestoreDocRecord(line);
}

bool FrameLists::OpenProject(const QString& pFile) {
    return house().projects.OpenProject(pFile);
}

void FrameLists::ChooseProjectToOpen() {
    house().projects.ChooseProjectToOpen();
}

void FrameLists::NewProject() {
    house().projects.NewProject();
}

void FrameLists::CloseCurrentProject(bool pClose) {
    house().projects.CloseCurrentProject(pClose);
}

bool FrameLists::WriteProjectFile(const QString& pFile) {
    return house().projects.WriteProjectFile(pFile);
}

void FrameLists::SaveProjectFile() {
    house().projects.SaveProjectFile();
}

void FrameLists::SaveProjectFileAs() {
    house().projects.SaveProjectFileAs();
}

void FrameLists::ProjectChanged(const QString& pAction, const QString& pFile) {
    house().projects.ProjectChanged(pAction, pFile);
}
