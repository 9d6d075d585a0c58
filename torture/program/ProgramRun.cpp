#include "program/ProgramRun.h"

#include "Contents.h"
#include "program/Desk.h"

#include <X11/Xlib.h>
#include <unistd.h>

#include <chrono>
#include <thread>
#include <vector>

void ProgramRun::run() {
    mustWork(::access(m_options.program.c_str(), X_OK) == 0,
             "cannot run " + QByteArray::fromStdString(m_options.program));
    mustWork(XInitThreads() != 0, "cannot use displays in several threads");
    const auto begin = std::chrono::steady_clock::now();
    std::vector<std::thread> threads;
    for (int number = 0; number < m_options.desks; ++number) {
        const unsigned seed = m_effort.random()();
        threads.emplace_back([this, number, seed] { Desk(number, m_root, m_options, m_effort, seed, m_report).run(); });
    }
    for (std::thread& thread : threads)
        thread.join();
    countRate(std::chrono::steady_clock::now() - begin);
    for (const Desk::Hit& hit : Desk::Hits) {
        if (m_effort.isLong() && m_report.number(hit.name) == 0)
            m_report.fault("program", QByteArray("there were no ") + hit.name);
    }
}

void ProgramRun::countRate(std::chrono::duration<double> time) {
    constexpr double Seconds = 60;
    const auto kills = double(m_report.number("kills of the program"));
    m_report.count("kills of the program a minute", qint64(kills / time.count() * Seconds));
}
