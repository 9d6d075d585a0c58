#include "hex/HexFixture.h"
#include "hex/bytes/BlockExport.h"
#include "text/codec/Windows1252.h"

#include <QClipboard>
#include <QGuiApplication>

#include <algorithm>
#include <array>
#include <random>

namespace {

/// A hundred thousand, in parts that can run side by side.
constexpr int OperationsOfARun = 500;
constexpr int RunsOfAPart = 50;
constexpr int Parts = 4;
constexpr qsizetype Undoable = 31;

/// The expected state of a view of some bytes after each step, by the plain rules.
struct Model {
    struct Edit {
        qsizetype index;
        char before;
    };

    QByteArray disk;
    QByteArray bytes;
    std::vector<Edit> edits;
    bool isModified = false;
    QStringList marks;  ///< offsets

    void load() {
        bytes = disk;
        edits.clear();
        isModified = false;
        marks.clear();
    }
    void save() {
        disk = bytes;
        isModified = false;
    }
    void type(qsizetype index, char byte) {
        edits.push_back({index, bytes[index]});
        if (edits.size() > Undoable)
            edits.erase(edits.begin());
        bytes[index] = byte;
        isModified = true;
    }
    void layOver(qsizetype index, const QByteArray& with) {
        for (qsizetype i = 0; i < with.size() && index + i < bytes.size(); ++i)
            bytes[index + i] = with[i];
    }
    void mark(qsizetype index) {
        if (const QString offset = QString::number(index); !marks.contains(offset))
            marks += offset;
    }
};

/// The needle, and the result of a plain search for it.
struct Term {
    QByteArray bytes;
    HexFindType type;

    QString text() const {
        QString text;
        for (const char byte : bytes) {
            if (type == HexFindType::Bytes)
                text += HexText::ByteToHexCell(static_cast<quint8>(byte)) + u' ';
            else
                text += QChar(Windows1252::characterOf(static_cast<quint8>(byte)));
        }
        return text;
    }
    qsizetype overlap() const { return bytes.size() - (type == HexFindType::Bytes ? 1 : 0); }
    bool isAt(const QByteArray& in, qsizetype index) const {
        const auto same = [this](char one, char other) {
            const auto letter = [](char byte) {
                return QChar(Windows1252::characterOf(static_cast<quint8>(byte))).toLower();
            };
            return one == other || (type == HexFindType::AnyCase && letter(one) == letter(other));
        };
        return index >= 0 && index + bytes.size() <= in.size() &&
               std::equal(bytes.begin(), bytes.end(), in.begin() + index, same);
    }
    std::vector<qsizetype> allIn(const QByteArray& in) const {
        std::vector<qsizetype> found;
        for (qsizetype i = 0; i < in.size(); ++i) {
            if (isAt(in, i))
                found.push_back(i);
        }
        return found;
    }
    /// Position from 1 of the first match behind the byte at `cursor`.
    qsizetype below(const QByteArray& in, qsizetype cursor, bool goesOn) const {
        if (cursor >= in.size())
            return -1;
        const std::vector<qsizetype> found = allIn(in);
        const auto next = std::lower_bound(found.begin(), found.end(), cursor);
        if (next != found.end())
            return *next + 1;
        return goesOn && !found.empty() ? found.front() + 1 : -1;
    }
    qsizetype above(const QByteArray& in, qsizetype cursor, bool goesOn) const {
        qsizetype end = cursor - 1;
        if (end < 2 && !goesOn)
            return -1;
        if (end < 2)
            end = in.size();
        const std::vector<qsizetype> before = allIn(in.left(std::max(end, overlap())));
        if (!before.empty())
            return before.back() + 1;
        const std::vector<qsizetype> all = allIn(in);
        return goesOn && !all.empty() ? all.back() + 1 : -1;
    }
};

/// Everything that a person does to bytes, in any order, beside a model that does the same to an array.
class AnyUseOfTheHexView : public HexFixture, public testing::WithParamInterface<int> {
 protected:
    using Operation = void (AnyUseOfTheHexView::*)();

    void SetUp() override {
        HexFixture::SetUp();
        for (const int number : {1, 2}) {
            m_grids[number - 1] = grid(number);
            m_panes[number - 1] = pane(number);
        }
        for (std::size_t i = 0; i < m_labels.size(); ++i)
            m_labels[i] = part<QLabel>(u"lblInfo(%1)"_qs.arg(i));
        m_list = bookmarks();
        m_bar = scrollBar();
    }

    qsizetype below(qsizetype number) {
        return static_cast<qsizetype>(m_random() % static_cast<std::mt19937::result_type>(number));
    }
    bool either() { return below(2) == 0; }
    char anyByte() { return static_cast<char>(below(256)); }
    QByteArray anyBytes(qsizetype length) {
        // Few different ones, so that searches have something to find.
        static const QByteArray often("aAbB\xE4\xC4 .\x00\x9F\xFF", 11);
        QByteArray bytes;
        for (qsizetype i = 0; i < length; ++i)
            bytes += either() ? often[below(often.size())] : anyByte();
        return bytes;
    }
    Term anyTerm() {
        const qsizetype length = 1 + below(4);
        const qsizetype at = below(m_model.bytes.size());
        const QByteArray bytes = below(4) == 0 ? anyBytes(length) : m_model.bytes.mid(at, length);
        return {bytes, static_cast<HexFindType>(below(3))};
    }

    HexCell cellOf(int number) const { return m_grids[number - 1]->cell(); }
    qsizetype at(int number) const {
        return pointer() - 1 + cellOf(number).row * HexPaging::BytesPerRow + cellOf(number).col;
    }
    int pointer() const { return static_cast<int>(m_hex->FilePointer().number()); }
    bool isOnAByte(int number) const { return at(number) < m_model.bytes.size(); }
    int activeNumber() const { return m_hex->ActiveGrid() == 2 ? 2 : 1; }
    GridPane* activePane() const { return m_panes[activeNumber() - 1]; }
    /// The page before the step.
    HexPaging page() const {
        HexPaging paging;
        paging.open(m_model.bytes.size());
        paging.setFilePointer(m_hex->FilePointer());
        return paging;
    }
    static void key(GridPane* pane, int code, const QString& text = {}, Qt::KeyboardModifiers modifiers = {}) {
        QKeyEvent event(QEvent::KeyPress, code, modifiers, text);
        QApplication::sendEvent(pane, &event);
    }
    static void typeDigits(GridPane* pane, const QString& digits) {
        for (const QChar digit : digits)
            key(pane, digit.toUpper().unicode(), QString(digit));
    }
    QString anyCase(const QString& digits) { return either() ? digits : digits.toLower(); }

    // The actions of a user

    void typeAByte() {
        m_panes[0]->setFocus();
        const char byte = anyByte();
        const bool writes = isOnAByte(1);
        const qsizetype index = at(1);
        typeDigits(m_panes[0], anyCase(HexText::ByteToHexCell(static_cast<quint8>(byte))));
        if (writes)
            m_model.type(index, byte);
    }
    void typeADigitAndLeaveIt() {
        m_panes[0]->setFocus();
        const qsizetype digit = below(16);
        const bool writes = isOnAByte(1);
        const qsizetype index = at(1);
        typeDigits(m_panes[0], anyCase(QString::number(digit, 16)));
        if (writes)
            m_model.type(index, static_cast<char>(digit));
        const std::array<std::function<void()>, 6> Ways{[this] { key(m_panes[0], Qt::Key_Return, u"\r"_qs); },
                                                        [this] { key(m_panes[0], Qt::Key_Tab); },
                                                        [this] { m_hex->cmdCopy(); },
                                                        [this] { m_hex->MoveLastPage(); },
                                                        [this] { turn(-1); },
                                                        [this] { m_hex->CountBytes(u"00 "_qs, 0); }};
        Ways[static_cast<std::size_t>(below(Ways.size()))]();
    }
    void typeACharacter() {
        m_panes[1]->setFocus();
        const char byte = anyByte();
        const bool writes = isOnAByte(2) && byte != 0;
        const qsizetype index = at(2);
        key(m_panes[1], Qt::Key_unknown, QString(QChar(Windows1252::characterOf(static_cast<quint8>(byte)))));
        if (writes)
            m_model.type(index, byte);
    }
    void typeIntoALockedView() {
        m_hex->setLocked(true);
        typeDigits(activePane(), u"4f"_qs);
        m_hex->setLocked(false);
        key(activePane(), Qt::Key_C, u"\u0003"_qs, Qt::ControlModifier);
    }
    void undo() {
        m_hex->cmdUndo();
        if (m_model.edits.empty())
            return;
        const Model::Edit edit = m_model.edits.back();
        m_model.edits.pop_back();
        m_model.bytes[edit.index] = edit.before;
        EXPECT_EQ(at(activeNumber()), edit.index);
    }

    void find() {
        m_options.ContinueSearch = either();
        const Term term = anyTerm();
        const qsizetype cursor = at(1) + 1;
        const bool down = either();
        const qsizetype expected = down ? term.below(m_model.bytes, cursor, m_options.ContinueSearch)
                                        : term.above(m_model.bytes, cursor, m_options.ContinueSearch);
        const auto type = static_cast<qint16>(term.type);
        const int found = down ? m_hex->FindDown(term.text(), type) : m_hex->FindUp(term.text(), type);
        EXPECT_EQ(found, expected) << term.bytes.toHex().toStdString() << " type " << type << " down " << down;
        if (expected > 0) {
            EXPECT_EQ(at(1) + 1, expected);
            EXPECT_EQ(cellOf(1).row, 0);
            EXPECT_EQ(activeNumber(), type == 0 ? 1 : 2);
        }
    }
    void count() {
        const Term term = anyTerm();
        EXPECT_EQ(m_hex->CountBytes(term.text(), static_cast<qint16>(term.type)), term.allIn(m_model.bytes).size());
    }
    void markMatches() {
        const Term term = anyTerm();
        const std::vector<qsizetype> matches = term.allIn(m_model.bytes);
        EXPECT_EQ(m_hex->MarkAll(term.text(), static_cast<qint16>(term.type)), matches.size());
        for (const qsizetype index : matches)
            m_model.mark(index);
    }
    void replaceMatches() {
        const Term term = anyTerm();
        const QByteArray with = anyBytes(1 + below(5));
        const std::vector<qsizetype> matches = term.allIn(m_model.bytes);
        EXPECT_EQ(m_hex->ReplaceAll(term.text(), Term{with, HexFindType::Bytes}.text(), static_cast<qint16>(term.type)),
                  matches.size());
        for (const qsizetype index : matches)
            m_model.layOver(index, with);
    }
    void replaceSome() {
        const QByteArray with = anyBytes(1 + below(20));
        const qsizetype index = below(m_model.bytes.size() + 5);
        m_hex->ReplaceBytes(Term{with, HexFindType::Bytes}.text(), static_cast<int>(index + 1));
        m_hex->FillGrid();
        m_model.layOver(index, with);
    }
    void fill() {
        const qsizetype one = below(m_model.bytes.size() + 40);
        const qsizetype other = below(m_model.bytes.size() + 40);
        const char byte = anyByte();
        m_hex->fillBlock(Offset(one), Offset(other), static_cast<quint8>(byte));
        const qsizetype last = m_model.bytes.size() - 1;
        const qsizetype from = std::min({one, other, last});
        const qsizetype to = std::min(std::max(one, other), last);
        m_model.layOver(from, QByteArray(to - from + 1, byte));
    }
    void copy() {
        const qsizetype index = at(activeNumber());
        m_hex->cmdCopy();
        if (!isOnAByte(activeNumber()))
            return;
        const auto byte = static_cast<quint8>(m_model.bytes[index]);
        EXPECT_EQ(QGuiApplication::clipboard()->text(),
                  activeNumber() == 2 ? QString(QChar(Windows1252::characterOf(byte))) : HexText::ByteToHexCell(byte));
    }
    void copySome() {
        const qsizetype from = below(m_model.bytes.size());
        const qsizetype to = from + below(40);
        const auto form = static_cast<BlockForm>(below(3));
        m_hex->copyBlock(Offset(to), Offset(from), form);
        EXPECT_EQ(QGuiApplication::clipboard()->text(), blockText(m_model.bytes.mid(from, to - from + 1), form));
    }

    void save() {
        const bool force = either();
        EXPECT_TRUE(m_hex->SaveFile(m_path, force));
        if (force || m_model.isModified)
            m_model.save();
        EXPECT_EQ(bytesOf(m_path), m_model.disk);
    }
    void saveElsewhere() {
        const QByteArray before = anyBytes(below(2 * m_model.bytes.size()));
        const QString other = file(before, u"other"_qs);
        EXPECT_TRUE(m_hex->SaveFile(other, true));
        m_model.isModified = false;
        EXPECT_EQ(bytesOf(other), m_model.bytes + before.mid(m_model.bytes.size()));
        EXPECT_EQ(bytesOf(m_path), m_model.disk);
    }
    void reload() {
        EXPECT_TRUE(m_hex->OpenFile(m_path));
        m_model.load();
        EXPECT_EQ(at(1), 0);
        EXPECT_EQ(at(2), 0);
    }
    void loadAnother() {
        static constexpr qsizetype Lengths[] = {1, 2, 15, 16, 17, 319, 320, 321, 335, 336, 337, 640, 641};
        m_model.disk = anyBytes(either() ? Lengths[below(std::size(Lengths))] : 1 + below(2000));
        m_path = file(m_model.disk);
        reload();
    }

    void goToOffset() {
        const qsizetype offset = below(m_model.bytes.size() + 60) - 5;
        m_hex->gotoOffset(offset);
        const qsizetype position = std::clamp<qsizetype>(offset + 1, 1, m_model.bytes.size());
        EXPECT_EQ(pointer(), position - position % 16 + 1);
        if (position + 1 <= m_model.bytes.size()) {
            EXPECT_EQ(at(1), position);
        }
    }
    void goToPage() {
        const qsizetype pages = 1 + m_model.bytes.size() / 320;
        const qsizetype page = 1 + below(pages + 2);
        m_hex->gotoPage(page);
        EXPECT_EQ(pointer(), 320 * (std::min(page, pages) - 1) + 1);
    }
    void mark() {
        if (!isOnAByte(1))
            return;
        const qsizetype index = at(1);
        const bool isNew = !m_model.marks.contains(QString::number(index));
        m_hex->cmdBookmark();
        m_model.mark(index);
        EXPECT_EQ(m_prompts.messages, isNew ? QStringList() : QStringList(u"Bookmark already exists!"_qs));
        m_prompts.messages.clear();
    }
    void goToAMark() {
        m_panes[0]->setFocus();
        const int selected = m_list->currentIndex().isValid() ? m_list->currentIndex().row() : -1;
        const int last = static_cast<int>(m_model.marks.size()) - 1;
        struct Way {
            void (ucHex::*go)();
            int expected;
        };
        const Way Ways[] = {{&ucHex::cmdFirstBookmark, 0},
                            {&ucHex::cmdLastBookmark, last},
                            {&ucHex::cmdNextBookmark, std::min(selected + 1, last)},
                            {&ucHex::cmdPreviousBookmark, selected < 0 ? -1 : std::max(selected - 1, 0)}};
        const Way& way = Ways[below(std::size(Ways))];
        const qsizetype before = at(1);
        (m_hex.get()->*way.go)();
        if (last < 0 || way.expected < 0) {
            EXPECT_EQ(at(1), before);
            return;
        }
        EXPECT_EQ(QString::number(at(1)), m_model.marks[way.expected]);
        EXPECT_EQ(cellOf(1).row, 0);
    }
    void deleteAMark() {
        const qsizetype before = at(1);
        if (below(4) == 0) {
            m_hex->cmdClearBookmark();
            m_model.marks.clear();
        } else {
            const QModelIndex selected = m_list->currentIndex();
            if (selected.isValid())
                m_model.marks.removeAt(selected.row());
            m_hex->DeleteBookmark();
        }
        EXPECT_EQ(at(1), before);
    }

    void pressAKey() {
        static constexpr int Keys[] = {Qt::Key_Left, Qt::Key_Right, Qt::Key_Up,       Qt::Key_Down,
                                       Qt::Key_Home, Qt::Key_End,   Qt::Key_PageDown, Qt::Key_PageUp};
        struct Step {
            int row;
            int col;
        };
        static constexpr Step Steps[] = {{0, -1}, {0, 1}, {-1, 0}, {1, 0}};
        const qsizetype which = below(std::size(Keys));
        const bool ctrl = which > 3 && either();
        const int number = activeNumber();
        const HexCell before = cellOf(number);
        const int top = pointer();
        key(activePane(), Keys[which], {}, ctrl ? Qt::ControlModifier : Qt::NoModifier);
        if (which > 3)
            return;
        const HexCell to{before.row + Steps[which].row, before.col + Steps[which].col};
        const bool isOnPage = to.row >= 0 && to.row < m_grids[0]->Rows() && to.col >= 0 && to.col < Grid::Columns;
        if (!isOnPage || top > m_model.bytes.size())
            return;
        EXPECT_EQ(pointer(), top);
        EXPECT_EQ(cellOf(number), m_grids[0]->IsBeyondData(to.row, to.col) ? before : to) << which;
    }
    void click() {
        const HexCell cell{static_cast<int>(below(20)), static_cast<int>(below(16))};
        GridPane* const clicked = m_panes[below(2)];
        clicked->setFocus();
        const HexCell before = clicked->grid().cell();
        QMouseEvent press(QEvent::MouseButtonPress, clicked->cellRect(cell).center(),
                          clicked->mapToGlobal(clicked->cellRect(cell).center()), Qt::LeftButton, Qt::LeftButton, {});
        QApplication::sendEvent(clicked, &press);
        const HexCell aimed{std::min(cell.row, clicked->grid().Rows() - 1), cell.col};
        EXPECT_EQ(clicked->grid().cell(), clicked->grid().IsBeyondData(aimed.row, aimed.col) ? before : aimed);
    }
    void changePane() {
        const int before = activeNumber();
        key(activePane(), Qt::Key_Tab);
        EXPECT_EQ(activeNumber(), 3 - before);
    }
    void turn(int notches) {
        QWheelEvent event(QPointF(5, 5), m_panes[0]->mapToGlobal(QPointF(5, 5)), {}, QPoint(0, notches * 120),
                          Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(m_panes[0], &event);
    }
    void turnTheWheel() {
        HexPaging expected = page();
        const int notches = either() ? 1 : -1;
        for (int line = 0; line < 3; ++line)
            notches > 0 ? expected.MovePreviousLine() : expected.MoveNextLine();
        turn(notches);
        EXPECT_EQ(pointer(), expected.FilePointer().number());
    }
    void pull() {
        HexPaging expected = page();
        const int value = static_cast<int>(below(101));
        if (!m_bar->isEnabled())
            return;
        if (value != m_bar->value())
            expected.SetOffsetPosition(value);
        m_bar->setValue(value);
        EXPECT_EQ(pointer(), expected.FilePointer().number());
    }
    void movePage() {
        struct Way {
            void (ucHex::*go)();
            bool (HexPaging::*expected)();
        };
        static constexpr Way Ways[] = {{&ucHex::MoveFirstPage, &HexPaging::MoveFirstPage},
                                       {&ucHex::MovePreviousPage, &HexPaging::MovePreviousPage},
                                       {&ucHex::MovePreviousLine, &HexPaging::MovePreviousLine},
                                       {&ucHex::MoveNextLine, &HexPaging::MoveNextLine},
                                       {&ucHex::MoveNextPage, &HexPaging::MoveNextPage},
                                       {&ucHex::MoveLastPage, &HexPaging::MoveLastPage}};
        const Way& way = Ways[below(std::size(Ways))];
        HexPaging expected = page();
        (expected.*way.expected)();
        (m_hex.get()->*way.go)();
        EXPECT_EQ(pointer(), expected.FilePointer().number());
    }
    void changeRadix() {
        auto* caption = part<ClickLabel>(u"lblSelect"_qs);
        const bool before = m_hex->OffsetHexMode();
        Q_EMIT caption->clicked();
        EXPECT_NE(m_hex->OffsetHexMode(), before);
    }
    void paint() { QApplication::processEvents(); }

    // Whether view and model agree

    void expectPageShown() {
        const qsizetype top = pointer() - 1;
        for (int row = 0; row <= m_grids[0]->Rows(); ++row) {
            for (int col = 0; col < Grid::Columns; ++col) {
                const qsizetype index = top + row * HexPaging::BytesPerRow + col;
                const bool hasByte = index < m_model.bytes.size();
                const quint8 byte = hasByte ? static_cast<quint8>(m_model.bytes[index]) : 0;
                ASSERT_EQ(m_grids[0]->Value(row, col), hasByte ? HexText::ByteToHexCell(byte) : u"-1"_qs) << index;
                ASSERT_EQ(m_grids[1]->Value(row, col), hasByte ? HexText::ByteToTextCell(byte) : u"-1"_qs) << index;
            }
        }
    }
    void expectAgreement() {
        ASSERT_TRUE(m_hex->FileOpen());
        ASSERT_EQ(m_hex->Modified(), m_model.isModified);
        ASSERT_EQ(workingBytes(), m_model.bytes);
        ASSERT_EQ(pointer() % 16, 1);
        ASSERT_GE(pointer(), 1);
        ASSERT_LE(pointer(), m_model.bytes.size() + 1);
        for (const Grid* each : m_grids) {
            ASSERT_EQ(each->Pointer(), m_hex->FilePointer());
        }
        ASSERT_EQ(m_grids[0]->Rows(), page().rows());
        ASSERT_EQ(m_grids[1]->Rows(), page().rows());
        ASSERT_NO_FATAL_FAILURE(expectPageShown());
        const bool isBehindTheEnd = pointer() > m_model.bytes.size();
        for (const int number : {1, 2}) {
            ASSERT_TRUE(isBehindTheEnd || isOnAByte(number)) << number;
        }
        ASSERT_EQ(cellOf(1), cellOf(2));
        ASSERT_EQ(m_labels[0]->text(), m_grids[0]->Value(cellOf(1).row, cellOf(1).col));
        ASSERT_EQ(m_labels[3]->text(), QString::number(at(1)));
        ASSERT_EQ(m_labels[4]->text(), page().PageCaption());
        QStringList tags;
        for (int row = 0; row < m_list->model()->rowCount(); ++row)
            tags += m_list->model()->index(row, 0).data(HexBookmarks::TagRole).toString();
        ASSERT_EQ(tags, m_model.marks);
        ASSERT_TRUE(m_prompts.messages.isEmpty()) << m_prompts.messages.join(u' ').toStdString();
    }

    struct Named {
        const char* name;
        Operation run;
        int share;
    };
    static constexpr Named AllOperations[] = {
        {"type a byte", &AnyUseOfTheHexView::typeAByte, 8},
        {"type a digit and leave it", &AnyUseOfTheHexView::typeADigitAndLeaveIt, 4},
        {"type a character", &AnyUseOfTheHexView::typeACharacter, 6},
        {"type into a locked view", &AnyUseOfTheHexView::typeIntoALockedView, 1},
        {"undo", &AnyUseOfTheHexView::undo, 12},
        {"find", &AnyUseOfTheHexView::find, 8},
        {"count", &AnyUseOfTheHexView::count, 2},
        {"mark matches", &AnyUseOfTheHexView::markMatches, 1},
        {"replace matches", &AnyUseOfTheHexView::replaceMatches, 4},
        {"replace some", &AnyUseOfTheHexView::replaceSome, 2},
        {"fill", &AnyUseOfTheHexView::fill, 2},
        {"copy", &AnyUseOfTheHexView::copy, 1},
        {"copy some", &AnyUseOfTheHexView::copySome, 1},
        {"save", &AnyUseOfTheHexView::save, 3},
        {"save elsewhere", &AnyUseOfTheHexView::saveElsewhere, 1},
        {"reload", &AnyUseOfTheHexView::reload, 1},
        {"go to an offset", &AnyUseOfTheHexView::goToOffset, 3},
        {"go to a page", &AnyUseOfTheHexView::goToPage, 2},
        {"mark", &AnyUseOfTheHexView::mark, 3},
        {"go to a mark", &AnyUseOfTheHexView::goToAMark, 3},
        {"delete a mark", &AnyUseOfTheHexView::deleteAMark, 2},
        {"press a key", &AnyUseOfTheHexView::pressAKey, 16},
        {"click", &AnyUseOfTheHexView::click, 8},
        {"change the pane", &AnyUseOfTheHexView::changePane, 2},
        {"turn the wheel", &AnyUseOfTheHexView::turnTheWheel, 2},
        {"pull the scroll bar", &AnyUseOfTheHexView::pull, 2},
        {"move the page", &AnyUseOfTheHexView::movePage, 6},
        {"change the radix", &AnyUseOfTheHexView::changeRadix, 1},
        {"paint", &AnyUseOfTheHexView::paint, 1},
    };
    const Named& anyOperation() {
        int shares = 0;
        for (const Named& each : AllOperations)
            shares += each.share;
        qsizetype chosen = below(shares);
        const Named* found = AllOperations;
        while (chosen >= found->share)
            chosen -= (found++)->share;
        return *found;
    }

    std::mt19937 m_random;
    Model m_model;
    QString m_path;
    std::array<Grid*, 2> m_grids{};
    std::array<GridPane*, 2> m_panes{};
    std::array<QLabel*, 9> m_labels{};
    QAbstractItemView* m_list = nullptr;
    QScrollBar* m_bar = nullptr;
};

}  // namespace

TEST_P(AnyUseOfTheHexView, AgreesWithAnArrayOfBytes) {
    for (int run = GetParam() * RunsOfAPart; run < (GetParam() + 1) * RunsOfAPart; ++run) {
        m_random.seed(static_cast<std::mt19937::result_type>(run));
        m_panes[0]->setFocus();
        loadAnother();
        QStringList done;
        for (int step = 0; step < OperationsOfARun; ++step) {
            const Named& operation = anyOperation();
            done += QString::fromLatin1(operation.name);
            (this->*operation.run)();
            if (!HasFailure())
                expectAgreement();
            ASSERT_FALSE(HasFailure()) << "run " << run << " step " << step << " of " << m_model.bytes.size()
                                       << " bytes: " << done.mid(done.size() - 6).join(u", ").toStdString();
        }
        while (!m_model.edits.empty())
            undo();
        ASSERT_NO_FATAL_FAILURE(expectAgreement()) << run;
    }
}

INSTANTIATE_TEST_SUITE_P(InEveryPart, AnyUseOfTheHexView, testing::Range(0, Parts));
