#pragma once

#include <QtGlobal>

#include <sys/types.h>

#include <span>

/// What one save looks like from outside. Sizes are bytes.
struct Scene {
    enum class Change { All, FewBlocks, Front, Nothing };
    enum class Place { Plain, Link, LinkToNothing, HardLinks };
    /// Own files are replaced; all others are written in place.
    enum class Owner { User, Program };
    enum class Extra { None, Attribute, AccessList };

    static constexpr qint64 NoFile = -1;

    const char* name;
    qint64 before;  ///< NoFile: it is made by the save
    qint64 after;
    Change change = Change::All;
    qint64 part = 0;   ///< 0: all in memory; otherwise a source that supplies so many bytes at a time
    bool cuts = true;  ///< false: old bytes after the new ones are kept
    Place place = Place::Plain;
    mode_t mode = 0644;
    Extra extra = Extra::None;
    int files = 1;  ///< written at the same time by as many threads
    Owner owner = Owner::User;

    bool isLarge() const { return qMax(before, after) > 4 * 1024 * 1024; }
    bool isRefused() const { return before != NoFile && (mode & 0222U) == 0; }
};

std::span<const Scene> scenes();
