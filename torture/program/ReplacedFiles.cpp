#include "program/ReplacedFiles.h"

#include "Contents.h"

#include <algorithm>
#include <optional>

namespace {

constexpr int SmallFiles = 60;
constexpr qsizetype SmallStep = 700;
constexpr qsizetype LargeLength = 6'000'000;
constexpr qsizetype LineLength = 100;

}  // namespace

ReplacedFiles::ReplacedFiles(QByteArray folder) : m_folder(std::move(folder)) {
    mustWork(::mkdir(m_folder.constData(), 0755) == 0, "cannot make " + m_folder);
    for (int i = 0; i <= SmallFiles; ++i) {
        File file{m_folder + "/r" + QByteArray::number(i) + ".txt", i < SmallFiles ? i * SmallStep : LargeLength, {}};
        putBytes(file.path, contents(file, oldWord()));
        mustWork(::stat(file.path.constData(), &file.status) == 0, "cannot look at " + file.path);
        m_files.push_back(file);
    }
}

QByteArray ReplacedFiles::contents(const File& file, const QByteArray& word) const {
    const QByteArray line = QByteArray(LineLength, 'x') + word + "\n";
    return line.repeated(file.length / LineLength + 1);
}

int ReplacedFiles::torn() const {
    return int(std::ranges::count_if(m_files, [this](const File& file) {
        const std::optional<QByteArray> bytes = bytesOf(file.path);
        return bytes != contents(file, oldWord()) && bytes != contents(file, newWord());
    }));
}

std::vector<QByteArray> ReplacedFiles::judge(int& replaced) {
    std::vector<QByteArray> wrong;
    replaced = 0;
    for (const File& file : m_files) {
        struct stat status {};
        const bool isSame = ::lstat(file.path.constData(), &status) == 0 && status.st_ino == file.status.st_ino &&
                            status.st_mode == file.status.st_mode;
        const std::optional<QByteArray> bytes = bytesOf(file.path);
        const QByteArray fresh = contents(file, newWord());
        const bool isNew = bytes == fresh;
        if (!isSame || (!isNew && bytes != contents(file, oldWord())))
            wrong.push_back(file.path);
        replaced += isNew ? 1 : 0;
        if (!isNew)
            putBytes(file.path, fresh);
    }
    ++m_version;
    return wrong;
}
