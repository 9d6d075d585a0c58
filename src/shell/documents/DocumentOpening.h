#pragma once

#include <QPointer>
#include <QString>

#include <functional>
#include <vector>

class frmDocument;
struct FrameParts;

/// Making, finding, opening and re-reading documents, and the text and hex switch. Owned by the frame. OpenFile and the
/// switch yield, and grey Close meanwhile; a second OpenFile that arrives in the middle of one waits until the first
/// has returned.
class DocumentOpening {
 public:
    explicit DocumentOpening(FrameParts& parts);

    /// An untitled document with a tab, in front.
    void NewDocument();
    /// Brings the document that shows the file to the front. The path is compared exactly.
    bool FindOpenDocument(const QString& path);
    /// Bit 1 of `flags` locks the document before it loads.
    void OpenFile(const QString& path, int flags, bool checkBinary, bool openTextMode);
    bool isOpening() const { return m_opening; }

    /// Asks each document about changes on disk, and reloads those that say so.
    void CheckFileUpdate();
    void ChangeReadOnly();
    /// The text and hex switch, on the new value of the button for it.
    void SwitchHex(bool hex);
    /// A document has become the active child.
    void ActiveFormChange(frmDocument* document);
    /// Caption of the document's window: path or name, as the person set it.
    QString captionFor(const QString& path) const;

 private:
    void answerRequests(const frmDocument& document);
    void openExisting(const QString& path, int flags, bool checkBinary, bool openTextMode);
    void showOpened(frmDocument* document, const QString& path);
    bool isActive(const frmDocument* document) const;
    void showActive(frmDocument* document);
    void endOpening();
    void checkFile(const QPointer<frmDocument>& document);

    FrameParts& m_parts;
    int m_documentCounter = 0;
    bool m_opening = false;
    bool m_checking = false;
    std::vector<std::function<void()>> m_waiting;
};
