#include "document/RecoveredBar.h"

#include <QBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLocale>
#include <QPainter>
#include <QPushButton>

#include <algorithm>

namespace {

constexpr int Margin = 3;
constexpr int Gap = 6;
/// The text has at least so much of the width of the buttons; in a narrower bar it is above them.
constexpr double LeastTextShare = 0.6;

struct FileRemark {
    JournalFileNow file;
    const char* text;
};

constexpr FileRemark FileRemarks[] = {{JournalFileNow::None, ""},
                                      {JournalFileNow::AsItWas, ""},
                                      {JournalFileNow::Changed, " The file has been changed since."},
                                      {JournalFileNow::Missing, " The file is gone."},
                                      {JournalFileNow::Unreachable, " The file can't be reached now."}};

/// The day is said only if it is another one.
QString recoveredSentence(const QDateTime& edited, const QDateTime& now) {
    const QLocale locale;
    const bool today = edited.date() == now.date();
    const QString time =
        today ? locale.toString(edited.time(), QLocale::ShortFormat) : locale.toString(edited, QLocale::ShortFormat);
    return u"Unsaved changes of %1 were recovered."_qs.arg(time);
}

}  // namespace

RecoveredBar::RecoveredBar(QWidget* parent)
    : QWidget(parent),
      m_rows(new QBoxLayout(QBoxLayout::LeftToRight, this)),
      m_buttons(new QBoxLayout(QBoxLayout::LeftToRight)),
      m_text(new QLabel(this)) {
    setObjectName(u"recoveredBar"_qs);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_text->setTextFormat(Qt::PlainText);
    m_text->setWordWrap(true);
    m_rows->setContentsMargins(Gap, Margin, Margin, Margin + 1);
    m_rows->setSpacing(Gap);
    m_rows->addWidget(m_text, 1);
    m_rows->addLayout(m_buttons);
    m_buttons->setSpacing(Margin);
    QPushButton* keep = addButton("cmdKeep", u"&Keep"_qs, u"Keep the recovered changes"_qs);
    QPushButton* discard = addButton("cmdDiscard", u"&Discard"_qs, u"Discard the recovered changes"_qs);
    QPushButton* differences = addButton("cmdDifferences", u"Show D&ifferences"_qs, u"Show what was recovered"_qs);
    m_buttons->addStretch();
    setFocusProxy(keep);
    connect(keep, &QPushButton::clicked, this, &RecoveredBar::keepRequested);
    connect(discard, &QPushButton::clicked, this, &RecoveredBar::discardRequested);
    connect(differences, &QPushButton::clicked, this, &RecoveredBar::differencesRequested);
}

QPushButton* RecoveredBar::addButton(const char* name, const QString& text, const QString& accessibleName) {
    auto* button = new QPushButton(text, this);
    button->setObjectName(QLatin1String(name));
    button->setAccessibleName(accessibleName);
    button->setAutoDefault(true);  // so that Enter presses it too
    // A click leaves the focus in the text.
    button->setFocusPolicy(Qt::TabFocus);
    m_buttons->addWidget(button);
    return button;
}

QString RecoveredBar::sentence(const QDateTime& edited, const QDateTime& now, JournalFileNow file) {
    const auto* remark = std::ranges::find(FileRemarks, file, &FileRemark::file);
    return recoveredSentence(edited, now) + QLatin1String(remark->text);
}

QString RecoveredBar::versionSentence(const QDateTime& edited, const QDateTime& now, const QString& name) {
    return recoveredSentence(edited, now) + u" They are another version of '%1'."_qs.arg(name);
}

void RecoveredBar::setSentence(const QString& text) {
    m_text->setText(text);
    setAccessibleName(text);
}

void RecoveredBar::setPath(const QString& path) {
    m_text->setToolTip(path.isEmpty() ? QString() : u"<p>%1</p>"_qs.arg(path.toHtmlEscaped()));
    setAccessibleDescription(path);
}

void RecoveredBar::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    foldIfNarrow();
}

void RecoveredBar::foldIfNarrow() {
    const int buttons = m_buttons->sizeHint().width();
    const bool isNarrow = width() < buttons * (1 + LeastTextShare);
    m_rows->setDirection(isNarrow ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
    setFixedHeight(m_rows->totalHeightForWidth(width()));
}

void RecoveredBar::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape)
        Q_EMIT left();
    else
        QWidget::keyPressEvent(event);
}

/// A line below the bar parts it from the text.
void RecoveredBar::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Window));
    painter.fillRect(0, height() - 1, width(), 1, palette().color(QPalette::Mid));
}
