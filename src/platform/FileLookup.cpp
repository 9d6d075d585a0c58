#include "platform/FileLookup.h"

#include "platform/BackgroundWork.h"

#include <utility>

namespace {

QString folderOf(const QString& path) {
    return path.left(path.lastIndexOf(u'/') + 1);
}

}  // namespace

FileLookup::FileLookup(Exists exists, std::chrono::milliseconds limit) : m_exists(std::move(exists)), m_limit(limit) {}

FileLookup::~FileLookup() = default;

bool FileLookup::exists(const QString& path) {
    const QString folder = folderOf(path);
    if (const auto open = m_unanswered.find(folder); open != m_unanswered.end()) {
        if (!open->second->isDone())
            return false;
        m_unanswered.erase(open);
    }
    const auto answer = std::make_shared<bool>(false);
    auto work = std::make_unique<BackgroundWork>(
        [answer, path, exists = m_exists](const std::atomic<bool>&) { *answer = exists(path); });
    if (work->waitAlive(m_limit))
        return *answer;
    m_unanswered[folder] = std::move(work);
    return false;
}
