#include "spelling/check/SessionFixture.h"
#include "spelling/check/WordContext.h"

using WordContextTest = SessionFixture;

TEST_F(WordContextTest, IsTheLineOfTheWord) {
    begin(u"the mat\r\nthe\tkat sat.\nthe cat"_qs);
    const WordContext context = WordContext::of(*m_session);
    EXPECT_EQ(context.before, u"the "_qs);
    EXPECT_EQ(context.word, u"kat"_qs);
    EXPECT_EQ(context.behind, u" sat."_qs);
}

TEST_F(WordContextTest, ShowsWhatWasCorrectedBeforeIt) {
    begin(u"teh kat"_qs);
    m_session->change(u"the"_qs);
    runOn();
    EXPECT_EQ(WordContext::of(*m_session).before, u"the "_qs);
}

TEST_F(WordContextTest, IsCutInALongLine) {
    begin(u"the "_qs.repeated(100) + u"kat"_qs + u" the"_qs.repeated(100));
    const WordContext context = WordContext::of(*m_session);
    EXPECT_TRUE(context.before.startsWith(u"\u2026"_qs) && context.before.endsWith(u"the "_qs));
    EXPECT_TRUE(context.behind.startsWith(u" the"_qs) && context.behind.endsWith(u"\u2026"_qs));
    EXPECT_LT(context.before.size() + context.behind.size(), 300);
}

TEST_F(WordContextTest, NoPairOfSurrogatesIsCut) {
    for (const QString& shift : {QString(), u" "_qs}) {
        const QString smiles = u"\U0001F600"_qs.repeated(200);
        begin(smiles + shift + u" kat "_qs + shift + smiles);
        const WordContext context = WordContext::of(*m_session);
        EXPECT_TRUE(context.before.isValidUtf16());
        EXPECT_TRUE(context.behind.isValidUtf16());
    }
}

TEST(LineOfPosition, CountsEveryKindOfLineEnd) {
    const QString text = u"a\r\nb\rc\nd"_qs;
    EXPECT_EQ(lineAt(text, 0), 1);
    EXPECT_EQ(lineAt(text, 3), 2);
    EXPECT_EQ(lineAt(text, 5), 3);
    EXPECT_EQ(lineAt(text, 7), 4);
    EXPECT_EQ(lineAt(u"", 0), 1);
}
