// The line store at the size the editor accepts: a ~50 MB file of
// 1,000,000 C-like lines. Load (from a block and from a file), save (the
// built block and the file), insert and delete at the top, and the real /
// on-screen conversions with a third of the lines hidden by folds.
// The side-by-side goal against cp and vim is checked by
// bench/linestore-vs-cp-vim.sh; this gives the parts.
#include <benchmark/benchmark.h>

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <ostream>
#include <streambuf>
#include <string>

#include "text/EasyStrings.h"

using namespace zorfa::text;

namespace {

constexpr int kLines = 1000000;

// Deterministic C-like lines of varied length, about 50 bytes with CR LF.
const std::string& SourceText() {
    static const std::string text = [] {
        const char* names[] = {"count", "buffer", "index", "length", "result", "node",
                               "value", "offset", "state", "cursor", "limit", "table"};
        std::string t;
        t.reserve(52u << 20);
        unsigned seed = 20241122;
        auto next = [&seed](unsigned n) {
            seed = seed * 1664525u + 1013904223u;
            return (seed >> 8) % n;
        };
        char line[256];
        for (int i = 0; i < kLines; ++i) {
            const unsigned depth = next(6);
            t.append(depth * 4, ' ');
            const char* a = names[next(12)];
            const char* b = names[next(12)];
            const unsigned k = next(100000);
            int n = 0;
            switch (next(6)) {
                case 0: n = std::snprintf(line, sizeof line, "if (%s > %u) { // %s must stay below %s", a, k, a, b); break;
                case 1: n = std::snprintf(line, sizeof line, "for (i = 0; i < %s; ++i) {", a); break;
                case 2: n = std::snprintf(line, sizeof line, "return %s + %u; /* see %s */", a, k, b); break;
                case 3: n = std::snprintf(line, sizeof line, "%s = %s(%s, %u);", a, b, a, k); break;
                case 4: n = 0; break;
                default: n = std::snprintf(line, sizeof line, "static void %s_%s(struct node *%s, int %s_%u);", a, b, a, b, k);
            }
            t.append(line, static_cast<size_t>(n));
            t += "\r\n";
        }
        return t;
    }();
    return text;
}

std::unique_ptr<char[]> CopyBlock(const std::string& text) {
    std::unique_ptr<char[]> block(new char[text.size()]);
    std::memcpy(block.get(), text.data(), text.size());
    return block;
}

std::string TempFile(const char* name) {
    const char* dir = std::getenv("TMPDIR");
    return std::string(dir && *dir ? dir : "/tmp") + "/zorfa-linestore-bench-" + std::to_string(::getpid()) + name;
}

const std::string& SourceFile() {
    static const std::string path = [] {
        const std::string p = TempFile(".c");
        std::FILE* f = std::fopen(p.c_str(), "wb");
        std::fwrite(SourceText().data(), 1, SourceText().size(), f);
        std::fclose(f);
        std::atexit([] { std::remove(TempFile(".c").c_str()); });
        return p;
    }();
    return path;
}

class NullBuffer : public std::streambuf {
protected:
    std::streamsize xsputn(const char*, std::streamsize n) override { return n; }
    int overflow(int c) override { return c; }
};

void BM_LoadFromBlock(benchmark::State& state) {
    const std::string& text = SourceText();
    for (auto _ : state) {
        state.PauseTiming();
        auto block = CopyBlock(text);
        auto strings = std::make_unique<TEasyStrings>();
        state.ResumeTiming();
        strings->LoadFromBlock(std::move(block), text.size());
        benchmark::DoNotOptimize(strings->Count());
        state.PauseTiming();
        strings.reset();
        state.ResumeTiming();
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(text.size()));
}
BENCHMARK(BM_LoadFromBlock)->Unit(benchmark::kMillisecond);

void BM_LoadFromFile(benchmark::State& state) {
    const std::string& path = SourceFile();
    for (auto _ : state) {
        TEasyStrings strings;
        strings.LoadFromFile(path);
        benchmark::DoNotOptimize(strings.Count());
        state.PauseTiming();  // freeing is not loading
        strings.Clear();
        state.ResumeTiming();
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(SourceText().size()));
}
BENCHMARK(BM_LoadFromFile)->Unit(benchmark::kMillisecond);

void BM_SaveToStream(benchmark::State& state) {
    TEasyStrings strings;
    strings.LoadFromBuffer(SourceText());
    NullBuffer null;
    std::ostream out(&null);
    for (auto _ : state) strings.SaveToStream(out);  // builds the block, writes nowhere
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(SourceText().size()));
}
BENCHMARK(BM_SaveToStream)->Unit(benchmark::kMillisecond);

void BM_SaveToStreamWithLf(benchmark::State& state) {
    // Another break than the loaded one: every line is copied by itself.
    TEasyStrings strings;
    strings.LoadFromBuffer(SourceText());
    strings.LineBreak = lbLF;
    NullBuffer null;
    std::ostream out(&null);
    for (auto _ : state) strings.SaveToStream(out);
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(SourceText().size()));
}
BENCHMARK(BM_SaveToStreamWithLf)->Unit(benchmark::kMillisecond);

void BM_SaveToFile(benchmark::State& state) {
    TEasyStrings strings;
    strings.LoadFromBuffer(SourceText());
    const std::string out = TempFile(".out");
    for (auto _ : state) strings.SaveToFile(out);
    std::remove(out.c_str());
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(SourceText().size()));
}
BENCHMARK(BM_SaveToFile)->Unit(benchmark::kMillisecond);

void BM_InsertDeleteAtTop(benchmark::State& state) {
    TEasyStrings strings;
    strings.LoadFromBuffer(SourceText());
    strings.SetUseVisibleLines(state.range(0) != 0);
    if (state.range(0))  // every third line hidden: 333,333 entries to shift
        for (int i = 1; i < strings.Count(); i += 3) strings.SetHidden(i, true);
    for (auto _ : state) {
        strings.Insert(0, "int inserted_at_the_top;");
        strings.Delete(0);
    }
    state.SetLabel(state.range(0) ? "1/3 hidden" : "no folds");
}
BENCHMARK(BM_InsertDeleteAtTop)->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond);

TEasyStrings& FoldedStore() {
    // Runs of hidden lines of length 1..20 between visible runs: 1/3 hidden.
    static TEasyStrings* strings = [] {
        auto* s = new TEasyStrings;
        s->LoadFromBuffer(SourceText());
        s->SetUseVisibleLines(true);
        unsigned seed = 7;
        for (int i = 0; i < s->Count();) {
            seed = seed * 1664525u + 1013904223u;
            const int visible = 2 + static_cast<int>((seed >> 8) % 40);
            const int hidden = 1 + static_cast<int>((seed >> 16) % 20);
            i += visible;
            for (int k = i; k < i + hidden && k < s->Count(); ++k) s->SetHidden(k, true);
            i += hidden;
        }
        return s;
    }();
    return *strings;
}

void BM_RealToVisible(benchmark::State& state) {
    TEasyStrings& strings = FoldedStore();
    unsigned seed = 1;
    for (auto _ : state) {
        seed = seed * 1664525u + 1013904223u;
        benchmark::DoNotOptimize(strings.RealToVisible(static_cast<int>(seed % kLines)));
    }
    state.SetLabel(std::to_string(strings.HiddenCount()) + " hidden");
}
BENCHMARK(BM_RealToVisible);

void BM_VisibleToReal(benchmark::State& state) {
    TEasyStrings& strings = FoldedStore();
    const unsigned visible = static_cast<unsigned>(strings.Count() - strings.HiddenCount());
    unsigned seed = 1;
    for (auto _ : state) {
        seed = seed * 1664525u + 1013904223u;
        benchmark::DoNotOptimize(strings.VisibleToReal(static_cast<int>(seed % visible)));
    }
    state.SetLabel(std::to_string(strings.HiddenCount()) + " hidden");
}
BENCHMARK(BM_VisibleToReal);

}  // namespace
