// Times of the editing control that a user notices: loading, the first frame, a key press, a caret step, saving, and
// commands that change all lines of a text. Runs without a display with QT_QPA_PLATFORM=offscreen; the results are
// wall-clock times.

#include "document/DocumentServices.h"
#include "document/EditorGlobals.h"
#include "document/rtCM.h"
#include "editor/Editor.h"
#include "editor/control/ControlFile.h"
#include "editor/control/ControlLineNumbers.h"
#include "editor/control/ControlReplace.h"
#include "editor/control/ControlSearch.h"
#include "editor/control/ControlTyping.h"
#include "editor/control/TextControl.h"
#include "hex/bytes/HexFindState.h"
#include "settings/Options.h"
#include "settings/registry/MemoryRegistry.h"
#include "text/lines/LineOperations.h"
#include "text/search/MatchList.h"
#include "widgets/QtPrompts.h"

#include <QApplication>
#include <QFile>
#include <QPixmap>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <memory>
#include <random>
#include <string>

namespace {

constexpr qint64 Megabyte = 1'000'000;

/// About one megabyte of text that looks like source code, 60 bytes per line; with a space as `lineEnd` it is a single
/// line.
std::string block(char lineEnd, const std::string& word) {
    std::string text;
    for (int line = 0; static_cast<qint64>(text.size()) < Megabyte; ++line) {
        std::string row = "    const auto value" + std::to_string(line % 977) + " = " + word + "(index, size);";
        row.resize(59, ' ');
        text += row + lineEnd;
    }
    return text;
}

/// Test files in a temporary folder. Each file is created once; the folder is deleted when the program ends.
class Files {
 public:
    QString path(qint64 megabytes, char lineEnd, const std::string& word = "compute") {
        const QString name =
            u"%1-%2-%3.txt"_qs.arg(megabytes).arg(static_cast<int>(lineEnd)).arg(QString::fromStdString(word));
        QString path = m_folder.filePath(name);
        if (!QFile::exists(path)) {
            QFile file(path);
            const std::string text = block(lineEnd, word);
            if (file.open(QIODevice::WriteOnly)) {
                for (qint64 written = 0; written < megabytes * Megabyte; written += static_cast<qint64>(text.size()))
                    file.write(text.data(), static_cast<qint64>(text.size()));
            }
        }
        return path;
    }
    QString target() const { return m_folder.filePath(u"saved.txt"_qs); }

 private:
    QTemporaryDir m_folder;
};

Files& files() {
    static Files made;
    return made;
}

struct Shown {
    const std::unique_ptr<TextControl> controlOwner{makeEditor()};
    TextControl& control = *controlOwner;
    Shown(qint64 megabytes, char lineEnd, const std::string& word = "compute") {
        control.resize(1000, 700);
        control.lineNumbers().setLineNumbering(true);
        control.show();
        if (megabytes > 0)
            control.file().OpenFile(files().path(megabytes, lineEnd, word));
    }
    void paint() { benchmark::DoNotOptimize(control.grab()); }
};

void load(benchmark::State& state, qint64 megabytes, char lineEnd, const std::string& word) {
    const QString path = files().path(megabytes, lineEnd, word);
    for (auto _ : state) {
        const std::unique_ptr<TextControl> controlOwner{makeEditor()};
        TextControl& control = *controlOwner;
        control.resize(1000, 700);
        control.file().OpenFile(path);
        benchmark::DoNotOptimize(control.grab());
    }
}

/// Types a character in the middle of the text, and paints.
void typeKey(benchmark::State& state, qint64 megabytes, char lineEnd, const std::string& word) {
    Shown shown(megabytes, lineEnd, word);
    shown.control.setSelection(megabytes * Megabyte / 2, megabytes * Megabyte / 2);
    shown.control.typing().type(u"x"_qs);
    shown.paint();
    for (auto _ : state) {
        shown.control.typing().type(u"x"_qs);
        shown.paint();
    }
}

/// Moves the caret one step, and queries what the status bar shows.
void step(benchmark::State& state, qint64 megabytes, char lineEnd, const std::string& word) {
    Shown shown(megabytes, lineEnd, word);
    shown.control.setSelection(megabytes * Megabyte / 2, megabytes * Megabyte / 2);
    for (auto _ : state) {
        shown.control.runCommand(QsciScintillaBase::SCI_CHARRIGHT);
        benchmark::DoNotOptimize(shown.control.SelStart() + shown.control.CurrentLine() +
                                 shown.control.CurrentColumn());
    }
}

void pageDown(benchmark::State& state, qint64 megabytes, char lineEnd) {
    Shown shown(megabytes, lineEnd);
    for (auto _ : state) {
        shown.control.runCommand(QsciScintillaBase::SCI_PAGEDOWN);
        shown.paint();
    }
}

void goToEnd(benchmark::State& state, qint64 megabytes, char lineEnd, const std::string& word) {
    Shown shown(megabytes, lineEnd, word);
    bool atEnd = false;
    for (auto _ : state) {
        shown.control.runCommand(atEnd ? QsciScintillaBase::SCI_DOCUMENTSTART : QsciScintillaBase::SCI_DOCUMENTEND);
        shown.paint();
        benchmark::DoNotOptimize(shown.control.SelStart());
        atEnd = !atEnd;
    }
}

/// `count` lines of 20 to 90 random letters, each with two spaces at its end. For a million lines, the file named in
/// the environment variable QUILLMARK_LINES is used instead, if there is one.
QString unorderedLines(qint64 count) {
    QFile file(qEnvironmentVariable("QUILLMARK_LINES"));
    if (count == 1'000'000 && !file.fileName().isEmpty() && file.open(QIODevice::ReadOnly))
        return QString::fromUtf8(file.readAll());
    std::mt19937 random(1);
    QString text;
    for (qint64 line = 0; line < count; ++line) {
        for (auto left = 20 + random() % 71; left > 0; --left)
            text += QChar(u'a' + static_cast<char16_t>(random() % 26));
        text += u"  \n"_qs;
    }
    return text;
}

/// Restores the text in each round; the time for that is not measured.
template <typename Act>
void onAllLines(benchmark::State& state, TextControl& control, Act act) {
    control.setText(unorderedLines(state.range(0)));
    for (auto _ : state) {
        state.PauseTiming();
        control.SelectAll();
        state.ResumeTiming();
        act();
        state.PauseTiming();
        control.Undo();
        state.ResumeTiming();
    }
    state.SetComplexityN(state.range(0));
}

void sortLines(benchmark::State& state) {
    Shown shown(0, '\n');
    onAllLines(state, shown.control, [&] { shown.control.ExecuteCmd(253); });
}

void indentLines(benchmark::State& state) {
    Shown shown(0, '\n');
    onAllLines(state, shown.control, [&] { shown.control.ExecuteCmd(163); });
}

void trimLines(benchmark::State& state) {
    QtPrompts prompts;
    const Options options;
    MemoryRegistry registry;
    EditorGlobals globals(prompts, registry, {}, {});
    HexFindState hexFind;
    rtCM view({prompts, options, globals, hexFind});
    view.resize(1000, 700);
    view.show();
    onAllLines(state, view.control(), [&] { view.changeSelected(&LineOperations::TrimTailed); });
}

void save(benchmark::State& state, qint64 megabytes, char lineEnd) {
    Shown shown(megabytes, lineEnd);
    for (auto _ : state)
        shown.control.file().SaveFile(files().target(), SaveFlags::AsLoaded);
}

/// Finds all matches (one per line) and builds their list.
void findAll(benchmark::State& state, qint64 megabytes, char lineEnd, const std::string& word) {
    Shown shown(megabytes, lineEnd, word);
    shown.control.setSearchCaseSensitive(true);
    shown.control.search().setSearchText(QString::fromStdString(word));
    for (auto _ : state) {
        MatchList list;
        shown.control.search().findAll([&](const MatchPlace& match) {
            list.add(match.line, match.position, match.length);
            return true;
        });
        benchmark::DoNotOptimize(list.text());
    }
}

/// The same with grep, for comparison.
void grep(benchmark::State& state, qint64 megabytes, char lineEnd, const std::string& word) {
    const QString path = files().path(megabytes, lineEnd, word);
    const std::string command = "grep -o " + word + " " + path.toStdString() + " | wc -l > /dev/null";
    for (auto _ : state)
        benchmark::DoNotOptimize(std::system(command.c_str()));
}

/// Replaces all matches, or undoes the replacement: about a million matches in 60 MB.
void replaceAll(benchmark::State& state, qint64 megabytes, char lineEnd, const std::string& word, bool undoes) {
    Shown shown(megabytes, lineEnd, word);
    shown.control.setSearchCaseSensitive(true);
    shown.control.search().setSearchText(QString::fromStdString(word));
    shown.control.search().setReplacementText(u"calculate"_qs);
    for (auto _ : state) {
        if (undoes)
            state.PauseTiming();
        shown.control.replacing().replaceAll();
        if (undoes)
            state.ResumeTiming();
        else
            state.PauseTiming();
        shown.control.Undo();
        if (!undoes)
            state.ResumeTiming();
    }
}

void sed(benchmark::State& state, qint64 megabytes, char lineEnd, const std::string& word) {
    const QString path = files().path(megabytes, lineEnd, word);
    const std::string command =
        "sed s/" + word + "/calculate/g " + path.toStdString() + " > " + files().target().toStdString();
    for (auto _ : state)
        benchmark::DoNotOptimize(std::system(command.c_str()));
}

}  // namespace

#define QUILLMARK_BENCH(...) BENCHMARK_CAPTURE(__VA_ARGS__)->Unit(benchmark::kMillisecond)->UseRealTime()

QUILLMARK_BENCH(load, lines_100MB, 100, '\n', "compute");
QUILLMARK_BENCH(load, lines_not_ascii_100MB, 100, '\n', "größe");
QUILLMARK_BENCH(load, lines_1GB, 1000, '\n', "compute")->Iterations(3);
QUILLMARK_BENCH(load, one_line_100MB, 100, ' ', "compute");
QUILLMARK_BENCH(typeKey, empty, 0, '\n', "compute");
QUILLMARK_BENCH(typeKey, lines_1GB, 1000, '\n', "compute");
QUILLMARK_BENCH(typeKey, one_line_100MB, 100, ' ', "compute");
QUILLMARK_BENCH(typeKey, lines_not_ascii_100MB, 100, '\n', "größe");
QUILLMARK_BENCH(step, empty, 0, '\n', "compute");
QUILLMARK_BENCH(step, lines_1GB, 1000, '\n', "compute");
QUILLMARK_BENCH(step, one_line_100MB, 100, ' ', "compute");
QUILLMARK_BENCH(step, lines_not_ascii_100MB, 100, '\n', "größe");
QUILLMARK_BENCH(pageDown, lines_1GB, 1000, '\n');
QUILLMARK_BENCH(pageDown, one_line_100MB, 100, ' ');
QUILLMARK_BENCH(goToEnd, lines_1GB, 1000, '\n', "compute");
QUILLMARK_BENCH(goToEnd, one_line_100MB, 100, ' ', "compute");
QUILLMARK_BENCH(goToEnd, lines_not_ascii_100MB, 100, '\n', "größe");
BENCHMARK(sortLines)->Arg(1'000'000)->Unit(benchmark::kMillisecond)->UseRealTime()->MinTime(2);
BENCHMARK(indentLines)->Arg(1'000'000)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(trimLines)->Arg(250'000)->Arg(500'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond)->UseRealTime();
QUILLMARK_BENCH(save, lines_1GB, 1000, '\n')->Iterations(3);
QUILLMARK_BENCH(save, one_line_100MB, 100, ' ');
QUILLMARK_BENCH(findAll, lines_20MB, 20, '\n', "compute");
QUILLMARK_BENCH(findAll, lines_200MB, 200, '\n', "compute");
QUILLMARK_BENCH(findAll, lines_not_ascii_200MB, 200, '\n', "größe");
QUILLMARK_BENCH(findAll, one_line_100MB, 100, ' ', "compute");
QUILLMARK_BENCH(grep, lines_200MB, 200, '\n', "compute");
QUILLMARK_BENCH(replaceAll, lines_60MB, 60, '\n', "compute", false)->Iterations(3);
QUILLMARK_BENCH(replaceAll, lines_not_ascii_60MB, 60, '\n', "größe", false)->Iterations(3);
QUILLMARK_BENCH(replaceAll, one_line_60MB, 60, ' ', "compute", false)->Iterations(3);
QUILLMARK_BENCH(replaceAll, undone_one_line_60MB, 60, ' ', "compute", true)->Iterations(3);
QUILLMARK_BENCH(sed, lines_60MB, 60, '\n', "compute")->Iterations(3);

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
