#pragma once

#include "document/frmDocument.h"
#include "document/rtCM.h"
#include "platform/FileErrors.h"
#include "settings/Options.h"
#include "support/RecordingHost.h"
#include "support/ScriptedServices.h"

#include <QCoreApplication>
#include <QFile>
#include <QKeyEvent>
#include <QTemporaryDir>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace documenttest {

inline void writeFile(const QString& path, const QByteArray& bytes) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate)) << path.toStdString();
    ASSERT_EQ(file.write(bytes), bytes.size());
}

inline QByteArray readFile(const QString& path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
}

/// Sets the modification time in seconds, so that no test has to wait for the clock.
inline void setTime(const QString& path, time_t seconds) {
    const timespec times[2] = {{seconds, 0}, {seconds, 0}};
    ASSERT_EQ(utimensat(AT_FDCWD, QFile::encodeName(path).constData(), times, 0), 0);
}

inline void setMode(const QString& path, mode_t mode) {
    ASSERT_EQ(chmod(QFile::encodeName(path).constData(), mode), 0);
}

/// Presses and releases the keys of a text in a widget.
inline void typeInto(QWidget& widget, const QString& text) {
    for (const QChar unit : text) {
        const int key = unit.toUpper().unicode();
        QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, QString(unit));
        QCoreApplication::sendEvent(&widget, &press);
        QKeyEvent release(QEvent::KeyRelease, key, Qt::NoModifier, QString(unit));
        QCoreApplication::sendEvent(&widget, &release);
    }
}

/// The sentence shown to the user when a file can't be read or written for that reason.
inline QString readFailure(const QString& path, int number) {
    return FileErrors::reading(path, SystemError::fromErrno(number)).description;
}

inline QString writeFailure(const QString& path, int number) {
    return FileErrors::writing(path, SystemError::fromErrno(number)).description;
}

inline constexpr time_t SomeTime = 1'700'000'000;

}  // namespace documenttest

/// One document with a recorded frame, scripted answers and a folder for its files.
class DocumentFixture : public testing::Test {
 protected:
    explicit DocumentFixture(qint64 hexBlockSize = WorkingCopy::BlockSize) : m_given(hexBlockSize) {}

    QString path(const QString& name) const { return m_folder.filePath(name); }

    /// A file of those bytes in the folder, at a fixed time.
    QString fileOf(const QByteArray& bytes, const QString& name = u"a.txt"_qs) const {
        documenttest::writeFile(path(name), bytes);
        documenttest::setTime(path(name), documenttest::SomeTime);
        return path(name);
    }

    rtCM& view() { return *m_document.GetEditor(); }
    TextControl& control() { return view().control(); }
    /// The same as a widget, for code that need not include the control.
    QWidget& textWidget() { return *view().focusProxy(); }
    bool canUndo();
    bool canRedo();
    bool isBookmarked(qint64 line);
    void select(qint64 anchor, qint64 caret);
    /// Types a text at once, line ends too.
    void insert(const QString& text);
    qint64 ask(unsigned message, qint64 first = 0, qint64 second = 0);
    /// Whether lines of the text are held in pieces.
    bool isInPieces();
    /// The effect of dropping a file on the text.
    void drop(const QString& path);
    void type(const QString& text) { documenttest::typeInto(textWidget(), text); }

    bool open(const QString& file, bool readOnly = false) { return m_document.OpenFile(file, readOnly, false, true); }

    QTemporaryDir m_folder;
    ScriptedServices m_given;
    Options& m_options = m_given.options;
    ScriptedPrompts& m_prompts = m_given.prompts;
    const DocumentServices& m_services = m_given.all;
    RecordingHost m_host;
    frmDocument m_document{&m_host, m_services};
};
