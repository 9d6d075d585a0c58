#include "document/rtCM.h"

#include "document/DocumentServices.h"
#include "document/EditorGlobals.h"
#include "document/NumberText.h"
#include "document/TextViewSearch.h"
#include "editor/Editor.h"
#include "editor/control/ControlFile.h"
#include "editor/control/ControlLineNumbers.h"
#include "editor/control/ControlLook.h"
#include "editor/control/ControlMacros.h"
#include "editor/control/ControlSelection.h"
#include "editor/control/EditScope.h"
#include "editor/control/SelectedTexts.h"
#include "editor/control/TextControl.h"
#include "settings/Options.h"
#include "text/lines/TextCounts.h"
#include "widgets/Prompts.h"
#include "widgets/StoredColour.h"

#include <QColor>
#include <QVBoxLayout>

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace {

constexpr int LargestStepSize = 70;
constexpr int SmallestStepSize = 5;
constexpr int StepSize = 2;

std::string_view utf8Of(const QByteArray& text) {
    return {text.constData(), static_cast<std::size_t>(text.size())};
}

/// What so many changes make of the text, each of what the one before it has made. The rest is left out as soon as one
/// leaves the text as it is.
QString repeated(QString (*change)(const QString& text), QString text, int times) {
    for (; times > 0; --times) {
        QString changed = change(text);
        if (changed == text)
            break;
        text = std::move(changed);
    }
    return text;
}

QColor rowHighlightColour(const Options& options) {
    return StoredColour::colourOf(options.RowHighlightColor);
}

/// The default colour is made for a light background.
ControlLook::HighlightColour highlightKind(const Options& options) {
    static const qint32 unchosen = Options().RowHighlightColor;
    return options.RowHighlightColor == unchosen ? ControlLook::HighlightColour::Adapts
                                                 : ControlLook::HighlightColour::AsItIs;
}

}  // namespace

rtCM::rtCM(const DocumentServices& services, QWidget* parent)
    : QWidget(parent),
      gMyHighlight(services.options.RowHighlight),
      m_prompts(services.prompts),
      m_options(services.options),
      m_globals(services.globals),
      m_control(makeEditor(this)),
      m_search(std::make_unique<TextViewSearch>(*m_control, m_options, IgnoreCmdFailure)) {
    setObjectName(u"rtCM1"_qs);
    m_control->setObjectName(u"TextControl1"_qs);
    m_control->look().setTheme(&services.globals.theme);
    m_control->lineNumbers().setLineNumbering(true);
    m_control->macros().setGlobals(m_globals.control);
    m_globals.profile.connectTo(*m_control);
    setFocusProxy(m_control);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_control);
    connectControl();
}

rtCM::~rtCM() = default;

void rtCM::connectControl() {
    connect(m_control, &TextControl::Change, this, [this] {
        FileChanged = true;
        Q_EMIT Change();
    });
    connect(m_control, &TextControl::SelChange, this, [this] {
        HighLightLine();
        Q_EMIT SelChange();
    });
    connect(m_control, &TextControl::ShowMenu, this, &rtCM::ShowMenu);
    connect(m_control, &TextControl::DropFile, this, &rtCM::DropFile);
    connect(m_control, &TextControl::Notice, this, &rtCM::Notice);
    connect(m_control, &TextControl::RepeatCountChanged, this, &rtCM::RepeatCountChanged);
    connect(m_control, &TextControl::PropertiesChanged, this, &rtCM::propertiesChanged);
    connectSearch();
}

bool rtCM::OpenFile(const QString& pFilename, bool bIgnoreError) {
    if (!loadAs(pFilename, SaveFlags::AsLoaded, bIgnoreError))
        return false;
    pickLanguage(pFilename);
    return true;
}

bool rtCM::ReloadFile(const QString& pFilename, bool bIgnoreError, int pFormat) {
    return loadAs(pFilename, SaveFormats::flagWord(pFormat, false), bIgnoreError);
}

bool rtCM::SaveFile(const QString& pFilename, int pFormat) {
    const int word = SaveFormats::flagWord(pFormat, m_options.ClearRedoAfterSave);
    if (!report(m_control->file().SaveFile(pFilename, word), false))
        return false;
    // A language that the user has chosen stays as long as the file keeps its name.
    if (pFilename != m_languagePicked)
        pickLanguage(pFilename);
    FileChanged = false;
    return true;
}

bool rtCM::SaveToTmp(const QString& pFilename) {
    if (m_control->file().SaveFile(pFilename, SaveFlags::Utf16WithMark))
        return false;
    FileChanged = false;
    return true;
}

bool rtCM::LoadFromTmp(const QString& pFilename) {
    return loadAs(pFilename, SaveFlags::AsLoaded, true);
}

bool rtCM::loadAs(const QString& path, int flagWord, bool ignoreError) {
    if (!report(m_control->file().OpenFileAs(path, flagWord), ignoreError))
        return false;
    FileChanged = false;
    // The caret of a fresh text may lie where it lay before, and then no SelChange moves the highlight.
    HighLightLine();
    return true;
}

bool rtCM::report(const SystemError& error, bool ignoreError) {
    if (error && !ignoreError)
        m_prompts.message(this, error.description);
    return !error;
}

void rtCM::pickLanguage(const QString& path) {
    m_languagePicked = path;
    SetLangFromFile(path);
}

void rtCM::SetLangFromFile(const QString& pFilename) {
    const QString language = m_globals.languages.LanguageOfFile(pFilename);
    if (!language.isEmpty())
        SetLang(language);
}

QString rtCM::GetLang() const {
    return m_language;
}

void rtCM::SetLang(const QString& pLang) {
    const QString name = pLang.toUpper();
    m_globals.languages.RegisterLanguage(name);
    const LanguageDefinition* definition = m_globals.languages.definition(name);
    if (definition == nullptr)
        return;
    m_language = name;
    m_control->look().setLanguage(definition);
}

void rtCM::PropertiesLoad() {
    m_globals.profile.load();
    m_globals.profile.applyTo(*m_control);
    m_globals.theme.load();
}

void rtCM::PropertiesSave() {
    m_globals.profile.save();
    m_globals.theme.save();
}

QString rtCM::limitations() const {
    return m_control->file().limitations();
}

bool rtCM::hasContent() const {
    return m_control->heldText().length() > 0;
}

void rtCM::setTextName(const QString& name) {
    m_control->setAccessibleName(name);
}

QString rtCM::Text() const {
    return m_control->Text();
}

void rtCM::setText(const QString& text) {
    m_control->setText(text);
}

QString rtCM::SelText() const {
    return m_control->SelText();
}

void rtCM::setSelText(const QString& text) {
    m_control->setSelText(text);
}

void rtCM::AddText(const QString& pStr) {
    m_control->AddText(pStr);
}

QString rtCM::GetLine(qint64 pLine) const {
    return m_control->GetLine(pLine);
}

qint64 rtCM::TotalLines() const {
    return m_control->TotalLines();
}

qint64 rtCM::SelStart() const {
    return m_control->SelStart();
}

void rtCM::setSelStart(qint64 position) {
    m_control->setSelStart(position);
}

qint64 rtCM::SelEnd() const {
    return m_control->SelEnd();
}

void rtCM::setSelEnd(qint64 position) {
    m_control->setSelEnd(position);
}

qint64 rtCM::SelLength() const {
    return SelEnd() - SelStart();
}

void rtCM::setSelLength(qint64 length) {
    setSelEnd(SelStart() + length);
}

PositionReport::Place rtCM::caretPlace() const {
    return {m_control->changeCount(), m_control->SelStart(), m_control->SelEnd()};
}

void rtCM::GetSelStartEnd(qint64& pStart, qint64& pEnd) const {
    pStart = m_control->selected().StartLineNo();
    pEnd = m_control->selected().EndLineNo();
}

bool rtCM::hasSelection() const {
    return m_control->send(TextControl::SCI_GETSELECTIONEMPTY) == 0;
}

qint64 rtCM::SelTotalLines() const {
    if (!hasSelection())
        return 0;
    const ControlSelection& selected = m_control->selected();
    if (m_control->send(TextControl::SCI_SELECTIONISRECTANGLE) == 0)
        return SelectedTexts::lineCount(*m_control);
    return std::abs(selected.StartLineNo() - selected.EndLineNo()) + 1;
}

qint64 rtCM::CurrentLine() const {
    return m_control->CurrentLine();
}

qint64 rtCM::CurrentColumn() const {
    return m_control->CurrentColumn();
}

void rtCM::GotoTextLine(qint64 pLine) {
    m_control->GotoTextLine(pLine);
}

bool rtCM::LineNumbering() const {
    return m_control->lineNumbers().LineNumbering();
}

void rtCM::setLineNumbering(bool on) {
    m_control->lineNumbers().setLineNumbering(on);
}

void rtCM::Redraw() {
    m_control->Redraw();
}

QString rtCM::FontName() const {
    return m_control->look().FontName();
}

int rtCM::FontSize() const {
    return m_control->look().FontSize();
}

void rtCM::setTextFont(const QString& name, int points) {
    m_control->look().setTextFont(name, points);
}

void rtCM::IncreaseFontSize() {
    stepFontSize(StepSize, LargestStepSize);
}

void rtCM::DecreaseFontSize() {
    stepFontSize(-StepSize, SmallestStepSize);
}

/// As many steps as the repeat count says, but none from the last size on and none to a size that the font refuses.
void rtCM::stepFontSize(int step, int last) {
    int size = FontSize();
    for (int times = m_control->takeRepeatCount(); times > 0 && size != last; --times)
        size = size + step < ControlLook::SmallestFontSize ? size : size + step;
    setTextFont(FontName(), size);
}

void rtCM::DefaultFontSize() {
    m_control->takeRepeatCount();
    setTextFont(FontName(), m_options.FontSize);
    m_control->look().resetZoom();
}

QFont rtCM::textFont() const {
    return QFont(FontName(), FontSize());
}

void rtCM::setTextFont(const QFont& font) {
    setTextFont(font.family(), font.pointSize() > 0 ? font.pointSize() : FontSize());
}

void rtCM::changeSelected(QString (*change)(const QString& text)) {
    const int times = m_control->takeRepeatCount();
    if (Locked() || !hasSelection())
        return;
    const EditScope scope(*m_control, EditScope::Grouped);
    const auto changeOften = [change, times](const QString& text) { return repeated(change, text, times); };
    SelectedTexts::change(*m_control, changeOften, SelectedTexts::Direction::Forwards);
}

void rtCM::SpacesToTabs() {
    changeSelected([](const QString& text) { return QString(text).replace(u' ', u'\t'); });
}

void rtCM::TabsToSpaces() {
    changeSelected([](const QString& text) { return QString(text).replace(u'\t', u' '); });
}

QByteArray rtCM::wholeText() const {
    return m_control->bytes(0, m_control->heldText().length());
}

qint64 rtCM::TotalWords() const {
    return TextCounts::words(utf8Of(wholeText()));
}

qint64 rtCM::TotalChars() const {
    return m_control->map().positionOf(m_control->heldText().length());
}

qint64 rtCM::TotalCharsNoSpace() const {
    return TextCounts::charactersWithoutBlanks(utf8Of(wholeText()));
}

qint64 rtCM::sumOfSelected(qint64 (*count)(QStringView text)) const {
    qint64 sum = 0;
    for (const QString& text : SelectedTexts::of(*m_control))
        sum += count(text);
    return sum;
}

qint64 rtCM::SelTotalWords() const {
    return sumOfSelected(TextCounts::words);
}

qint64 rtCM::SelTotalChars() const {
    return sumOfSelected([](QStringView text) -> qint64 { return text.size(); });
}

qint64 rtCM::SelTotalCharsNoSpace() const {
    return sumOfSelected(TextCounts::charactersWithoutBlanks);
}

void rtCM::HighLightLine() {
    const qint64 now = CurrentLine();
    const bool leaves = !gMyHighlight || m_lastHighlightLine != now;
    // A line beyond the end was deleted together with its highlight.
    if (leaves && m_lastHighlightLine >= 0 && m_lastHighlightLine < TotalLines())
        UnHighLightLine(m_lastHighlightLine);
    if (gMyHighlight)
        m_control->look().setLineHighlight(now, rowHighlightColour(m_options), highlightKind(m_options));
    m_lastHighlightLine = gMyHighlight ? now : -1;
}

void rtCM::UnHighLightLine(qint64 pLine) {
    // The control has only one highlighted line, so no other can have one to lose.
    if (pLine == m_lastHighlightLine)
        m_control->look().setLineHighlight(-1, QColor());
}

bool rtCM::load(const QString& path) {
    return OpenFile(path);
}

bool rtCM::save(const QString& path, int format, bool) {
    return SaveFile(path, format);
}

bool rtCM::Locked() const {
    return m_control->Locked();
}

void rtCM::setLocked(bool locked) {
    m_control->setLocked(locked);
}

QString rtCM::GetCursorPos() const {
    return u"Ln %1 / %2, Col %3, Pos %4"_qs.arg(groupedNumber(CurrentLine() + 1), groupedNumber(TotalLines()))
        .arg(CurrentColumn() + 1)
        .arg(SelStart() + 1);
}
