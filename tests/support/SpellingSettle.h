#pragma once

#include "spelling/frmSpelling.h"

#include <QAbstractButton>
#include <QTest>

#include <algorithm>

/// Waits until the form shows a mistake with its suggestions, or is closed. A button that is pressed by its key clicks
/// a moment later.
inline void settle(const frmSpelling& form) {
    constexpr int MostWaits = 4000;
    const auto isBusy = [&form] {
        const auto buttons = form.findChildren<QAbstractButton*>();
        return form.session().hasWork() ||
               std::ranges::any_of(buttons, [](const QAbstractButton* each) { return each->isDown(); });
    };
    for (int i = 0; i < MostWaits && form.isVisible() && isBusy(); ++i)
        QTest::qWait(5);
    QCoreApplication::processEvents();
}
