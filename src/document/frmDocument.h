#pragma once

#include <QWidget>

class DocumentHost;
class Prompts;
class rtCM;
struct Options;

/// One open file: a child window of the frame with a text view (and, once built, a hex view) of the same file, of which
/// exactly one is visible. The widget of a QMdiSubWindow, owned by it.
class frmDocument : public QWidget {
    Q_OBJECT
    Q_PROPERTY(QString fIdx MEMBER fIdx)
    Q_PROPERTY(QString filename MEMBER filename)
    Q_PROPERTY(bool isChange MEMBER isChange)
    Q_PROPERTY(bool isNew MEMBER isNew)
    Q_PROPERTY(bool isReadOnly MEMBER isReadOnly)
    Q_PROPERTY(bool Locked READ Locked WRITE setLocked)
    Q_PROPERTY(bool TextEdit READ TextEdit WRITE setTextEdit)
    Q_PROPERTY(QString Caption READ Caption WRITE setCaption)

public:
    /// The options and prompts belong to the frame and outlive the document.
    frmDocument(DocumentHost* parent, Prompts& prompts, const Options& options);
    ~frmDocument() override;

    QString fIdx;
    DocumentHost* gParent = nullptr;
    QString filename;
    bool isChange = false;
    bool isNew = true;
    bool isReadOnly = false;
    QString LastUpdate;
    QString KnownUpdate;

    QString Caption() const;
    void setCaption(const QString& caption);

    bool OpenFile(const QString& pFilename, bool pReadonly, bool pCheckBinary, bool pTextMode);
    bool SaveFile(const QString& pFilename, int pFormat, bool pFlag);
    void ReloadFile();
    /// After a save in an encoding: reads the file back by the encoding of pFormat (2 to 5).
    void ReloadTextFile(const QString& pFilename, int pFormat);
    void LastUpdateTime(QString& pLastUpdate, QString& pFileSize) const;
    bool FileNeedToReload();
    void ChangeToReadOnly();
    bool Locked() const;
    void setLocked(bool locked);
    bool TextEdit() const;
    void setTextEdit(bool text);
    bool DocEnabled() const;
    void setDocEnabled(bool enabled);
    rtCM* GetEditor() const;
    QString GetCursorPos() const;
    QString GetLang() const;

    /// While true a close event of this window is ignored: the Close item is greyed.
    void setCloseGreyed(bool greyed);

    void Undo();
    void Redo();
    void Cut();
    void Copy();
    void Paste();
    void SelectAll();

Q_SIGNALS:
    /// The changed or locked state moved.
    void FileChange(frmDocument* document);
    /// Each edit.
    void DocChange(frmDocument* document);
    void SelChange(frmDocument* document);
};
