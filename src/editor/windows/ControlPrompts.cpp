#include "editor/windows/ControlPrompts.h"

#include "editor/control/CommandNumbers.h"
#include "editor/control/TextControl.h"

#include <QInputDialog>
#include <QMessageBox>
#include <QSpinBox>

#include <algorithm>
#include <limits>

namespace {

struct Question {
    QString name;
    QString title;
    QString label;
    int largest = 1;
    int value = 1;
    void (*answer)(TextControl& control, int number);
};

void ask(TextControl& control, const Question& question) {
    auto* dialog = control.findChild<QInputDialog*>(question.name);
    if (dialog == nullptr) {
        dialog = new QInputDialog(&control);
        dialog->setObjectName(question.name);
        dialog->setAttribute(Qt::WA_DeleteOnClose);
        dialog->setInputMode(QInputDialog::IntInput);
        dialog->setWindowTitle(question.title);
        QObject::connect(dialog, &QInputDialog::intValueSelected, &control,
                         [&control, answer = question.answer](int number) {
                             control.setFocus();  // the keyboard may have been in a bar of the control before
                             answer(control, number);
                         });
    }
    dialog->setLabelText(question.label);
    dialog->setIntRange(1, question.largest);
    dialog->setIntValue(question.value);
    if (auto* box = dialog->findChild<QSpinBox*>()) {
        box->setAccessibleName(question.label);
        box->selectAll();
    }
    dialog->show();
    dialog->activateWindow();
}

}  // namespace

namespace ControlPrompts {

void askLine(TextControl& control) {
    const int lines = static_cast<int>(std::min<qint64>(control.TotalLines(), std::numeric_limits<int>::max()));
    ask(control,
        {u"GotoLine"_qs, TextControl::tr("Go to Line"), TextControl::tr("Line (1 to %1):").arg(lines), lines,
         static_cast<int>(std::min<qint64>(control.CurrentLine() + 1, lines)),
         [](TextControl& target, int number) { target.ExecuteCmd(Command::GoToLine, QString::number(number)); }});
}

void askRepeatCount(TextControl& control) {
    ask(control, {u"RepeatCount"_qs, TextControl::tr("Repeat Count"),
                  TextControl::tr("Times to repeat the next command:"), TextControl::LargestRepeatCount,
                  control.repeatCount(), [](TextControl& target, int number) { target.setRepeatCount(number); }});
}

void tell(QWidget& control, const QString& text) {
    auto* box = new QMessageBox(QMessageBox::Information, u"Quillmark"_qs, text, QMessageBox::Ok, &control);
    box->setObjectName(u"ControlMessage"_qs);
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->open();
}

}  // namespace ControlPrompts
