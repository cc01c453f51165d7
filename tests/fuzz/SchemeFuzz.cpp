// Fuzz target for the scheme compiler and scanner: compiles the input as a
// scheme, then scans the scheme's own lines with it, carrying the state from
// line to line. Every NextToken must make progress, and a line scanned again
// from the same begin state must give the same end state.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

#include "base/Errors.h"
#include "syntax/EasyParser.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    zorfa::TEasyParser parser;
    try {
        parser.SetRulesText(text);
    } catch (const zorfa::Exception&) {
        // A bad mask stops the compile; what was built so far still scans.
    }
    int state = 0;
    int lines = 0;
    for (const std::string& line : parser.Rules()) {
        if (++lines > 40) break;
        const int begin = state;
        int position = 1;
        while (position <= static_cast<int>(line.size())) {
            const int before = position;
            parser.NextToken(state, line, position);
            if (position <= before) std::abort();
        }
        int again = begin;
        position = 1;
        while (position <= static_cast<int>(line.size())) parser.NextToken(again, line, position);
        if (again != state) std::abort();
    }
    return 0;
}
