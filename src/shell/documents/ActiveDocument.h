#pragma once

#include <QFlags>
#include <QObject>

class MdiChildren;
class SystemClose;
class frmDocument;

/// Which document is the active one, and the events of all documents: code that shows a property of them connects only
/// to this object. Owned by the frame. A document's own signals are forwarded by this object from add() on.
///
/// The text and hex switch runs the event loop; Close is disabled meanwhile.
class ActiveDocument : public QObject {
    Q_OBJECT

 public:
    /// What has changed in a document.
    enum What {
        State = 1,     ///< its file's name, whether it is changed, whether it is locked
        File = 2,      ///< size and time of its file on disk
        Mode = 4,      ///< text or bytes, locked or not: which commands can be chosen
        Language = 8,  ///< the language of its text
        Caret = 16,    ///< the cursor's position, or the number of lines
        View = 32,     ///< how its text is shown
        Limits = 64,   ///< what the status bar says of how it is shown or saved
        Repeat = 128,  ///< how often the next command is carried out
        Loaded =
            File | Mode | Language | Caret | View | Limits,  ///< all but the state, which a document reports itself
    };
    Q_DECLARE_FLAGS(Changes, What)

    ActiveDocument(MdiChildren& children, SystemClose& systemClose);

    /// Null while there is no document.
    frmDocument* get() const;
    bool is(const frmDocument* document) const { return document != nullptr && document == get(); }
    /// Activates the document; one that is active already is left unchanged, minimised or not. May be null.
    void activate(frmDocument* document);

    /// Adds a new document to the frame, in front of the others.
    void add(frmDocument* document);
    /// The document has ended and is not among the others any more.
    void remove(frmDocument* document);
    /// The document has become the active child.
    void ActiveFormChange(frmDocument* document);

    /// Of the active document.
    void ChangeReadOnly();
    void SwitchHex(bool hex);

    // For those who did something to a document that it does not report itself.
    void reportChange(frmDocument* document, Changes what) { Q_EMIT changed(document, what); }
    void reportOpened(frmDocument* document, const QString& path) { Q_EMIT opened(document, path); }
    void reportSaved(frmDocument* document, const QString& path) { Q_EMIT saved(document, path); }
    void reportClosing(frmDocument* document) { Q_EMIT closing(document); }

 Q_SIGNALS:
    /// A document was created; it is the active one already.
    void added(frmDocument* document);
    void activated(frmDocument* document);
    /// Of any document, active or not.
    void changed(frmDocument* document, ActiveDocument::Changes what);
    /// A file was opened in the document, as far as it could be read.
    void opened(frmDocument* document, const QString& path);
    void saved(frmDocument* document, const QString& path);
    /// The document is about to end; the user was asked about its changes.
    void closing(frmDocument* document);
    void removed(frmDocument* document);
    /// A text of a document for the status bar; empty: none any more.
    void noticed(const QString& text);
    /// The same for a text that disappears by itself.
    void noticedInPassing(const QString& text);
    /// A find or replace dialog of a document has searched, or was closed after it had searched.
    void searched(const QString& text, bool caseSensitive, bool regExp, bool wholeWord);

 private:
    MdiChildren& m_children;
    SystemClose& m_systemClose;
};

Q_DECLARE_OPERATORS_FOR_FLAGS(ActiveDocument::Changes)
