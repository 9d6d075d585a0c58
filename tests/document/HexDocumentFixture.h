#pragma once

#include "document/DocumentFixture.h"
#include "document/frmSwitch.h"
#include "hex/bytes/FilePosition.h"
#include "hex/grid/Grid.h"
#include "hex/grid/GridPane.h"
#include "hex/ucHex.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QTimer>

/// A document on the screen, with its hex view and scripted answers to its forms.
class HexDocumentFixture : public DocumentFixture {
 protected:
    using DocumentFixture::DocumentFixture;

    void SetUp() override {
        m_document.show();
        m_document.activateWindow();
        QApplication::processEvents();
    }

    ucHex& hex() { return *m_document.findChild<ucHex*>(u"ucHex1"_qs); }
    GridPane& pane(int number) { return *hex().findChild<GridPane*>(number == 1 ? u"PicHex"_qs : u"PicText"_qs); }
    Grid& grid() { return *hex().findChild<Grid*>(u"grid1"_qs); }
    QAbstractItemView& bookmarks() { return *hex().findChild<QAbstractItemView*>(u"lsBookmark"_qs); }
    /// Position of the byte under the cursor, from 1.
    qint64 cursor() { return (grid().Pointer() + grid().Row() * 16 + grid().Col()).number(); }
    /// Without a window manager no window is activated again once a form has closed.
    QWidget* focused() {
        if (QApplication::activeWindow() == nullptr) {
            m_document.activateWindow();
            QApplication::processEvents();
        }
        return QApplication::focusWidget();
    }

    bool openHex(const QString& file, bool readOnly = false) {
        return m_document.OpenFile(file, readOnly, false, false);
    }
    bool openHexOf(const QByteArray& bytes) { return openHex(fileOf(bytes, u"a.bin"_qs)); }
    /// By real keys, to the widget with the focus.
    void press(const QString& keys) { QTest::keyClicks(focused(), keys); }
    void pressKey(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(focused(), key, modifiers);
    }
    QByteArray shown() {
        QByteArray digits;
        for (int row = 0; row < grid().Rows(); ++row) {
            for (int col = 0; col < Grid::Columns; ++col) {
                if (!grid().IsBeyondData(row, col))
                    digits += grid().Value(row, col).toLatin1();
            }
        }
        return digits;
    }

    /// Runs while the next modal form of that class is on the screen; it must close the form.
    template <typename Form>
    void whileAsked(std::function<void(Form&)> answer) {
        QTimer::singleShot(0, &m_document, [this, answer = std::move(answer)] {
            auto* form = qobject_cast<Form*>(QApplication::activeModalWidget());
            ASSERT_NE(form, nullptr);
            ++m_asked;
            answer(*form);
        });
    }
    void answerSwitch(int option, const char* button) {
        whileAsked<frmSwitch>([option, button](frmSwitch& form) {
            form.findChild<QRadioButton*>(u"Option1(%1)"_qs.arg(option))->click();
            form.findChild<QPushButton*>(QLatin1String(button))->click();
        });
    }

    int m_asked = 0;  ///< forms that were on the screen
};
