#include "editor/held/BulkReplace.h"
#include "editor/held/ScintillaText.h"

#include <Qsci/qsciscintillabase.h>

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace {

using Sci = QsciScintillaBase;

/// A view with a text and marks at some lines.
struct MarkedText {
    QsciScintillaBase view;
    ScintillaText held{view};

    long send(unsigned message, long first = 0, long second = 0) const {
        return view.SendScintilla(message, static_cast<unsigned long>(first), second);
    }
    MarkedText(const std::string& text, const std::vector<long>& marked) {
        send(Sci::SCI_SETCODEPAGE, Sci::SC_CP_UTF8);
        view.SendScintilla(Sci::SCI_APPENDTEXT, text.size(), text.c_str());
        send(Sci::SCI_EMPTYUNDOBUFFER);
        for (const long line : marked)
            send(Sci::SCI_MARKERADD, line, static_cast<long>(line % 2 == 0 ? 1 : 3));
    }
    std::string text() const { return std::string(held.range(0, held.length())); }
    /// The marks of each line.
    std::vector<long> marks() const {
        std::vector<long> all;
        for (long line = 0; line < held.lineCount(); ++line)
            all.push_back(send(Sci::SCI_MARKERGET, line));
        return all;
    }
    void inBulk(const Replacements& wanted) {
        send(Sci::SCI_BEGINUNDOACTION);
        BulkReplace(view, held, wanted).apply();
        send(Sci::SCI_ENDUNDOACTION);
    }
    void oneByOne(const Replacements& wanted) {
        send(Sci::SCI_BEGINUNDOACTION);
        for (auto edit = wanted.edits.rbegin(); edit != wanted.edits.rend(); ++edit) {
            send(Sci::SCI_SETTARGETRANGE, edit->match.from, edit->match.to);
            view.SendScintilla(Sci::SCI_REPLACETARGET, static_cast<uintptr_t>(edit->textLength),
                               wanted.texts.constData() + edit->textFrom);
        }
        send(Sci::SCI_ENDUNDOACTION);
    }
};

constexpr unsigned AllParts = 9;
constexpr unsigned PartsWithoutCr = 7;

std::string randomText(std::mt19937& random, unsigned length, unsigned kinds) {
    static const char* const parts[AllParts] = {"a", "b", "one", "ä", " ", "\n", "\n", "\r\n", "\r"};
    std::string text;
    for (unsigned i = 0; i < length; ++i)
        text += random() % 40 == 0 ? std::string(150, 'x') : parts[random() % kinds];
    return text;
}

/// Matches anywhere, some empty, some beside each other, with texts of their own or one for all.
Replacements randomReplacements(std::mt19937& random, qint64 length, unsigned kinds) {
    Replacements wanted;
    const bool same = random() % 2 == 0;
    for (qint64 at = random() % 8; at <= length; at += random() % 3 == 0 ? 0 : random() % 40) {
        const TextMatch match{at, std::min<qint64>(length, at + random() % 5)};
        if (!wanted.edits.empty() && match.empty() && wanted.edits.back().match.to == at)
            at = std::min(length, at + 1);
        const QByteArray text = QByteArray::fromStdString(randomText(random, random() % 4, kinds));
        if (!same || wanted.edits.empty()) {
            wanted.edits.push_back({{at, std::max(at, match.to)}, wanted.texts.size(), text.size()});
            wanted.texts += text;
        } else {
            wanted.edits.push_back({{at, std::max(at, match.to)}, 0, wanted.texts.size()});
        }
        at = wanted.edits.back().match.to + 1;
    }
    return wanted;
}

}  // namespace

TEST(BulkReplace, DoesWhatOneEditAfterTheOtherDoesAndUndoesItInOneStep) {
    std::mt19937 random(11);
    for (int round = 0; round < 400; ++round) {
        const unsigned kinds = round % 2 == 0 ? AllParts : PartsWithoutCr;
        const std::string text = randomText(random, 2 + random() % 300, kinds);
        std::vector<long> marked;
        for (long line = 0; line < 200; ++line) {
            if (random() % (round % 3 == 0 ? 2U : 12U) == 0)
                marked.push_back(line);
        }
        MarkedText expected(text, marked);
        MarkedText bulk(text, marked);
        const std::vector<long> marksAtFirst = bulk.marks();
        const Replacements wanted = randomReplacements(random, bulk.held.length(), kinds);
        if (wanted.edits.empty())
            continue;
        expected.oneByOne(wanted);
        bulk.inBulk(wanted);
        ASSERT_EQ(bulk.text(), expected.text()) << round;
        ASSERT_EQ(bulk.marks(), expected.marks()) << round;
        for (MarkedText* each : {&expected, &bulk})
            each->send(Sci::SCI_UNDO);
        ASSERT_EQ(bulk.text(), text) << round;
        ASSERT_EQ(bulk.marks(), expected.marks()) << round;
        ASSERT_EQ(bulk.send(Sci::SCI_CANUNDO), 0) << round;
        for (MarkedText* each : {&expected, &bulk})
            each->send(Sci::SCI_REDO);
        ASSERT_EQ(bulk.text(), expected.text()) << round;
        ASSERT_EQ(bulk.marks(), expected.marks()) << round;
    }
}

TEST(BulkReplace, NeedsFewEditsForManyMatches) {
    std::string text;
    for (int line = 0; line < 1000; ++line)
        text += "one two three\n";
    MarkedText bulk(text, {500});
    Replacements wanted;
    wanted.texts = "1";
    for (qint64 line = 0; line < 1000; ++line)
        wanted.edits.push_back({{line * 14, line * 14 + 3}, 0, 1});
    int edits = 0;
    QObject::connect(&bulk.view, &QsciScintillaBase::SCN_MODIFIED, [&](int, int type) {
        if ((type & Sci::SC_MOD_INSERTTEXT) != 0)
            ++edits;
    });
    bulk.inBulk(wanted);
    EXPECT_LE(edits, 3);
    EXPECT_EQ(bulk.held.length(), 12000);
    EXPECT_EQ(bulk.send(Sci::SCI_MARKERNEXT, 0, -1), 500);
}
