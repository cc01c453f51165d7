// Fuzz target for the mask dialect: compiles the input's mask (case flag
// from the first byte), then matches it anchored at every position of the
// text and searches the text forward and backward. Compile errors are the
// expected zorfa::Exception; anything else, a crash or a hang is a finding.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "base/Errors.h"
#include "syntax/EasyRegExpr.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size == 0) return 0;
    const bool caseSensitive = data[0] & 1;
    const std::string rest(reinterpret_cast<const char*>(data + 1), size - 1);
    // Mask and text are separated by the first line break.
    const size_t split = rest.find('\n');
    const std::string mask = rest.substr(0, split);
    // Texts are kept to a line's worth, as a scheme or a search sees them.
    const std::string text =
        split == std::string::npos ? std::string("aab(*x*)") : rest.substr(split + 1, 1024);
    try {
        zorfa::TEasyRegExpr e(mask, caseSensitive);
        for (size_t at = 0; at <= text.size() && at < 16; ++at) {
            int length = 0;
            if (e.MatchAt(text.data() + at, text.data() + text.size(), at == 0, length) && length < 1) std::abort();
        }
        int position = 1;
        int length = 0;
        if (e.Search(text, true, position, length) &&
            (position < 1 || position > static_cast<int>(text.size()) + 1 || length < 0))
            std::abort();
        position = static_cast<int>(text.size()) + 1;
        e.Search(text, false, position, length);
    } catch (const zorfa::Exception&) {
    }
    return 0;
}
