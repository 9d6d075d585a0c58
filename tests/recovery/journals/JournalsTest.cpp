#include "recovery/journals/JournalFixture.h"

namespace {

using JournalKeeping = JournalFixture;

TEST_F(JournalKeeping, EditsOfATextComeBack) {
    const QString path = file("one two three");
    {
        const auto journals = makeJournals();
        const auto journal = journals->begin(baseOf(path));
        journal->insert(4, "and ");
        journal->remove(0, 4);
        EXPECT_TRUE(journals->flush(Long));
    }
    EXPECT_EQ(recovered(), "and two three");
}

TEST_F(JournalKeeping, ATextWithoutAFileComesBack) {
    {
        const auto journals = makeJournals();
        JournalBase base;
        base.caption = u"Untitled1"_qs;
        const auto journal = journals->begin(base);
        journal->insert(0, "never saved");
    }
    EXPECT_EQ(recovered(), "never saved");
}

TEST_F(JournalKeeping, ADiscardedJournalLeavesNothing) {
    const QString path = file("one two three");
    const auto journals = makeJournals();
    const auto journal = journals->begin(baseOf(path));
    journal->insert(4, "and ");
    EXPECT_TRUE(journals->flush(Long));
    EXPECT_EQ(names().size(), 2);
    journal->discard();
    EXPECT_TRUE(journals->flush(Long));
    EXPECT_EQ(names(), QStringList());
}

}  // namespace
