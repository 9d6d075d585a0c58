#include "document/RecoveryFixture.h"

#include <QDateTime>
#include <QFile>

/// What a document that is brought back knows of its file.
class FileOfBroughtBack : public RecoveryFixture {
 protected:
    /// A file of which the open document has a change that is in its journal.
    QString changed() {
        QString file = fileOf("one");
        EXPECT_TRUE(open(file));
        type(u"x"_qs);
        EXPECT_TRUE(flush());
        return file;
    }
    /// As a save does that is killed before its first byte: the system counts the reservation of space as a change.
    static void touch(const QString& file) {
        QFile touched(file);
        ASSERT_TRUE(touched.open(QIODevice::ReadWrite));
        ASSERT_TRUE(touched.setFileTime(QDateTime::currentDateTime().addSecs(-100), QFile::FileModificationTime));
    }
};

TEST_F(FileOfBroughtBack, IsNotAskedAboutWhenOnlyItsTimeIsAnother) {
    const QString file = changed();
    touch(file);
    comeBack();
    EXPECT_FALSE(document->IsChangedOnDisk());
    ASSERT_TRUE(document->SaveFile(file));
    EXPECT_EQ(documenttest::readFile(file), QByteArray("xone"));
}

TEST_F(FileOfBroughtBack, IsAskedAboutWhenItHasOtherBytes) {
    const QString file = changed();
    documenttest::writeFile(file, "two");
    comeBack();
    EXPECT_TRUE(document->IsChangedOnDisk());
}

TEST_F(FileOfBroughtBack, IsAskedAboutWhenItChangesLater) {
    const QString file = changed();
    touch(file);
    comeBack();
    documenttest::writeFile(file, "four");
    EXPECT_TRUE(document->IsChangedOnDisk());
}

TEST_F(FileOfBroughtBack, IsKnownAgainInALaterStart) {
    const QString file = changed();
    touch(file);
    comeBack();
    type(u"y"_qs);
    ASSERT_TRUE(flush());
    comeBack();
    EXPECT_EQ(view().Text().size(), 5);
    EXPECT_FALSE(document->IsChangedOnDisk());
}
