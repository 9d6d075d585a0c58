#include "editor/windows/SearchSentences.h"

#include "editor/control/ControlSearch.h"

#include <QAccessible>
#include <QCoreApplication>
#include <QLabel>

namespace {

QString tr(const char* text) {
    return QCoreApplication::translate("SearchSentences", text);
}

}  // namespace

namespace SearchSentences {

QString errorSentence(const ControlSearch& search) {
    const SearchError& error = search.searchError();
    if (error.position < 0)
        return error.sentence;
    return tr("Wrong at character %1: %2").arg(error.position + 1).arg(error.sentence);
}

QString sentence(const ControlSearch& search, SearchOutcome outcome, bool backwards) {
    if (outcome == SearchOutcome::Found)
        return {};
    if (outcome == SearchOutcome::Wrapped)
        return backwards ? tr("Went on from the end") : tr("Went on from the start");
    const QString error = errorSentence(search);
    return error.isEmpty() ? tr("Not found") : error;
}

void show(QLabel& label, const QString& sentence) {
    label.setText(sentence);
    label.setAccessibleName(sentence);
    if (sentence.isEmpty() || !QAccessible::isActive())
        return;
    QAccessibleEvent said(&label, QAccessible::Alert);
    QAccessible::updateAccessibility(&said);
}

}  // namespace SearchSentences
