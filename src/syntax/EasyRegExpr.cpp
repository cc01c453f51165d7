// The mask dialect: compiler and backtracking matcher.
//
// Matching follows the dialect's own rules to the letter (postfix "|" as
// optional, "!" negation that turns a failing item into a consumed
// character, one consuming item allowed on the terminator, greedy repeats
// that push a backtrack point per iteration). Two things keep it cheap and
// bounded without changing any result:
//
// - Backtrack points are kept as runs (Low..High, Item). A greedy repeat over
//   a single character test (the common "[^\*]*" or "[a-z]*") scans with a
//   table lookup per byte and pushes one run instead of one point per byte.
//
// - A resumed point (position, item) always runs to the end of the mask, and
//   its outcome depends only on that pair (never on how it was reached), and
//   every resumed run only pushes points with a larger item index. So by the
//   time a pair is popped a second time, everything reachable from its first
//   run has already failed, and it can be skipped. After a few dozen pops the
//   matcher starts remembering popped pairs in a bitmap (a hash set on very
//   long texts), which caps the resumed runs of one match at
//   (text length + items) x items. That turns
//   the exponential cases of plain backtracking ("a*a*a*a*b", "{a*}*b") into
//   polynomial ones.
//
// There is no work limit beyond that: the answer is the dialect's answer
// however long the backtrack (".*.*=x" on a long line has to give back
// the whole line before it matches).

#include "syntax/EasyRegExpr.h"

#include <algorithm>
#include <climits>
#include <cstring>

#include "base/Errors.h"
#include "syntax/SyntaxChars.h"

namespace zorfa {

namespace {

using Kind = TEasyRegItemKind;

constexpr long kPopsBeforeMemo = 64;
constexpr std::size_t kMemoBitLimit = std::size_t{1} << 27;  // 16 MB of bits

using syntaxchars::upper;

bool isOperator(char c) { return c == '*' || c == '+' || c == '|'; }

bool isOperatorKind(Kind k) { return k == Kind::OneOrMore || k == Kind::Optional || k == Kind::ZeroOrMore; }

bool isSetEscapable(char c) { return std::strchr("-\\!$*+.[]^{|}", c) != nullptr && c != '\0'; }

// A consuming item: it tests one character.
bool isCharTest(const TEasyRegItem& item) {
    return (item.Kind == Kind::Literal && item.Ch != 0) || item.Kind == Kind::Any || item.Kind == Kind::Set;
}

bool isNoOpMark(Kind k) { return k == Kind::GroupOpen || k == Kind::GroupClose || k == Kind::EscapeMark; }

}  // namespace

TEasyRegExpr::TEasyRegExpr(std::string_view mask, bool caseSensitive)
    : FCaseSensitive(caseSensitive), FMask(mask) {
    Compile();
    BuildTables();
}

TEasyRegExpr::~TEasyRegExpr() = default;

void TEasyRegExpr::Compile() {
    const std::string& m = FMask;
    const int len = static_cast<int>(m.size());
    auto fail = [&](int position) {
        throw Exception(FMask + " is invalid mask at (" + std::to_string(position) + ")");
    };
    auto fold = [&](unsigned char c) { return FCaseSensitive ? c : upper(c); };

    constexpr int kNoNegationDepth = INT_MIN;
    int depth = 0;
    std::vector<int> openGroups;
    int lastGroup = -1;
    bool negationPending = false;
    int negationDepth = kNoNegationDepth;
    bool inWrap = false;

    auto emit = [&](TEasyRegItem item) {
        item.Negated = negationPending;
        FItems.push_back(item);
        if (!inWrap) {
            lastGroup = -1;
            if (negationDepth != depth) negationPending = false;
        }
        return static_cast<int>(FItems.size()) - 1;
    };
    auto makeItem = [](Kind kind, unsigned char ch = 0) {
        TEasyRegItem item;
        item.Kind = kind;
        item.Ch = ch;
        return item;
    };
    // A character code after "#": digits from i, leaves i on the last digit.
    // The digits are read to their end before the number is judged, so both
    // "no digits" and "too large" report the character behind them.
    auto readCode = [&](int& i) {
        int j = i;
        long long value = 0;
        bool tooLarge = false;
        while (j < len && m[j] >= '0' && m[j] <= '9') {
            if (!tooLarge) value = value * 10 + (m[j] - '0');
            if (value > INT_MAX) tooLarge = true;
            ++j;
        }
        if (j == i || tooLarge) fail(j + 1);
        i = j - 1;
        return static_cast<unsigned char>(value & 0xFF);
    };
    // An operand followed by a postfix operator gets its own group marks.
    auto emitOperand = [&](TEasyRegItem item, int i) {
        if (i + 1 < len && isOperator(m[i + 1])) {
            inWrap = true;
            int open = emit(makeItem(Kind::GroupOpen));
            emit(item);
            emit(makeItem(Kind::GroupClose));
            inWrap = false;
            lastGroup = open;
        } else {
            emit(item);
        }
    };

    for (int i = 0; i < len; ++i) {
        const char c = m[i];
        switch (c) {
        case '^': emit(makeItem(Kind::LineStart)); break;
        case '$': emit(makeItem(Kind::LineEnd)); break;
        case '.': emit(makeItem(Kind::Any)); break;
        case '{': {
            ++depth;
            int index = emit(makeItem(Kind::GroupOpen));
            openGroups.push_back(index);
            break;
        }
        case '}':
            emit(makeItem(Kind::GroupClose));
            if (!openGroups.empty()) {
                lastGroup = openGroups.back();
                openGroups.pop_back();
            }
            --depth;
            break;
        case '\\': {
            if (i + 1 >= len) fail(i + 1);
            const unsigned char escaped = fold(static_cast<unsigned char>(m[i + 1]));
            emit(makeItem(Kind::EscapeMark, escaped));
            ++i;
            emit(makeItem(Kind::Literal, escaped));
            break;
        }
        case '!':
            negationPending = true;
            if (i + 1 >= len) fail(i + 1);
            negationDepth = m[i + 1] == '{' ? depth + 1 : kNoNegationDepth;
            break;
        case '*':
        case '+':
        case '|': {
            const int operand = lastGroup != -1 ? lastGroup : static_cast<int>(FItems.size()) - 1;
            if (operand < 0) fail(i + 1);
            const Kind k = FItems[operand].Kind;
            if (k == Kind::LineStart || k == Kind::LineEnd || k == Kind::EscapeMark || isOperatorKind(k))
                fail(i + 1);
            const int last = static_cast<int>(FItems.size()) - 1;
            for (int j = operand; j <= last; ++j)
                if (FItems[j].Next == -1) FItems[j].Next = last;
            emit(makeItem(c == '*' ? Kind::ZeroOrMore : c == '+' ? Kind::OneOrMore : Kind::Optional));
            break;
        }
        case '[': {
            TEasyRegItem set = makeItem(Kind::Set);
            int j = i + 1;
            if (j < len && m[j] == '^') {
                set.SetNegated = true;
                ++j;
            }
            bool havePrevious = false;
            unsigned char previous = 0;
            for (;; ++j) {
                if (j >= len) fail(len + 1);
                const char sc = m[j];
                if (sc == ']') break;
                unsigned char member;
                // A character directly before "-" is only the low end of a
                // range, so a set of one inverted range holds nothing.
                const auto addMember = [&](unsigned char c) {
                    if (j + 1 >= len || m[j + 1] != '-') set.AddToSet(c);
                    previous = c;
                    havePrevious = true;
                };
                if (sc == '-') {
                    if (!havePrevious) fail(j + 1);
                    ++j;
                    if (j >= len) fail(len + 1);
                    unsigned char high = m[j] == '#' ? (++j, readCode(j)) : static_cast<unsigned char>(m[j]);
                    high = fold(high);
                    for (int v = previous; v <= high; ++v) set.AddToSet(static_cast<unsigned char>(v));
                    continue;  // the low end stays: "a-c-e" is a to e
                } else if (sc == '\\') {
                    if (j + 1 < len && isSetEscapable(m[j + 1])) member = static_cast<unsigned char>(m[++j]);
                    else member = '\\';
                } else if (sc == '#') {
                    // A code is the byte it names, not upper-cased (only a
                    // range's high end and characters written as themselves
                    // are), so in a case-insensitive set "#97" never matches.
                    ++j;
                    member = readCode(j);
                } else {
                    member = fold(static_cast<unsigned char>(sc));
                }
                addMember(member);
            }
            if (set.CharSet[0] == 0 && set.CharSet[1] == 0 && set.CharSet[2] == 0 && set.CharSet[3] == 0) fail(j + 1);
            i = j;
            emitOperand(set, i);
            break;
        }
        case '#': {
            int j = i + 1;
            const unsigned char code = readCode(j);
            i = j;
            emitOperand(makeItem(Kind::Literal, fold(code)), i);
            break;
        }
        default:
            emitOperand(makeItem(Kind::Literal, fold(static_cast<unsigned char>(c))), i);
            break;
        }
    }
    emit(makeItem(Kind::Literal, 0));
    if (depth != 0) fail(len + 1);
}

void TEasyRegExpr::BuildTables() {
    const int count = static_cast<int>(FItems.size());
    FTables.assign(static_cast<std::size_t>(count) * 256, 0);
    for (int i = 0; i < count; ++i) {
        const TEasyRegItem& item = FItems[i];
        unsigned char* table = &FTables[static_cast<std::size_t>(i) * 256];
        for (int c = 0; c < 256; ++c) {
            const unsigned char folded = FCaseSensitive ? static_cast<unsigned char>(c) : upper(static_cast<unsigned char>(c));
            bool admits = false;
            switch (item.Kind) {
            case Kind::Literal: admits = item.Ch != 0 && folded == item.Ch; break;
            case Kind::Any: admits = true; break;
            case Kind::Set: admits = item.Admits(folded); break;
            default: break;
            }
            table[c] = static_cast<unsigned char>((admits ? 1 : 0) | (admits && c != 0 ? 2 : 0));
        }
    }
    // A repeated operand that is one character test between no-op marks,
    // none of them negated, can be scanned without running the sequence.
    FSimpleOperand.assign(count, -1);
    for (int i = 0; i < count; ++i) {
        const int close = FItems[i].Next;
        if (close < i || close + 1 >= count || !isOperatorKind(FItems[close + 1].Kind)) continue;
        int test = -1;
        bool simple = true;
        for (int j = i; j <= close && simple; ++j) {
            const TEasyRegItem& item = FItems[j];
            if (item.Negated) simple = false;
            else if (isCharTest(item)) {
                if (test != -1) simple = false;
                test = j;
            } else if (!isNoOpMark(item.Kind)) simple = false;
        }
        if (simple && test != -1) FSimpleOperand[i] = test;
    }
}

const TEasyRegItem* TEasyRegExpr::FirstItem() const {
    // The final item (a literal of code 0) is the end mark, not a character.
    for (std::size_t i = 0; i + 1 < FItems.size(); ++i) {
        const Kind k = FItems[i].Kind;
        if (k == Kind::Literal || k == Kind::EscapeMark || k == Kind::Any || k == Kind::Set) return &FItems[i];
    }
    return nullptr;
}

void TEasyRegExpr::Push(int p, int item) {
    if (!FBacktrackStack.empty()) {
        BacktrackRun& top = FBacktrackStack.back();
        if (top.Item == item && top.High + 1 == p) {
            top.High = p;
            return;
        }
    }
    FBacktrackStack.push_back({p, p, item});
}

bool TEasyRegExpr::TryOperand(int first, int last, int& p) {
    const int saved = p;
    if (!MatchSequence(first, last, p) || p == saved) {
        p = saved;
        return false;
    }
    return true;
}

// The greedy loop of a repeat whose operand is the single character test
// `test`: each pass consumes one admitted, non-terminator character; every
// position reached (but the terminator) becomes a backtrack point.
bool TEasyRegExpr::RepeatSimple(int test, TEasyRegItemKind op, int after, int& p) {
    const unsigned char* table = &FTables[static_cast<std::size_t>(test) * 256];
    auto admits = [&](int at) { return at < FLimit && (table[FText[at]] & 2); };
    if (op == Kind::OneOrMore) {
        if (!admits(p)) return false;
        ++p;
    }
    if (op == Kind::Optional) {
        Push(p, after);
        if (admits(p)) {
            ++p;
            if (!AtTerminator(p)) Push(p, after);
        }
        return true;
    }
    const int low = p;
    while (admits(p)) ++p;
    // The point at `low` is pushed whatever follows; later ones only when
    // the loop did not stop on the terminator.
    const int high = (p > low && AtTerminator(p)) ? p - 1 : p;
    Push(low, after);
    FBacktrackStack.back().High = high;
    return true;
}

bool TEasyRegExpr::MatchSequence(int first, int last, int& p) {
    if (first > last) return true;
    bool done = false;
    bool atEnd = false;
    bool negated = false;
    int i = first;
    for (;;) {
        const TEasyRegItem& x = FItems[i];
        if (x.Next != -1 && x.Next != last) {
            const int close = x.Next;
            const Kind op = FItems[close + 1].Kind;
            const int after = close + 2;
            if (!AtTerminator(p)) {
                const int simple = FSimpleOperand[i];
                if (simple != -1) {
                    if (!RepeatSimple(simple, op, after, p)) return false;
                } else {
                    if (op == Kind::OneOrMore && !TryOperand(i, close, p)) return false;
                    Push(p, after);
                    while (TryOperand(i, close, p)) {
                        if (AtTerminator(p)) break;
                        Push(p, after);
                        if (op == Kind::Optional) break;
                    }
                }
            } else if (op == Kind::OneOrMore) {
                return false;
            }
            i = after;
            if (i > last) {
                negated = negated || x.Negated;
                done = true;
                break;
            }
        }
        // Once a negated item has been passed, reaching the end fails the
        // sequence and failing an item succeeds it: a negated item that
        // matched makes the sequence fail.
        negated = negated || x.Negated;
        const TEasyRegItem& t = FItems[i];
        bool consume = false;
        bool mismatch = false;
        switch (t.Kind) {
        case Kind::Literal:
            if (t.Ch == 0) {
                done = true;
                break;
            }
            [[fallthrough]];
        case Kind::Any:
        case Kind::Set:
            if (FTables[static_cast<std::size_t>(i) * 256 + CharAt(p)] & 1) consume = true;
            else mismatch = true;
            break;
        case Kind::LineStart:
            mismatch = !(p == FTextStart && FAtLineStart);
            break;
        case Kind::LineEnd:
            mismatch = !AtTerminator(p);
            break;
        default:
            break;
        }
        if (done || mismatch) break;
        ++i;
        if (consume) {
            if (atEnd) return false;
            if (AtTerminator(p)) atEnd = true;
            else ++p;
        }
        if (i > last) {
            done = true;
            break;
        }
    }
    if (!done) {
        if (!negated) return false;
        ++p;  // the negated item failed, as wanted: it takes one character
        return true;
    }
    return !negated;
}

bool TEasyRegExpr::Visited(int p, int item) {
    if (++FPops <= kPopsBeforeMemo) return false;
    const int items = static_cast<int>(FItems.size());
    if (FMemoWidth == 0) {
        const std::size_t width = static_cast<std::size_t>(FLimit) + static_cast<std::size_t>(items) + 2;
        if (width * static_cast<std::size_t>(items) > kMemoBitLimit) {
            // A bitmap would be too large for this text: remember the pairs
            // in a hash set instead. Without the memo a very long text could
            // take exponential time.
            FMemoWidth = -1;
            FMemoSet.clear();
        } else {
            FMemoWidth = static_cast<int>(width);
            FMemo.assign((width * items + 63) / 64, 0);
        }
    }
    if (FMemoWidth < 0) {
        const std::uint64_t key = (static_cast<std::uint64_t>(item) << 32) | static_cast<std::uint32_t>(p);
        return !FMemoSet.insert(key).second;
    }
    if (p < 0 || p >= FMemoWidth) return false;
    const std::size_t bit = static_cast<std::size_t>(item) * FMemoWidth + p;
    std::uint64_t& word = FMemo[bit >> 6];
    const std::uint64_t mask = std::uint64_t{1} << (bit & 63);
    if (word & mask) return true;
    word |= mask;
    return false;
}

bool TEasyRegExpr::WholeMatch(int start, int& end) {
    const int last = static_cast<int>(FItems.size()) - 1;
    FBacktrackStack.clear();
    int p = start;
    int i = 0;
    for (;;) {
        if (MatchSequence(i, last, p)) {
            end = p;
            return true;
        }
        for (;;) {
            if (FBacktrackStack.empty()) return false;
            BacktrackRun& top = FBacktrackStack.back();
            p = top.High;
            i = top.Item;
            if (top.High == top.Low) FBacktrackStack.pop_back();
            else --top.High;
            if (!Visited(p, i)) break;
        }
    }
}

bool TEasyRegExpr::MatchAt(const char* position, const char* end, bool atLineStart, int& length) {
    FText = reinterpret_cast<const unsigned char*>(position);
    FLimit = end > position ? static_cast<int>(end - position) : 0;
    FTextStart = 0;
    FAtLineStart = atLineStart;
    FPops = 0;
    FMemoWidth = 0;
    int matchEnd = 0;
    if (!WholeMatch(0, matchEnd)) return false;
    length = matchEnd > 0 ? matchEnd : 1;
    return true;
}

bool TEasyRegExpr::Search(const char* text, int textLength, bool forward, int& position, int& length) {
    if (text == nullptr || textLength <= 0) {
        if (FMask == "^" || FMask == "$" || FMask == "^$") {
            position = 1;
            length = 0;
            return true;
        }
        position = 0;
        length = 0;
        return false;
    }
    position = std::clamp(position, 1, textLength);
    FText = reinterpret_cast<const unsigned char*>(text);
    FLimit = textLength;
    FTextStart = 0;
    FAtLineStart = true;
    FPops = 0;
    FMemoWidth = 0;
    length = 0;
    // Failed resumes stay failed from one start to the next (a run's outcome
    // depends only on its position and item), so the memo is kept for the
    // whole search.
    int p = position - 1;
    while (forward ? !AtTerminator(p) : p >= 0) {
        int matchEnd = 0;
        if (WholeMatch(p, matchEnd)) {
            position = p + 1;
            length = matchEnd;
            return true;
        }
        p += forward ? 1 : -1;
    }
    position = 0;
    length = 0;
    return false;
}

bool TEasyRegExpr::Search(std::string_view text, bool forward, int& position, int& length) {
    const int textLength = static_cast<int>(text.size());
    if (FMask == "$" && (forward || position > textLength)) {
        position = textLength + 1;
        length = 0;
        return true;
    }
    if (!Search(text.empty() ? nullptr : text.data(), textLength, forward, position, length)) return false;
    if (length > 0) ++length;
    length -= position;
    if (length < 0) length = 0;
    return true;
}

}  // namespace zorfa
