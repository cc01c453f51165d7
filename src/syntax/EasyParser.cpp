#include "syntax/EasyParser.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

#include "syntax/SyntaxChars.h"

namespace zorfa {

using syntaxchars::isWhite;
using syntaxchars::isWord;
using syntaxchars::upper;

namespace {

std::string_view trim(std::string_view s) {
    size_t b = 0;
    size_t e = s.size();
    while (b < e && static_cast<unsigned char>(s[b]) <= 32) ++b;
    while (e > b && static_cast<unsigned char>(s[e - 1]) <= 32) --e;
    return s.substr(b, e - b);
}

bool sameText(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) return false;
    for (size_t i = 0; i < a.size(); ++i)
        if (upper(static_cast<unsigned char>(a[i])) != upper(static_cast<unsigned char>(b[i]))) return false;
    return true;
}

// Takes the next field off `rest`: a quoted field runs to the next quote
// (from the second character on) and drops the one character behind it;
// any other field runs to the first blank. Both parts are trimmed.
std::string_view takeField(std::string_view& rest) {
    std::string_view field;
    size_t end;
    if (!rest.empty() && rest[0] == '\'' && (end = rest.find('\'', 1)) != std::string_view::npos) {
        field = rest.substr(0, end + 1);
        rest = end + 2 <= rest.size() ? rest.substr(end + 2) : std::string_view();
    } else if (!rest.empty() && rest[0] != '\'' && (end = rest.find(' ')) != std::string_view::npos) {
        field = rest.substr(0, end);
        rest = rest.substr(end);
    } else {
        field = rest;
        rest = std::string_view();
    }
    rest = trim(rest);
    return trim(field);
}

}  // namespace

TEasyParserRule& TEasyParserState::Entry(unsigned char c) {
    auto& slot = CharRules[c];
    if (!slot) slot = std::make_unique<TEasyParserRule>(this, CaseSensitive);
    return *slot;
}

TEasyParser::TEasyParser() = default;
TEasyParser::~TEasyParser() = default;

void TEasyParser::SetRules(std::vector<std::string> lines) {
    FRules = std::move(lines);
    ParseRules();
}

void TEasyParser::SetRulesText(std::string_view text) {
    std::vector<std::string> lines;
    size_t start = 0;
    while (start < text.size()) {
        size_t end = text.find_first_of("\r\n", start);
        if (end == std::string_view::npos) {
            lines.emplace_back(text.substr(start));
            break;
        }
        lines.emplace_back(text.substr(start, end - start));
        start = end + (text[end] == '\r' && end + 1 < text.size() && text[end + 1] == '\n' ? 2 : 1);
    }
    SetRules(std::move(lines));
}

void TEasyParser::SetRuleLine(int index, std::string line) {
    if (index < 0 || index >= static_cast<int>(FRules.size())) return;
    FRules[index] = std::move(line);
    ParseRules();
}

std::string TEasyParser::RuleValue(std::string_view name) const {
    for (const std::string& line : FRules) {
        const size_t eq = line.find('=');
        if (eq != std::string::npos && sameText(std::string_view(line).substr(0, eq), name)) return line.substr(eq + 1);
    }
    return {};
}

void TEasyParser::Clear() {
    FTokens.clear();
    FStates.clear();
    FStateList.clear();
}

void TEasyParser::ParseRules() {
    Clear();
    for (const std::string& line : FRules) CompileLine(line);
}

void TEasyParser::CompileLine(const std::string& line) {
    if (line.size() >= 2 && line[0] == '/' && line[1] == '/') return;

    const size_t eq = line.find('=');
    if (eq != std::string::npos) {
        const std::string_view word = trim(std::string_view(line).substr(0, eq));
        const std::string_view value = trim(std::string_view(line).substr(eq + 1));
        if (sameText(word, "State")) {
            const size_t comma = value.find(',');
            if (comma == std::string_view::npos) {
                FStates.push_back({std::string(value), false});
            } else {
                const std::string_view option = trim(value.substr(comma + 1));
                FStates.push_back({std::string(trim(value.substr(0, comma))), sameText(option, "CaseSensitive")});
            }
            return;
        }
        if (sameText(word, "Token")) {
            FTokens.emplace_back(value);
            return;
        }
        if (sameText(word, "Delimiters")) {
            FDelimiters = std::string(value);
            return;
        }
    }

    std::string_view rest = line;
    const std::string_view from = takeField(rest);
    const std::string_view pattern = takeField(rest);
    const std::string_view to = takeField(rest);
    const std::string_view token = takeField(rest);
    const int fromState = IndexOfState(from);
    const int toState = IndexOfState(to);
    const int tokenNumber = IndexOfToken(token);
    if (fromState < 0 || toState < 0 || tokenNumber < 0 || pattern.empty()) return;
    AddRule(fromState, std::string(pattern), toState, tokenNumber);
}

TEasyParserState& TEasyParser::StateObject(int state) {
    // Missing objects up to the one asked for are made with the case flag of
    // the state asked for, not of the state whose place they fill.
    while (state >= static_cast<int>(FStateList.size()))
        FStateList.push_back(std::make_unique<TEasyParserState>(this, FStates[state].CaseSensitive));
    return *FStateList[state];
}

void TEasyParser::AddRule(int from, const std::string& pattern, int to, int token) {
    TEasyParserState& state = StateObject(from);
    const bool cs = state.CaseSensitive;

    if (pattern.front() == '\'' && pattern.back() == '\'') {
        const std::string keyword = pattern.size() >= 2 ? pattern.substr(1, pattern.size() - 2) : std::string();
        if (keyword.empty()) return;
        const unsigned char first = static_cast<unsigned char>(keyword[0]);
        TEasyParserRule& entry = state.Entry(cs ? first : upper(first));
        const int existing = entry.Keywords.IndexOf(keyword);
        if (existing >= 0) {
            *entry.Keywords.Rule(existing) = TEasyRule{to, token};
        } else {
            entry.Keywords.Add(keyword, std::make_unique<TEasyRule>(TEasyRule{to, token}));
        }
        return;
    }

    auto expression = std::make_unique<TEasyParserRegExpr>(pattern, cs);
    expression->Rule = TEasyRule{to, token};
    TEasyParserRegExpr* e = expression.get();
    if (pattern == "$") {
        state.EolRules.push_back(std::move(expression));
        return;
    }
    if (const TEasyRegItem* first = e->FirstItem()) {
        switch (first->Kind) {
        case TEasyRegItemKind::Any:
            for (int c = 0; c < 256; ++c) state.Entry(static_cast<unsigned char>(c)).Expressions.push_back(e);
            break;
        case TEasyRegItemKind::Set:
            for (int c = 0; c < 256; ++c)
                if (first->InSet(static_cast<unsigned char>(c)) != first->SetNegated)
                    state.Entry(static_cast<unsigned char>(c)).Expressions.push_back(e);
            break;
        default:  // a literal or an escape mark
            if (first->Negated) {
                // Tried after every other expression of any character.
                for (int c = 0; c < 256; ++c) {
                    auto& list = state.Entry(static_cast<unsigned char>(c)).Expressions;
                    list.insert(list.begin(), e);
                }
            } else {
                state.Entry(first->Ch).Expressions.push_back(e);
            }
            break;
        }
    }
    state.AllExpressions.push_back(std::move(expression));
}

int TEasyParser::IndexOfState(std::string_view name) const {
    for (size_t i = 0; i < FStates.size(); ++i)
        if (sameText(FStates[i].Name, name)) return static_cast<int>(i);
    return -1;
}

int TEasyParser::IndexOfToken(std::string_view name) const {
    for (size_t i = 0; i < FTokens.size(); ++i)
        if (sameText(FTokens[i], name)) return static_cast<int>(i);
    return -1;
}

bool TEasyParser::MatchAt(TEasyParserState& state, int& stateNumber, const char* p, const char* end,
                          bool atLineStart, int& token, int& length) {
    const unsigned char raw = p < end ? static_cast<unsigned char>(*p) : 0;
    TEasyParserRule* entry = state.CharRules[state.CaseSensitive ? raw : upper(raw)].get();
    if (!entry) return false;

    if (!entry->Keywords.Empty() && p < end && isWord(raw)) {
        int word = 1;
        while (p + word < end && isWord(static_cast<unsigned char>(p[word]))) ++word;
        int index;
        if (entry->Keywords.HasBlanks()) {
            // The rest of the line up to its terminator; no comparison looks
            // further than the longest entry plus the word and two more.
            const int window = static_cast<int>(std::min<std::ptrdiff_t>(end - p, entry->Keywords.Longest() + word + 2));
            const void* nul = std::memchr(p, 0, static_cast<size_t>(window));
            const int rest = nul ? static_cast<int>(static_cast<const char*>(nul) - p) : window;
            index = entry->Keywords.FindWithBlanks(p, rest, word);
        } else {
            index = entry->Keywords.Find(p, word);
        }
        if (index >= 0) {
            const TEasyRule& rule = *entry->Keywords.Rule(index);
            stateNumber = rule.NextState;
            token = rule.Token;
            length = word;
            return true;
        }
    }

    for (auto it = entry->Expressions.rbegin(); it != entry->Expressions.rend(); ++it) {
        int matched = 0;
        if ((*it)->MatchAt(p, end, atLineStart, matched)) {
            stateNumber = (*it)->Rule.NextState;
            token = (*it)->Rule.Token;
            length = matched;  // at least 1
            return true;
        }
    }
    return false;
}

int TEasyParser::NextToken(int& state, std::string_view line, int& position) {
    FLastState = state;
    const int lineLength = static_cast<int>(line.size());
    if (position < 1) position = 1;
    int token = -1;
    const int states = static_cast<int>(FStateList.size());
    if (state >= 0 && state < states) {
        const char* begin = line.data();
        const char* end = begin + lineLength;
        const char* p = begin + std::min(position - 1, lineLength);
        int length = 0;
        token = 0;
        if (!MatchAt(*FStateList[state], state, p, end, position == 1, token, length)) {
            token = 0;
            while (p + length < end && isWord(static_cast<unsigned char>(p[length]))) ++length;
            while (p + length < end && isWhite(static_cast<unsigned char>(p[length]))) ++length;
            if (length == 0) length = 1;
        }
        position += length;
    } else {
        position = lineLength + 1;
    }
    if (position > lineLength && state >= 0 && state < states && !FStateList[state]->EolRules.empty()) {
        const TEasyRule& rule = FStateList[state]->EolRules.back()->Rule;
        state = rule.NextState;
        token = rule.Token;
    }
    return token;
}

void TEasyParser::GetTokenStyle(int, TColor& fontColor, TFontStyles& fontStyle) {
    fontColor = -1;
    fontStyle = 0;
}

TColor TEasyParser::GetTokenBackground(int) { return -1; }

TColor TEasyParser::GetDefaultBackground() { return -1; }

int TEasyParser::GetTokenCount() { return static_cast<int>(FTokens.size()); }

}  // namespace zorfa
