#pragma once

#include <QDialog>

#include <functional>

class ClickLabel;
class Prompts;

/// The About box: name, version and licence of the program, its page on the web, and the system information. Modal; the
/// caller owns it and creates a new one each time.
class frmAbout : public QDialog {
    Q_OBJECT

 public:
    /// The text of the system information; empty where there is none.
    using SystemText = std::function<QString()>;

    frmAbout(SystemText systemText, Prompts& prompts, QWidget* parent = nullptr);

    /// Shows the system information, or a message where there is none; runs the event loop until that is closed.
    Q_INVOKABLE void StartSysInfo();

 private:
    ClickLabel* makeLink();

    SystemText m_systemText;
    Prompts& m_prompts;
};
