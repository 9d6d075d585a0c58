#include "hex/HexFixture.h"
#include "hex/grid/GridAccessible.h"

#include <QAccessible>

#include <vector>

namespace {

/// Records the events for screen readers while it exists.
struct Told {
    struct Event {
        QAccessible::Event kind;
        QObject* object;
        int child;
    };
    static inline std::vector<Event> events;
    static inline int ofNoCell = 0;  ///< events of cells that no client could have requested

    Told() {
        events.clear();
        ofNoCell = 0;
        GridAccessible::reportTo([](QAccessibleEvent* event) {
            events.push_back({event->type(), event->object(), event->child()});
            if (event->child() >= QAccessible::queryAccessibleInterface(event->object())->childCount())
                ++ofNoCell;
        });
    }
    ~Told() { GridAccessible::reportTo(nullptr); }
    Q_DISABLE_COPY_MOVE(Told)

    static int last(QAccessible::Event kind, const QObject* object) {
        int child = -1;
        for (const Event& event : events) {
            if (event.kind == kind && event.object == object)
                child = event.child;
        }
        return child;
    }
    static bool has(QAccessible::Event kind, const QObject* object) {
        return std::any_of(events.begin(), events.end(),
                           [&](const Event& event) { return event.kind == kind && event.object == object; });
    }
};

class PanesForReaders : public HexFixture {
 protected:
    QAccessibleInterface* accessible(int number) const { return QAccessible::queryAccessibleInterface(pane(number)); }
    QAccessibleTableInterface* table(int number) const { return accessible(number)->tableInterface(); }
    QString nameOf(int number, int row, int col) const {
        return table(number)->cellAt(row, col)->text(QAccessible::Name);
    }
};

}  // namespace

TEST_F(PanesForReaders, AreTablesOfTheirCells) {
    open(someBytes(400));
    for (const int number : {1, 2}) {
        ASSERT_NE(table(number), nullptr);
        EXPECT_EQ(accessible(number)->role(), QAccessible::Table);
        EXPECT_EQ(table(number)->columnCount(), 16);
        EXPECT_EQ(table(number)->rowCount(), 20);
        EXPECT_EQ(accessible(number)->childCount(), 320);
        EXPECT_EQ(table(number)->cellAt(20, 0), nullptr);
        EXPECT_EQ(table(number)->cellAt(0, 16), nullptr);
        EXPECT_EQ(table(number)->cellAt(-1, 0), nullptr);
        EXPECT_EQ(accessible(number)->child(320), nullptr);
    }
    EXPECT_EQ(accessible(1)->text(QAccessible::Name), u"Hex"_qs);
    EXPECT_EQ(accessible(2)->text(QAccessible::Name), u"Text"_qs);
    EXPECT_EQ(table(1)->columnDescription(10), u"0A"_qs);
    EXPECT_EQ(table(1)->rowDescription(1), u"0000000010"_qs);
}

TEST_F(PanesForReaders, NameACellByItsOffsetAndValue) {
    open(someBytes(400));
    EXPECT_EQ(nameOf(1, 4, 10), u"Offset 0000004A, value 4A"_qs);
    EXPECT_EQ(nameOf(2, 4, 10), u"Offset 0000004A, value J"_qs);
    m_hex->MoveNextLine();
    EXPECT_EQ(nameOf(1, 4, 10), u"Offset 0000005A, value 5A"_qs);
    QAccessibleInterface* cell = table(1)->cellAt(4, 10);
    EXPECT_EQ(cell->text(QAccessible::Value), u"5A"_qs);
    EXPECT_EQ(cell->text(QAccessible::Description), QString());
    EXPECT_EQ(cell->role(), QAccessible::Cell);
    EXPECT_EQ(cell->parent(), accessible(1));
    EXPECT_EQ(accessible(1)->indexOfChild(cell), 4 * 16 + 10);
    ASSERT_NE(cell->tableCellInterface(), nullptr);
    EXPECT_EQ(cell->tableCellInterface()->rowIndex(), 4);
    EXPECT_EQ(cell->tableCellInterface()->columnIndex(), 10);
    EXPECT_EQ(accessible(1)->child(4 * 16 + 10), cell);
}

TEST_F(PanesForReaders, TellOfChangedBytes) {
    open(someBytes(400));
    type(u"ff"_qs);
    EXPECT_EQ(table(2)->cellAt(0, 0)->text(QAccessible::Description), u"Changed"_qs);
    EXPECT_EQ(nameOf(1, 0, 0), u"Offset 00000000, value FF"_qs);
}

TEST_F(PanesForReaders, HaveNothingWhereTheFileHasNoByte) {
    open("abcde");
    EXPECT_EQ(table(1)->rowCount(), 2);
    EXPECT_EQ(nameOf(1, 0, 4), u"Offset 00000004, value 65"_qs);
    EXPECT_EQ(nameOf(1, 0, 5), QString());
    EXPECT_TRUE(table(1)->cellAt(0, 5)->state().invisible);
    EXPECT_FALSE(table(1)->cellAt(0, 4)->state().invisible);
}

TEST_F(PanesForReaders, ShowTheCursorAsTheFocusedCell) {
    open(someBytes(400));
    select(3, 4);
    const QAccessible::State state = table(1)->cellAt(3, 4)->state();
    EXPECT_TRUE(state.focused);
    EXPECT_TRUE(state.selected);
    EXPECT_FALSE(table(1)->cellAt(3, 5)->state().focused);
    EXPECT_FALSE(table(2)->cellAt(3, 4)->state().focused);
    EXPECT_TRUE(table(2)->cellAt(3, 4)->state().selected);
    EXPECT_EQ(accessible(1)->focusChild(), table(1)->cellAt(3, 4));
    EXPECT_EQ(accessible(2)->focusChild(), nullptr);
    EXPECT_EQ(table(1)->selectedCells(), QList<QAccessibleInterface*>{table(1)->cellAt(3, 4)});
}

TEST_F(PanesForReaders, FindACellByItsPlaceOnTheScreen) {
    open("abcde");
    const QRect rect = table(1)->cellAt(0, 3)->rect();
    EXPECT_EQ(rect.size(), pane(1)->cellRect({0, 3}).size());
    EXPECT_EQ(accessible(1)->childAt(rect.center().x(), rect.center().y()), table(1)->cellAt(0, 3));
    const QPoint below = pane(1)->mapToGlobal(pane(1)->cellRect({19, 3}).center());
    EXPECT_EQ(accessible(1)->childAt(below.x(), below.y()), nullptr);
}

TEST_F(PanesForReaders, MoveTheCursorOnRequest) {
    open(someBytes(400));
    QAccessibleInterface* cell = table(2)->cellAt(2, 7);
    ASSERT_NE(cell->actionInterface(), nullptr);
    cell->actionInterface()->doAction(QAccessibleActionInterface::setFocusAction());
    EXPECT_EQ(cursor(), 40);
    EXPECT_TRUE(pane(2)->hasFocus());
}

TEST_F(PanesForReaders, LoseCellsWithTheirRows) {
    open(someBytes(400));
    QAccessibleInterface* cell = table(1)->cellAt(19, 0);
    EXPECT_TRUE(cell->isValid());
    open("abcde");
    EXPECT_FALSE(cell->isValid());
    EXPECT_TRUE(cell->state().invalid);
    EXPECT_EQ(cell->text(QAccessible::Name), QString());
}

TEST_F(PanesForReaders, TellWhereTheCursorGoes) {
    open(someBytes(1000));
    const Told told;
    press(Qt::Key_Down);
    EXPECT_EQ(Told::last(QAccessible::Focus, pane(1)), 16);
    EXPECT_FALSE(Told::has(QAccessible::Focus, pane(2)));
    press(Qt::Key_PageDown);
    EXPECT_TRUE(Told::has(QAccessible::TableModelChanged, pane(1)));
    EXPECT_TRUE(Told::has(QAccessible::TableModelChanged, pane(2)));
    EXPECT_FALSE(Told::has(QAccessible::NameChanged, pane(1)));
    EXPECT_EQ(Told::last(QAccessible::Focus, pane(1)), 16);
    press(Qt::Key_Tab);
    press(Qt::Key_Right);
    EXPECT_EQ(Told::last(QAccessible::Focus, pane(2)), 17);
}

TEST_F(PanesForReaders, TellOfATypedByte) {
    open(someBytes(400));
    const Told told;
    select(0, 2);
    type(u"ff"_qs);
    EXPECT_EQ(Told::last(QAccessible::NameChanged, pane(1)), 2);
    EXPECT_EQ(Told::last(QAccessible::ValueChanged, pane(2)), 2);
    EXPECT_FALSE(Told::has(QAccessible::TableModelChanged, pane(1)));
}

TEST_F(PanesForReaders, TellOfNoCellThatIsNotThere) {
    open(someBytes(640));
    const Told told;
    for (const int number : {1, 2}) {
        pane(number)->setFocus();
        m_hex->MoveFirstPage();
        QTest::mouseClick(pane(number), Qt::LeftButton, {}, pane(number)->cellRect({19, 12}).center());
        m_hex->MoveLastPage();
        m_hex->gotoPage(3);
        EXPECT_EQ(accessible(number)->childCount(), 32);
        for (QAccessibleInterface* cell : table(number)->selectedCells()) {
            EXPECT_NE(cell, nullptr);
        }
        EXPECT_EQ(table(number)->selectedCellCount(), table(number)->selectedCells().size());
        m_hex->MoveFirstPage();
    }
    open("abc");
    EXPECT_EQ(Told::ofNoCell, 0);
    EXPECT_FALSE(Told::events.empty());
}
