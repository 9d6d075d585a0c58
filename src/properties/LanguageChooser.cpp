#include "properties/LanguageChooser.h"

#include "settings/registry/modRegistry.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

/// The languages that the texts of the program are written in.
constexpr const char* Languages[] = {"English"};

// Where the choice is stored; these names are fixed.
QString storedKey() {
    return u"Software/Flioplo/General"_qs;
}

QString storedName() {
    return u"Language"_qs;
}

}  // namespace

LanguageChooser::LanguageChooser(const QString& current, QWidget* parent) : QDialog(parent), m_list(new QListWidget) {
    setObjectName(u"LanguageChooser"_qs);
    setWindowTitle(u"Language"_qs);
    m_list->setObjectName(u"lstLanguages"_qs);
    for (const char* language : Languages)
        m_list->addItem(QString::fromLatin1(language));
    const QList<QListWidgetItem*> known = m_list->findItems(current, Qt::MatchFixedString);
    m_list->setCurrentItem(known.isEmpty() ? m_list->item(0) : known.first());
    auto* caption = new QLabel(u"&Language of menus and messages:"_qs);
    caption->setBuddy(m_list);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    buttons->button(QDialogButtonBox::Ok)->setObjectName(u"cmdOK"_qs);
    buttons->button(QDialogButtonBox::Cancel)->setObjectName(u"cmdCancel"_qs);
    auto* rows = new QVBoxLayout(this);
    rows->addWidget(caption);
    rows->addWidget(m_list);
    rows->addWidget(buttons);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_list, &QListWidget::itemActivated, this, &QDialog::accept);
}

QString LanguageChooser::chosen() const {
    return m_list->currentItem()->text();
}

void LanguageChooser::choose(RegistryStore& store, QWidget* parent) {
    LanguageChooser chooser(GetRegString(store, HKEY_CURRENT_USER, storedKey(), storedName()), parent);
    if (chooser.exec() == Accepted)
        SetRegString(store, HKEY_CURRENT_USER, storedKey(), storedName(), chooser.chosen());
}
