#pragma once

#include <QDialog>

class MacroStore;
class ucMarco;
struct MacroPanelServices;

/// The panel of the macros by itself. When it closes, in whatever way, the macros are saved. What it is given outlives
/// it.
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
