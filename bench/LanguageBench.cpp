// The cost of syntax colouring: loading the definitions, the first frame of a file, a key press, a jump to the middle;
// each also without a language for comparison. Runs without a display with QT_QPA_PLATFORM=offscreen; the results are
// wall-clock times.

#include "editor/Editor.h"
#include "editor/control/ControlFile.h"
#include "editor/control/ControlLineNumbers.h"
#include "editor/control/ControlLook.h"
#include "editor/control/ControlTyping.h"
#include "editor/control/TextControl.h"
#include "lang/LanguageTable.h"
#include "platform/Folders.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QPixmap>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <memory>
#include <string>

namespace {

constexpr qint64 Megabyte = 1'000'000;

/// About one megabyte of source text with all kinds of tokens of C++.
std::string block() {
    std::string text;
    for (int n = 0; static_cast<qint64>(text.size()) < Megabyte; ++n) {
        const std::string number = std::to_string(n);
        text += "/** What step " + number + " is for. */\n#include <step" + number + ".h>\n" + "static int step" +
                number + "(const char* name, double part) {\n" + "    // A remark that a reader may want.\n" +
                "    if (name == nullptr || part > 0x" + number + ")\n        return sizeof(\"text " + number +
                "\\n\") + 'c' + " + number + ";\n    return static_cast<int>(part * 2.5e3);\n}\n\n";
    }
    return text;
}

QString fileOf(qint64 megabytes) {
    static const QTemporaryDir folder;
    const QString path = folder.filePath(u"%1.cpp"_qs.arg(megabytes));
    QFile file(path);
    if (file.exists() || !file.open(QIODevice::WriteOnly))
        return path;
    const std::string text = block();
    for (qint64 written = 0; written < megabytes * Megabyte; written += static_cast<qint64>(text.size()))
        file.write(text.data(), static_cast<qint64>(text.size()));
    return path;
}

const LanguageDefinition* languageOf(bool coloured) {
    static LanguageTable table(u"/nowhere"_qs, shareFolder());
    if (table.entries().isEmpty())
        table.LoadLanguageIndex();
    return coloured ? table.definition(u"C++"_qs) : nullptr;
}

struct Shown {
    const std::unique_ptr<TextControl> controlOwner{makeEditor()};
    TextControl& control = *controlOwner;

    Shown(qint64 megabytes, bool coloured) {
        control.resize(1000, 700);
        control.lineNumbers().setLineNumbering(true);
        control.show();
        if (megabytes > 0)
            control.file().OpenFile(fileOf(megabytes));
        control.look().setLanguage(languageOf(coloured));
    }
    void paint() { benchmark::DoNotOptimize(control.grab()); }
    void goToMiddle() {
        const qint64 middle = control.heldText().length() / 2;
        control.setSelection(middle, middle);
    }
    /// Runs the event loop for three seconds, so that the colouring in idle time can finish.
    void settle() {
        QElapsedTimer time;
        for (time.start(); time.elapsed() < 3000;)
            QApplication::processEvents(QEventLoop::AllEvents, 20);
    }
};

void loadDefinitions(benchmark::State& state) {
    for (auto _ : state) {
        LanguageTable table(u"/nowhere"_qs, shareFolder());
        table.LoadLanguageIndex();
        if (table.loadedNames().isEmpty())
            state.SkipWithError("no language loaded");
    }
}

void firstPicture(benchmark::State& state) {
    const QString path = fileOf(state.range(0));
    const LanguageDefinition* language = languageOf(state.range(1) != 0);
    for (auto _ : state) {
        const std::unique_ptr<TextControl> controlOwner{makeEditor()};
        TextControl& control = *controlOwner;
        control.resize(1000, 700);
        control.file().OpenFile(path);
        control.look().setLanguage(language);
        benchmark::DoNotOptimize(control.grab());
    }
}

void typeKey(benchmark::State& state) {
    Shown shown(state.range(0), state.range(1) != 0);
    shown.goToMiddle();
    shown.paint();
    shown.settle();
    for (auto _ : state) {
        shown.control.typing().type(u"x"_qs);
        shown.paint();
    }
}

/// Types a character, and processes the events that follow before the next key can be handled.
void typeKeyAndRest(benchmark::State& state) {
    Shown shown(state.range(0), state.range(1) != 0);
    shown.goToMiddle();
    shown.paint();
    shown.settle();
    for (auto _ : state) {
        shown.control.typing().type(u"x"_qs);
        shown.control.grab();
        QApplication::processEvents();
    }
}

void jumpToMiddle(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        Shown shown(state.range(0), state.range(1) != 0);
        shown.paint();
        state.ResumeTiming();
        shown.goToMiddle();
        shown.paint();
    }
}

}  // namespace

BENCHMARK(loadDefinitions)->Unit(benchmark::kMillisecond);
BENCHMARK(firstPicture)->ArgNames({"MB", "coloured"})->ArgsProduct({{10}, {0, 1}})->Unit(benchmark::kMillisecond);
BENCHMARK(typeKey)
    ->ArgNames({"MB", "coloured"})
    ->Args({0, 0})
    ->Args({50, 0})
    ->Args({50, 1})
    ->Unit(benchmark::kMillisecond);
BENCHMARK(typeKeyAndRest)
    ->ArgNames({"MB", "coloured"})
    ->Args({0, 0})
    ->Args({50, 0})
    ->Args({50, 1})
    ->Unit(benchmark::kMillisecond);
BENCHMARK(jumpToMiddle)->ArgNames({"MB", "coloured"})->ArgsProduct({{50}, {0, 1}})->Unit(benchmark::kMillisecond);

int main(int count, char** arguments) {
    const QApplication application(count, arguments);
    benchmark::Initialize(&count, arguments);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
