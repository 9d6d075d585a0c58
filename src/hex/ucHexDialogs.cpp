// The forms that the view opens. They are modal and run the event loop; the view may be destroyed meanwhile, and they
// are then destroyed with it.

#include "hex/find/HexFindDesk.h"
#include "hex/find/frmFindReplace.h"
#include "hex/forms/frmAnsiTable.h"
#include "hex/forms/frmBlock.h"
#include "hex/forms/frmConvert.h"
#include "hex/forms/frmGotoOffSet.h"
#include "hex/forms/frmGotoPage.h"
#include "hex/grid/GridPane.h"
#include "hex/ucHex.h"

#include <QEvent>
#include <QPointer>
#include <QScreen>

#include <algorithm>
#include <utility>

namespace {

/// Whether the form is still there and was confirmed.
template <typename Form>
bool askWith(const QPointer<Form>& form) {
    form->exec();
    return form && form->isConfirmed();
}

/// Cancels a form when the view is hidden: a user cannot see any more what the form works on. Owned by the form.
class HiddenView : public QObject {
 public:
    HiddenView(QDialog* form, QWidget& view) : QObject(form), m_form(*form) { view.installEventFilter(this); }

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Hide && !event->spontaneous())
            m_form.reject();
        return QObject::eventFilter(watched, event);
    }

 private:
    QDialog& m_form;
};

/// A form over the view's window, destroyed with the view. It is not a child of the view: the area of a child window
/// would handle the keys of its tabs.
template <typename Form, typename... Arguments>
QPointer<Form> makeForm(QWidget& view, Arguments&&... arguments) {
    QPointer<Form> form(new Form(std::forward<Arguments>(arguments)..., view.window()));
    new HiddenView(form, view);
    QObject::connect(&view, &QObject::destroyed, form, [raw = form.data()] { delete raw; });
    return form;
}

constexpr int RowsInSight = 3;  ///< above a form that must not hide a match

/// A match is in the top row.
void placeClearOfTopRow(QWidget& form, const GridPane& pane) {
    form.adjustSize();
    const QRect screen = pane.screen()->availableGeometry();
    const QPoint below = pane.mapToGlobal(pane.cellRect({RowsInSight, 0}).bottomLeft());
    form.move(std::clamp(below.x(), screen.left(), std::max(screen.left(), screen.right() - form.width())),
              std::clamp(below.y(), screen.top(), std::max(screen.top(), screen.bottom() - form.height())));
}

}  // namespace

void ucHex::cmdGoOffset() {
    if (!m_fileOpen)
        return;
    finishNibble();
    const auto form = makeForm<frmGotoOffSet>(*this, m_prompts);
    if (askWith(form))
        gotoOffset(form->value());
    delete form;
}

void ucHex::cmdGoPage() {
    if (!m_fileOpen)
        return;
    finishNibble();
    const auto form = makeForm<frmGotoPage>(*this, m_prompts, m_panes.paging().typedPages());
    if (askWith(form))
        gotoPage(form->value());
    delete form;
}

void ucHex::SelectBlock() {
    if (!m_fileOpen)
        return;
    finishNibble();
    const auto form = makeForm<frmBlock>(*this, m_locked);
    if (askWith(form)) {
        if (!form->fills())
            copyBlock(form->first(), form->last(), form->form());
        else if (const std::optional<quint8> byte = form->fillByte())
            fillBlock(form->first(), form->last(), *byte);
    }
    delete form;
}

void ucHex::cmdConversion() {
    const auto form = makeForm<frmConvert>(*this);
    form->exec();
    delete form;
}

void ucHex::cmdCharTable() {
    const auto form = makeForm<frmAnsiTable>(*this);
    form->exec();
    delete form;
}

void ucHex::cmdProperties() {
    if (m_fileOpen)
        Q_EMIT PropertiesRequest(QString());
}

void ucHex::cmdCalculator() {
    Q_EMIT CalculatorRequest();
}

void ucHex::cmdLanguage() {
    Q_EMIT LanguageRequest();
}

void ucHex::FindDialog(bool) {
    if (ActiveGrid() == 2)
        cmdFindText();
    else
        cmdFindHex();
}

void ucHex::ReplaceDialog(bool) {
    if (ActiveGrid() == 2)
        cmdReplaceText();
    else
        cmdReplaceHex();
}

void ucHex::cmdFindHex() {
    showFindForm(u"FindHex"_qs, u"Find Hex"_qs);
}

void ucHex::cmdFindText() {
    showFindForm(u"FindText"_qs, u"Find Text"_qs);
}

void ucHex::cmdReplaceHex() {
    showFindForm(u"ReplaceHex"_qs, u"Replace Hex"_qs);
}

void ucHex::cmdReplaceText() {
    showFindForm(u"ReplaceText"_qs, u"Replace Text"_qs);
}

void ucHex::showFindForm(const QString& key, const QString& caption) {
    if (!m_fileOpen)
        return;
    finishNibble();
    const auto form = makeForm<frmFindReplace>(*this, HexFindDesk{m_prompts, m_options, m_findState});
    form->InitControl(this, key, caption, m_locked);
    placeClearOfTopRow(*form, *m_panes.pane(1));
    form->exec();
    if (!form)
        return;
    delete form;
    m_panes.focusActivePane();
}
