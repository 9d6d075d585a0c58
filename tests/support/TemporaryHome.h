#pragma once

#include <QByteArray>
#include <QDir>
#include <QString>
#include <QTemporaryDir>

#include <utility>
#include <vector>

/// Gives a test program its own home: HOME, the XDG folders and TMPDIR are in a folder that is deleted with this
/// object. Create it first in main(), before any QCoreApplication. The destructor restores the environment.
class TemporaryHome {
 public:
    TemporaryHome() {
        if (!m_folder.isValid())
            qFatal("no temporary folder can be made");
        set("HOME", u"home"_qs);
        set("XDG_CONFIG_HOME", u"home/.config"_qs);
        set("XDG_DATA_HOME", u"home/.local/share"_qs);
        set("XDG_STATE_HOME", u"home/.local/state"_qs);
        set("XDG_CACHE_HOME", u"home/.cache"_qs);
        set("XDG_RUNTIME_DIR", u"run"_qs);
        set("TMPDIR", u"tmp"_qs);
    }

    ~TemporaryHome() {
        for (const auto& [name, value] : m_before)
            restore(name, value);
    }

    Q_DISABLE_COPY_MOVE(TemporaryHome)

    /// Returns the absolute path of a file in the home.
    QString path(const QString& relative) const { return m_folder.filePath(u"home/"_qs + relative); }

 private:
    void set(const char* name, const QString& relative) {
        const QString folder = m_folder.filePath(relative);
        QDir().mkpath(folder);
        QFile::setPermissions(folder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        m_before.emplace_back(name, qgetenv(name));
        qputenv(name, QFile::encodeName(folder));
    }

    static void restore(const char* name, const QByteArray& value) {
        if (value.isNull())
            qunsetenv(name);
        else
            qputenv(name, value);
    }

    QTemporaryDir m_folder;
    std::vector<std::pair<const char*, QByteArray>> m_before;
};
