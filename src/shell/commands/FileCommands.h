#pragma once

class ActiveDocument;
class DocumentClosing;
class DocumentOpening;
class DocumentSaving;
class Prompts;
class QWidget;
class RegistryStore;
class SystemClose;

/// The commands that open, save and close. Owned by the frame; passes them on to the classes for it.
class FileCommands {
 public:
    /// `window` is the frame; the registry holds the filters of the dialogs.
    FileCommands(QWidget& window, Prompts& prompts, RegistryStore& registry, SystemClose& systemClose,
                 ActiveDocument& active, DocumentOpening& opening, DocumentSaving& saving, DocumentClosing& closing);

    void New();
    void Open();
    void Close();
    void CloseAll();
    void CloseExcept();
    void Save();
    void SaveAs();
    void SaveAnsi();
    void SaveUtf8();
    void SaveUnicode();
    void SaveNoBom();
    void SaveAll();
    void ChangeReadOnly();
    void Exit();

 private:
    void saveAs(int format);

    QWidget& m_window;
    Prompts& m_prompts;
    RegistryStore& m_registry;
    SystemClose& m_systemClose;
    ActiveDocument& m_active;
    DocumentOpening& m_opening;
    DocumentSaving& m_saving;
    DocumentClosing& m_closing;
};
