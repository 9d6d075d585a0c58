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

constexpr Toggle WholeWord = {"mnuWholeWord", &Options::WholeWord};
constexpr Toggle RegExp = {"mnuRegExp", &Options::RegExpOn};
constexpr Toggle CaseSensitive = {"mnuCaseSensitive", &Options::CaseSensitiveOn};
constexpr Toggle ContinueSearch = {"mnuSearchContinue", &Options::ContinueSearch};

constexpr Toggle Toggles[] = {WholeWord, RegExp, CaseSensitive, ContinueSearch};

bool Options::*variableOf(const char* entry) {
    const auto* toggle =
        std::ranges::find_if(Toggles, [entry](const Toggle& each) { return std::strcmp(each.entry, entry) == 0; });
    return toggle->variable;
}

}  // namespace

SearchToggles::SearchToggles(Options& options, CommandEntries& commands) : m_options(options), m_commands(commands) {}

void SearchToggles::SetWholeWordOption(bool pOn) {
    set(WholeWord.entry, pOn);
}

void SearchToggles::SetRegExpOption(bool pOn) {
    set(RegExp.entry, pOn);
}

void SearchToggles::SetCaseOption(bool pOn) {
    set(CaseSensitive.entry, pOn);
}

void SearchToggles::SetContinueSearchOption(bool pOn) {
    set(ContinueSearch.entry, pOn);
}

void SearchToggles::toggle(const char* entry) {
    set(entry, !(m_options.*variableOf(entry)));
}

void SearchToggles::showOptions() {
    for (const Toggle& toggle : Toggles)
        m_commands.CheckMenuItem(toggle.entry, m_options.*toggle.variable);
}

void SearchToggles::set(const char* entry, bool on) {
    m_options.*variableOf(entry) = on;
    m_commands.CheckMenuItem(entry, on);
}
