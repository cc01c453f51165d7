// Scanner throughput: 50 MB of generated C-like code (identifiers, a few
// hundred keywords, numbers, strings, character literals, line comments,
// multi-line block comments, preprocessor lines), scanned line by line with
// the state carried from line to line, as the edit source does.
#include <benchmark/benchmark.h>

#include <random>
#include <string>
#include <vector>

#include "syntax/EasyParser.h"

namespace {

const char* const kKeywords[] = {
    "alignas", "alignof", "asm", "auto", "bool", "break", "case", "catch", "char", "class", "const",
    "constexpr", "const_cast", "continue", "decltype", "default", "delete", "do", "double",
    "dynamic_cast", "else", "enum", "explicit", "export", "extern", "false", "float", "for", "friend",
    "goto", "if", "inline", "int", "long", "mutable", "namespace", "new", "noexcept", "nullptr",
    "operator", "private", "protected", "public", "register", "reinterpret_cast", "return", "short",
    "signed", "sizeof", "static", "static_assert", "static_cast", "struct", "switch", "template", "this",
    "thread_local", "throw", "true", "try", "typedef", "typeid", "typename", "union", "unsigned", "using",
    "virtual", "void", "volatile", "wchar_t", "while", "override", "final"};

std::string makeScheme(std::vector<std::string>& words) {
    std::string s =
        "State=snormal,CaseSensitive\nState=sstring,CaseSensitive\nState=schar,CaseSensitive\n"
        "State=scomment,CaseSensitive\nState=slinecomment,CaseSensitive\nState=sdirective,CaseSensitive\n"
        "Token=tnone\nToken=tstring\nToken=tcomment\nToken=tident\nToken=tinteger\nToken=tfloat\n"
        "Token=tresword\nToken=tresword1\nToken=tdirective\n"
        "snormal [a-z_A-Z][a-z_A-Z0-9]* snormal tident\n"
        "snormal [0-9]+[uUlL]* snormal tinteger\n"
        "snormal 0[xX][0-9a-fA-F]+[uUlL]* snormal tinteger\n"
        "snormal [0-9]+\\.[0-9]*{[eE][+\\-]|[0-9]+}|[fFlL]| snormal tfloat\n"
        "snormal \" sstring tstring\n"
        "sstring [^\"\\\\]+ sstring tstring\n"
        "sstring \\\\. sstring tstring\n"
        "sstring \" snormal tstring\n"
        "sstring $ snormal tstring\n"
        "snormal \\' schar tstring\n"
        "schar [^\\'\\\\]+ schar tstring\n"
        "schar \\\\. schar tstring\n"
        "schar \\' snormal tstring\n"
        "schar $ snormal tstring\n"
        "snormal // slinecomment tcomment\n"
        "slinecomment [#1-#255]* snormal tcomment\n"
        "slinecomment $ snormal tcomment\n"
        "snormal /\\* scomment tcomment\n"
        "scomment [^\\*]+ scomment tcomment\n"
        "scomment \\* scomment tcomment\n"
        "scomment \\*+/ snormal tcomment\n"
        "snormal ^[#32#9]*\\#[a-z]* sdirective tdirective\n"
        "sdirective [#1-#255]* snormal tdirective\n";
    for (const char* k : kKeywords) {
        s += std::string("snormal '") + k + "' snormal tresword\n";
        words.push_back(k);
    }
    // Library names to bring the keyword count to a few hundred.
    const char* const stems[] = {"Get", "Set", "Create", "Free", "Load", "Save", "Find", "Make"};
    const char* const objects[] = {"Window", "Buffer", "String", "Handle", "Item", "List", "Node", "Record",
                                   "Stream", "Table", "Value", "Rect", "Font", "Color", "Brush", "Pen",
                                   "Path", "File", "Text", "Key", "Menu", "Icon", "Image", "Region", "Timer"};
    for (const char* st : stems)
        for (const char* ob : objects) {
            std::string w = std::string(st) + ob;
            s += "snormal '" + w + "' snormal tresword1\n";
            words.push_back(w);
        }
    return s;
}

std::vector<std::string> makeText(const std::vector<std::string>& keywords, size_t bytes) {
    std::mt19937 rng(42);
    auto pick = [&](size_t n) { return static_cast<size_t>(rng() % n); };
    const char* const idents[] = {"count", "index", "buffer", "result", "value", "node", "left", "right",
                                  "length", "offset", "data", "flags", "state", "position", "item_count",
                                  "m_width", "height", "xCoord", "yCoord", "total2"};
    const char* const ops[] = {" = ", " + ", " - ", " * ", " / ", " == ", " != ", " < ", " && ", "->", ".", ", "};
    std::vector<std::string> lines;
    size_t total = 0;
    int depth = 1;
    while (total < bytes) {
        std::string line(static_cast<size_t>(depth) * 4, ' ');
        const size_t kind = pick(100);
        if (kind < 3) {
            line = "#include <" + std::string(idents[pick(20)]) + ".h>";
        } else if (kind < 8) {
            line += "// " + std::string(idents[pick(20)]) + " is " + idents[pick(20)] + " when the " +
                    idents[pick(20)] + " changes, see below";
        } else if (kind < 10) {
            // A block comment over several lines.
            lines.push_back(line + "/* " + idents[pick(20)] + " of the " + idents[pick(20)]);
            total += lines.back().size() + 1;
            for (size_t k = 0, n = 1 + pick(4); k < n; ++k) {
                lines.push_back(std::string(static_cast<size_t>(depth) * 4, ' ') + " * keeps the " +
                                idents[pick(20)] + " and " + idents[pick(20)] + " in step");
                total += lines.back().size() + 1;
            }
            line += " */";
        } else if (kind < 14) {
            line += keywords[pick(keywords.size())] + std::string(" (") + idents[pick(20)] + ")";
            lines.push_back(line);
            total += line.size() + 1;
            line = std::string(static_cast<size_t>(depth) * 4, ' ') + "{";
            if (depth < 6) ++depth;
        } else if (kind < 18 && depth > 1) {
            --depth;
            line = std::string(static_cast<size_t>(depth) * 4, ' ') + "}";
        } else {
            const size_t terms = 2 + pick(6);
            line += keywords[pick(keywords.size())] + std::string(" ");
            for (size_t t = 0; t < terms; ++t) {
                switch (pick(7)) {
                case 0: line += std::to_string(rng() % 100000); break;
                case 1: line += "\"" + std::string(idents[pick(20)]) + " %d\\n\""; break;
                case 2: line += std::to_string(rng() % 1000) + "." + std::to_string(rng() % 100) + "f"; break;
                case 3: line += "'x'"; break;
                case 4: line += keywords[pick(keywords.size())]; break;
                default: line += idents[pick(20)]; break;
                }
                line += t + 1 < terms ? ops[pick(12)] : ";";
            }
            if (pick(6) == 0) line += "  // " + std::string(idents[pick(20)]);
        }
        total += line.size() + 1;
        lines.push_back(std::move(line));
    }
    return lines;
}

void BM_ScanCLike50MB(benchmark::State& bench) {
    std::vector<std::string> keywords;
    zorfa::TEasyParser parser;
    parser.SetRulesText(makeScheme(keywords));
    static const std::vector<std::string> lines = makeText(keywords, 50u << 20);
    size_t bytes = 0;
    for (const std::string& l : lines) bytes += l.size() + 1;
    long tokens = 0;
    for (auto _ : bench) {
        int state = 0;
        for (const std::string& l : lines) state = parser.ScanLine(state, l, [&](const zorfa::TEasyTokenPiece&) { ++tokens; });
        benchmark::DoNotOptimize(state);
    }
    bench.SetBytesProcessed(static_cast<int64_t>(bytes) * bench.iterations());
    bench.counters["tokens/line"] =
        benchmark::Counter(static_cast<double>(tokens) / static_cast<double>(lines.size() * bench.iterations()));
}
BENCHMARK(BM_ScanCLike50MB)->Unit(benchmark::kMillisecond)->Iterations(3);

}  // namespace
