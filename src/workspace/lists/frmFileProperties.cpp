#include "workspace/lists/frmFileProperties.h"

#include "platform/BackgroundWork.h"
#include "platform/Paths.h"
#include "widgets/Prompts.h"
#include "workspace/lists/FileFacts.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLocale>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>

#include <cerrno>
#include <chrono>

using namespace std::chrono_literals;

namespace {

constexpr auto LongestWait = 3s;
constexpr auto BetweenSums = 200ms;
/// Pixels, so that a usual path stands in one or two lines.
constexpr int NarrowestLine = 280;

QString numberText(qint64 number) {
    return QLocale(QLocale::English, QLocale::UnitedStates).toString(number);
}

QString counted(qint64 number, const char* one, const char* many) {
    return numberText(number) + u' ' + QString::fromLatin1(number == 1 ? one : many);
}

QString sumText(const FolderSum& sum) {
    return u"%1 in %2 and %3"_qs.arg(counted(sum.bytes, "byte", "bytes"), counted(sum.files, "file", "files"),
                                     counted(sum.folders, "folder", "folders"));
}

}  // namespace

frmFileProperties::frmFileProperties(const QString& path, const FileFacts& facts, QWidget* parent)
    : QDialog(parent), m_lines(new QFormLayout) {
    setObjectName(u"frmFileProperties"_qs);
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(u"Properties of %1"_qs.arg(FileNameOf(path).isEmpty() ? path : FileNameOf(path)));
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(m_lines);
    layout->addStretch();
    addButtons();
    addLines(path, facts);
    if (facts.isFolder)
        count(path);
}

frmFileProperties::~frmFileProperties() = default;

QLabel* frmFileProperties::addLine(const char* name, const QString& title, const QString& text) {
    if (text.isEmpty())
        return nullptr;
    auto* label = new QLabel(text, this);
    label->setObjectName(QString::fromLatin1(name));
    label->setAccessibleName(title);
    label->setTextFormat(Qt::PlainText);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    label->setWordWrap(true);
    label->setMinimumWidth(NarrowestLine);
    m_lines->addRow(title + u':', label);
    return label;
}

void frmFileProperties::addLines(const QString& path, const FileFacts& facts) {
    addLine("lblPath", u"Path"_qs, path);
    addLine("lblType", u"Type"_qs, facts.type);
    addLine("lblTarget", u"Link to"_qs, facts.linkTarget);
    m_size = addLine("lblSize", u"Size"_qs, counted(facts.size, "byte", "bytes"));
    addLine("lblCreated", u"Created"_qs, facts.created);
    addLine("lblModified", u"Modified"_qs, facts.modified);
    addLine("lblAccessed", u"Accessed"_qs, facts.accessed);
    addLine("lblOwner", u"Owner"_qs, facts.owner);
    addLine("lblMode", u"Mode"_qs, facts.mode);
}

void frmFileProperties::addButtons() {
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    buttons->button(QDialogButtonBox::Close)->setObjectName(u"cmdClose"_qs);
    m_stop = buttons->addButton(u"&Stop Counting"_qs, QDialogButtonBox::ActionRole);
    m_stop->setObjectName(u"cmdStop"_qs);
    m_stop->setAutoDefault(false);
    m_stop->hide();
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_stop, &QPushButton::clicked, this, [this] {
        m_isStopped = true;
        stopCounting();
    });
    layout()->addWidget(buttons);
}

void frmFileProperties::count(const QString& folder) {
    m_sum = std::make_shared<FolderSum>();
    m_counting = std::make_unique<BackgroundWork>(
        [folder, sum = m_sum](const std::atomic<bool>& cancelled) { addUp(folder, *sum, cancelled); });
    connect(m_counting.get(), &BackgroundWork::finished, this, &frmFileProperties::stopCounting);
    connect(&m_progress, &QTimer::timeout, this, &frmFileProperties::showSum);
    m_progress.start(BetweenSums);
    m_stop->show();
    showSum();
}

void frmFileProperties::stopCounting() {
    if (!m_counting)
        return;
    m_counting->cancel();
    m_counting->disconnect(this);
    m_counting.release()->deleteLater();
    m_progress.stop();
    m_stop->hide();
    showSum();
}

void frmFileProperties::showSum() {
    QString text = sumText(*m_sum);
    if (m_counting)
        text += u", counting..."_qs;
    else if (m_isStopped)
        text = u"At least "_qs + text;
    else if (m_sum->unread > 0)
        text += u", %1 could not be read"_qs.arg(counted(m_sum->unread, "folder", "folders"));
    m_size->setText(text);
}

bool ShowProperties(const QString& path, Prompts& prompts, QWidget* parent) {
    const auto facts = std::make_shared<FileFacts>();
    const QPointer<QWidget> alive(parent);
    BackgroundWork reading([path, facts](const std::atomic<bool>&) { *facts = factsOf(path); });
    const bool isAnswered = reading.waitAlive(LongestWait);
    if (parent != nullptr && !alive)
        return false;
    const SystemError error = isAnswered ? facts->error : SystemError::fromErrno(ETIMEDOUT);
    if (error) {
        prompts.message(parent, error.description, u"Error"_qs);
        return false;
    }
    (new frmFileProperties(path, *facts, parent))->show();
    return true;
}
