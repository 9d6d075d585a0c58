#include "properties/frmProperties.h"

#include "document/DocumentServices.h"
#include "document/EditorGlobals.h"
#include "properties/PropertiesServices.h"
#include "properties/ucFileAssociation.h"
#include "properties/ucFileFilter.h"
#include "properties/ucFont.h"
#include "properties/ucLangProperties.h"
#include "properties/ucMarco.h"
#include "properties/ucPropFindReplace.h"
#include "properties/ucPropGeneral.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QShortcut>
#include <QShowEvent>
#include <QStyle>
#include <QTabBar>
#include <QTabWidget>
#include <QVBoxLayout>

namespace {

const QString HelpPage = u"properties.html"_qs;

/// The first control of a page that the tab key reaches; the page itself when there is none.
QWidget* firstControl(QWidget* page) {
    for (QWidget* each = page->nextInFocusChain(); each != page; each = each->nextInFocusChain()) {
        if (page->isAncestorOf(each) && each->isEnabled() && each->isVisible() && each->focusPolicy() & Qt::TabFocus)
            return each;
    }
    return page;
}

}  // namespace

frmProperties::frmProperties(const PropertiesServices& services, QWidget* parent)
    : QDialog(parent),
      m_showHelp(services.showHelp),
      m_pages(new QTabWidget),
      m_general(new ucPropGeneral(services.settings, services.options, services.shell)),
      m_filters(new ucFileFilter(services.registry)),
      m_associations(new ucFileAssociation(services.associations, services.registry, services.documents.prompts)),
      m_languages(new ucLangProperties(services.documents, services.showHelp)),
      m_macros(new ucMarco({services.documents.prompts, services.settings, services.documents.globals.hotKeys,
                            services.documents.globals.macros})),
      m_font(new ucFont(services.documents, services.options, services.settings)),
      m_find(new ucPropFindReplace(services.settings)) {
    setObjectName(u"frmProperties"_qs);
    setWindowTitle(tr("Properties"));
    m_pages->tabBar()->setObjectName(u"TabStrip1"_qs);
    addPages();
    auto* rows = new QVBoxLayout(this);
    rows->addWidget(m_pages, 1);
    rows->addLayout(buildButtons());
    addKeys();
    connectPages();
}

void frmProperties::addPages() {
    addPage("general", tr("&General"), m_general);
    addPage("filefilters", tr("&File Filters"), m_filters);
    addPage("associate", tr("&Associations"), m_associations);
    addPage("languages", tr("&Languages"), m_languages);
    addPage("macro", tr("Macr&os"), m_macros);
    addPage("editor", tr("&Editor"), m_font);
    addPage("find", tr("F&ind"), m_find);
}

void frmProperties::addPage(const char* key, const QString& caption, QWidget* page) {
    const int margin = style()->pixelMetric(QStyle::PM_LayoutLeftMargin);
    page->layout()->setContentsMargins(margin, margin, margin, margin);
    m_pages->tabBar()->setTabData(m_pages->addTab(page, caption), QString::fromLatin1(key));
    // Enter presses the button that has the focus, and Confirm everywhere else.
    for (QPushButton* button : page->findChildren<QPushButton*>())
        button->setAutoDefault(true);
}

QBoxLayout* frmProperties::buildButtons() {
    auto* row = new QHBoxLayout;
    row->addStretch(1);
    addButton(*row, u"cmdConfirm"_qs, tr("&Confirm"), &frmProperties::confirm)->setDefault(true);
    m_apply = addButton(*row, u"cmdApply"_qs, tr("Appl&y"), &frmProperties::apply);
    addButton(*row, u"cmdCancel"_qs, tr("Cancel"), &frmProperties::reject);
    addButton(*row, u"cmdHelp"_qs, tr("Help"), &frmProperties::help)->setToolTip(tr("Help (F1)"));
    m_apply->setEnabled(false);
    return row;
}

QPushButton* frmProperties::addButton(QBoxLayout& row, const QString& name, const QString& caption,
                                      void (frmProperties::*act)()) {
    auto* button = new QPushButton(caption, this);
    button->setObjectName(name);
    connect(button, &QPushButton::clicked, this, act);
    row.addWidget(button);
    return button;
}

void frmProperties::addKeys() {
    const auto add = [this](const QKeySequence& key, auto action) {
        connect(new QShortcut(key, this), &QShortcut::activated, this, action);
    };
    add(Qt::Key_F1, [this] { help(); });
    add(Qt::CTRL | Qt::Key_PageDown, [this] { turnPage(1); });
    add(Qt::CTRL | Qt::Key_PageUp, [this] { turnPage(-1); });
}

void frmProperties::connectPages() {
    connect(m_general, &ucPropGeneral::Changed, this, &frmProperties::enableApply);
    connect(m_filters, &ucFileFilter::Changed, this, &frmProperties::enableApply);
    connect(m_languages, &ucLangProperties::Changed, this, &frmProperties::enableApply);
    connect(m_macros, &ucMarco::Changed, this, &frmProperties::enableApply);
    connect(m_font, &ucFont::Changed, this, &frmProperties::enableApply);
    connect(m_find, &ucPropFindReplace::Changed, this, &frmProperties::enableApply);
    connect(m_macros, &ucMarco::UpdateMacroMenu, this, &frmProperties::UpdateMacroMenu);
    connect(m_macros, &ucMarco::helpWanted, this, m_showHelp);
}

void frmProperties::InitValues() {
    if (m_initialised)
        return;
    m_initialised = true;
    m_find->LoadProp();
    m_general->LoadProp();
    m_filters->InitValues();
    m_associations->InitValues();
    m_font->LoadProp();
    m_languages->InitObjects(false);
    m_macros->LoadMacro();
    m_apply->setEnabled(false);
}

void frmProperties::SaveProperties() {
    m_find->SaveProp();
    m_general->SaveProp();
    m_languages->SaveProp();
    m_font->SaveProp();
    m_filters->SaveProp();
    m_macros->SaveProp();
}

void frmProperties::refreshLanguages() {
    if (m_initialised)
        m_languages->refresh();
}

void frmProperties::refreshMacros() {
    if (m_initialised)
        m_macros->LoadMacro();
}

void frmProperties::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (!event->spontaneous())
        firstControl(m_pages->currentWidget())->setFocus();
}

void frmProperties::enableApply() {
    m_apply->setEnabled(true);
}

void frmProperties::apply() {
    SaveProperties();
    m_apply->setEnabled(false);
}

void frmProperties::confirm() {
    apply();
    accept();
}

void frmProperties::help() {
    m_showHelp(HelpPage);
}

void frmProperties::turnPage(int step) {
    const int count = m_pages->count();
    m_pages->setCurrentIndex((m_pages->currentIndex() + step + count) % count);
}
