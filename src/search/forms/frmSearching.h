#pragma once

#include <QDialog>

class ProgressLabel;
class QLabel;

/// Shows how far a search across files has come, and cancels it. Modeless, over the main window, which owns it. Created
/// when it is first needed, then shown and hidden for each search. It keeps its size whatever it shows, and takes the
/// keyboard only when it is shown. Does not run the event loop.
class frmSearching : public QDialog {
    Q_OBJECT

 public:
    explicit frmSearching(QWidget* parent);

    /// The file that was searched last, and how many files were searched and found so far.
    void setStatus(const QString& path, int searched, int found);

    /// By any of the ways to close it the search is cancelled and the window is hidden at once.
    void done(int result) override;

 Q_SIGNALS:
    /// The search is to be cancelled.
    void abortWanted();

 protected:
    void showEvent(QShowEvent* event) override;

 private:
    QLabel* m_picture;
    ProgressLabel* m_status;
};
