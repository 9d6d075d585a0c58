#pragma once

#include <chrono>

/// Whether there is a session bus and it answers. Blocks for at most about `limit`, so it is called in a thread of its
/// own. To be asked before the first use of a D-Bus library: those wait without any limit for a bus that takes a
/// connection and then says nothing, and so would the end of the program. A bus that is reached in another way than by
/// a socket of this machine counts as one that answers.
bool sessionBusAnswers(std::chrono::milliseconds limit);
