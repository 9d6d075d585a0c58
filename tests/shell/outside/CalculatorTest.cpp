#include "shell/outside/Calculator.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

/// A search path that contains only the programs of a test.
class Calculators : public testing::Test {
 protected:
    Calculators() { qputenv("PATH", QFile::encodeName(m_folder.path())); }
    ~Calculators() override { qputenv("PATH", m_before); }

    QString program(const QString& name, const QByteArray& script = {}) {
        QFile file(m_folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("#!/bin/sh\n" + script);
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        return file.fileName();
    }

    const QByteArray m_before = qgetenv("PATH");
    QTemporaryDir m_folder;
};

TEST_F(Calculators, TheFirstOfTheKnownOnesIsTaken) {
    for (const char* name :
         {"xcalc", "galculator", "mate-calc", "qalculate-gtk", "qalculate-qt", "gnome-calculator", "kcalc"}) {
        const QString path = program(QString::fromLatin1(name));
        EXPECT_EQ(Calculator::find(), path);
    }
}

TEST_F(Calculators, WithoutOneNothingStarts) {
    EXPECT_EQ(Calculator::find(), QString());
    EXPECT_FALSE(Calculator::start());
}

TEST_F(Calculators, ItRunsWithoutArguments) {
    const QString told = m_folder.filePath(u"told"_qs);
    program(u"xcalc"_qs, "echo \"$#\" > '" + QFile::encodeName(told) + ".new'\n/bin/mv '" + QFile::encodeName(told) +
                             ".new' '" + QFile::encodeName(told) + "'\n");
    EXPECT_TRUE(Calculator::start());
    ASSERT_TRUE(QTest::qWaitFor([&] { return QFile::exists(told); }, 20'000));
    QFile file(told);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), "0\n");
}
