#pragma once

#include <QMainWindow>

class frmDocument;
struct House;

/// The procedures of the frame for its lists, its session and its projects, callable by name; each is done by the part
/// it concerns. The base of frmMain alone.
class FrameLists : public QMainWindow {
    Q_OBJECT

 public:
    Q_INVOKABLE void AddLRUFile(const QString& pFile);
    Q_INVOKABLE void AddLRUProject(const QString& pFile);
    Q_INVOKABLE void AddFavProject(const QString& pFile);
    Q_INVOKABLE void DeleteFavProject(const QString& pFile);
    Q_INVOKABLE QString ProjectDisplayName(const QString& pFile) const;

    Q_INVOKABLE void LoadRecentFiles();
    Q_INVOKABLE void LoadRecentProjects();
    Q_INVOKABLE void LoadFavProjects();
    Q_INVOKABLE void LoadSearchKeys();
    Q_INVOKABLE void SaveRecentFiles();
    Q_INVOKABLE void SaveRecentProjects();
    Q_INVOKABLE void SaveFavProjects();
    Q_INVOKABLE void SaveSearchKeys();

    Q_INVOKABLE void SaveSession();
    Q_INVOKABLE void RestoreSession();
    /// The line of the document; empty when it has no file name.
    Q_INVOKABLE QString WriteDocRecord(frmDocument* pForm) const;
    Q_INVOKABLE void RestoreDocRecord(const QString& line);

    Q_INVOKABLE bool OpenProject(const QString& pFile);
    Q_INVOKABLE void ChooseProjectToOpen();
    Q_INVOKABLE void NewProject();
    Q_INVOKABLE void CloseCurrentProject(bool pClose);
    Q_INVOKABLE bool WriteProjectFile(const QString& pFile);
    Q_INVOKABLE void SaveProjectFile();
    Q_INVOKABLE void SaveProjectFileAs();
    Q_INVOKABLE void ProjectChanged(const QString& pAction, const QString& pFile);

 protected:
    virtual House& house() const = 0;
};
