#include "document/HexDocumentFixture.h"
#include "platform/WriteWitness.h"

#include <QFile>

/// A file that another process has left half-written is completed before anything of it is read.

namespace {

class HalfWrittenFile : public HexDocumentFixture, private WriteWitness {
 protected:
    HalfWrittenFile() { WriteWitness::setOfProcess(this); }
    ~HalfWrittenFile() override { WriteWitness::setOfProcess(nullptr); }

    QStringList m_settled;
    QByteArray m_whole = "the whole text\n";

 private:
    std::unique_ptr<WatchedWrite> aboutToWrite(const PlannedWrite& /*write*/) override { return nullptr; }
    void aboutToUse(const QByteArray& name) override {
        m_settled << QFile::decodeName(name);
        documenttest::writeFile(m_settled.last(), m_whole);
    }
};

}  // namespace

TEST_F(HalfWrittenFile, IsOpenedAsAWholeText) {
    const QString file = fileOf("the wh");
    ASSERT_TRUE(open(file));
    EXPECT_EQ(view().Text(), u"the whole text\n"_qs);
    EXPECT_EQ(m_settled, QStringList{file});
    EXPECT_FALSE(m_document.IsChangedOnDisk());
    EXPECT_FALSE(m_document.FileNeedToReload());
}

TEST_F(HalfWrittenFile, IsOpenedAsWholeBytes) {
    const QString file = fileOf("the wh", u"a.bin"_qs);
    ASSERT_TRUE(openHex(file));
    EXPECT_TRUE(shown().startsWith(m_whole.toHex().toUpper()));
    EXPECT_EQ(m_settled, QStringList{file});
    EXPECT_FALSE(m_document.IsChangedOnDisk());
}

TEST_F(HalfWrittenFile, IsTextOrNotByItsWholeContents) {
    m_options.CheckHexModeWhenOpen = true;
    const QString file = fileOf(QByteArray("torn\0\0\0\0", 8));
    ASSERT_TRUE(m_document.OpenFile(file, false, true, true));
    EXPECT_TRUE(m_document.TextEdit());
    EXPECT_EQ(view().Text(), u"the whole text\n"_qs);
}

TEST_F(HalfWrittenFile, IsReloadedWhole) {
    const QString file = fileOf("the wh");
    ASSERT_TRUE(open(file));
    m_whole = "and another\n";
    documenttest::writeFile(file, "and");
    m_document.ReloadFile();
    EXPECT_EQ(view().Text(), u"and another\n"_qs);
    m_whole = "and a third\n";
    m_document.ReloadTextFile(file, SaveFormats::AsLoaded);
    EXPECT_EQ(view().Text(), u"and a third\n"_qs);
    EXPECT_EQ(m_settled, (QStringList{file, file, file}));
    EXPECT_FALSE(m_document.IsChangedOnDisk());
}
