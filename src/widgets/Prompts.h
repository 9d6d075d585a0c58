#pragma once

#include <QString>
#include <QStringList>

#include <optional>

class QWidget;

/// The parameters of a file dialog.
struct FileQuestion {
    enum Choice { ManyFiles, OneFile };  // what the open dialog takes; one file is never opened read-only

    QString title;
    QString folder;       ///< where it starts; empty: the current one
    QString initialName;  ///< name or full path in the name field
    QString filters;      ///< "description|pattern;pattern|description|..."
    Choice choice = ManyFiles;
};

/// The result of the open dialog.
struct OpenAnswer {
    QStringList files;      ///< empty: cancelled
    bool readOnly = false;  ///< the box "Open as read-only"
};

/// All questions and messages that the program shows to the user. The frame owns one and passes it on; tests pass a
/// scripted one. All calls are modal and run the event loop until they are answered.
class Prompts {
 public:
    virtual ~Prompts() = default;

    /// A box with the text and OK. An empty title means "Quillmark".
    virtual void message(QWidget* parent, const QString& text, const QString& title = {}) = 0;

    /// The same with the picture of a stop.
    virtual void stop(QWidget* parent, const QString& text, const QString& title = {}) = 0;

    /// The same with a check box below the text. True: it was ticked.
    virtual bool messageWithCheck(QWidget* parent, const QString& text, const QString& check) = 0;

    enum class Answer { Yes, No };

    /// A box with Yes and No that neither Esc nor a close button closes. True: Yes. The informative text stands below
    /// the question in smaller letters. Enter gives `preset`.
    virtual bool askYesNo(QWidget* parent, const QString& text, const QString& title = {},
                          const QString& informativeText = {}, Answer preset = Answer::Yes) = 0;

    virtual OpenAnswer askFilesToOpen(QWidget* parent, const FileQuestion& question) = 0;

    /// Path to save to; empty when cancelled. The dialog does not ask about overwriting; the caller must.
    virtual QString askFileToSave(QWidget* parent, const FileQuestion& question) = 0;

    /// Absolute path of a folder that exists; empty when cancelled.
    virtual QString askFolder(QWidget* parent, const QString& title) = 0;

    /// A box with one line of text to edit. Returns the text as it stands; nothing when cancelled.
    virtual std::optional<QString> askText(QWidget* parent, const QString& title, const QString& prompt,
                                           const QString& initial) = 0;
};
