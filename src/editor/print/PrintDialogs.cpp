#include "editor/print/PrintDialogs.h"

#include "editor/print/PageSetupDialog.h"

#include <QCoreApplication>
#include <QPointer>
#include <QPrintDialog>
#include <QPrinter>

namespace {

/// Qt's dialog for printers. It lists "Print to File" below the printers of the system, and chooses it when there is
/// none. Qt's dialog for the page needs a printer, so that one is ours.
class ShownDialogs : public PrintDialogs {
 public:
    bool askPrinter(QWidget* parent, QPrinter& printer, bool hasSelection) override {
        const QPointer<QPrintDialog> dialog(new QPrintDialog(&printer, parent));
        dialog->setWindowTitle(QCoreApplication::translate("PrintDialogs", "Print"));
        dialog->setOption(QAbstractPrintDialog::PrintSelection, hasSelection);
        const bool accepted = dialog->exec() == QDialog::Accepted;
        delete dialog;
        return accepted;
    }

    bool askPage(QWidget* parent, QPageLayout& layout) override {
        const QPointer<PageSetupDialog> dialog(new PageSetupDialog(layout, parent));
        const bool accepted = dialog->exec() == QDialog::Accepted && dialog;
        if (accepted)
            layout = dialog->layoutChosen();
        delete dialog;
        return accepted;
    }
};

}  // namespace

PrintDialogs& PrintDialogs::shown() {
    static ShownDialogs dialogs;
    return dialogs;
}
