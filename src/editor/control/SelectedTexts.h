#pragma once

#include <QString>

#include <functional>
#include <vector>

class EditView;

/// The selected text of a control, range by range: of a rectangle its part of each line, of several ranges each of
/// them. What lies between them is not selected.
namespace SelectedTexts {

/// The texts of the ranges that are not empty, from the top.
std::vector<QString> of(const EditView& view);
/// The number of lines that they lie in. A line at whose start a range ends is counted.
qint64 lineCount(const EditView& view);

enum class Direction { Kept, Forwards };
using Change = std::function<QString(const QString& text)>;

/// Replaces each text by what `change` makes of it and selects the new ones. The parts of a rectangle are changed as
/// the lines of one text; nothing happens when `change` makes more or fewer lines of them. Bookmarks stay on their
/// lines. The caller opens the scope and has asked whether the text may be changed. An exception from `change` reaches
/// the caller, and then nothing has been replaced.
void change(EditView& view, const Change& change, Direction direction);

}  // namespace SelectedTexts
