#pragma once

#include "hex/HexFixture.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QDialog>
#include <QLineEdit>
#include <QTimer>

#include <functional>

/// A hex view whose forms are used while they are open.
class HexFormFixture : public HexFixture {
 protected:
    /// Does something with the form that opens next; a form still open afterwards is cancelled.
    void whileOpen(std::function<void(QDialog*)> act) {
        QTimer::singleShot(0, m_hex.get(), [this, act = std::move(act)] {
            auto* form = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(form, nullptr);
            form->activateWindow();
            QApplication::processEvents();
            m_caption = form->windowTitle();
            const QPointer<QDialog> guard(form);
            act(form);
            if (guard && form->isVisible())
                form->reject();
        });
    }
    /// The offscreen display does not return the keyboard focus by itself.
    void activateView() {
        m_hex->activateWindow();
        QApplication::processEvents();
    }
    static void set(const QDialog* form, const QString& name, const QString& text) {
        auto* edit = form->findChild<QLineEdit*>(name);
        ASSERT_NE(edit, nullptr) << name.toStdString();
        edit->clear();
        QTest::keyClicks(edit, text);
    }
    static void click(const QWidget* form, const QString& name) {
        auto* button = form->findChild<QAbstractButton*>(name);
        ASSERT_NE(button, nullptr) << name.toStdString();
        button->click();
    }
    static QString textOf(const QDialog* form, const QString& name) {
        return form->findChild<QLineEdit*>(name)->text();
    }

    QString m_caption;
};
