#include "shell/outside/ToolForms.h"

#include "hex/forms/frmAnsiTable.h"
#include "hex/forms/frmConvert.h"

namespace {

template <typename Form>
void showIn(QWidget* frame) {
    auto* form = frame->findChild<Form*>(QString(), Qt::FindDirectChildrenOnly);
    if (form == nullptr) {
        form = new Form(frame);
        form->setAttribute(Qt::WA_DeleteOnClose);
    }
    form->show();
    form->raise();
    form->activateWindow();
}

}  // namespace

void ToolForms::ShowAnsiTable(QWidget* frame) {
    showIn<frmAnsiTable>(frame);
}

void ToolForms::ShowConvertor(QWidget* frame) {
    showIn<frmConvert>(frame);
}
