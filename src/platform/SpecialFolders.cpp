#include "platform/SpecialFolders.h"

#include "platform/Folders.h"

#include <QStandardPaths>

#include <algorithm>

namespace {

QString desktop() {
    return QStandardPaths::writableLocation(QStandardPaths::DesktopLocation);
}

QString documents() {
    return QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
}

QString programs() {
    return u"/usr"_qs;
}

QString systemSettings() {
    return u"/etc"_qs;
}

struct Row {
    int code;
    QString (*folder)();
};

constexpr Row Rows[] = {{0, desktop}, {5, documents}, {99, temporaryFolder}, {1, programs}, {-1, systemSettings}};

}  // namespace

QString specialFolder(int code) {
    const auto* row = std::ranges::find(Rows, code, &Row::code);
    return row == std::end(Rows) ? QString() : row->folder();
}
