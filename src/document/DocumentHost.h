#pragma once

#include <QString>

class frmDocument;

/// What a document needs of the frame that holds it. The frame outlives its documents.
class DocumentHost {
 public:
    virtual ~DocumentHost() = default;

    virtual void OpenFile(const QString& path, int flags, bool checkBinary, bool openTextMode) = 0;
    virtual void SaveDocument(frmDocument* document, bool activeTab, int format) = 0;
    virtual void SetTabCaption(frmDocument* document, bool activeTab) = 0;
    virtual void SetEditModeIcon(frmDocument* document) = 0;
    virtual void ChangeReadOnly() = 0;
    /// Marks the document's language in the menu.
    virtual void CheckLangMenu(frmDocument* document) = 0;
    /// The two steps of a document that closes, in this order.
    virtual void DocClose(frmDocument* document) = 0;
    virtual void DelTab(frmDocument* document) = 0;
};
