#include "platform/FileErrors.h"

#include <cerrno>

namespace {

SystemError sentence(const QString& form, const QString& path, const SystemError& cause) {
    return {cause.number, form.arg(path, cause.description)};
}

}  // namespace

SystemError FileErrors::reading(const QString& path, const SystemError& cause) {
    return sentence(u"'%1' can't be read: %2"_qs, path, cause);
}

SystemError FileErrors::writing(const QString& path, const SystemError& cause) {
    return sentence(u"'%1' can't be written: %2"_qs, path, cause);
}

SystemError FileErrors::deleting(const QString& path, const SystemError& cause) {
    return sentence(u"'%1' can't be deleted: %2"_qs, path, cause);
}

SystemError FileErrors::unlessRegular(mode_t mode) {
    if (S_ISREG(mode))
        return {};
    if (S_ISDIR(mode))
        return SystemError::fromErrno(EISDIR);
    return {EINVAL, u"It is not a regular file"_qs};
}
