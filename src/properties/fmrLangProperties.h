#pragma once

#include "properties/ucLangProperties.h"

#include <QDialog>

/// The languages by themselves, modal. Made anew for each showing.
class fmrLangProperties : public QDialog {
    Q_OBJECT

 public:
    fmrLangProperties(const DocumentServices& services, ucLangProperties::ShowHelp showHelp, QWidget* parent = nullptr);

    /// Fills the panel, which may show boxes, and runs the form until it is closed.
    int exec() override;

 private:
    ucLangProperties* m_panel;
};
