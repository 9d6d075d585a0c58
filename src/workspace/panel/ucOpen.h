#pragma once

#include <QWidget>

class OpenFilesModel;
class OpenFilesView;
class Prompts;
class QMenu;

/// The tab of the side panel with a list of all open documents, and a menu that closes or saves several of them. Owned
/// by the panel. Closing and saving yield after each step; the list may be destroyed meanwhile.
class ucOpen : public QWidget {
    Q_OBJECT
    Q_PROPERTY(bool ShowPath READ ShowPath)
    Q_PROPERTY(bool DefaultSysIcon READ DefaultSysIcon WRITE setDefaultSysIcon)

 public:
    /// The prompts outlive it.
    explicit ucOpen(Prompts& prompts, QWidget* parent = nullptr);

    /// Adds a row at the end and selects it alone. `pFile` is a path, or the caption of a document without one.
    Q_INVOKABLE void AddFile(const QString& pFile, const QString& pKey);
    /// `pIcon` is the image of the document's tab. An empty file leaves text, tag and tool tip unchanged.
    Q_INVOKABLE void SetFile(const QString& pFile, const QString& pKey, int pIcon);
    Q_INVOKABLE void RemoveFile(const QString& pKey);
    /// Selects the row, and no other unless it is one of several that are selected. A right button that was pressed
    /// last in the list keeps the selection.
    Q_INVOKABLE void FileSelected(const QString& pKey);
    Q_INVOKABLE void ClearOpen();

    bool ShowPath() const;
    bool DefaultSysIcon() const;
    void setDefaultSysIcon(bool on);

 public Q_SLOTS:
    // The commands of the menu. Selected rows are worked on from the last to the first.
    void CloseSelected();
    void CloseAll();
    /// All but the row that has the list's cursor.
    void CloseAllExceptThis();
    void SaveSelected();
    void GotoFolder();
    void OpenFolder();
    void ShowFileProperties();
    void ToggleShowPath();

 Q_SIGNALS:
    void activateFile(const QString& key);
    void closeFile(const QString& key);
    void saveFile(const QString& key);
    /// The folder of a file is to be shown.
    void gotoFolder(const QString& path);

 private:
    using Step = void (ucOpen::*)(const QString& key);

    QStringList selectedKeys() const;
    QStringList allKeysBut(int row) const;
    void forEach(const QStringList& keys, Step step);
    void activateRow(int row);
    void itemClicked(int row);
    void selectRow(int row);
    QString currentPath() const;
    void buildMenus();
    void showMenu(const QPoint& place);

    Prompts& m_prompts;
    OpenFilesModel& m_model;
    OpenFilesView& m_list;
    QMenu& m_menu;
    QString m_activated;    ///< the key of the document that was activated last
    bool m_atWork = false;  ///< documents are being closed or saved
};
