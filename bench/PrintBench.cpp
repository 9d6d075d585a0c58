// The cost of printing 100,000 lines of source into a PDF file: counting the pages, painting them, and the longest time
// between two looks at whether it was cancelled. Runs without a display with QT_QPA_PLATFORM=offscreen. As a yardstick
// the same text is printed by the library's own printer.

#include "editor/Editor.h"
#include "editor/control/ControlLineNumbers.h"
#include "editor/control/ControlLook.h"
#include "editor/control/TextControl.h"
#include "editor/print/PrintJob.h"
#include "lang/LanguageTable.h"
#include "platform/Folders.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QPdfWriter>
#include <QTemporaryDir>
#include <Qsci/qsciprinter.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <memory>

namespace {

constexpr int Lines = 100'000;

struct Text {
    LanguageTable table{u"/nowhere"_qs, shareFolder()};
    const std::unique_ptr<TextControl> controlOwner{makeEditor()};
    TextControl& control = *controlOwner;
    QTemporaryDir folder;

    Text() {
        QString text;
        const QString lines =
            u"/// What step %1 is for.\nstatic int step%1(const char* name) {\n"_qs
            u"\treturn name[%1] + 0x%1;\n}\n"_qs;
        for (int n = 0; n < Lines; n += 4)
            text += lines.arg(n);
        control.setText(text);
        control.lineNumbers().setLineNumbering(true);
        table.LoadLanguageIndex();
        control.look().setLanguage(table.definition(u"C++"_qs));
    }
    QString pdf() const { return folder.filePath(u"out.pdf"_qs); }
};

void printLines(benchmark::State& state) {
    const Text text;
    double counted = 0;
    double longest = 0;
    for (auto _ : state) {
        QPdfWriter device(text.pdf());
        device.setPageSize(QPageSize(QPageSize::A4));
        PrintJob job(text.control, device, {u"bench"_qs, {{0, text.control.heldText().length()}}, {}, {}});
        QElapsedTimer since;
        since.start();
        qint64 last = 0;
        job.run([&](const PrintProgress& progress) {
            const qint64 now = since.nsecsElapsed();
            if (progress.page <= 1)
                counted = static_cast<double>(now) / 1e6;
            longest = std::max(longest, static_cast<double>(now - last) / 1e6);
            last = now;
            return true;
        });
        state.counters["pages"] = job.pageCount();
    }
    state.counters["counted_ms"] = counted;
    state.counters["longest_ms"] = longest;
}

void printLinesByTheLibrary(benchmark::State& state) {
    const Text text;
    for (auto _ : state) {
        QsciPrinter printer(QPrinter::HighResolution);
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(text.pdf());
        printer.printRange(&text.control);
    }
}

BENCHMARK(printLines)->Unit(benchmark::kMillisecond)->Iterations(1)->UseRealTime();
BENCHMARK(printLinesByTheLibrary)->Unit(benchmark::kMillisecond)->Iterations(1)->UseRealTime();

}  // namespace

int main(int count, char** arguments) {
    const QApplication application(count, arguments);
    benchmark::Initialize(&count, arguments);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
