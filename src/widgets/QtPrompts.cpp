#include "widgets/QtPrompts.h"

#include "widgets/FileDialog.h"
#include "widgets/InputStop.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QGridLayout>
#include <QGuiApplication>
#include <QInputDialog>
#include <QKeyEvent>
#include <QLabel>
#include <QMessageBox>
#include <QScreen>

#include <algorithm>

namespace {

/// No path that a file can have is longer.
constexpr qsizetype LongestText = 6000;
/// Minimum width of the text of a box before a line is broken, in logical pixels.
constexpr int NarrowestText = 400;

/// Size of the letters of an informative text, as a part of those of the question.
constexpr qreal SmallLetters = 0.9;

/// Whether the box with the text stays well inside its screen, in lines as narrow as they get.
bool fits(const QMessageBox& box, const QString& text) {
    const QRect lines =
        box.fontMetrics().boundingRect(QRect(0, 0, NarrowestText, QWIDGETSIZE_MAX), Qt::TextWordWrap, text);
    return lines.height() <= box.screen()->availableGeometry().height() * 3 / 5;
}

/// Cut in the middle until its buttons can be seen.
QString fitting(const QMessageBox& box, const QString& text) {
    qsizetype kept = qMin(text.size(), LongestText);
    QString shown = text;
    while (kept > 0 && (shown.size() > LongestText + 1 || !fits(box, shown))) {
        shown = text.left(kept / 2) + u'\u2026' + text.right(kept / 2);
        kept = kept * 2 / 3;
    }
    return shown;
}

/// Of an absolute path.
QString folderOf(const QString& file) {
    return file.left(std::max<qsizetype>(file.lastIndexOf(u'/'), 1));
}

QString withoutLastSlash(const QString& folder) {
    return folder.size() > 1 && folder.endsWith(u'/') ? folder.chopped(1) : folder;
}

/// The parent of a box: the whole window, because the widget that asks may be destroyed meanwhile, and because the area
/// of a child window would handle the box's Ctrl+Tab itself.
QWidget* windowOf(QWidget* parent) {
    return parent == nullptr ? nullptr : parent->window();
}

void setUp(QMessageBox& box, const QString& text, const QString& title) {
    box.setWindowTitle(title.isEmpty() ? u"Quillmark"_qs : title);
    box.setTextFormat(Qt::PlainText);
    box.setText(fitting(box, text));
}

void setUpMessage(QMessageBox& box, const QString& text, const QString& title) {
    setUp(box, text, title);
    box.setStandardButtons(QMessageBox::Ok);
}

/// Most styles show an informative text in letters of the size of the question.
void addSmallText(QMessageBox& box, const QString& text) {
    box.setInformativeText(text);
    auto* label = box.findChild<QLabel*>(u"qt_msgbox_informativelabel"_qs);
    if (label != nullptr && label->font().pointSizeF() > 0) {
        QFont small = label->font();
        small.setPointSizeF(small.pointSizeF() * SmallLetters);
        label->setFont(small);
    }
}

/// Closed by one of its buttons and by nothing else.
class ButtonsOnlyBox : public QMessageBox {
 public:
    explicit ButtonsOnlyBox(QWidget* parent) : QMessageBox(parent) {
        setWindowFlags((windowFlags() | Qt::CustomizeWindowHint) & ~Qt::WindowCloseButtonHint);
    }

 protected:
    void keyPressEvent(QKeyEvent* event) override {
        if (event->key() == Qt::Key_Escape || event->matches(QKeySequence::Cancel)) {
            event->accept();
            return;
        }
        QMessageBox::keyPressEvent(event);
    }
    void closeEvent(QCloseEvent* event) override { event->ignore(); }
};

/// The same as exec(), but the keyboard stays in the program in which the user works. A window that is shown modal
/// requests it, so the box is shown first, and becomes the only window with input in another way.
void showBehind(QMessageBox& box) {
    box.setModal(false);
    box.setAttribute(Qt::WA_ShowWithoutActivating);
    box.show();
    const InputStop others(&box);
    QObject::connect(qGuiApp, &QGuiApplication::applicationStateChanged, &box, [&box](Qt::ApplicationState now) {
        if (now == Qt::ApplicationActive && !box.isActiveWindow())
            box.activateWindow();
    });
    box.exec();
}

QCheckBox* addReadOnlyBox(QFileDialog& dialog) {
    auto* box = new QCheckBox(u"Open as &read-only"_qs, &dialog);
    box->setObjectName(u"chkReadOnly"_qs);
    if (auto* grid = qobject_cast<QGridLayout*>(dialog.layout()))
        grid->addWidget(box, grid->rowCount(), 0, 1, grid->columnCount());
    return box;
}

}  // namespace

QtPrompts::QtPrompts() {
    QObject::connect(qGuiApp, &QGuiApplication::applicationStateChanged, &m_receiver,
                     [this](Qt::ApplicationState now) { m_wasActive = m_wasActive || now == Qt::ApplicationActive; });
}

/// A program that has not been active yet is starting, and its boxes are for the user who started it.
void QtPrompts::show(QMessageBox& box) const {
    if (m_wasActive && QGuiApplication::applicationState() != Qt::ApplicationActive)
        showBehind(box);
    else
        box.exec();
}

void QtPrompts::message(QWidget* parent, const QString& text, const QString& title) {
    QMessageBox box(windowOf(parent));
    setUpMessage(box, text, title);
    show(box);
}

void QtPrompts::stop(QWidget* parent, const QString& text, const QString& title) {
    QMessageBox box(windowOf(parent));
    setUpMessage(box, text, title);
    box.setIcon(QMessageBox::Critical);
    show(box);
}

bool QtPrompts::messageWithCheck(QWidget* parent, const QString& text, const QString& check) {
    QMessageBox box(windowOf(parent));
    setUpMessage(box, text, {});
    auto* tick = new QCheckBox(check, &box);
    tick->setObjectName(u"chkSilence"_qs);
    box.setCheckBox(tick);
    show(box);
    return tick->isChecked();
}

bool QtPrompts::askYesNo(QWidget* parent, const QString& text, const QString& title, const QString& informativeText,
                         Answer preset) {
    ButtonsOnlyBox box(windowOf(parent));
    setUp(box, text, title);
    addSmallText(box, informativeText);
    box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
    box.setDefaultButton(preset == Answer::Yes ? QMessageBox::Yes : QMessageBox::No);
    show(box);
    return box.clickedButton() == box.button(QMessageBox::Yes);
}

OpenAnswer QtPrompts::askFilesToOpen(QWidget* parent, const FileQuestion& question) {
    FileDialog dialog(question, m_lastFolder, windowOf(parent));
    const bool one = question.choice == FileQuestion::OneFile;
    // The caller reports a file that does not exist.
    dialog.setFileMode(one ? QFileDialog::AnyFile : QFileDialog::ExistingFiles);
    const QCheckBox* readOnly = one ? nullptr : addReadOnlyBox(dialog);
    if (dialog.exec() != QDialog::Accepted)
        return {};
    const QStringList files = dialog.paths();
    m_lastFolder = folderOf(files.value(0));
    return {files, readOnly != nullptr && readOnly->isChecked()};
}

QString QtPrompts::askFileToSave(QWidget* parent, const FileQuestion& question) {
    FileDialog dialog(question, m_lastFolder, windowOf(parent));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    if (dialog.exec() != QDialog::Accepted)
        return {};
    QString file = dialog.paths().value(0);
    m_lastFolder = folderOf(file);
    return file;
}

QString QtPrompts::askFolder(QWidget* parent, const QString& title) {
    const QString& start = m_besideLastChoice.isEmpty() ? m_lastFolder : m_besideLastChoice;
    FileDialog dialog({title, {}, {}, {}}, start, windowOf(parent));
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly);
    if (dialog.exec() != QDialog::Accepted)
        return {};
    QString folder = withoutLastSlash(dialog.paths().value(0));
    m_besideLastChoice = folderOf(folder);
    return folder;
}

std::optional<QString> QtPrompts::askText(QWidget* parent, const QString& title, const QString& prompt,
                                          const QString& initial) {
    QInputDialog dialog(windowOf(parent));
    dialog.setWindowTitle(title);
    dialog.setLabelText(prompt);
    dialog.setTextValue(initial);
    return dialog.exec() == QDialog::Accepted ? std::optional(dialog.textValue()) : std::nullopt;
}
