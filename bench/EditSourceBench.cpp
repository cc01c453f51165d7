// Editing a 1,000,000-line document through the edit source: a line inserted
// at the top, deleted, and both undone; the whole text deleted and undone; a
// multi-line paste into the middle and its undo. A view is attached that
// re-parses what it shows after every update (ParseTo of its top line plus
// 100), a parser is set, and bookmarks and line marks are spread over the
// text, as in a real editor. Each benchmark times only the operation named;
// the untimed step puts the document back. The time is the thread's CPU time
// (engine time), so other work on a shared machine does not inflate it.

#include <benchmark/benchmark.h>

#include <time.h>

#include <memory>
#include <string>

#include "text/EasyEditSource.h"

namespace {

using namespace zorfa;
using namespace zorfa::text;

constexpr int kLines = 1000000;

// Plain text with "{ ... }" comments that may span lines.
class BenchParser : public TCustomEasyParser {
public:
    int NextToken(int& state, std::string_view line, int& position) override {
        const size_t i = static_cast<size_t>(position - 1);
        const char want = state == 1 ? '}' : '{';
        const size_t hit = line.find(want, i);
        const int token = state;
        if (hit == std::string_view::npos) {
            position = static_cast<int>(line.size()) + 1;
        } else {
            position = static_cast<int>(hit) + 2;
            state = 1 - state;
        }
        return token;
    }
    void GetTokenStyle(int, TColor& c, TFontStyles& s) override {
        c = -1;
        s = 0;
    }
    TColor GetTokenBackground(int) override { return -1; }
    TColor GetDefaultBackground() override { return -1; }
    int GetTokenCount() override { return 2; }
};

class TopView : public IEasySourceListener {
public:
    void SourceChanged(TCustomEasyEditSource& source, TEasySourceNotify* notify) override {
        if (!notify) source.ParseTo(100);
    }
};

struct Document {
    TEasyEditSource source;
    BenchParser parser;
    TopView view;

    Document() {
        std::string text;
        text.reserve(static_cast<size_t>(kLines) * 40);
        for (int i = 0; i < kLines; ++i) {
            text += "    line ";
            text += std::to_string(i);
            text += i % 1000 == 0 ? " { comment starts\n" : i % 1000 == 3 ? " comment ends }\n" : " some text here\n";
        }
        source.Lines().SetText(text);
        source.SetParser(&parser);
        source.Attach(&view);
        source.ParseTo(100);
        for (int i = 0; i < 10; ++i) source.SetBookmark(i, {4, i * 99991});
        for (int i = 0; i < 1000; ++i) source.LineMarks().AddMark({0, i * 997}, i);
    }
};

Document& Doc() {
    static Document* document = new Document();
    return *document;
}

double ThreadSeconds() {
    timespec t;
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t);
    return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_nsec) * 1e-9;
}

template <class Op>
double Seconds(Op op) {
    const double start = ThreadSeconds();
    op();
    return ThreadSeconds() - start;
}

void DeleteTopLine(TEasyEditSource& s) { s.DeleteBlock({0, 0}, {0, 1}); }

void BM_InsertLineAtTop(benchmark::State& state) {
    TEasyEditSource& s = Doc().source;
    for (auto _ : state) {
        state.SetIterationTime(Seconds([&] { s.InsertLine(0, "a new first line"); }));
        s.Undo();
    }
    state.counters["lines"] = s.LineCount();
}

void BM_DeleteLineAtTop(benchmark::State& state) {
    TEasyEditSource& s = Doc().source;
    for (auto _ : state) {
        state.SetIterationTime(Seconds([&] { DeleteTopLine(s); }));
        s.Undo();
    }
    state.counters["lines"] = s.LineCount();
}

void BM_UndoInsertLineAtTop(benchmark::State& state) {
    TEasyEditSource& s = Doc().source;
    for (auto _ : state) {
        s.InsertLine(0, "a new first line");
        state.SetIterationTime(Seconds([&] { s.Undo(); }));
    }
}

void BM_UndoDeleteLineAtTop(benchmark::State& state) {
    TEasyEditSource& s = Doc().source;
    for (auto _ : state) {
        DeleteTopLine(s);
        state.SetIterationTime(Seconds([&] { s.Undo(); }));
    }
}

void DeleteAll(TEasyEditSource& s) {
    const int last = s.LineCount() - 1;
    s.DeleteBlock({0, 0}, {static_cast<int>(s.Lines().GetRawLine(last).size()), last});
}

void BM_SelectAllDelete(benchmark::State& state) {
    TEasyEditSource& s = Doc().source;
    for (auto _ : state) {
        state.SetIterationTime(Seconds([&] { DeleteAll(s); }));
        s.Undo();
    }
    state.counters["lines"] = s.LineCount();
}

void BM_UndoSelectAllDelete(benchmark::State& state) {
    TEasyEditSource& s = Doc().source;
    for (auto _ : state) {
        DeleteAll(s);
        state.SetIterationTime(Seconds([&] { s.Undo(); }));
    }
    state.counters["lines"] = s.LineCount();
}

const std::string& PasteText() {
    static const std::string text = [] {
        std::string t;
        for (int i = 0; i < kLines; ++i) t += "pasted line " + std::to_string(i) + "\r\n";
        return t;
    }();
    return text;
}

void BM_PasteMillionLinesInTheMiddle(benchmark::State& state) {
    TEasyEditSource& s = Doc().source;
    const std::string& text = PasteText();
    for (auto _ : state) {
        s.MoveCaretTo(2, kLines / 2);
        state.SetIterationTime(Seconds([&] { s.InsertBlock(text); }));
        s.Undo();
        s.Undo();
    }
    state.counters["lines"] = s.LineCount();
}

void BM_UndoPasteMillionLines(benchmark::State& state) {
    TEasyEditSource& s = Doc().source;
    const std::string& text = PasteText();
    for (auto _ : state) {
        s.MoveCaretTo(2, kLines / 2);
        s.InsertBlock(text);
        state.SetIterationTime(Seconds([&] { s.Undo(); }));
        s.Undo();
    }
}

}  // namespace

BENCHMARK(BM_InsertLineAtTop)->UseManualTime()->Unit(benchmark::kMicrosecond)->Iterations(200);
BENCHMARK(BM_DeleteLineAtTop)->UseManualTime()->Unit(benchmark::kMicrosecond)->Iterations(200);
BENCHMARK(BM_UndoInsertLineAtTop)->UseManualTime()->Unit(benchmark::kMicrosecond)->Iterations(200);
BENCHMARK(BM_UndoDeleteLineAtTop)->UseManualTime()->Unit(benchmark::kMicrosecond)->Iterations(200);
BENCHMARK(BM_SelectAllDelete)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_UndoSelectAllDelete)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_PasteMillionLinesInTheMiddle)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_UndoPasteMillionLines)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(3);
