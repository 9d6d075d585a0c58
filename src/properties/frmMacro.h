#pragma once

#include <QDialog>

class MacroStore;
class ucMarco;
struct MacroPanelServices;

/// A dialog with the panel of the macros. It saves the macros when it closes, in whatever way. The services outlive it.
class frmMacro : public QDialog {
    Q_OBJECT

 public:
    explicit frmMacro(const MacroPanelServices& services, QWidget* parent = nullptr);

    ucMarco& panel() const { return *m_panel; }

    void done(int result) override;

 private:
    MacroStore& m_macros;
    ucMarco* m_panel;
};
