#include "shell/bars/FindBar.h"

#include "document/frmDocument.h"
#include "editor/control/SearchHistory.h"
#include "settings/Options.h"
#include "settings/files/OwnTextFile.h"
#include "shell/bars/FindBarHistory.h"
#include "shell/documents/ActiveDocument.h"
#include "shell/start/IgnoringErrors.h"
#include "widgets/Twips.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>

namespace {

constexpr int PlaceWidth = 170;
constexpr int GapInTwips = 40;

QString listPath() {
    return OwnTextFile::path(u"lastsearchkeys.idx"_qs);
}

}  // namespace

FindBar::FindBar(QWidget& window, const ActiveDocument& active, Options& options)
    : QObject(&window), m_active(active), m_options(options), m_box(new QComboBox(&window)) {
    m_box->setObjectName(u"cmbSearch"_qs);
    m_box->setAccessibleName(u"Search text"_qs);
    m_box->setToolTip(u"Search text (F6)"_qs);
    m_box->setEditable(true);
    m_box->setInsertPolicy(QComboBox::NoInsert);
    m_box->setCompleter(nullptr);  // it would change the typed text
    m_box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_box->hide();
    m_box->installEventFilter(this);
    connect(m_box->lineEdit(), &QLineEdit::returnPressed, this, &FindBar::find);
}

void FindBar::placeIn(QWidget& place) {
    auto* row = new QHBoxLayout(&place);
    row->setContentsMargins(GapInTwips / TwipsPerPixel, 0, GapInTwips / TwipsPerPixel, 0);
    row->addWidget(m_box);
    place.setFixedWidth(PlaceWidth);
    m_box->show();
}

QWidget* FindBar::widget() const {
    return m_box;
}

QString FindBar::text() const {
    return m_box->currentText();
}

QStringList FindBar::keys() const {
    QStringList keys;
    for (int i = 0; i < m_box->count(); ++i)
        keys << m_box->itemText(i);
    return keys;
}

void FindBar::setKeys(const QStringList& keys) {
    const QString shown = text();
    m_box->clear();
    m_box->addItems(keys);
    m_box->setCurrentIndex(-1);
    m_box->setEditText(shown);
}

void FindBar::AddSearchKey(const QString& pText, bool pMoveToTop) {
    QStringList list = keys();
    const FindBarHistory::Change change = FindBarHistory::AddSearchKey(list, pText, pMoveToTop);
    if (change == FindBarHistory::Change::Nothing)
        return;
    setKeys(list);
    if (change == FindBarHistory::Change::Raised)
        m_box->setEditText(pText);
}

void FindBar::AfterFind(const QString& pText, bool pCaseSensitive, bool pRegExp, bool pWholeWord) {
    if (pText.isEmpty())
        return;
    m_options.RegExpOn = pRegExp;
    m_options.CaseSensitiveOn = pCaseSensitive;
    m_options.WholeWord = pWholeWord;
    Q_EMIT searched();
    AddSearchKey(pText, true);
    m_box->setEditText(pText);
}

void FindBar::find() {
    const QString wanted = text();
    if (frmDocument* document = m_active.get()) {
        ignoringErrors("FindText", [&] {
            document->FindText(wanted, m_options.RegExpOn, m_options.CaseSensitiveOn, m_options.WholeWord);
        });
    }
    AddSearchKey(wanted, true);
}

void FindBar::FindNext() {
    if (frmDocument* document = m_active.get())
        document->FindNext(text());
}

void FindBar::FindPrevious() {
    if (frmDocument* document = m_active.get())
        document->FindPrev(text());
}

void FindBar::takeFindHistory() {
    const QStringList entries = SearchHistory::ofFinds().text().split(u'\n');
    for (const QString& entry : entries)
        AddSearchKey(entry, false);
}

void FindBar::LoadSearchKeys() {
    const QStringList lines = OwnTextFile::readLines(listPath(), OwnTextFile::MostListBytes).value_or(QStringList());
    QStringList list = keys();
    FindBarHistory::addLines(list, lines);
    setKeys(list);
    for (const QString& line : lines)
        SearchHistory::ofFinds().add(line);
}

void FindBar::SaveSearchKeys() const {
    OwnTextFile::writeLines(listPath(), FindBarHistory::toLines(keys()));
}

bool FindBar::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Wheel)
        return true;  // it would replace the typed text by an older one
    if (event->type() == QEvent::FocusIn)
        takeFindHistory();
    if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
        if (frmDocument* document = m_active.get())
            document->setFocus();
        return true;
    }
    return QObject::eventFilter(watched, event);
}
