#pragma once

#include <QFileDialog>

class QLineEdit;
struct FileQuestion;

/// Qt's own file dialog for one question. A path typed with a "/" reaches the program as it was typed, since after a
/// link only the system knows what ".." means; Qt would remove it. A file that does not exist is accepted too: the
/// program reports it. A dialog for a folder accepts only one that exists. Made by QtPrompts; modal.
class FileDialog : public QFileDialog {
    Q_OBJECT

 public:
    /// Without a folder in the question it starts in `lastFolder`; empty: in the current one.
    FileDialog(const FileQuestion& question, const QString& lastFolder, QWidget* parent);

    /// The answer, once the dialog was accepted: absolute paths.
    QStringList paths() const;

    void accept() override;

 private:
    QStringList namedPaths() const;
    QString pathOf(const QString& name) const;
    QLineEdit& nameField() const;

    QStringList m_paths;
};

/// "description|pattern;pattern|..." as the name filters of a file dialog: the description, and in a last pair of
/// brackets the patterns, which the dialog hides. "*.*" matches every file.
QStringList nameFilters(const QString& filters);
