#include "tools/quillmark-recover/RecoverTool.h"

#include <QCoreApplication>

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    return RecoverTool().run(QCoreApplication::arguments());
}
