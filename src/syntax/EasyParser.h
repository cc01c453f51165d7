#pragma once
// TEasyParser: a parser driven by a scheme (the .xs text in Rules).
//
// Assigning Rules compiles the scheme at once (ParseRules): State, Token and
// Delimiters directives, then rule lines of four fields
//     from-state  pattern  to-state  token
// where the pattern is a quoted keyword ('begin') or a mask. Rules naming an
// unknown state or token, with an empty pattern or with fewer than four
// fields are dropped silently; a bad mask raises the mask's
// "... is invalid mask at (n)" out of ParseRules, leaving the lines before
// it compiled.
//
// The compiled form is one TEasyParserState per state, with a 256-entry
// table of TEasyParserRule indexed by the current character (upper-cased in a
// case-insensitive state): the keywords and expressions that can start with
// that character. NextToken then costs one table load, a keyword binary
// search on word characters and the expressions of that entry, tried from
// the last to the first. Nothing is allocated while scanning.

#include <array>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "syntax/CustomEasyParser.h"
#include "syntax/EasyRegExpr.h"
#include "syntax/FastStringList.h"

namespace zorfa {

class TEasyParser;
class TEasyParserState;

// A compiled mask of a scheme rule; it owns its rule.
class TEasyParserRegExpr : public TEasyRegExpr {
public:
    TEasyParserRegExpr(std::string_view mask, bool caseSensitive) : TEasyRegExpr(mask, caseSensitive) {}
    TEasyRule Rule;
};

// Everything that can start with one character in one state.
class TEasyParserRule {
public:
    TEasyParserRule(TEasyParserState* owner, bool caseSensitive)
        : Keywords(caseSensitive), Owner(owner), CaseSensitive(caseSensitive) {}

    TFastStringList Keywords;                      // owns its rules
    std::vector<TEasyParserRegExpr*> Expressions;  // not owned; tried last to first
    TEasyParserState* Owner;
    bool CaseSensitive;
};

// One lexical state.
class TEasyParserState {
public:
    TEasyParserState(TEasyParser* owner, bool caseSensitive) : Owner(owner), CaseSensitive(caseSensitive) {}

    // The entry for character c, created on first need.
    TEasyParserRule& Entry(unsigned char c);

    std::array<std::unique_ptr<TEasyParserRule>, 256> CharRules;
    std::vector<std::unique_ptr<TEasyParserRegExpr>> AllExpressions;
    std::vector<std::unique_ptr<TEasyParserRegExpr>> EolRules;  // pattern exactly "$"
    TEasyParser* Owner;
    bool CaseSensitive;
};

class TEasyParser : public TCustomEasyParser {
public:
    struct StateName {
        std::string Name;
        bool CaseSensitive;
    };

    TEasyParser();
    ~TEasyParser() override;

    // The scheme text. Every assignment recompiles the whole scheme.
    const std::vector<std::string>& Rules() const { return FRules; }
    void SetRules(std::vector<std::string> lines);
    void SetRulesText(std::string_view text);  // split at CR, LF or CR LF
    void SetRuleLine(int index, std::string line);
    // The value of the first "name=value" line whose name equals `name`
    // (case ignored), or empty; how the fold words are read.
    std::string RuleValue(std::string_view name) const;

    // Compiles Rules from scratch. May throw the mask error.
    virtual void ParseRules();

    const std::vector<StateName>& States() const { return FStates; }
    const std::vector<std::string>& Tokens() const { return FTokens; }
    int IndexOfState(std::string_view name) const;
    // State objects by number; a state beyond the last one has none.
    const std::vector<std::unique_ptr<TEasyParserState>>& StateList() const { return FStateList; }

    int NextToken(int& state, std::string_view line, int& position) override;
    void GetTokenStyle(int token, TColor& fontColor, TFontStyles& fontStyle) override;
    TColor GetTokenBackground(int token) override;
    TColor GetDefaultBackground() override;
    int GetTokenCount() override;
    int IndexOfToken(std::string_view name) const override;

private:
    void Clear();
    void CompileLine(const std::string& line);
    void AddRule(int from, const std::string& pattern, int to, int token);
    TEasyParserState& StateObject(int state);
    bool MatchAt(TEasyParserState& state, int& stateNumber, const char* p, const char* end, bool atLineStart,
                 int& token, int& length);

    std::vector<std::string> FRules;
    std::vector<StateName> FStates;
    std::vector<std::string> FTokens;
    std::vector<std::unique_ptr<TEasyParserState>> FStateList;
};

}  // namespace zorfa
