#pragma once

class QWidget;
class TextControl;

/// Creates a complete editing control: with its commands, windows and accessible object. Owned by the parent, or by the
/// caller when there is none.
TextControl* makeEditor(QWidget* parent = nullptr);
