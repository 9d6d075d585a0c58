#pragma once

class DocumentClosing;
class DocumentFiles;
class DocumentSaving;
struct FrameParts;

/// The procedures of the frame that commands aim at: each takes no argument and works on the active document or on the
/// frame. Owned by the frame; forwards, and decides nothing.
class FrameCommands {
 public:
    FrameCommands(FrameParts& parts, DocumentFiles& files, DocumentSaving& saving, DocumentClosing& closing);

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
    void Exit();

    void ChangeReadOnly();
    void ToggleHex();
    void ToggleToolBand();
    void ToggleTabBand();

    void Cascade();
    void TileHorizontal();
    void TileVertical();
    void ArrangeIcons();

 private:
    void saveAs(int format);
    void arrange(int mode);

    FrameParts& m_parts;
    DocumentFiles& m_files;
    DocumentSaving& m_saving;
    DocumentClosing& m_closing;
};
