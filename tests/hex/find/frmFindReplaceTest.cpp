#include "hex/HexFormFixture.h"
#include "platform/Folders.h"

#include <QDir>
#include <QGroupBox>
#include <QPushButton>
#include <QRadioButton>
#include <QTabBar>
#include <QTabWidget>

#include <functional>

namespace {

/// The pages of the form, and how each is opened.
struct Page {
    const char* name;
    const char* key;
    const char* caption;
    void (ucHex::*open)();
};

constexpr Page ReplaceHex{"ucReplaceHex1", "ReplaceHex", "Replace Hex", &ucHex::cmdReplaceHex};
constexpr Page ReplaceText{"ucReplaceText1", "ReplaceText", "Replace Text", &ucHex::cmdReplaceText};
constexpr Page FindText{"ucFindText1", "FindText", "Find Text", &ucHex::cmdFindText};
constexpr Page FindHex{"ucFindHex1", "FindHex", "Find Hex", &ucHex::cmdFindHex};
constexpr Page Pages[] = {ReplaceHex, ReplaceText, FindText, FindHex};

class HexFindForm : public HexFormFixture {
 protected:
    void SetUp() override {
        HexFormFixture::SetUp();
        QDir(ProgramFolder()).removeRecursively();
        m_options.ContinueSearch = false;
    }

    /// One page of the open form.
    struct OnPage {
        QWidget* page;
        QComboBox* box(const char* name) const { return page->findChild<QComboBox*>(QString::fromLatin1(name)); }
        QString text(const char* name) const { return box(name)->currentText(); }
        void set(const char* name, const QString& text) const { box(name)->setEditText(text); }
        void type(const char* name, const QString& text) const {
            box(name)->lineEdit()->clear();
            QTest::keyClicks(box(name), text);
        }
        void press(const char* name, int key) const { QTest::keyClick(box(name), static_cast<Qt::Key>(key)); }
        QAbstractButton* button(const char* name) const {
            return page->findChild<QAbstractButton*>(QString::fromLatin1(name));
        }
        void click(const char* name) const { button(name)->click(); }
        QString tag() const { return button("cmdReplace")->property("Tag").toString(); }
        QString refusal() const { return page->findChild<QLabel*>(u"lblRefusal"_qs)->text(); }
    };

    void use(const Page& page, const std::function<void(OnPage)>& act) {
        bool used = false;
        whileOpen([&](const QDialog* form) {
            auto* widget = form->findChild<QWidget*>(QString::fromLatin1(page.name));
            ASSERT_NE(widget, nullptr);
            EXPECT_TRUE(widget->isVisible());
            act({widget});
            used = true;
        });
        (m_hex.get()->*page.open)();
        EXPECT_TRUE(used) << page.name;
        activateView();
    }

    QStringList takeMessages() { return std::exchange(m_prompts.messages, {}); }
    static QByteArray history(const char* name) { return bytesOf(ProgramFolder() + u'/' + QLatin1String(name)); }
};

}  // namespace

TEST_F(HexFindForm, OpensAtThePageOfItsCommand) {
    open(someBytes(400));
    for (const Page& page : Pages) {
        whileOpen([&](const QDialog* form) {
            EXPECT_EQ(form->objectName(), u"frmFindReplace"_qs);
            const auto* tabs = form->findChild<QTabBar*>(u"TabStrip1"_qs);
            ASSERT_NE(tabs, nullptr);
            EXPECT_EQ(tabs->tabData(tabs->currentIndex()).toString(), QString::fromLatin1(page.key));
            for (const Page& other : Pages) {
                const auto* widget = form->findChild<QWidget*>(QString::fromLatin1(other.name));
                EXPECT_EQ(widget->isVisible(), other.key == page.key) << other.name;
            }
            auto* focus = QApplication::focusWidget();
            ASSERT_NE(focus, nullptr);
            EXPECT_EQ(focus->objectName(), u"Text1"_qs);
        });
        (m_hex.get()->*page.open)();
        activateView();
        EXPECT_EQ(m_caption, QString::fromLatin1(page.caption));
        EXPECT_TRUE(pane(1)->hasFocus());
    }
}

TEST_F(HexFindForm, HasItsTabsInOrderAndChangesPagesByThem) {
    open(someBytes(400));
    whileOpen([](const QDialog* form) {
        auto* tabs = form->findChild<QTabBar*>(u"TabStrip1"_qs);
        for (int i = 0; i < 4; ++i) {
            EXPECT_EQ(tabs->tabData(i).toString(), QString::fromLatin1(Pages[i].key));
            tabs->setCurrentIndex(i);
            EXPECT_TRUE(form->findChild<QWidget*>(QString::fromLatin1(Pages[i].name))->isVisible());
            const auto* find = form->findChild<QWidget*>(QString::fromLatin1(Pages[i].name))
                                   ->findChild<QPushButton*>(u"cmdFindNext"_qs);
            EXPECT_TRUE(find->isDefault());
        }
        EXPECT_EQ(form->windowTitle(), u"Find Hex"_qs);
        click(form, u"cmdClose"_qs);
        EXPECT_FALSE(form->isVisible());
    });
    m_hex->cmdFindHex();
}

TEST_F(HexFindForm, OpensForThePaneInUse) {
    open(someBytes(400));
    const auto expectCaption = [&](void (ucHex::*command)(bool), const QString& caption) {
        whileOpen([](QDialog* form) { QTest::keyClick(form, Qt::Key_Escape); });
        (m_hex.get()->*command)(true);
        activateView();
        EXPECT_EQ(m_caption, caption);
    };
    expectCaption(&ucHex::FindDialog, u"Find Hex"_qs);
    expectCaption(&ucHex::ReplaceDialog, u"Replace Hex"_qs);
    press(Qt::Key_Tab);
    expectCaption(&ucHex::FindDialog, u"Find Text"_qs);
    EXPECT_TRUE(pane(2)->hasFocus());
    expectCaption(&ucHex::ReplaceDialog, u"Replace Text"_qs);
}

TEST_F(HexFindForm, DoesNotOpenWithoutAFile) {
    for (const Page& page : Pages)
        (m_hex.get()->*page.open)();
    m_hex->FindDialog();
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(HexFindForm, CaptionsEveryControlAndNamesItForReaders) {
    open(someBytes(400));
    for (const Page& page : Pages) {
        const bool isText = QByteArray(page.key).endsWith("Text");
        const bool replaces = QByteArray(page.key).startsWith("Replace");
        use(page, [&](OnPage on) {
            EXPECT_EQ(on.button("cmdFindNext")->text(), u"Find Next"_qs);
            EXPECT_EQ(on.button("cmdCount")->text(), u"Count"_qs);
            EXPECT_EQ(on.button("cmdMarkAll")->text(), u"Mark All"_qs);
            EXPECT_EQ(on.box("Text1")->accessibleName(), isText ? u"Find What:"_qs : u"Byte sequence:"_qs);
            EXPECT_EQ(on.box("Text2") != nullptr, replaces);
            EXPECT_EQ(on.button("cmdReplace") != nullptr, replaces);
            if (replaces) {
                EXPECT_EQ(on.button("cmdReplace")->text(), u"Replace"_qs);
                EXPECT_EQ(on.button("cmdReplaceAll")->text(), u"Replace All"_qs);
                EXPECT_EQ(on.box("Text2")->accessibleName(), u"Replace With:"_qs);
            }
            const char* direction[] = {isText ? "Option2(0)" : "Option1(0)", isText ? "Option2(1)" : "Option1(1)"};
            EXPECT_EQ(on.button(direction[0])->text(), u"&Up"_qs);
            EXPECT_EQ(on.button(direction[1])->text(), u"&Down"_qs);
            EXPECT_TRUE(on.button(direction[1])->isChecked());
            QStringList frames;
            for (const auto* frame : on.page->findChildren<QGroupBox*>())
                frames += frame->title();
            EXPECT_EQ(frames,
                      isText ? QStringList({u" Direction: "_qs, u" Case: "_qs}) : QStringList(u" Direction: "_qs));
            if (isText) {
                EXPECT_EQ(on.button("Option1(0)")->text(), u"Not Match Case"_qs);
                EXPECT_EQ(on.button("Option1(1)")->text(), u"Match Case"_qs);
            }
            for (const auto* label : on.page->findChildren<QLabel*>()) {
                EXPECT_TRUE(label->buddy() != nullptr || label->objectName() == u"lblRefusal"_qs)
                    << label->text().toStdString();
            }
        });
    }
}

TEST_F(HexFindForm, TakesTheCaseFromTheSharedSetting) {
    open("abc ABC abc");
    for (const bool matchCase : {true, false}) {
        m_options.CaseSensitiveOn = matchCase;
        for (const Page& page : {FindText, ReplaceText}) {
            use(page, [&](OnPage on) {
                EXPECT_EQ(on.button("Option1(1)")->isChecked(), matchCase);
                EXPECT_EQ(on.button("Option1(0)")->isChecked(), !matchCase);
            });
        }
        use(FindText, [&](OnPage on) {
            on.set("Text1", u"Abc"_qs);
            on.click("cmdCount");
        });
        EXPECT_EQ(takeMessages(),
                  QStringList(matchCase ? u"\"Abc\" was found 0 times"_qs : u"\"Abc\" was found 3 times"_qs));
    }
}

TEST_F(HexFindForm, ReplacesNothingInALockedView) {
    open("abc");
    m_hex->setLocked(true);
    for (const Page& page : {ReplaceHex, ReplaceText}) {
        use(page, [&](OnPage on) {
            EXPECT_FALSE(on.button("cmdReplace")->isEnabled());
            EXPECT_FALSE(on.button("cmdReplaceAll")->isEnabled());
            EXPECT_TRUE(on.button("cmdFindNext")->isEnabled());
        });
    }
    m_hex->setLocked(false);
    use(ReplaceHex, [&](OnPage on) { EXPECT_TRUE(on.button("cmdReplaceAll")->isEnabled()); });
}

TEST_F(HexFindForm, FindsOnUntilThereIsNoMore) {
    QByteArray bytes(1000, '.');
    bytes.replace(500, 3, "abc");
    bytes.replace(700, 3, "abc");
    open(bytes);
    use(FindText, [&](OnPage on) {
        on.set("Text1", u"abc"_qs);
        on.click("cmdFindNext");
        EXPECT_EQ(pointer(), 497);
        EXPECT_EQ(grid(1)->cell(), (HexCell{0, 4}));
        EXPECT_EQ(grid(2)->cell(), (HexCell{0, 4}));
        EXPECT_EQ(info(3), u"500"_qs);
        EXPECT_TRUE(m_findState.HexFindActive);
        EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
        on.click("cmdFindNext");
        EXPECT_EQ(cursor(), 701);
        EXPECT_TRUE(m_prompts.messages.isEmpty());
        on.click("cmdFindNext");
        EXPECT_EQ(takeMessages(), QStringList(u"Find Completed"_qs));
        EXPECT_TRUE(m_findState.HexFindActive);
        on.button("Option2(0)")->click();
        on.click("cmdFindNext");
        EXPECT_EQ(cursor(), 501);
        on.type("Text1", u"none"_qs);
        on.click("cmdFindNext");
        EXPECT_EQ(takeMessages(), QStringList(u"Not Found"_qs));
        EXPECT_FALSE(m_findState.HexFindActive);
    });
    EXPECT_TRUE(pane(2)->hasFocus());
    EXPECT_EQ(m_hex->ActiveGrid(), 2);
}

TEST_F(HexFindForm, LeavesTheKeyboardToThePaneOfTheSearch) {
    open("..abc");
    press(Qt::Key_Tab);
    use(FindHex, [&](OnPage on) {
        on.set("Text1", u"61"_qs);
        on.click("cmdFindNext");
        EXPECT_EQ(m_hex->ActiveGrid(), 1);
        EXPECT_TRUE(pane(1)->hasBorder());
        EXPECT_EQ(cursor(), 3);
    });
    EXPECT_TRUE(pane(1)->hasFocus());
}

TEST_F(HexFindForm, NormalisesByteSequencesFirst) {
    open("\x01\xAB\xC0\x02");
    use(FindHex, [&](OnPage on) {
        on.type("Text1", u"abc"_qs);
        EXPECT_EQ(on.text("Text1"), u"ABC"_qs);
        on.click("cmdFindNext");
        EXPECT_EQ(on.text("Text1"), u"AB C0 "_qs);
        EXPECT_EQ(cursor(), 2);
    });
}

TEST_F(HexFindForm, LetsOnlyHexDigitsPassInByteSequences) {
    open(someBytes(400));
    for (const Page& page : {FindHex, ReplaceHex}) {
        use(page, [&](OnPage on) {
            for (const char* box : {"Text1", "Text2"}) {
                if (on.box(box) == nullptr)
                    continue;
                on.type(box, u"g1 a-fz9"_qs);
                EXPECT_EQ(on.text(box), u"1AF9"_qs);
                on.press(box, Qt::Key_Backspace);
                EXPECT_EQ(on.text(box), u"1AF"_qs);
            }
        });
    }
    use(FindText, [&](OnPage on) {
        on.type("Text1", u"g1 a-f"_qs);
        EXPECT_EQ(on.text("Text1"), u"g1 a-f"_qs);
    });
}

TEST_F(HexFindForm, FindsByEnterInTheBoxThatEndsThePage) {
    struct Case {
        Page page;
        const char* box;
        bool finds;
    };
    const Case cases[] = {{FindHex, "Text1", true},    {FindText, "Text1", true},     {ReplaceHex, "Text1", false},
                          {ReplaceHex, "Text2", true}, {ReplaceText, "Text1", false}, {ReplaceText, "Text2", true}};
    for (const auto& [page, box, finds] : cases) {
        open("..\x61..");
        use(page, [&, name = page.name, box = box, finds = finds](OnPage on) {
            const bool isText = on.button("Option2(0)") != nullptr;
            on.set("Text1", isText ? u"a"_qs : u"61"_qs);
            if (on.box("Text2") != nullptr)
                on.set("Text2", isText ? u"b"_qs : u"62"_qs);
            on.press(box, Qt::Key_Return);
            EXPECT_EQ(cursor(), finds ? 3 : 1) << name << box;
            EXPECT_TRUE(on.page->isVisible());
        });
    }
}

TEST_F(HexFindForm, StopsAtAnEmptyBox) {
    open("abc");
    for (const Page& page : Pages) {
        use(page, [&](OnPage on) {
            for (const char* button : {"cmdFindNext", "cmdCount", "cmdMarkAll", "cmdReplace", "cmdReplaceAll"}) {
                if (on.button(button) == nullptr)
                    continue;
                on.set("Text1", u"  "_qs);
                on.button(button)->setFocus();
                on.click(button);
                EXPECT_TRUE(on.box("Text1")->lineEdit()->hasFocus()) << page.name << button;
                if (on.box("Text2") == nullptr)
                    continue;
                on.set("Text1", u"61"_qs);
                on.set("Text2", QString());
                on.click(button);
                EXPECT_TRUE(on.box("Text2")->lineEdit()->hasFocus()) << page.name << button;
            }
        });
    }
    EXPECT_TRUE(takeMessages().isEmpty());
    EXPECT_EQ(workingBytes(), "abc");
    EXPECT_TRUE(bookmarkTexts().isEmpty());
    EXPECT_TRUE(m_findState.LastFindText.isEmpty());
}

TEST_F(HexFindForm, RefusesInPlaceWhatIsNoByte) {
    open("a?c");
    for (const Page& page : {FindText, ReplaceText}) {
        use(page, [&](OnPage on) {
            on.set("Text1", u"\u0416"_qs);
            if (on.box("Text2") != nullptr)
                on.set("Text2", u"x"_qs);
            for (const char* button : {"cmdFindNext", "cmdCount", "cmdMarkAll", "cmdReplace", "cmdReplaceAll"}) {
                if (on.button(button) == nullptr)
                    continue;
                on.button(button)->setFocus();
                on.click(button);
                EXPECT_TRUE(on.refusal().contains(u"\u0416"_qs)) << button;
                EXPECT_TRUE(on.box("Text1")->lineEdit()->hasFocus());
            }
            on.type("Text1", u"?"_qs);
            EXPECT_EQ(on.refusal(), QString());
        });
    }
    use(ReplaceText, [&](OnPage on) {
        on.set("Text1", u"?"_qs);
        on.set("Text2", u"\U0001F600"_qs);
        on.click("cmdReplaceAll");
        EXPECT_TRUE(on.refusal().contains(u"\U0001F600"_qs));
        EXPECT_TRUE(on.box("Text2")->lineEdit()->hasFocus());
    });
    use(FindHex, [&](OnPage on) {
        on.set("Text1", u"6G"_qs);
        on.click("cmdFindNext");
        EXPECT_FALSE(on.refusal().isEmpty());
    });
    EXPECT_TRUE(takeMessages().isEmpty());
    EXPECT_EQ(workingBytes(), "a?c");
    EXPECT_EQ(history("hex_findtext.txt"), "(no such file)");
}

TEST_F(HexFindForm, StandsAnyTextInEveryBox) {
    const QByteArray bytes(1000, '.');
    const QString texts[] = {QString(),
                             u" "_qs,
                             u"-1"_qs,
                             u"99999999999999999999"_qs,
                             u"xyz"_qs,
                             u"1 2 3"_qs,
                             u"\n\r"_qs,
                             u"\U0001F600"_qs,
                             u"\xD800"_qs,
                             QString(QChar(0)),
                             u"%1 %2 \"&\""_qs,
                             QString(100'000, u'9'),
                             QString(99'999, u'F')};
    for (const Page& page : Pages) {
        open(bytes);
        use(page, [&](OnPage on) {
            for (const char* filled : {"Text1", "Text2"}) {
                if (on.box(filled) == nullptr)
                    continue;
                for (const QString& text : texts) {
                    // The term is nowhere in the file, so that nothing is replaced.
                    on.set("Text1", on.button("Option2(0)") != nullptr ? u"nowhere"_qs : u"FEFEFE"_qs);
                    if (on.box("Text2") != nullptr)
                        on.set("Text2", u"41"_qs);
                    on.set(filled, text);
                    for (const char* button :
                         {"cmdFindNext", "cmdCount", "cmdMarkAll", "cmdReplace", "cmdReplaceAll"}) {
                        if (on.button(button) != nullptr)
                            on.click(button);
                    }
                    EXPECT_TRUE(on.page->isVisible());
                }
            }
        });
        takeMessages();
        EXPECT_EQ(workingBytes().size(), bytes.size()) << page.name;
        EXPECT_EQ(workingBytes(), bytes) << page.name;
        EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    }
}

TEST_F(HexFindForm, TellsCountsAndMarksInTheWordsOfEachPage) {
    struct Case {
        Page page;
        QString counted;
        QString marked;
    };
    const Case cases[] = {
        {FindHex, u"\"61 62\" was found 2 times"_qs, u"\"61 62\" was marked 2 times"_qs},
        {FindText, u"\"ab\" was found 2 times"_qs, u"\"ab\" was marked 2 times"_qs},
        {ReplaceHex, u"\"61 62\" Found: 2"_qs, u"\"61 62\" was marked 2"_qs},
        {ReplaceText, u"\"ab\" was found 2 times"_qs, u"\"ab\" was found 2 times"_qs},
    };
    for (const Case& one : cases) {
        open("ab.ab.");
        use(one.page, [&](OnPage on) {
            const bool isText = on.button("Option2(0)") != nullptr;
            on.set("Text1", isText ? u"ab"_qs : u"6162"_qs);
            if (on.box("Text2") != nullptr)
                on.set("Text2", u"7"_qs);
            on.click("cmdCount");
            EXPECT_TRUE(bookmarkTexts().isEmpty());
            on.click("cmdMarkAll");
            if (on.box("Text2") != nullptr) {
                EXPECT_EQ(on.text("Text2"), isText ? u"7"_qs : u"70 "_qs);
            }
        });
        EXPECT_EQ(takeMessages(), QStringList({one.counted, one.marked})) << one.page.name;
        EXPECT_EQ(bookmarkTexts(), QStringList({u"1 - (0,0)"_qs, u"2 - (3,3)"_qs}));
    }
}

TEST_F(HexFindForm, TellsATermWithoutItsBlanksAndTakesPercentSignsAsTheyAre) {
    open("a %1%2 a");
    use(FindText, [&](OnPage on) {
        on.set("Text1", u" %1%2 "_qs);
        on.click("cmdCount");
    });
    EXPECT_EQ(takeMessages(), QStringList(u"\"%1%2\" was found 1 times"_qs));
}

TEST_F(HexFindForm, ReplacesMatchByMatchInHex) {
    open(".ab.ab.ab.");
    use(ReplaceHex, [&](OnPage on) {
        on.set("Text1", u"6162"_qs);
        on.set("Text2", u"7879"_qs);
        on.click("cmdReplace");
        EXPECT_EQ(workingBytes(), ".ab.ab.ab.");
        EXPECT_EQ(on.tag(), u"replace"_qs);
        EXPECT_EQ(cursor(), 2);
        on.click("cmdReplace");
        EXPECT_EQ(workingBytes(), ".xy.ab.ab.");
        EXPECT_EQ(cursor(), 5);
        expectShown(".xy.ab.ab.");
        on.click("cmdFindNext");
        EXPECT_EQ(cursor(), 8);
        on.click("cmdReplace");
        EXPECT_EQ(workingBytes(), ".xy.ab.xy.");
        EXPECT_EQ(takeMessages(), QStringList(u"Replace Completed"_qs));
        expectShown(".xy.ab.xy.");
        EXPECT_TRUE(m_findState.HexFindActive);
        on.type("Text1", u"99"_qs);
        EXPECT_EQ(on.tag(), QString());
        on.click("cmdReplace");
        EXPECT_EQ(takeMessages(), QStringList(u"Not Found"_qs));
        EXPECT_FALSE(m_findState.HexFindActive);
    });
    EXPECT_FALSE(m_hex->Modified());
}

TEST_F(HexFindForm, ReplacesMatchByMatchInText) {
    open(".ab.ab.");
    use(ReplaceText, [&](OnPage on) {
        on.set("Text1", u"ab"_qs);
        on.set("Text2", u"\u20ACxyz"_qs);
        on.click("cmdFindNext");
        on.click("cmdReplace");
        EXPECT_EQ(workingBytes(), ".\x80xyzb.");
        EXPECT_EQ(takeMessages(), QStringList(u"Replace Completed"_qs));
        EXPECT_EQ(on.text("Text1"), u"ab"_qs);
        EXPECT_EQ(on.text("Text2"), u"\u20ACxyz"_qs);
    });
}

TEST_F(HexFindForm, KeepsTheTailOfALongerTermWhereThePageSaysSo) {
    open("..abcd");
    use(ReplaceHex, [&](OnPage on) {
        for (const char* button : {"cmdFindNext", "cmdReplace", "cmdReplaceAll"}) {
            on.set("Text1", u"61626364"_qs);
            on.set("Text2", u"7"_qs);
            on.click(button);
            EXPECT_EQ(on.text("Text2"), u"70 62 63 64 "_qs) << button;
        }
        on.set("Text1", u"70"_qs);
        on.set("Text2", u"7172"_qs);
        on.click("cmdReplaceAll");
        EXPECT_EQ(on.text("Text2"), u"71 72 "_qs);
    });
    EXPECT_EQ(workingBytes(), "..qrcd");
    takeMessages();
    open("..abcd");
    use(ReplaceText, [&](OnPage on) {
        on.set("Text1", u"abcd"_qs);
        on.set("Text2", u"x"_qs);
        for (const char* button : {"cmdFindNext", "cmdCount", "cmdMarkAll"}) {
            on.click(button);
            EXPECT_EQ(on.text("Text2"), u"x"_qs) << button;
        }
        on.click("cmdReplaceAll");
        EXPECT_EQ(on.text("Text2"), u"xbcd"_qs);
        on.set("Text1", u"x"_qs);
        on.set("Text2", u"yz"_qs);
        on.click("cmdReplaceAll");
        EXPECT_EQ(on.text("Text2"), u"y"_qs);
    });
    EXPECT_EQ(workingBytes(), "..ybcd");
}

TEST_F(HexFindForm, ReplacesAllAndTellsHowMany) {
    open("ab.AB.ab");
    use(ReplaceHex, [&](OnPage on) {
        on.set("Text1", u"6162"_qs);
        on.set("Text2", u"7879"_qs);
        on.click("cmdReplaceAll");
        expectShown("xy.AB.xy");
        on.click("cmdReplaceAll");
    });
    EXPECT_EQ(takeMessages(), QStringList({u"Replaced: 2"_qs, u"Not Found"_qs}));
    use(ReplaceText, [&](OnPage on) {
        on.set("Text1", u"XY"_qs);
        on.set("Text2", u"ab"_qs);
        on.click("Option1(1)");
        on.click("cmdReplaceAll");
        on.click("Option1(0)");
        on.click("cmdFindNext");
        EXPECT_EQ(on.tag(), u"replace"_qs);
        on.click("cmdReplaceAll");
        EXPECT_EQ(on.tag(), QString());
    });
    EXPECT_EQ(takeMessages(), QStringList({u"Not Found"_qs, u"2  items are replaced"_qs}));
    EXPECT_EQ(workingBytes(), "ab.AB.ab");
}

TEST_F(HexFindForm, ForgetsTheMatchWhenTheTermIsTypedAnew) {
    open("..a...");
    for (const Page& page : Pages) {
        use(page, [&](OnPage on) {
            const bool isText = on.button("Option2(0)") != nullptr;
            const QString term = isText ? u"a"_qs : u"61"_qs;
            press(Qt::Key_Home);
            m_hex->gotoOffset(0);
            on.set("Text1", term);
            if (on.box("Text2") != nullptr)
                on.set("Text2", term);
            on.click("cmdFindNext");
            ASSERT_TRUE(takeMessages().isEmpty());
            on.type("Text1", term);
            if (on.box("Text2") != nullptr) {
                EXPECT_EQ(on.tag(), QString());
            }
            on.click("cmdFindNext");
            EXPECT_EQ(takeMessages(), QStringList(u"Not Found"_qs)) << page.name;
        });
    }
}

TEST_F(HexFindForm, ForgetsTheMatchButNotThatOneWaitsWhenBytesToPutInAreTyped) {
    open("..a.a.a");
    use(ReplaceHex, [&](OnPage on) {
        on.set("Text1", u"61"_qs);
        on.set("Text2", u"62"_qs);
        on.click("cmdFindNext");
        on.type("Text2", u"63"_qs);
        EXPECT_EQ(on.tag(), u"replace"_qs);
        on.click("cmdReplace");
        EXPECT_EQ(workingBytes(), "..a.a.a");
        EXPECT_EQ(cursor(), 5);
    });
    m_hex->gotoOffset(0);
    use(ReplaceText, [&](OnPage on) {
        on.set("Text1", u"a"_qs);
        on.set("Text2", u"b"_qs);
        on.click("cmdFindNext");
        on.type("Text2", u"c"_qs);
        on.click("cmdReplace");
        EXPECT_EQ(workingBytes(), "..c.a.a");
    });
}

TEST_F(HexFindForm, KeepsWhatWasSearchedAndPutInItsPlace) {
    open("abcabc");
    use(ReplaceText, [&](OnPage on) {
        on.set("Text1", u"ab"_qs);
        on.set("Text2", u"xy"_qs);
        on.click("cmdCount");
        on.set("Text1", u"bc"_qs);
        on.click("cmdFindNext");
        on.set("Text1", u"ab"_qs);
        on.click("cmdFindNext");
        EXPECT_EQ(on.box("Text1")->count(), 2);
        EXPECT_EQ(on.box("Text1")->itemText(0), u"ab"_qs);
    });
    EXPECT_EQ(history("hex_findtext.txt"), "bc\r\nab\r\nab\r\n");
    EXPECT_EQ(history("hex_replacetext.txt"), "xy\r\nxy\r\n");
    use(FindText, [&](OnPage on) {
        EXPECT_EQ(on.text("Text1"), u"ab"_qs);
        EXPECT_EQ(on.box("Text1")->count(), 2);
        EXPECT_EQ(on.box("Text1")->property("Tag").toString(), u"hex_findtext.txt"_qs);
    });
    use(ReplaceHex, [&](OnPage on) {
        EXPECT_EQ(on.text("Text1"), QString());
        on.set("Text1", u"1"_qs);
        on.set("Text2", u"2"_qs);
        on.click("cmdMarkAll");
    });
    EXPECT_EQ(history("hex_findhex.txt"), "10 \r\n10 \r\n");
    EXPECT_EQ(history("hex_replacehex.txt"), "20 \r\n20 \r\n");
    use(FindHex, [&](OnPage on) { EXPECT_EQ(on.text("Text1"), u"10 "_qs); });
}

TEST_F(HexFindForm, IsWalkedByTabInTheOrderOfItsPage) {
    open("..ab..");
    for (const Page& page : Pages) {
        use(page, [&](OnPage on) {
            QStringList walked;
            on.box("Text1")->setFocus();
            for (int i = 0; i < 12; ++i) {
                walked += QApplication::focusWidget()->objectName();
                QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            }
            const bool isText = on.button("Option2(0)") != nullptr;
            QStringList expected{u"Text1"_qs};
            if (on.box("Text2") != nullptr)
                expected += u"Text2"_qs;
            expected += isText ? u"Option2(0)"_qs : u"Option1(0)"_qs;
            if (isText)
                expected += u"Option1(0)"_qs;
            expected += QStringList({u"cmdFindNext"_qs, u"cmdCount"_qs, u"cmdMarkAll"_qs});
            if (on.box("Text2") != nullptr)
                expected += QStringList({u"cmdReplace"_qs, u"cmdReplaceAll"_qs});
            expected += u"cmdClose"_qs;
            EXPECT_EQ(walked.mid(0, expected.size()), expected) << walked.join(u' ').toStdString();
        });
    }
}

TEST_F(HexFindForm, ChangesPagesByKeys) {
    open("..ab..");
    whileOpen([](const QDialog* form) {
        const auto* tabs = form->findChild<QTabBar*>(u"TabStrip1"_qs);
        const int last = tabs->currentIndex();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
        EXPECT_EQ(tabs->currentIndex(), last - 1);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab, Qt::ControlModifier);
        EXPECT_EQ(tabs->currentIndex(), last);
    });
    m_hex->cmdFindHex();
}

/// A button that is pressed by its key acts when it is seen to be down.
TEST_F(HexFindForm, CanBeUsedByKeysAlone) {
    open("..ab..");
    use(FindText, [&](OnPage on) {
        auto* box = on.box("Text1");
        const auto pressWithAlt = [&](Qt::Key key, const std::function<bool()>& acted) {
            QTest::keyClick(box, key, Qt::AltModifier);
            return QTest::qWaitFor(acted);
        };
        QTest::keyClicks(box, u"AB"_qs);
        EXPECT_TRUE(pressWithAlt(Qt::Key_C, [&] { return !m_prompts.messages.isEmpty(); }));
        EXPECT_EQ(takeMessages(), QStringList(u"\"AB\" was found 1 times"_qs));
        EXPECT_TRUE(pressWithAlt(Qt::Key_U, [&] { return on.button("Option2(0)")->isChecked(); }));
        EXPECT_TRUE(pressWithAlt(Qt::Key_F, [&] { return !m_prompts.messages.isEmpty(); }));
        EXPECT_EQ(takeMessages(), QStringList(u"Not Found"_qs));
        EXPECT_TRUE(pressWithAlt(Qt::Key_D, [&] { return on.button("Option2(1)")->isChecked(); }));
        EXPECT_TRUE(pressWithAlt(Qt::Key_M, [&] { return !m_prompts.messages.isEmpty(); }));
        box->setFocus();
        QTest::keyClick(box, Qt::Key_Return);
        EXPECT_EQ(cursor(), 3);
        QTest::keyClick(box, Qt::Key_Escape);
        EXPECT_FALSE(on.page->window()->isVisible());
    });
}

TEST_F(HexFindForm, StandsItThatTheViewGoes) {
    open("..ab..");
    for (const char* button : {"cmdCount", "cmdReplaceAll", "cmdReplace"}) {
        m_hex = std::make_unique<ucHex>(m_prompts, m_options, m_findState);
        m_hex->show();
        open("..ab..");
        whileOpen([&, button](const QDialog* form) {
            const OnPage on{form->findChild<QWidget*>(u"ucReplaceText1"_qs)};
            on.set("Text1", u"zz"_qs);
            on.set("Text2", u"xx"_qs);
            m_prompts.whileShown([this] { m_hex.reset(); });
            on.click(button);
        });
        m_hex->cmdReplaceText();
        EXPECT_EQ(m_hex, nullptr) << button;
    }
}
