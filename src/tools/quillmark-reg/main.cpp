#include "tools/quillmark-reg/RegistryTool.h"

#include <QCoreApplication>

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    return RegistryTool().run(QCoreApplication::arguments());
}
