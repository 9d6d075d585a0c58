#pragma once

#include <QString>

class QPrinter;

/// What Qt leaves open about the queues of the system's printers (CUPS). Qt sends a print when its painter ends,
/// without a way to withdraw it, and without a word when the queue refuses it.
namespace PrinterQueue {

/// Call it before the painter of an incomplete print ends: the queue then refuses the print.
void withdraw(QPrinter& printer);

/// Why the queue did not accept the print whose painter has just ended, in the words of the print system. Empty: it
/// has.
QString refusal();

}  // namespace PrinterQueue
