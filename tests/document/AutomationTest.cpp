#include "document/frmDocument.h"
#include "document/rtCM.h"
#include "editor/Editor.h"
#include "editor/control/TextControl.h"

#include <QMetaMethod>
#include <QMetaProperty>

#include <gtest/gtest.h>

#include <memory>

namespace {

/// Those of the names that no caller outside can reach.
QStringList unreachable(const QMetaObject& type, const QStringList& operations) {
    QStringList missing = operations;
    for (int number = 0; number < type.methodCount(); ++number) {
        const QMetaMethod method = type.method(number);
        if (method.methodType() != QMetaMethod::Signal)
            missing.removeAll(QString::fromLatin1(method.name()));
    }
    return missing;
}

QStringList unreadable(const QMetaObject& type, const QStringList& properties) {
    QStringList missing;
    for (const QString& name : properties) {
        if (type.indexOfProperty(name.toLatin1().constData()) < 0)
            missing << name;
    }
    return missing;
}

QStringList names(const char* words) {
    return QString::fromLatin1(words).split(u' ', Qt::SkipEmptyParts);
}

}  // namespace

TEST(Automation, ReachesTheOperationsOfATextView) {
    EXPECT_EQ(unreachable(rtCM::staticMetaObject,
                          names("OpenFile ReloadFile SaveFile SaveToTmp LoadFromTmp SetLangFromFile GetLang SetLang "
                                "PropertiesLoad PropertiesSave AddText GetLine Redraw Undo Redo Copy Paste Cut "
                                "ToUppercase ToLowercase ToCapitalize ToUppercaseSel ToLowercaseSel LineDeleteToStart "
                                "LineDeleteToEnd LineDelete LineCut SelectPara SelectLine SelectAll SelectWord Indent "
                                "Unindent ReplaceText Find SetRepeatCount ToggleBookmark NextBookmark PrevBookmark "
                                "ClearAllBookmark BookmarkFirst BookmarkLast RecordMacro ExecMacro Properties "
                                "SortLineAscending SortLineDescending IncrementalSearch ReverseIncrementalSearch "
                                "GotoLine GotoTextLine EnableBookmarkAt SelTotalLines SetActiveMargin "
                                "SetInactiveMargin SetLeftMarginColor HighLightLine UnHighLightLine TotalWords "
                                "TotalChars TotalCharsNoSpace SelTotalWords SelTotalChars SelTotalCharsNoSpace "
                                "IncreaseFontSize DecreaseFontSize DefaultFontSize SpacesToTabs TabsToSpaces FindNext "
                                "FindPrev FindText SetFindText StopSearch ShowLineNumber GetCursorPos")),
              QStringList());
}

TEST(Automation, ReadsThePropertiesOfATextView) {
    EXPECT_EQ(unreadable(rtCM::staticMetaObject,
                         names("Text SelText TextRTF SelRTF SelStart SelEnd SelLength TotalLines Locked "
                               "DisplayWhitespace VScrollVisible HScrollVisible hwnd DisplayLeftMargin LineNumberStart "
                               "LineNumbering DragDrop Enabled font BraceMatching SearchCaseSensitive SearchRegExp "
                               "SearchWholeWord BackColor CurrentLine CurrentColumn LastHighlightLine "
                               "IgnoreCmdFailure FileChanged ClickLeftMarginBookmark gMyHighlight")),
              QStringList());
}

TEST(Automation, ReachesTheOperationsOfADocument) {
    EXPECT_EQ(unreachable(frmDocument::staticMetaObject,
                          names("OpenFile SaveFile ReloadFile ReloadTextFile FileNeedToReload ChangeToReadOnly "
                                "GetCursorPos GetLang SetLang SetDocIcon FindText FindNext FindPrev StopSearch "
                                "EnableBookmarkAt GotoTextLine GotoLine Undo Redo Cut Copy Paste SelectAll CountAll "
                                "TrimTailed AlignLeft AlignRight AlignCenter ToggleBookmark ClearAllBookmark")),
              QStringList());
    EXPECT_EQ(
        unreadable(frmDocument::staticMetaObject,
                   names("fIdx filename isChange isNew isReadOnly LastUpdate KnownUpdate Locked TextEdit DocEnabled "
                         "Caption DocIcon")),
        QStringList());
}

TEST(Automation, ReachesTheCommandsOfTheControl) {
    EXPECT_EQ(unreachable(TextControl::staticMetaObject, names("ExecuteCmd")), QStringList());
    const std::unique_ptr<TextControl> controlOwner{makeEditor()};
    TextControl& control = *controlOwner;
    control.setText(u"one"_qs);
    EXPECT_TRUE(QMetaObject::invokeMethod(&control, "ExecuteCmd", Q_ARG(int, 137)));
    EXPECT_EQ(control.SelText(), u"one"_qs);
}
