#include "editor/windows/SearchReport.h"

#include "editor/control/ControlSearch.h"
#include "editor/control/TextControl.h"

#include <QAccessible>
#include <QLabel>

namespace SearchReport {

QString errorSentence(const TextControl& control) {
    const SearchError& error = control.search().searchError();
    if (error.position < 0)
        return error.sentence;
    return TextControl::tr("Wrong at character %1: %2").arg(error.position + 1).arg(error.sentence);
}

QString sentence(const TextControl& control, SearchOutcome outcome, bool backwards) {
    if (outcome == SearchOutcome::Found)
        return {};
    if (outcome == SearchOutcome::Wrapped)
        return backwards ? TextControl::tr("Went on from the end") : TextControl::tr("Went on from the start");
    const QString error = errorSentence(control);
    return error.isEmpty() ? TextControl::tr("Not found") : error;
}

void show(QLabel& label, const QString& sentence) {
    label.setText(sentence);
    label.setAccessibleName(sentence);
    if (sentence.isEmpty() || !QAccessible::isActive())
        return;
    QAccessibleEvent said(&label, QAccessible::Alert);
    QAccessible::updateAccessibility(&said);
}

}  // namespace SearchReport
