#include "shell/outside/frmAbout.h"

#include "platform/Product.h"
#include "shell/outside/SystemInformationDialog.h"
#include "widgets/ClickLabel.h"
#include "widgets/Icons.h"
#include "widgets/OpenOutside.h"
#include "widgets/Prompts.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

#include <utility>

namespace {

constexpr int PictureSize = 64;
constexpr int TextWidth = 360;
constexpr int SmallGap = 6;
constexpr double TitleSize = 1.8;  ///< of the font of the desktop

QLabel* label(const QString& name, const QString& text) {
    auto* made = new QLabel(text);
    made->setObjectName(name);
    made->setTextFormat(Qt::PlainText);
    return made;
}

QLabel* wrappedLabel(const QString& name, const QString& text) {
    QLabel* made = label(name, text);
    made->setWordWrap(true);
    made->setMinimumWidth(TextWidth);
    return made;
}

QLabel* titleLabel() {
    QLabel* title = label(u"lblTitle"_qs, u"Quillmark"_qs);
    QFont large = title->font();
    large.setPointSizeF(large.pointSizeF() * TitleSize);
    large.setBold(true);
    title->setFont(large);
    return title;
}

QLabel* picture() {
    auto* made = new QLabel;
    made->setPixmap(Icons::named("quillmark").pixmap(PictureSize));
    made->setAlignment(Qt::AlignTop);
    return made;
}

QHBoxLayout* versionRow() {
    auto* row = new QHBoxLayout;
    row->setSpacing(SmallGap);
    row->addWidget(label(u"lblVersion"_qs, u"Version "_qs + Product::version()));
    row->addWidget(label(u"lbVersion"_qs, u'(' + Product::buildNumber() + u')'));
    row->addStretch();
    return row;
}

QString licence() {
    return u"Free software under the GNU General Public License, version 3 or later (GPL-3.0-or-later). "
           u"It comes without any warranty."_qs;
}

}  // namespace

frmAbout::frmAbout(SystemText systemText, Prompts& prompts, QWidget* parent)
    : QDialog(parent), m_systemText(std::move(systemText)), m_prompts(prompts) {
    setObjectName(u"frmAbout"_qs);
    setWindowTitle(u"About Quillmark"_qs);
    auto* texts = new QVBoxLayout;
    texts->addWidget(titleLabel());
    texts->addLayout(versionRow());
    texts->addSpacing(fontMetrics().height());
    texts->addWidget(wrappedLabel(u"lblDescription"_qs, u"Text and hex editor for programmers."_qs));
    texts->addSpacing(SmallGap);
    texts->addWidget(wrappedLabel(u"lblLicence"_qs, licence()));
    texts->addSpacing(SmallGap);
    texts->addWidget(makeLink(), 0, Qt::AlignLeft);
    texts->addSpacing(fontMetrics().height());

    auto* systemButton = new QPushButton(u"&System Info..."_qs);
    systemButton->setObjectName(u"cmdSysInfo"_qs);
    systemButton->setAutoDefault(false);
    connect(systemButton, &QPushButton::clicked, this, &frmAbout::StartSysInfo);
    auto* okButton = new QPushButton(u"OK"_qs);
    okButton->setObjectName(u"cmdOK"_qs);
    okButton->setDefault(true);
    connect(okButton, &QPushButton::clicked, this, &QDialog::accept);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(systemButton);
    buttons->addStretch();
    buttons->addWidget(okButton);

    auto* grid = new QGridLayout(this);
    grid->setHorizontalSpacing(PictureSize / 4);
    grid->addWidget(picture(), 0, 0, Qt::AlignTop);
    grid->addLayout(texts, 0, 1);
    grid->addLayout(buttons, 1, 0, 1, 2);
    grid->setSizeConstraint(QLayout::SetFixedSize);
    okButton->setFocus();
}

ClickLabel* frmAbout::makeLink() {
    auto* link = new ClickLabel(Product::webAddress());
    link->setObjectName(u"Label2"_qs);
    link->showAsLink();
    connect(link, &ClickLabel::clicked, this, [] { OpenOutside::address(QUrl(Product::webAddress())); });
    return link;
}

void frmAbout::StartSysInfo() {
    const QString text = m_systemText();
    if (text.isEmpty())
        m_prompts.message(this, u"System Information Is Unavailable At This Time"_qs);
    else
        SystemInformationDialog(text, this).exec();
}
