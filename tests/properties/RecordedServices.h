#pragma once

#include "properties/ShellServices.h"
#include "settings/registry/MemoryRegistry.h"
#include "settings/registry/RegistryData.h"

#include <QSet>
#include <QStringList>

#include <functional>
#include <optional>
#include <utility>

/// A registry that records what is written and deleted, with the paths below the program's own key.
class RecordedRegistry : public MemoryRegistry {
 public:
    explicit RecordedRegistry(QStringList& calls) : m_calls(calls) {}

    std::optional<int> writeResult;  ///< of every write, which then does nothing

    int writeValue(RegistryRoot root, const QString& path, const QString& name, const RegistryValue& value) override {
        if (writeResult)
            return *writeResult;
        const QString text = RegistryData::textToZero(RegistryData::units(value));
        m_calls << relative(path + u'/' + name) + u'=' + text;
        return MemoryRegistry::writeValue(root, path, name, value);
    }
    int deleteKey(RegistryRoot root, const QString& path) override {
        const int code = MemoryRegistry::deleteKey(root, path);
        if (code == RegistryCode::Ok)
            m_calls << u"delete "_qs + relative(path);
        return code;
    }

 private:
    static QString relative(const QString& path) { return QString(path).remove(u"Software/Quillmark/"_qs); }

    QStringList& m_calls;
};

/// A desktop that records its calls.
class RecordedShell : public ShellServices {
 public:
    explicit RecordedShell(QStringList& calls) : m_calls(calls) {}

    QSet<QString> shortcuts;
    bool fails = false;                         ///< shortcuts can be neither created nor deleted
    std::function<void(bool on)> whenRegister;  ///< called by both registrations

    bool ShortcutExists(const QString& pPlace) override { return shortcuts.contains(pPlace); }
    void CreateAppShortcut(const QString& pPlace) override {
        m_calls << u"create "_qs + pPlace;
        if (!fails)
            shortcuts.insert(pPlace);
    }
    void DeleteAppShortcut(const QString& pPlace) override {
        m_calls << u"delete "_qs + pPlace;
        if (!fails)
            shortcuts.remove(pPlace);
    }
    void RegisterShellExtension() override { note(u"register"_qs, true); }
    void UnregisterShellExtension() override { note(u"unregister"_qs, false); }
    void setThemeManifest(bool on) override { m_calls << u"manifest %1"_qs.arg(on); }

 private:
    void note(const QString& call, bool on) {
        m_calls << call;
        if (whenRegister)
            whenRegister(on);
    }

    QStringList& m_calls;
};
