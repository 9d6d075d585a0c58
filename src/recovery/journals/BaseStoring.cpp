#include "recovery/journals/BaseStoring.h"

#include <utility>

using Progress = BaseCopy::Progress;

BaseStoring::BaseStoring(Of of, std::unique_ptr<BaseCopy> copy, std::function<void()> done)
    : m_of(of), m_copy(std::move(copy)), m_done(std::move(done)) {}

BaseStoring::~BaseStoring() = default;

void BaseStoring::run() {
    Progress progress = Progress::More;
    while (progress == Progress::More && !m_isCancelled) {
        progress = m_copy->step();
        m_isOnlyRead = m_copy->isOnlyRead();
    }
    {
        const std::scoped_lock lock(m_mutex);
        if (m_isCancelled) {
            m_copy->discard();
            progress = Progress::Changed;
        }
        m_outcome = progress;
    }
    m_done();
}

std::optional<Progress> BaseStoring::outcome() const {
    const std::scoped_lock lock(m_mutex);
    return m_outcome;
}

void BaseStoring::cancel() {
    const std::scoped_lock lock(m_mutex);
    m_isCancelled = true;
    if (m_outcome)
        m_copy->discard();
}
