#include "shell/outside/Calculator.h"

#include <QProcess>
#include <QStandardPaths>

namespace {

constexpr const char* Programs[] = {"kcalc",     "gnome-calculator", "qalculate-qt", "qalculate-gtk",
                                    "mate-calc", "galculator",       "xcalc"};

}  // namespace

QString Calculator::find() {
    for (const char* program : Programs) {
        QString path = QStandardPaths::findExecutable(QString::fromLatin1(program));
        if (!path.isEmpty())
            return path;
    }
    return {};
}

bool Calculator::start() {
    const QString path = find();
    return !path.isEmpty() && QProcess::startDetached(path, {});
}
