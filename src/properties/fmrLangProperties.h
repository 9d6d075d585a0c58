#pragma once

#include "properties/ucLangProperties.h"

#include <QDialog>

/// A modal dialog with the panel of the languages. The caller owns it and creates a new one each time. The services
/// outlive it.
class fmrLangProperties : public QDialog {
    Q_OBJECT

 public:
    fmrLangProperties(const DocumentServices& services, ucLangProperties::ShowHelp showHelp, QWidget* parent = nullptr);

    /// Fills the panel and runs the event loop until the dialog is closed. Filling may show message boxes.
    int exec() override;

 private:
    ucLangProperties* m_panel;
};
