#include "recovery/saves/RecordFile.h"

#include <fcntl.h>

RecordFile::~RecordFile() {
    if (m_handle >= 0)
        m_calls.close(m_handle);
}

bool RecordFile::remove() const {
    if (m_calls.unlink(m_name.constData()) == 0)
        return true;
    const int handle = m_calls.open(m_name.constData(), O_WRONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    if (handle < 0)
        return false;
    const bool isUseless = m_calls.ftruncate(handle, 0) == 0;
    m_calls.close(handle);
    return isUseless;
}
