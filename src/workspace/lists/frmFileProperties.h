#pragma once

#include <QDialog>
#include <QString>
#include <QTimer>

#include <memory>

class BackgroundWork;
class Prompts;
class QFormLayout;
class QLabel;
class QPushButton;
struct FileFacts;
struct FolderSum;

/// The properties of a file or folder. Destroys itself when it is closed. What a folder holds is counted in another
/// thread, until that is done, stopped by the button, or the dialog is closed. Does not run the event loop.
class frmFileProperties : public QDialog {
    Q_OBJECT

 public:
    frmFileProperties(const QString& path, const FileFacts& facts, QWidget* parent);
    ~frmFileProperties() override;

 private:
    QLabel* addLine(const char* name, const QString& title, const QString& text);
    void addLines(const QString& path, const FileFacts& facts);
    void addButtons();
    void count(const QString& folder);
    void stopCounting();
    void showSum();

    QFormLayout* m_lines;
    QLabel* m_size = nullptr;
    QPushButton* m_stop = nullptr;
    std::shared_ptr<FolderSum> m_sum;
    std::unique_ptr<BackgroundWork> m_counting;  ///< null when nothing is being counted
    bool m_isStopped = false;
    QTimer m_progress;  ///< brings the sum up to date while it is counted
};

/// Shows type, size, times, owner and mode of a file or folder in a dialog of its own, and returns. False, with the
/// reason in a box titled "Error", when the path cannot be examined.
bool ShowProperties(const QString& path, Prompts& prompts, QWidget* parent);
