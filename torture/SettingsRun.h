#pragma once

#include "Effort.h"
#include "Report.h"

#include <QByteArray>
#include <QString>

#include <span>

/// Makes each call of the settings store to the system fail in its turn, once or from then on, while settings are
/// written, and examines the store afterwards: what was reported as written is there, everything else is as it was or
/// as it was to be, several values of one step are of one time, and the store was not damaged.
class SettingsRun {
 public:
    SettingsRun(QByteArray root, Effort& effort, Report& report)
        : m_root(std::move(root)), m_effort(effort), m_report(report) {}

    void run();

    /// What is written while a call fails.
    struct Scene {
        const char* name;
        bool hasStore;  ///< false: the first write makes it
        int values;     ///< more than one: written in one step
        int length;     ///< of each value, in bytes
    };
    static std::span<const Scene> scenes();

 private:
    void prepare(const Scene& scene) const;
    bool write(const Scene& scene, const QByteArray& bytes) const;
    void tryFault(const Scene& scene, int call, bool isLasting);
    void examine(const Scene& scene, bool isReported, const QByteArray& what);
    QString store() const;

    QByteArray m_root;
    Effort& m_effort;
    Report& m_report;
};
