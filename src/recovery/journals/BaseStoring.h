#pragma once

#include "recovery/journals/BaseCopy.h"

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>

/// The work of a BaseCopy in a thread of BaseThreads. Shared by that thread and the one that writes the journal, which
/// never waits for it.
class BaseStoring {
 public:
    enum class Of {
        File,  ///< the base
        Bytes  ///< the present bytes of a hex document
    };

    /// `done` is called in the other thread when there is an outcome.
    BaseStoring(Of of, std::unique_ptr<BaseCopy> copy, std::function<void()> done);
    ~BaseStoring();
    Q_DISABLE_COPY_MOVE(BaseStoring)

    /// In the other thread.
    void run();

    Of of() const { return m_of; }
    /// Done or Changed; nothing: it goes on.
    std::optional<BaseCopy::Progress> outcome() const;
    /// After Done.
    StoredBase result() const { return m_copy->result(); }
    /// Whether the file is only read for its checksum, as far as is known yet.
    bool isOnlyRead() const { return m_isOnlyRead; }
    /// The copy is not wanted any more: it is removed, at once or when the file answers.
    void cancel();

 private:
    const Of m_of;
    std::unique_ptr<BaseCopy> m_copy;  ///< of the other thread until there is an outcome
    std::function<void()> m_done;
    std::atomic<bool> m_isOnlyRead{false};
    std::atomic<bool> m_isCancelled{false};
    mutable std::mutex m_mutex;  ///< of the outcome
    std::optional<BaseCopy::Progress> m_outcome;
};
