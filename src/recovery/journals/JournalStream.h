#pragma once

#include "recovery/journals/JournalEntry.h"

#include <QtGlobal>

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The entries that are written together.
struct JournalBatch {
    std::vector<std::string> parts;  ///< of the payload
    qint64 time = 0;                 ///< of the last edit, in milliseconds since 1970
    qint64 growth = 0;               ///< of the text, in bytes; after a whole its length
    bool isWhole = false;            ///< it begins with the whole contents

    bool isEmpty() const { return parts.empty(); }
};

/// What waits to be written of one journal: the window puts entries in, the thread that writes takes them out. Both
/// hold the lock only as long as memory is moved. Shared by the Journal and the thread.
class JournalStream {
 public:
    using Clock = std::chrono::steady_clock;

    /// `wake` is called when something new waits, without the lock. `time`: of the last
    /// edit so far.
    JournalStream(std::function<void()> wake, qint64 time) : m_wake(std::move(wake)), m_time(time) {}
    ~JournalStream();
    Q_DISABLE_COPY_MOVE(JournalStream)

    // The window's side
    void insert(qint64 at, std::string_view bytes);
    void remove(qint64 at, qint64 length);
    void add(const JournalEntry& entry);
    void setWhole(std::vector<std::string> parts);
    void setWhole(int handle);
    bool needsWhole() const { return m_needsWhole; }
    bool dependsOnFile() const { return m_dependsOnFile; }
    /// Not called any more when the function returns.
    void setWholeNeeded(std::function<void()> notify);
    void discard();
    /// Discards it when entries of `next` have been written, which are due at once, or `next` is discarded.
    void replaceBy(std::shared_ptr<JournalStream> next);
    void release();

    // The side of the thread that writes
    struct Delays {
        std::chrono::milliseconds afterLast;
        std::chrono::milliseconds whileEditing;
    };
    /// When the entries are to be written; nothing: none wait. In the past when the journal was discarded or released.
    std::optional<Clock::time_point> dueAt(const Delays& delays) const;
    JournalBatch take();
    void askForWhole();
    /// Entries are on the disk.
    void noteWritten() { m_isWritten = true; }
    void setDependsOnFile(bool depends) { m_dependsOnFile = depends; }
    /// Wakes the thread that writes; in any thread.
    void wake() const { m_wake(); }
    bool isDiscarded() const;
    /// Nobody adds to it any more, and it is not going to be discarded.
    bool isReleased() const;
    /// The handle of the whole contents of a hex document, which the caller closes from now on; -1: none waits.
    int takeWholeFile();
    qint64 time() const;

 private:
    /// An insertion or removal that the next edit may continue.
    struct Open {
        EntryKind kind = EntryKind::Insert;
        qint64 at = 0;
        qint64 length = 0;
        std::string bytes;
    };

    enum class News { Edit, Whole };

    /// Makes the change with the lock held, and wakes the thread that writes when nothing waited before.
    template <typename Change>
    void note(News news, Change change);
    /// The member, read with the lock held.
    template <typename Value>
    Value locked(const Value& member) const;
    void open(EntryKind kind, qint64 at, std::string_view bytes);
    void closeOpen();
    void hurry();
    // Locked
    bool isGivenUp() const;
    /// Returns whether nothing waited before.
    bool noteNews(News news);
    void putIn(const JournalEntry& entry);

    mutable std::mutex m_mutex;
    std::function<void()> m_wake;
    std::vector<std::string> m_parts;
    Open m_open;
    bool m_hasOpen = false;
    bool m_waits = false;
    bool m_isWhole = false;
    qint64 m_growth = 0;
    Clock::time_point m_firstEdit;
    Clock::time_point m_lastEdit;
    qint64 m_time;
    int m_wholeFile = -1;
    std::atomic<bool> m_needsWhole{false};
    std::atomic<bool> m_dependsOnFile{false};
    std::mutex m_notifying;
    std::function<void()> m_wholeNeeded;
    std::atomic<bool> m_isWritten{false};
    std::shared_ptr<JournalStream> m_next;  ///< that replaces it
    bool m_isDiscarded = false;
    bool m_isReleased = false;
};
