#pragma once

#include <QDateTime>
#include <QStringList>

/// The names of files with this suffix in the folder that were set aside long ago: more than ninety days, and twenty
/// others since. So nothing is removed that somebody may still miss, and nothing collects for ever.
QStringList oldAsides(const QString& folder, const QString& suffix, const QDateTime& now);
