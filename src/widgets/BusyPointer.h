#pragma once

/// The hourglass over the whole program. There is one: showing it twice and restoring it once gives the normal pointer
/// back, so that an operation that ended without restoring it is mended by the next one.
namespace BusyPointer {

void show();
void restore();

}  // namespace BusyPointer
