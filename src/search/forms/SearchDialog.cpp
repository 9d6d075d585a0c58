#include "search/forms/SearchDialog.h"

#include "widgets/ComboHistory.h"
#include "widgets/Prompts.h"
#include "widgets/modSelectFolder.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include <algorithm>

namespace {

constexpr int TermWidth = 44;  ///< characters
constexpr int LabelColumn = 0;
constexpr int BoxColumn = 1;
constexpr int ButtonColumn = 2;
constexpr int FilesListed = 0;
constexpr int ProjectFiles = 2;

struct Option {
    const char* caption;
    const char* toolTip;
};
constexpr Option Options[] = {{"Files &Listed", "The files with these names in these folders"},
                              {"&Open Files", "The documents that are open"},
                              {"&Project Files", "The files of the project"}};

/// Blanks alone: a tab or a line break is a text that can be searched for.
bool isBlank(const QString& text) {
    return std::ranges::all_of(text, [](QChar each) { return each == u' '; });
}

}  // namespace

SearchDialog::SearchDialog(const Words& words, Prompts& prompts, QWidget* parent)
    : QDialog(parent),
      m_prompts(prompts),
      m_scope(new QGroupBox(QString::fromLatin1(words.scope), this)),
      m_conditions(new QGroupBox(u" Conditions "_qs, this)),
      m_terms(new QGridLayout),
      m_conditionGrid(new QGridLayout(m_conditions)) {
    setObjectName(QString::fromLatin1(words.name));
    setWindowTitle(QString::fromLatin1(words.title));
    setModal(true);
    m_find = addTerm({"cmbFind", "Fi&nd:", "infiles_find.txt", "The text to find"});
    m_scope->setObjectName(u"Frame1"_qs);
    layOutScope(*new QGridLayout(m_scope));
    m_boxes = {m_find, m_files, m_directory};
    m_conditions->setObjectName(u"fmCondition"_qs);
    addCondition({"chkMatchCase", "Match &case", "Upper and lower case letters differ"}, 0, m_caseSensitive);
    addCondition({"chkWholeWord", "Match &whole word only", "No word continues at either end of the text"}, 0,
                 m_wholeWord);
    addCondition({"chkRegular", "Re&gular expression", "The text is a regular expression in PCRE2 syntax"}, 0,
                 m_regExp);
    m_conditionGrid->setColumnStretch(0, 1);
    m_conditionGrid->setColumnStretch(1, 1);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(m_terms);
    layout->addWidget(m_scope);
    layout->addWidget(m_conditions);
    layout->addStretch();
    layout->addLayout(makeButtons(words.start));
    enableScope();
}

// Layout

void SearchDialog::layOutScope(QGridLayout& grid) {
    auto* options = new QHBoxLayout;
    for (std::size_t i = 0; i < m_options.size(); ++i) {
        m_options[i] = new QRadioButton(QString::fromLatin1(Options[i].caption), m_scope);
        m_options[i]->setObjectName(u"Option1(%1)"_qs.arg(i));
        m_options[i]->setToolTip(QString::fromLatin1(Options[i].toolTip));
        options->addWidget(m_options[i]);
    }
    options->addStretch();
    grid.addLayout(options, 0, LabelColumn, 1, ButtonColumn + 1);
    m_options[FilesListed]->setChecked(true);
    connect(m_options[FilesListed], &QRadioButton::toggled, this, &SearchDialog::enableScope);

    m_directory =
        addBox(grid, {"cmbDir", "&Directory:", "infiles_dir.txt", "Folders to search, with \";\" between them"});
    auto* browse = new QPushButton(u"&Browsse"_qs, m_scope);
    browse->setObjectName(u"cmdBrowse"_qs);
    browse->setToolTip(u"Add a folder"_qs);
    connect(browse, &QPushButton::clicked, this, &SearchDialog::browse);
    grid.addWidget(browse, 1, ButtonColumn);
    m_files = addBox(grid, {"cmbFiles", "In Fil&es:", "infiles_files.txt",
                            "Names of files with the wildcards * and ?, with \";\" between them"});
    m_withSubDirectories = addCheck(
        {"chkSubdir", "&Search sub directories", "Also search the folders in these folders"}, m_subDirectories);
    grid.addWidget(m_withSubDirectories, grid.rowCount(), BoxColumn);
}

QLayout* SearchDialog::makeButtons(const char* startCaption) {
    auto* start = new QPushButton(QString::fromLatin1(startCaption), this);
    start->setObjectName(u"cmdFind"_qs);
    start->setDefault(true);
    connect(start, &QPushButton::clicked, this, &SearchDialog::accept);
    auto* cancel = new QPushButton(u"Cancel"_qs, this);
    cancel->setObjectName(u"cmdCancel"_qs);
    connect(cancel, &QPushButton::clicked, this, &SearchDialog::reject);
    auto* row = new QHBoxLayout;
    row->addStretch();
    row->addWidget(start);
    row->addWidget(cancel);
    return row;
}

QComboBox* SearchDialog::addTerm(const Box& words) {
    QComboBox* box = addBox(*m_terms, words);
    m_boxes.push_back(box);
    if (m_find != nullptr)
        setTabOrder(m_find, box);
    return box;
}

/// In a row of its own below the others.
QComboBox* SearchDialog::addBox(QGridLayout& grid, const Box& words) {
    const int row = grid.isEmpty() ? 0 : grid.rowCount();
    auto* label = new QLabel(QString::fromLatin1(words.label), this);
    auto* box = new QComboBox(this);
    box->setObjectName(QString::fromLatin1(words.name));
    box->setProperty("Tag", QString::fromLatin1(words.history));
    box->setToolTip(QString::fromLatin1(words.toolTip));
    box->setEditable(true);
    box->setInsertPolicy(QComboBox::NoInsert);
    box->setCompleter(nullptr);  // it would change the typed text
    box->setMinimumContentsLength(TermWidth);
    box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    box->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    box->setAccessibleName(label->text().remove(u'&').remove(u':'));
    box->lineEdit()->setAccessibleName(box->accessibleName());
    label->setBuddy(box);
    grid.addWidget(label, row, LabelColumn);
    grid.addWidget(box, row, BoxColumn);
    return box;
}

void SearchDialog::addCondition(const Condition& words, int column, bool& field) {
    int row = 0;
    while (m_conditionGrid->itemAtPosition(row, column) != nullptr)
        ++row;
    m_conditionGrid->addWidget(addCheck(words, field), row, column);
}

QCheckBox* SearchDialog::addCheck(const Condition& words, bool& field) {
    auto* check = new QCheckBox(QString::fromLatin1(words.caption), this);
    check->setObjectName(QString::fromLatin1(words.name));
    check->setToolTip(QString::fromLatin1(words.toolTip));
    if (!m_checks.empty())
        setTabOrder(m_checks.back().first, check);
    m_checks.emplace_back(check, &field);
    return check;
}

// Opening

bool SearchDialog::ask(bool hasProject, const QString& directory) {
    if (isVisible())
        return false;
    offerProject(hasProject);
    m_isConfirmed = false;
    LoadHistory();
    if (!directory.isEmpty())
        m_directory->setEditText(directory);
    m_find->setFocus();
    // A combo box whose list was replaced deselects its text in the next pass of the event loop.
    QMetaObject::invokeMethod(m_find->lineEdit(), &QLineEdit::selectAll, Qt::QueuedConnection);
    return exec() == Accepted;
}

/// A selected option stays selected while it is hidden.
void SearchDialog::offerProject(bool hasProject) {
    m_options[ProjectFiles]->setVisible(hasProject);
    // Tab leads to the selected option alone, which may be the hidden one.
    if (!hasProject && m_options[ProjectFiles]->isChecked())
        m_options[FilesListed]->setFocusPolicy(Qt::StrongFocus);
}

void SearchDialog::LoadHistory() {
    for (QComboBox* box : m_boxes)
        LoadComboHistory(box->property("Tag").toString(), *box);
}

void SearchDialog::SaveHistory() {
    for (const QComboBox* box : m_boxes)
        SaveComboHistory(box->property("Tag").toString(), *box);
}

void SearchDialog::enableScope() {
    const bool isListed = m_options[FilesListed]->isChecked();
    m_files->setEnabled(isListed);
    m_directory->setEnabled(isListed);
    m_withSubDirectories->setEnabled(isListed);
}

void SearchDialog::browse() {
    const QPointer<SearchDialog> guard(this);
    const QString folder = SelectFolderDialog(m_prompts, this, u"Select folder"_qs);
    if (!guard || folder.isEmpty())
        return;
    const QString before = m_directory->currentText();
    m_directory->insertItem(0, folder);
    m_directory->setEditText(before.trimmed().isEmpty() ? folder : before + u';' + folder);
}

// The answer

void SearchDialog::accept() {
    if (!checkInput())
        return;
    for (const auto& [check, field] : m_checks)
        *field = check->isChecked();
    m_isConfirmed = true;
    for (QComboBox* box : m_boxes)
        AddComboHistory(*box, box->currentText(), ComboHistorySize, RaiseComboHistory);
    SaveHistory();
    QDialog::accept();
}

void SearchDialog::reject() {
    m_isConfirmed = false;
    QDialog::reject();
}

bool SearchDialog::checkInput() {
    if (searchIn() == SearchIn::FilesListed) {
        if (m_directory->currentText().trimmed().isEmpty())
            return refuse(*m_directory, u"Please select a searching directory."_qs);
        if (m_files->currentText().trimmed().isEmpty())
            return refuse(*m_files, u"Please enter file filter."_qs);
    }
    if (isBlank(m_find->currentText()))
        return refuse(*m_find, u"Please enter find text."_qs);
    return true;
}

bool SearchDialog::refuse(QComboBox& box, const QString& message) {
    const QPointer<SearchDialog> guard(this);
    m_prompts.message(this, message);
    if (guard)
        box.setFocus();
    return false;
}

SearchIn SearchDialog::searchIn() const {
    for (const SearchIn each : {SearchIn::FilesListed, SearchIn::OpenFiles}) {
        if (m_options[static_cast<std::size_t>(each)]->isChecked())
            return each;
    }
    return SearchIn::ProjectFiles;
}

SearchRequest SearchDialog::request() const {
    SearchRequest request;
    request.directories = m_directory->currentText();
    request.patterns = m_files->currentText();
    request.subDirectories = m_subDirectories;
    request.in = searchIn();
    request.text = m_find->currentText();
    request.flags = {.caseSensitive = m_caseSensitive, .regExp = m_regExp, .wholeWord = m_wholeWord};
    return request;
}
