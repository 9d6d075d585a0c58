#include "shell/FrameFixture.h"

#include "editor/control/ControlBookmarks.h"
#include "editor/control/ControlTyping.h"
#include "editor/control/TextControl.h"

void FrameFixture::select(qint64 anchor, qint64 caret) {
    control().setSelection(anchor, caret);
}

void FrameFixture::type(const QString& text) {
    control().typing().type(text);
}

bool FrameFixture::canUndo() {
    return control().CanUndo();
}

bool FrameFixture::isBookmarked(qint64 line) {
    return control().bookmarks().BookmarkAt(line);
}

void FrameFixture::execute(int command) {
    control().ExecuteCmd(command);
}

void FrameFixture::setRepeatCount(int times) {
    control().setRepeatCount(times);
}
