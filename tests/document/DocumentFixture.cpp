#include "document/DocumentFixture.h"

#include "editor/control/ControlBookmarks.h"
#include "editor/control/ControlTyping.h"
#include "editor/control/TextControl.h"

bool DocumentFixture::canUndo() {
    return control().CanUndo();
}

bool DocumentFixture::canRedo() {
    return control().CanRedo();
}

bool DocumentFixture::isBookmarked(qint64 line) {
    return control().bookmarks().BookmarkAt(line);
}

void DocumentFixture::select(qint64 anchor, qint64 caret) {
    control().setSelection(anchor, caret);
}

void DocumentFixture::insert(const QString& text) {
    control().typing().type(text);
}

qint64 DocumentFixture::ask(unsigned message, qint64 first, qint64 second) {
    return control().send(message, first, second);
}

bool DocumentFixture::isInPieces() {
    return !control().map().joints().empty();
}

void DocumentFixture::drop(const QString& path) {
    Q_EMIT control().DropFile(path);
}
