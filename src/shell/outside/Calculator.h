#pragma once

#include <QString>

/// The desktop's calculator, whichever of the known ones is installed.
namespace Calculator {

/// Path of the first calculator that is found; empty: there is none.
QString find();

/// Starts it as a separate process, which outlives this one. False: there is none, or it did not start.
bool start();

}  // namespace Calculator
