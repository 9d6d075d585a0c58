#pragma once

#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

#include <gtest/gtest.h>

/// quillmark-recover, run to its end as a person runs it, with `home` as home and working folder, and `home`/state for
/// what programs keep.
struct RecoverToolRun {
    int exitCode = -1;  ///< -1: it crashed
    QString output;
    QString error;

    RecoverToolRun(const QString& home, const QStringList& arguments) {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"XDG_STATE_HOME"_qs, home + u"/state"_qs);
        environment.insert(u"HOME"_qs, home);
        environment.insert(u"LC_ALL"_qs, u"C.UTF-8"_qs);
        environment.remove(u"DISPLAY"_qs);
        process.setProcessEnvironment(environment);
        process.setWorkingDirectory(home);
        process.start(u"" QUILLMARK_RECOVER_PROGRAM ""_qs, arguments);
        EXPECT_TRUE(process.waitForFinished(60'000));
        if (process.exitStatus() == QProcess::NormalExit)
            exitCode = process.exitCode();
        output = QString::fromUtf8(process.readAllStandardOutput());
        error = QString::fromUtf8(process.readAllStandardError());
    }
};
