#include "document/NumberText.h"

#include <QLocale>

QString groupedNumber(qint64 number) {
    QLocale locale = QLocale::c();
    locale.setNumberOptions(QLocale::DefaultNumberOptions);
    return locale.toString(number);
}
