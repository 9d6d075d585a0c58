#pragma once

/// The calls by which the settings store reaches its files, of which one can be made to fail. There is one for the
/// process; it is in force from the first use to the end of the program.
namespace FaultyStore {

/// No call fails; they are counted from 0.
void reset();
/// The call with this number fails, or it and all later ones.
void failAt(int call, bool isLasting);
int calls();

}  // namespace FaultyStore
