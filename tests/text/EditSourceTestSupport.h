#pragma once
// Helpers for the edit source tests: a small parser with a multi-line state,
// a recording view, and typing as a view types.

#include <string>
#include <vector>

#include "text/EasyEditSource.h"

namespace zorfa::text::testing {

// Tokens: 0 plain, 1 comment, 2 "turl". A "{" enters the comment state 1,
// which lasts across lines until "}".
class CommentParser : public TCustomEasyParser {
public:
    int Calls = 0;
    std::vector<int> LinesScanned;

    int NextToken(int& state, std::string_view line, int& position) override {
        ++Calls;
        if (position == 1) LinesScanned.push_back(LineIndex());
        const size_t i = static_cast<size_t>(position - 1);
        if (state == 1) {
            const size_t close = line.find('}', i);
            if (close == std::string_view::npos) {
                position = static_cast<int>(line.size()) + 1;
            } else {
                position = static_cast<int>(close) + 2;
                state = 0;
            }
            return 1;
        }
        if (line[i] == '{') {
            state = 1;
            ++position;
            return 1;
        }
        const size_t open = line.find('{', i);
        position = open == std::string_view::npos ? static_cast<int>(line.size()) + 1 : static_cast<int>(open) + 1;
        return 0;
    }
    void GetTokenStyle(int, TColor& c, TFontStyles& s) override {
        c = -1;
        s = 0;
    }
    TColor GetTokenBackground(int) override { return -1; }
    TColor GetDefaultBackground() override { return -1; }
    int GetTokenCount() override { return 3; }
    int IndexOfToken(std::string_view name) const override { return name == "turl" ? 2 : -1; }
};

// Records what a view is told.
class RecordingView : public IEasySourceListener {
public:
    RecordingView(std::vector<std::string>* log, std::string name) : log_(log), name_(std::move(name)) {}
    void SourceChanged(TCustomEasyEditSource& source, TEasySourceNotify* notify) override {
        if (!notify) {
            ++Updates;
            LastFlags = source.ChangeFlags();
            if (log_) log_->push_back(name_);
        } else {
            Kinds.push_back(notify->Kind);
        }
    }
    int Updates = 0;
    std::uint16_t LastFlags = 0;
    std::vector<int> Kinds;

private:
    std::vector<std::string>* log_;
    std::string name_;
};

// One typed character, as a view types it: one update of reason 1.
inline void Type(TCustomEasyEditSource& s, std::string_view text) {
    for (char c : text) {
        s.BeginUpdate(crInsert);
        s.InsertText(std::string(1, c));
        s.MoveCaretBy(1, 0);
        s.EndUpdate();
    }
}

inline std::vector<std::string> RawLines(const TCustomEasyEditSource& s) {
    std::vector<std::string> lines;
    for (int i = 0; i < s.LineCount(); ++i) lines.emplace_back(s.Lines().GetRawLine(i));
    return lines;
}

inline void Load(TCustomEasyEditSource& s, std::string_view text) { s.Lines().SetText(text); }

}  // namespace zorfa::text::testing
