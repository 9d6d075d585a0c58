#pragma once

#include "shell/recovery/DifferenceRows.h"

#include <QDialog>
#include <QString>

#include <functional>
#include <memory>

class BackgroundWork;
class QLabel;
class QPlainTextEdit;

/// What `frmDifferences` shows; made by the work that it is given.
struct DifferencesFound {
    QString summary;
    /// Of texts; empty for bytes.
    DifferenceRows rows;
    /// Shown where there are no rows.
    QString text;
};

/// Shows how a file as it is now differs from what was recovered of it: a list to read, with line numbers, where
/// changed lines are marked by a sign and by colour. Not modal; destroys itself when it is closed. The list is made in
/// a thread of its own; closing the form ends that early.
class frmDifferences : public QDialog {
    Q_OBJECT

 public:
    /// Runs in the other thread, so it owns what it uses.
    using Work = std::function<DifferencesFound(const std::atomic<bool>& cancelled)>;

    /// `name` of the document.
    frmDifferences(const QString& name, Work work, QWidget* parent);
    ~frmDifferences() override;

    /// Whether the list is shown.
    bool isComplete() const { return m_isComplete; }

 protected:
    void changeEvent(QEvent* event) override;

 private:
    void layOut();
    void showFound();
    void fillList();

    std::shared_ptr<DifferencesFound> m_found;
    std::unique_ptr<BackgroundWork> m_work;
    bool m_isComplete = false;
    QLabel* m_summary;
    QPlainTextEdit* m_list;
};
