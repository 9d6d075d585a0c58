#pragma once

#include "document/DocumentHost.h"

#include <QStringList>

#include <functional>
#include <map>
#include <utility>

/// A frame that only notes what its documents call, by name and arguments.
class RecordingHost : public DocumentHost {
 public:
    QStringList calls;
    /// What to do inside a call of that name, besides noting it.
    std::map<QString, std::function<void()>> during;

    /// The calls since the last take.
    QStringList take() { return std::exchange(calls, {}); }

    void OpenFile(const QString& path, int flags, bool checkBinary, bool openTextMode) override {
        note(QStringLiteral("OpenFile"),
             QStringLiteral(" %1 %2 %3 %4").arg(path).arg(flags).arg(checkBinary).arg(openTextMode));
    }
    void SaveDocument(frmDocument*, bool activeTab, int format) override {
        note(QStringLiteral("SaveDocument"), QStringLiteral(" %1 %2").arg(activeTab).arg(format));
    }
    void SetTabCaption(frmDocument*, bool activeTab) override {
        note(QStringLiteral("SetTabCaption"), QStringLiteral(" %1").arg(activeTab));
    }
    void SetEditModeIcon(frmDocument*) override { note(QStringLiteral("SetEditModeIcon")); }
    void ChangeReadOnly() override { note(QStringLiteral("ChangeReadOnly")); }
    void CheckLangMenu(frmDocument*) override { note(QStringLiteral("CheckLangMenu")); }
    void DocClose(frmDocument*) override { note(QStringLiteral("DocClose")); }
    void DelTab(frmDocument*) override { note(QStringLiteral("DelTab")); }

 private:
    void note(const QString& name, const QString& arguments = {}) {
        calls.append(name + arguments);
        const auto action = during.find(name);
        if (action != during.end())
            action->second();
    }
};
