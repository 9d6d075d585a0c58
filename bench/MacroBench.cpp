// The time of playing a macro many times: fifty steps of typing, moving, selecting and deleting, in a text of a
// thousand lines. Runs without a display with QT_QPA_PLATFORM=offscreen; the results are wall-clock times.

#include "editor/Editor.h"
#include "editor/control/ControlMacros.h"
#include "editor/control/TextControl.h"
#include "keys/GlobalObject.h"
#include "keys/HotKeys.h"
#include "keys/MacroStore.h"
#include "settings/registry/MemoryRegistry.h"
#include "widgets/QtPrompts.h"

#include <QApplication>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <memory>

namespace {

using Sci = QsciScintillaBase;

constexpr int Steps = 50;
constexpr int InnerTimes = 1000;
constexpr int Inner = 2;
constexpr int PlayOuter = 214;
constexpr int PlayInner = 213 + Inner;
constexpr int SetRepeatCount = 187;

/// Begins a line, types text with a mistake, corrects it, and moves to another line.
Macro fiftySteps() {
    Macro macro;
    macro.addCommand(Sci::SCI_LINEEND);
    macro.addCommand(Sci::SCI_NEWLINE);
    const int rounds = 6;
    for (int round = 0; round < rounds; ++round) {
        macro.addText(u"value"_qs);
        macro.addCommand(Sci::SCI_CHARLEFT);
        macro.addCommand(Sci::SCI_CHARLEFTEXTEND);
        macro.addCommand(Sci::SCI_DELETEBACK);
        macro.addText(u"x "_qs);
        macro.addCommand(Sci::SCI_WORDLEFT);
        macro.addCommand(Sci::SCI_LINEEND);
    }
    macro.addCommand(Sci::SCI_VCHOME);
    macro.addCommand(Sci::SCI_LINEENDEXTEND);
    macro.addCommand(125);
    macro.addCommand(Sci::SCI_LINEUP);
    macro.addCommand(160);
    while (macro.steps().size() < Steps)
        macro.addCommand(macro.steps().size() % 2 == 0 ? Sci::SCI_CHARRIGHT : Sci::SCI_CHARLEFT);
    return macro;
}

void play(benchmark::State& state) {
    const QTemporaryDir home;
    MemoryRegistry registry;
    HotKeys hotKeys(GlobalObject::defaultHotKeys());
    MacroStore macros(registry, hotKeys, home.path());
    QtPrompts prompts;
    GlobalObject globals(prompts, registry, hotKeys, macros);
    Macro outer;
    outer.addCommand(SetRepeatCount, QString::number(InnerTimes));
    outer.addCommand(PlayInner);
    macros.setMacro(0, outer);
    macros.setMacro(Inner - 1, fiftySteps());
    for (auto _ : state) {
        state.PauseTiming();
        const std::unique_ptr<TextControl> controlOwner{makeEditor()};
        TextControl& control = *controlOwner;
        control.macros().setGlobals(globals);
        control.resize(800, 600);
        control.show();
        control.setText(u"some text that stands here\n"_qs.repeated(1000));
        control.setSelection(0, 0);
        QCoreApplication::processEvents();
        state.ResumeTiming();
        control.setRepeatCount(static_cast<int>(state.range(0)) / InnerTimes);
        control.ExecuteCmd(PlayOuter);
    }
    state.SetComplexityN(state.range(0));
}
BENCHMARK(play)
    ->Name("play a macro of 50 steps so many times")
    ->Arg(1000)
    ->Arg(10000)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Complexity();

}  // namespace

int main(int count, char** arguments) {
    const QApplication application(count, arguments);
    benchmark::Initialize(&count, arguments);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
