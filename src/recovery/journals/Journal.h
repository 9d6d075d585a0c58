#pragma once

#include <QtGlobal>

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

class JournalStream;

/// The journal of one changed document: its edits since the base, in the order in which they were made. Owned by the
/// document, used in the thread of the window, made by Journals::begin() or FoundJournal::continueAs(). No function
/// waits for the disk, reports an error or runs the event loop: edits are put into memory, and the thread of Journals
/// appends them to the file soon after.
///
/// Destroyed without discard(), the journal stays on the disk and is released: the next start brings it back.
///
/// Offsets and lengths are bytes. Those of a text are of its UTF-8 without joints, as it is before the edit.
class Journal {
 public:
    explicit Journal(std::shared_ptr<JournalStream> stream) : m_stream(std::move(stream)) {}
    ~Journal();
    Q_DISABLE_COPY_MOVE(Journal)

    // Of a text
    void insert(qint64 at, std::string_view bytes);
    void remove(qint64 at, qint64 length);

    // Of a hex document; `page` is the number of the byte with which the page begins, counted as the view does
    void type(qint64 page, int row, int col, quint8 byte);
    void takeBack();
    /// Written directly: no undo, no mark. `at` counts from 0.
    void overwrite(qint64 at, std::string_view bytes);
    void fill(qint64 at, qint64 length, quint8 byte);

    /// Whether the journal is of no use without the whole contents, because its base cannot be had any more: somebody
    /// changed the file, or removed the journal. Call setWhole() soon. Costs no more than reading a flag; ask it with
    /// each edit, after the edit was passed on.
    bool needsWhole() const;
    /// Whether the edits would be of no use if the file of the base were changed: there is no copy of it, or not yet.
    bool dependsOnFile() const;
    /// Is called once each time it becomes needed, in the thread that writes: post an event. What it uses must exist as
    /// long as this object.
    void setWholeNeeded(std::function<void()> notify);
    /// The present contents of a text, in parts, which replace base and edits so far.
    void setWhole(std::vector<std::string> parts);
    /// The same of a hex document: the file with its present bytes, which is cloned or copied later. The handle stays
    /// the caller's and may be closed. Marks and undo are given up until the copy is made. From now on a byte that is
    /// undone must be passed on as written: takeBack() refers to what is given up.
    void setWhole(int handle);

    /// Nothing is left to be recovered: the file is removed from the disk a moment later. What is passed on afterwards
    /// has no effect.
    void discard();
    /// The same, but only once what `next` has so far is on the disk, where it is written at once. If that never
    /// happens, this journal stays.
    void replaceBy(const Journal& next);

 private:
    std::shared_ptr<JournalStream> m_stream;
};
