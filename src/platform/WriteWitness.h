#pragma once

#include "platform/ByteSource.h"

#include <QByteArray>
#include <QString>

#include <sys/stat.h>

#include <memory>

/// A write of a user's file for which everything is ready, and of which no byte has been written yet. Valid during the
/// call it is passed to. Lengths are bytes.
struct PlannedWrite {
    const QByteArray& name;     ///< local name of the file
    const struct stat& before;  ///< the open file as it is; a new one is empty
    qint64 length;              ///< of the new contents
    bool cuts;                  ///< old bytes after the new ones are cut off
    BytePieces pieces;          ///< the new contents if they are all in memory, otherwise empty
    ByteSource& source;         ///< the new contents part by part; rewind it before and after reading
    bool isUnnamed = false;     ///< a new file, which gets its name when it is whole and on the disk
};

/// One write from its first byte to its end. Owned by the writer; destroyed when the write has ended.
class WatchedWrite {
 public:
    virtual ~WatchedWrite() = default;

    /// Called at most once, when everything is written and before it is flushed. `now`: the file as it is then.
    virtual void aboutToFlush(const struct stat& now) { Q_UNUSED(now) }
    /// Called once. `whole`: the new contents are on the disk. `touched`: bytes or length of the file were changed.
    virtual void ended(bool whole, bool touched) = 0;
};

/// Is notified of every write of a user's file, so that contents which are about to be lost can be stored elsewhere
/// first. Outlives the writers that use it; called from several threads at once.
class WriteWitness {
 public:
    virtual ~WriteWitness() = default;

    /// Called when the space is reserved and no byte of the file has changed yet. It cannot stop the write. Null: it is
    /// not interested in this one. Runs the event loop only if `source` does.
    virtual std::unique_ptr<WatchedWrite> aboutToWrite(const PlannedWrite& write) = 0;

    /// Called before a user's file is read to be worked on, and before it is opened to be written: what another process
    /// has left half-written in it is completed first. `name` is its local name. May wait for a moment, and does not
    /// run the event loop.
    virtual void aboutToUse(const QByteArray& name) { Q_UNUSED(name) }

    /// Called when there is no space for a write. True: what the witness had kept for itself was given back, and it may
    /// be tried once more.
    virtual bool giveSpaceBack() { return false; }

    /// The witness of all writes of this process that name no other one; null: none. Set once at the start, before
    /// other threads write.
    static WriteWitness* ofProcess();
    static void setOfProcess(WriteWitness* witness);
    /// Passes aboutToUse() to the witness of the process, if there is one.
    static void settleFile(const QString& path);
};
