#include "widgets/SystemIcons.h"

#include <QImage>

#include <gtest/gtest.h>

namespace {

QImage pictureOf(const QIcon& icon, QIcon::State state = QIcon::Off) {
    return icon.pixmap(QSize(16, 16), QIcon::Normal, state).toImage();
}

TEST(SystemIcons, FilesOfATypeShareOnePicture) {
    EXPECT_EQ(SystemIcons::ofFile(u"/a/one.txt"_qs).cacheKey(), SystemIcons::ofFile(u"/b/two.txt"_qs).cacheKey());
    EXPECT_NE(SystemIcons::ofFile(u"/a/one.txt"_qs).cacheKey(), SystemIcons::ofFile(u"/a/one.png"_qs).cacheKey());
}

TEST(SystemIcons, EveryNameHasAPicture) {
    for (const QString& name : {u"one.txt"_qs, u"one.png"_qs, u"one.zip"_qs, u"one.mp3"_qs, u"Makefile"_qs,
                                u"one.unheard-of"_qs, u".hidden"_qs, u"/no/such/file.sh"_qs, QString()}) {
        EXPECT_FALSE(pictureOf(SystemIcons::ofFile(name)).isNull()) << name.toStdString();
    }
}

TEST(SystemIcons, AnOpenFolderLooksDifferent) {
    const QIcon folder = SystemIcons::ofFolder(u"/usr"_qs);
    EXPECT_FALSE(pictureOf(folder).isNull());
    EXPECT_NE(pictureOf(folder, QIcon::On), pictureOf(folder, QIcon::Off));
}

TEST(SystemIcons, FixedAndRemovableVolumesLookDifferent) {
    EXPECT_NE(pictureOf(SystemIcons::ofVolume(true)), pictureOf(SystemIcons::ofVolume(false)));
}

}  // namespace
