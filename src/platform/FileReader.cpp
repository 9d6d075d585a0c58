#include "platform/FileReader.h"

#include "platform/FileErrors.h"
#include "platform/Paths.h"

#include <fcntl.h>

#include <cerrno>

FileReader::~FileReader() {
    if (m_handle >= 0)
        m_calls.close(m_handle);
}

SystemError FileReader::open(const QString& path, Looked looked) {
    m_path = path;
    const SystemError cause = openHandle(looked);
    if (cause)
        m_error = FileErrors::reading(path, cause);
    return m_error;
}

SystemError FileReader::openHandle(Looked looked) {
    const auto name = localName(m_path);
    if (!name)
        return SystemError::fromErrno(ENOENT);
    struct stat status {};
    if (looked == Looked::NotYet) {
        if (uninterrupted([&] { return m_calls.stat(name->constData(), &status); }) != 0)
            return SystemError::fromErrno(errno);
        if (SystemError cause = FileErrors::unlessRegular(status.st_mode))
            return cause;
    }
    m_handle =
        uninterrupted([&] { return m_calls.open(name->constData(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC); });
    // Check the handle too: the name may now belong to another file.
    if (m_handle < 0 || m_calls.fstat(m_handle, &status) != 0)
        return SystemError::fromErrno(errno);
    m_size = status.st_size;
    return FileErrors::unlessRegular(status.st_mode);
}

qint64 FileReader::read(char* buffer, qint64 length) {
    if (m_error)
        return -1;
    qint64 filled = 0;
    while (filled < length) {
        const ssize_t count = uninterrupted(
            [&] { return m_calls.read(m_handle, buffer + filled, static_cast<size_t>(length - filled)); });
        if (count < 0) {
            m_error = FileErrors::reading(m_path, SystemError::fromErrno(errno));
            return -1;
        }
        filled += count;
        m_at += count;
        // Fewer bytes than asked for, just at the end that was found before: there is no more to ask.
        if (count == 0 || (m_at == m_size && filled < length))
            break;
    }
    return filled;
}
