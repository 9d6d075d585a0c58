#include "platform/SystemError.h"

#include <system_error>

SystemError SystemError::fromErrno(int number) {
    return {number, QString::fromStdString(std::generic_category().message(number))};
}
