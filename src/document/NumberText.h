#pragma once

#include <QString>

/// A number for people: its digits in groups of three with "," between them, in every locale.
QString groupedNumber(qint64 number);
