#pragma once

#include <QByteArray>

#include <map>
#include <optional>
#include <random>
#include <vector>

/// What a disk may hold after a power cut: a log of changes, and the states that a weak file system could leave at any
/// point of it. Nothing but a flush makes a change last: of a file that was not flushed since, each block and the size
/// have any of the values they had since then, independently of each other, and so has the time of its last change; of
/// a folder that was not flushed since, each name leads to any of the files it led to. Contents are whole in memory, so
/// files are small. Times are counted in changes. A plain value.
class WeakDisk {
    struct Change;

 public:
    using FileId = int;
    static constexpr FileId NoFile = -1;
    static constexpr FileId Folder = -2;  ///< the name is that of a folder

    /// Files by their number, and which of them each name leads to (NoFile, Folder).
    struct State {
        std::vector<QByteArray> files;
        std::vector<qint64> times;  ///< of the files; 0 where there is none
        std::map<QByteArray, FileId> names;
    };
    enum class Survivors { None, All, Bytes, Sizes, AnyBlocks, AnyPages };
    static constexpr int SurvivorKinds = 6;

    WeakDisk() = default;
    /// A disk that holds this for certain.
    explicit WeakDisk(const State& state);

    FileId addFile(const QByteArray& bytes);
    /// It is changed at a time that no other change has.
    void setFile(FileId file, const QByteArray& bytes);
    /// As if it had been changed.
    void touch(FileId file) { setTime(file, ++m_clock); }
    void setTime(FileId file, qint64 time);
    void setName(const QByteArray& name, FileId file);
    void flushFile(FileId file) { m_log.push_back({Change::FileFlush, file}); }
    /// All but its time.
    void flushBytes(FileId file) { m_log.push_back({Change::BytesFlush, file}); }
    void flushFolder(const QByteArray& folder) { m_log.push_back({Change::FolderFlush, NoFile, folder}); }

    /// The number of changes and flushes so far; a place in the log is before the one of that number.
    int length() const { return static_cast<int>(m_log.size()); }
    /// The disk as it was at a place.
    WeakDisk upTo(int place) const;
    /// As the system shows it, before the power is cut.
    State shown(int place) const;
    const QByteArray& bytes(FileId file) const { return m_shown.files[static_cast<std::size_t>(file)]; }
    qint64 timeOf(FileId file) const { return m_shown.times[static_cast<std::size_t>(file)]; }
    FileId fileOf(const QByteArray& name) const;

    /// All that may be found at one place of the log.
    class Moment {
     public:
        Moment(const WeakDisk& disk, int place);
        State cut(Survivors survivors, std::mt19937& random) const;

     private:
        using Versions = std::vector<QByteArray>;

        void apply(const Change& change);
        QByteArray cutFile(const Versions& versions, Survivors survivors, std::mt19937& random) const;

        std::vector<Versions> m_files;
        std::vector<std::vector<qint64>> m_times;
        std::map<QByteArray, std::vector<FileId>> m_names;
    };

 private:
    struct Change {
        enum Kind { FileBytes, FileTime, FileFlush, BytesFlush, Name, FolderFlush };
        Kind kind;
        FileId file;
        QByteArray name = {};
        QByteArray bytes = {};
        qint64 time = 0;
    };

    State m_first;
    State m_shown;
    std::vector<Change> m_log;
    qint64 m_clock = 0;
};
