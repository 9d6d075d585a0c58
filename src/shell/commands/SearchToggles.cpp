#include "shell/commands/SearchToggles.h"

#include "settings/Options.h"
#include "shell/commands/CommandEntries.h"

#include <algorithm>
#include <cstring>

namespace {

struct Toggle {
    const char* entry;
    bool Options::*variable;
};

constexpr Toggle wholeWord = {"mnuWholeWord", &Options::WholeWord};
constexpr Toggle regExp = {"mnuRegExp", &Options::RegExpOn};
constexpr Toggle caseSensitive = {"mnuCaseSensitive", &Options::CaseSensitiveOn};
constexpr Toggle continueSearch = {"mnuSearchContinue", &Options::ContinueSearch};

constexpr Toggle toggles[] = {wholeWord, regExp, caseSensitive, continueSearch};

}  // namespace

SearchToggles::SearchToggles(Options& options, CommandEntries& commands) : m_options(options), m_commands(commands) {}

void SearchToggles::SetWholeWordOption(bool pOn) {
    set(wholeWord.entry, pOn);
}

void SearchToggles::SetRegExpOption(bool pOn) {
    set(regExp.entry, pOn);
}

void SearchToggles::SetCaseOption(bool pOn) {
    set(caseSensitive.entry, pOn);
}

void SearchToggles::SetContinueSearchOption(bool pOn) {
    set(continueSearch.entry, pOn);
}

void SearchToggles::toggle(const char* entry) {
    set(entry, !m_commands.isChecked(entry));
}

void SearchToggles::showOptions() {
    for (const Toggle& toggle : toggles)
        m_commands.CheckMenuItem(toggle.entry, m_options.*toggle.variable);
}

void SearchToggles::set(const char* entry, bool on) {
    const auto* toggle =
        std::ranges::find_if(toggles, [entry](const Toggle& each) { return std::strcmp(each.entry, entry) == 0; });
    m_options.*toggle->variable = on;
    m_commands.CheckMenuItem(entry, on);
}
