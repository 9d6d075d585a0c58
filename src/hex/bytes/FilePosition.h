#pragma once

#include <QtGlobal>

#include <compare>

/// Where a byte is in a file of the hex view, counted from 1. A file that is opened has at most 2,147,483,647
/// bytes, so that every position fits into 32 bits; sums with them have room here.
class FilePosition {
 public:
    static constexpr qint64 Largest = 2'147'483'647;

    constexpr FilePosition() = default;
    constexpr explicit FilePosition(qint64 number) : m_number(number) {}

    constexpr qint64 number() const { return m_number; }

    constexpr FilePosition operator+(qint64 bytes) const { return FilePosition(m_number + bytes); }
    constexpr FilePosition operator-(qint64 bytes) const { return FilePosition(m_number - bytes); }
    /// Bytes from the other position to this one.
    constexpr qint64 operator-(FilePosition other) const { return m_number - other.m_number; }
    constexpr auto operator<=>(const FilePosition&) const = default;

 private:
    qint64 m_number = 1;
};

/// The same counted from 0: the form that the user sees and types, and that bookmarks keep.
class Offset {
 public:
    constexpr explicit Offset(qint64 number) : m_number(number) {}
    constexpr explicit Offset(FilePosition position) : m_number(position.number() - 1) {}

    constexpr qint64 number() const { return m_number; }
    constexpr FilePosition position() const { return FilePosition(m_number + 1); }
    constexpr auto operator<=>(const Offset&) const = default;

 private:
    qint64 m_number;
};
