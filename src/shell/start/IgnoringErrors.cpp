#include "shell/start/IgnoringErrors.h"

#include <QtGlobal>

void noteGivenUp(const char* step, const char* reason) {
    qWarning("%s was given up: %s", step, reason);
}
