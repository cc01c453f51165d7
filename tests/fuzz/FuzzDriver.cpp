// Runs a libFuzzer target without libFuzzer: every file of its corpus folder,
// then a seeded pass of mutated inputs (byte flips, inserts, deletes, splices
// of corpus entries, runs of one byte), stopped by an iteration count or a
// time bound. The same seed gives the same inputs, so a failure repeats.
// The input of the current run is written to $TMPDIR/<target>.last before it
// runs, so a crash leaves its input behind.

#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <random>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

namespace {

std::string readFile(const std::filesystem::path& p) {
    std::ifstream in(p, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {});
}

std::string mutate(std::mt19937& rng, const std::vector<std::string>& corpus, std::string s) {
    auto pick = [&](size_t n) { return n == 0 ? size_t{0} : static_cast<size_t>(rng() % n); };
    int steps = 1 + static_cast<int>(rng() % 4);
    for (int i = 0; i < steps; ++i) {
        switch (rng() % 7) {
        case 0:
            if (!s.empty()) s[pick(s.size())] ^= static_cast<char>(1u << (rng() % 8));
            break;
        case 1:
            s.insert(pick(s.size() + 1), 1, static_cast<char>(rng() % 256));
            break;
        case 2:
            if (!s.empty()) s.erase(pick(s.size()), 1 + pick(std::min<size_t>(s.size(), 8)));
            break;
        case 3:
            if (!corpus.empty()) {
                const std::string& other = corpus[pick(corpus.size())];
                size_t from = pick(other.size() + 1);
                s.insert(pick(s.size() + 1), other.substr(from, pick(64)));
            }
            break;
        case 4:
            s.insert(pick(s.size() + 1), pick(200), static_cast<char>(rng() % 256));
            break;
        case 5:
            if (!s.empty()) {
                static constexpr char kSyntax[] = "(){}[]|*+!#.,;:\"'=\\-0123456789 \r\n\t";
                s[pick(s.size())] = kSyntax[rng() % (sizeof kSyntax - 1)];
            }
            break;
        case 6:
            if (s.size() > 1) s.resize(pick(s.size()));
            break;
        }
    }
    return s;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::cerr << "usage: " << argv[0] << " CORPUS_DIR [--iterations N] [--seconds S] [--seed K]\n";
        return 2;
    }
    long iterations = 20000;
    double seconds = 20;
    unsigned seed = 12345;
    for (int i = 2; i + 1 < argc; i += 2) {
        if (!std::strcmp(argv[i], "--iterations")) iterations = std::atol(argv[i + 1]);
        else if (!std::strcmp(argv[i], "--seconds")) seconds = std::atof(argv[i + 1]);
        else if (!std::strcmp(argv[i], "--seed")) seed = static_cast<unsigned>(std::atol(argv[i + 1]));
    }
    if (const char* env = std::getenv("ZORFA_FUZZ_ITERATIONS")) iterations = std::atol(env);

    std::vector<std::string> corpus;
    std::error_code ec;
    if (std::filesystem::is_directory(argv[1], ec))
        for (const auto& e : std::filesystem::directory_iterator(argv[1]))
            if (e.is_regular_file()) corpus.push_back(readFile(e.path()));

    const char* tmp = std::getenv("TMPDIR");
    const std::string lastPath = std::string(tmp ? tmp : "/tmp") + "/" +
                                 std::filesystem::path(argv[0]).filename().string() + ".last";
    auto runOne = [&](const std::string& input) {
        if (FILE* f = std::fopen(lastPath.c_str(), "wb")) {
            std::fwrite(input.data(), 1, input.size(), f);
            std::fclose(f);
        }
        LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(input.data()), input.size());
    };

    for (const std::string& c : corpus) runOne(c);
    runOne(std::string());

    std::mt19937 rng(seed);
    const auto start = std::chrono::steady_clock::now();
    long done = 0;
    for (; done < iterations; ++done) {
        if ((done & 255) == 0 &&
            std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count() > seconds)
            break;
        std::string base = corpus.empty() ? std::string() : corpus[rng() % corpus.size()];
        runOne(mutate(rng, corpus, std::move(base)));
    }
    std::remove(lastPath.c_str());
    std::cout << corpus.size() << " corpus inputs and " << done << " mutated inputs ran without a crash\n";
    return 0;
}
