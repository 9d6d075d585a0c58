#include "document/DocumentFixture.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QMenu>

namespace {

/// An entry of the text menu, the text for which it is chosen, and the expected result.
struct Chosen {
    const char* name;
    const char* text;
    qint64 anchor;
    qint64 caret;
    /// The text, with the selection in brackets.
    const char* seen;
    /// Otherwise the window that opens or the call to the frame.
    const char* opens = "";
    /// The clipboard afterwards.
    const char* clipboard = "held";
};

constexpr Chosen Entries[] = {
    {"mnuCopy", "one two", 0, 3, "[one] two", "", "one"},
    {"mnuPaste", "one two", 0, 3, "held[] two"},
    {"mnuCut", "one two", 0, 4, "[]two", "", "one "},
    {"mnuUndo", "one", 3, 3, "[]"},
    {"mnuRedo", "one", 3, 3, "one[]"},
    {"mnuFind", "one", 0, 0, "", "FindDialog"},
    {"mnuReplace", "one", 0, 0, "", "ReplaceDialog"},
    {"mnuIncSearch", "one", 0, 0, "", "IncrementalSearchBar"},
    {"mnuRevIncSearch", "one", 0, 0, "", "IncrementalSearchBar"},
    {"mnuGoto", "one", 0, 0, "", "GotoLine"},
    {"mnuSelectWord", "one two", 5, 5, "one [two]"},
    {"mnuSelectLine", "one\ntwo\nsix", 5, 5, "one\n[two\n]six"},
    {"mnuSelectPara", "one\n\ntwo\nsix\n\nten", 6, 6, "one\n\n[two\nsix\n]\nten"},
    {"mnuSelectAll", "one\ntwo", 2, 2, "[one\ntwo]"},
    {"mnuIndent", "one\ntwo", 0, 7, "[\tone\n\ttwo]"},
    {"mnuUnindent", "\tone\n\ttwo", 0, 9, "[one\ntwo]"},
    {"mnuToUpper", "one two", 0, 3, "[ONE] two"},
    {"mnuToLower", "ONE TWO", 0, 3, "[one] TWO"},
    {"mnuCutLine", "one\ntwo\nsix", 5, 5, "one\n[]six", "", "two\n"},
    {"mnuDeleteLine", "one\ntwo\nsix", 5, 5, "one\n[]six"},
    {"mnuDeleteToStart", "one two", 4, 4, "[]two"},
    {"mnuDeleteToEnd", "one two", 4, 4, "one []"},
    {"mnuToggleBookmark", "one\ntwo", 5, 5, "one\n*t[]wo"},
    {"mnuFirstBookmark", "one\ntwo\nsix", 9, 9, "*[]one\ntwo\n*six"},
    {"mnuLastBookmark", "one\ntwo\nsix", 0, 0, "*one\ntwo\n*[]six"},
    {"mnuReadonly", "one", 0, 0, "", "ChangeReadOnly"},
    {"mnuProp", "one", 0, 0, "", "ControlProperties"},
};

}  // namespace

class TextMenu : public DocumentFixture {
 protected:
    TextMenu() {
        m_document.resize(400, 300);
        m_document.show();
    }
    QMenu& menu() { return *m_document.findChild<QMenu*>(u"EditText"_qs); }
    QAction& entry(const char* name) { return *menu().findChild<QAction*>(QString::fromLatin1(name)); }

    void prepare(const Chosen& chosen) {
        const QByteArray name(chosen.name);
        QGuiApplication::clipboard()->setText(u"held"_qs);
        view().setText(QString());
        insert(QString::fromLatin1(chosen.text));
        select(chosen.anchor, chosen.caret);
        if (name == "mnuRedo")
            view().Undo();
        if (name == "mnuFirstBookmark" || name == "mnuLastBookmark") {
            view().EnableBookmarkAt(1, true);
            view().EnableBookmarkAt(3, true);
        }
        m_host.take();
    }
    /// The text with a star in front of a marked line and the selection in brackets.
    QString textSeen() {
        QString seen;
        qint64 position = 0;
        for (qint64 line = 0; line < view().TotalLines(); ++line) {
            if (isBookmarked(line))
                seen += u'*';
            const QString text = view().GetLine(line) + (line + 1 < view().TotalLines() ? u"\n"_qs : QString());
            for (qsizetype unit = 0; unit <= text.size(); ++unit) {
                const bool behindLast = unit == text.size();
                if (behindLast && line + 1 < view().TotalLines())
                    break;
                if (position + unit == view().SelStart())
                    seen += u'[';
                if (position + unit == view().SelEnd())
                    seen += u']';
                if (!behindLast)
                    seen += text[unit];
            }
            position += text.size();
        }
        return seen;
    }
    QString windowSeen() {
        for (const char* name :
             {"FindDialog", "ReplaceDialog", "IncrementalSearchBar", "GotoLine", "ControlProperties"}) {
            auto* window = textWidget().findChild<QWidget*>(QString::fromLatin1(name));
            if (window != nullptr && window->isVisible()) {
                window->close();
                return QString::fromLatin1(name);
            }
        }
        return m_host.take().value(0);
    }
};

TEST_F(TextMenu, EachEntryDoesWhatItIsCalled) {
    for (const Chosen& chosen : Entries) {
        prepare(chosen);
        entry(chosen.name).trigger();
        if (*chosen.opens != '\0') {
            EXPECT_EQ(windowSeen().toStdString(), chosen.opens) << chosen.name;
        } else {
            EXPECT_EQ(textSeen().toStdString(), chosen.seen) << chosen.name;
        }
        EXPECT_EQ(QGuiApplication::clipboard()->text().toStdString(), chosen.clipboard) << chosen.name;
    }
}

TEST_F(TextMenu, NoEntryIsForgotten) {
    QStringList known{u"mnuChangeCase"_qs, u"mnuLineDelete"_qs};
    for (const Chosen& chosen : Entries)
        known << QString::fromLatin1(chosen.name);
    QStringList there;
    for (const QAction* action : menu().findChildren<QAction*>()) {
        if (!action->isSeparator() && !action->objectName().isEmpty())
            there << action->objectName();
    }
    known.sort();
    there.sort();
    there.removeDuplicates();
    EXPECT_EQ(there, known);
}
