#pragma once

#include <QByteArray>

#include <map>
#include <mutex>

/// What was tried, and what fell short. Owned by main; used by several threads at once.
class Report {
 public:
    /// Counts one trial of this kind ("faults", "states").
    void count(const char* kind, qint64 number = 1);
    qint64 number(const char* kind) const;
    /// A promise that was broken; the first ones are printed at once.
    void fault(const QByteArray& scene, const QByteArray& what);
    qint64 faults() const { return m_faults; }
    void print() const;
    /// Nothing is reported from now on: whoever does waits for ever.
    void close() { m_mutex.lock(); }

 private:
    mutable std::mutex m_mutex;
    std::map<QByteArray, qint64> m_counts;
    std::map<QByteArray, int> m_ofScene;
    qint64 m_faults = 0;
};
