#pragma once

#include "document/DocumentHost.h"

#include <QStringList>

#include <functional>
#include <map>
#include <utility>

/// A DocumentHost that records the calls of its documents, with names and arguments.
class RecordingHost : public DocumentHost {
 public:
    QStringList calls;
    /// Actions to run during a call of that name, after it was recorded.
    std::map<QString, std::function<void()>> during;

    /// Returns the calls since the last take(), and clears the list.
    QStringList take() { return std::exchange(calls, {}); }

    void OpenFile(const QString& path, int flags, bool checkBinary, bool openTextMode) override {
        note(u"OpenFile"_qs, u" %1 %2 %3 %4"_qs.arg(path).arg(flags).arg(checkBinary).arg(openTextMode));
    }
    void SaveDocument(frmDocument*, bool activeTab, int format) override {
        note(u"SaveDocument"_qs, u" %1 %2"_qs.arg(activeTab).arg(format));
    }
    void SetTabCaption(frmDocument*, bool activeTab) override { note(u"SetTabCaption"_qs, u" %1"_qs.arg(activeTab)); }
    void SetEditModeIcon(frmDocument*) override { note(u"SetEditModeIcon"_qs); }
    void ChangeReadOnly() override { note(u"ChangeReadOnly"_qs); }
    void CheckLangMenu(frmDocument*) override { note(u"CheckLangMenu"_qs); }
    void DocClose(frmDocument*) override { note(u"DocClose"_qs); }
    void DelTab(frmDocument*) override { note(u"DelTab"_qs); }

 private:
    void note(const QString& name, const QString& arguments = {}) {
        calls.append(name + arguments);
        const auto action = during.find(name);
        if (action != during.end())
            action->second();
    }
};
