#pragma once

/// The hourglass over the whole program. There is only one: after showing it twice, restoring it once shows the normal
/// pointer again, so that an operation that ended without restoring it is corrected by the next one.
namespace BusyPointer {

void show();
void restore();

}  // namespace BusyPointer
