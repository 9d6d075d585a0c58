#pragma once

#include <QByteArray>
#include <QString>

/// UTF-8 of a text in which a lone surrogate has become U+FFFD, as it does when it is typed.
QByteArray wellFormedUtf8(QString text);
