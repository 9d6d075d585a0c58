#pragma once

#include "recovery/saves/SaveRecovery.h"

#include <QObject>
#include <QString>

/// Says in the status bar what became of interrupted saves. Owned by main(), outlives the frame.
class SaveNotices : public QObject {
    Q_OBJECT

 public:
    /// May be called in any thread. Nothing is said when there was nothing to do.
    void report(const SaveRecovery::Summary& summary);

 Q_SIGNALS:
    /// A sentence for the status bar, or two.
    void noticed(const QString& sentence);
};
