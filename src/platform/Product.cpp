#include "platform/Product.h"

QString Product::version() {
    return QString::fromUtf8(QUILLMARK_VERSION);
}

QString Product::buildNumber() {
    return QString::fromUtf8(QUILLMARK_BUILD_NUMBER);
}

QString Product::webAddress() {
    return QString::fromUtf8(QUILLMARK_WEB_ADDRESS);
}

QString Product::mailAddress() {
    return QString::fromUtf8(QUILLMARK_MAIL_ADDRESS);
}
