// Fuzz target for the line store's reader and writer: loads the
// input as a text file, checks the lines against a byte-by-byte split (CR,
// LF, CR LF; LF CR two breaks; end at the first NUL; no empty line for a
// final break), saves with each break and reloads to the same lines, then
// runs edits and fold calls steered by the input and checks the visible-lines
// list and the conversions against a brute-force count. No exception may
// escape; any mismatch aborts.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "text/EasyStrings.h"
#include "../text/ReferenceLineSplit.h"

using namespace zorfa::text;

namespace {

void Check(bool ok) {
    if (!ok) std::abort();
}

void CheckLines(const TEasyStrings& s, const std::vector<std::string>& expect) {
    Check(s.Count() == static_cast<int>(expect.size()));
    for (int i = 0; i < s.Count(); ++i) Check(s.GetRawLine(i) == expect[static_cast<size_t>(i)]);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const std::vector<std::string> expect = zorfa::test::referenceLineSplit(bytes);
    TEasyStrings s;
    s.LoadFromBuffer(bytes);
    CheckLines(s, expect);
    for (TEasyLineBreak brk : {lbCRLF, lbCR, lbLF}) {
        s.LineBreak = brk;
        const std::string saved = s.SaveToBuffer();
        TEasyStrings again;
        again.LoadFromBuffer(saved);
        CheckLines(again, expect);
    }

    // Edits and folds steered by the input's bytes.
    s.SetUseVisibleLines(true);
    for (size_t i = 0; i + 1 < size && i < 512; i += 2) {
        const int count = s.Count();
        const int at = count ? data[i + 1] % (count + 1) : 0;
        switch (data[i] % 9) {
            case 0: if (s.IsLineVisible(at)) s.Insert(at, bytes.substr(i, data[i] % 7)); break;
            case 1: s.Delete(at); break;
            case 2: s.SetHidden(at, data[i] & 16); break;
            case 3: s.SetCollapsed(at, true); break;
            case 4: s.SetExpanded(at, true); break;
            case 5:
                if (TEasyStringRec* r = s.Record(at)) r->FoldLevel = static_cast<std::uint8_t>(data[i] % 4);
                s.SetFoldChild(at, data[i] & 32);
                break;
            case 6: s.ExpandParents(at); break;
            case 7: s.Exchange(at, data[i] % (count + 1)); break;
            default: s.Put(at, bytes.substr(i, 3));
        }
        // The list is exactly the hidden records, sorted.
        std::vector<int> hidden;
        for (int k = 0; k < s.Count(); ++k)
            if (s.Record(k)->Hidden) hidden.push_back(k);
        Check(s.HiddenCount() == static_cast<int>(hidden.size()));
        for (size_t k = 0; k < hidden.size(); ++k) Check(s.VisibleLines().Get(static_cast<int>(k)) == hidden[k]);
        // Conversions against counting.
        for (int line = 0; line <= s.Count(); ++line) {
            int before = 0;
            for (int h : hidden) before += h < line;
            Check(s.RealToVisible(line) == (hidden.empty() ? line : line - before));
            if (!s.Record(line) || s.Record(line)->Hidden) continue;
            Check(s.VisibleToReal(s.RealToVisible(line)) == line);
        }
    }
    return 0;
}
