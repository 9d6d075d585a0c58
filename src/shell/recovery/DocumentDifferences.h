#pragma once

class QWidget;
class frmDocument;

/// The list of differences of a document whose unsaved changes were recovered.
namespace DocumentDifferences {

/// Shows it in a form above the window, which owns it. Does not run the event loop.
void show(const frmDocument& document, QWidget& window);

}  // namespace DocumentDifferences
