// The forms that the view opens. They are modal and run the event loop; the view may go meanwhile, and they with it.

#include "hex/frmAnsiTable.h"
#include "hex/frmBlock.h"
#include "hex/frmConvert.h"
#include "hex/frmGotoOffSet.h"
#include "hex/frmGotoPage.h"
#include "hex/ucHex.h"

#include <QPointer>

namespace {

/// Whether the form is still there and was confirmed.
template <typename Form>
bool askWith(const QPointer<Form>& form) {
    form->exec();
    return form && form->isConfirmed();
}

}  // namespace

void ucHex::cmdGoOffset() {
    if (!m_fileOpen)
        return;
    finishNibble();
    const QPointer<frmGotoOffSet> form(new frmGotoOffSet(m_prompts, this));
    if (askWith(form))
        gotoOffset(form->value());
    delete form;
}

void ucHex::cmdGoPage() {
    if (!m_fileOpen)
        return;
    finishNibble();
    const QPointer<frmGotoPage> form(new frmGotoPage(m_prompts, m_paging.typedPages(), this));
    if (askWith(form))
        gotoPage(form->value());
    delete form;
}

void ucHex::SelectBlock() {
    if (!m_fileOpen)
        return;
    finishNibble();
    const QPointer<frmBlock> form(new frmBlock(this));
    if (askWith(form)) {
        if (!form->fills())
            copyBlock(form->first(), form->last(), form->form());
        else if (const std::optional<quint8> byte = form->fillByte())
            fillBlock(form->first(), form->last(), *byte);
    }
    delete form;
}

void ucHex::cmdConversion() {
    const QPointer<frmConvert> form(new frmConvert(this));
    form->exec();
    delete form;
}

void ucHex::cmdCharTable() {
    const QPointer<frmAnsiTable> form(new frmAnsiTable(this));
    form->exec();
    delete form;
}
