#pragma once

#include "Effort.h"
#include "Report.h"
#include "program/ProgramOptions.h"

#include <QByteArray>

#include <chrono>

/// Kills the built program at random moments of typing, saving, replacing and closing, starts it again and judges what
/// it has left and what it brings back. Keys are pressed on virtual displays.
class ProgramRun {
 public:
    ProgramRun(QByteArray root, ProgramOptions options, Effort& effort, Report& report)
        : m_root(std::move(root)), m_options(std::move(options)), m_effort(effort), m_report(report) {}

    void run();

 private:
    void countRate(std::chrono::duration<double> time);

    QByteArray m_root;
    ProgramOptions m_options;
    Effort& m_effort;
    Report& m_report;
};
