#include "text/EasyEditSource.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <istream>
#include <ostream>

#include "base/Errors.h"

namespace zorfa::text {

// ---- Character sets ----------------------------------------------------------------

namespace {

TEasyCharSet MakeSet(std::string_view chars) {
    TEasyCharSet set;
    for (unsigned char c : chars) set.set(c);
    return set;
}

bool StartsWithNoCase(std::string_view s, std::string_view prefix) {
    if (s.size() < prefix.size()) return false;
    for (size_t i = 0; i < prefix.size(); ++i)
        if (std::toupper(static_cast<unsigned char>(s[i])) != prefix[i]) return false;
    return true;
}

}  // namespace

const TEasyCharSet& DefaultDelimiters() {
    static const TEasyCharSet set = [] {
        TEasyCharSet s;
        s.set(0);
        for (int c = 2; c <= 32; ++c) s.set(static_cast<size_t>(c));
        return s;
    }();
    return set;
}

const TEasyCharSet& IdentifierChars() {
    static const TEasyCharSet set =
        MakeSet("0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ_abcdefghijklmnopqrstuvwxyz");
    return set;
}

const TEasyCharSet& PunctuationChars() {
    static const TEasyCharSet set = MakeSet("!\"#$%&()*+,-./:;=?@[\\]^{|}");
    return set;
}

const TEasyCharSet& UrlChars() {
    static const TEasyCharSet set = IdentifierChars() | MakeSet("-./:=?@~");
    return set;
}

bool IsUrlOrMail(std::string_view run) {
    for (std::string_view prefix : {"WWW.", "HTTP://", "GOPHER://", "FTP://", "FILE://", "MAILTO:"})
        if (StartsWithNoCase(run, prefix)) return true;
    const size_t at = run.find('@');
    if (at == std::string_view::npos || run.find('@', at + 1) != std::string_view::npos) return false;
    const size_t dot = run.rfind('.');
    if (dot == std::string_view::npos || dot < at || at + 1 >= run.size()) return false;
    return IdentifierChars().test(static_cast<unsigned char>(run[at + 1]));
}

void MarkUrls(std::string_view text, TEasyStyleCodes& styles, std::uint16_t code) {
    const TEasyCharSet& url = UrlChars();
    const size_t n = text.size();
    size_t i = 0;
    while (i < n) {
        if (!url.test(static_cast<unsigned char>(text[i]))) {
            ++i;
            continue;
        }
        size_t end = i;
        while (end < n && url.test(static_cast<unsigned char>(text[end]))) ++end;
        // The test sees one byte beyond the run.
        if (IsUrlOrMail(text.substr(i, end - i + (end < n ? 1 : 0))))
            styles.Fill(static_cast<int>(i), code, static_cast<int>(end - i));
        i = end;
    }
}

// ---- Life --------------------------------------------------------------------------------

TCustomEasyEditSource::TCustomEasyEditSource()
    : Delimiters(DefaultDelimiters()),
      strings_(std::make_unique<TEasyStrings>()),
      undoList_(std::make_unique<TEasyUndoList>()),
      redoList_(std::make_unique<TEasyUndoList>()) {
    strings_->OnChange = [this](TEasyStrings& s) { StoreChanged(s); };
    strings_->OnConvertLine = [this](TEasyStrings& s, std::string& text, bool storing) {
        ConvertLine(s, text, storing);
    };
}

TCustomEasyEditSource::~TCustomEasyEditSource() {
    if (parser_) parser_->RemoveNotifier(this);
    strings_->OnChange = nullptr;
    strings_->OnConvertLine = nullptr;
}

void TCustomEasyEditSource::SetReadOnly(bool value) {
    if (value == readOnly_) return;
    BeginUpdate(crCompound);
    readOnly_ = value;
    changeFlags_ |= cfReadOnly;
    EndUpdate();
}

// ---- Options -------------------------------------------------------------------------------

void TCustomEasyEditSource::SetOptions(TEasySourceOptions value) {
    if (value == options_) return;
    const TEasySourceOptions old = options_;
    // The records change form with this option.
    if (old.Contains(srUndoOnlyChanges) != value.Contains(srUndoOnlyChanges)) ClearUndo();
    options_ = value;
    // The newcomer wins; when both arrive at once, srUseTab wins.
    if (value.Contains(srUseTab) && !old.Contains(srUseTab))
        options_ = options_ - srSmartTab;
    else if (old.Contains(srUseTab) && options_.Contains(srSmartTab))
        options_ = options_ - srUseTab;
    undoList_->UndoOnlyChanges = redoList_->UndoOnlyChanges = options_.Contains(srUndoOnlyChanges);
    if (strings_->UseVisibleLines() != options_.Contains(srAllowHiddenLines))
        strings_->SetUseVisibleLines(options_.Contains(srAllowHiddenLines));
    if (old.Contains(srBeyondEof) && !options_.Contains(srBeyondEof) && caret_.Y > LineCount() - 1) {
        const int last = std::max(0, LineCount() - 1);
        MoveCaretTo(static_cast<int>(strings_->Get(last).size()), last);
    }
    if (old.Contains(srLiveSpell) != options_.Contains(srLiveSpell) ||
        old.Contains(srAllowHiddenLines) != options_.Contains(srAllowHiddenLines))
        ParserChanged();
}

// ---- Updates and notifications ---------------------------------------------------------------------

void TCustomEasyEditSource::BeginUpdate(std::uint8_t reason) {
    if (updateCount_ == 0) {
        changeFlags_ = 0;
        std::fill(std::begin(changedRect_), std::end(changedRect_), -1);
        oldCaret_ = caret_;
        changeReason_ = reason;
        firstRecord_ = true;
        oldLineCount_ = LineCount();
    }
    ++updateCount_;
}

void TCustomEasyEditSource::EndUpdate() {
    if (updateCount_ <= 0) return;
    if (--updateCount_ > 0) return;
    if (!(caret_ == oldCaret_)) changeFlags_ |= cfCaret;
    if (changeFlags_ & (cfText | cfFormat)) {
        Modified = true;
        if (changedRect_[0] >= 0) parsedTo_ = std::min(parsedTo_, changedRect_[0]);
    }
    if (LineCount() != oldLineCount_) changeFlags_ |= cfLineCount;
    // Any user edit or caret move forgets redo; a replay's own steps do not.
    if ((changeFlags_ & (cfCaret | cfText)) && !(changeFlags_ & cfUndo)) redoList_->Clear();
    if (changeFlags_) {
        NotifyAll(nullptr);
        if (OnSourceChanged) OnSourceChanged(*this, changeFlags_);
    }
}

void TCustomEasyEditSource::MarkChanged(int x1, int x2, bool isText, int y2, int y1) {
    auto lower = [](int& slot, int v) {
        if (v >= 0 && (slot < 0 || v < slot)) slot = v;
    };
    auto raise = [](int& slot, int v) {
        if (v >= 0 && v > slot) slot = v;
    };
    lower(changedRect_[0], y1);
    raise(changedRect_[1], y2);
    lower(changedRect_[2], x1);
    raise(changedRect_[3], x2);
    if (isText) changeFlags_ |= cfText;
}

void TCustomEasyEditSource::Attach(IEasySourceListener* view) {
    if (view && std::find(notifiers_.begin(), notifiers_.end(), view) == notifiers_.end())
        notifiers_.push_back(view);
}

void TCustomEasyEditSource::Detach(IEasySourceListener* view) {
    std::erase(notifiers_, view);
    if (ActiveView == view) ActiveView = nullptr;
}

void TCustomEasyEditSource::NotifyAll(TEasySourceNotify* notify) {
    // A view may detach itself while being told.
    const std::vector<IEasySourceListener*> views = notifiers_;
    for (IEasySourceListener* view : views)
        if (std::find(notifiers_.begin(), notifiers_.end(), view) != notifiers_.end())
            view->SourceChanged(*this, notify);
}

void TCustomEasyEditSource::NotifyRange(int first, int last) {
    TEasySourceNotify notify{snLinesChanged, nullptr, first, last};
    NotifyAll(&notify);
}

// ---- The store's events ---------------------------------------------------------------------------------

void TCustomEasyEditSource::StoreChanged(TEasyStrings& s) {
    const int from = s.ChangedFrom, to = s.ChangedTo;
    s.ChangedFrom = s.ChangedTo = -1;
    if (from < 0) return;
    if (lockCount_ == 0) NotifyRange(from, to);
    if (s.FoldChanging) {
        BeginUpdate(crCompound);
        changeFlags_ |= cfHiddenLines;
        MarkChanged(-1, -1, false, to, from);
        EndUpdate();
    } else if (editCount_ == 0) {
        // An outside writer (loading, Lines.Text): a clean, undo-free document.
        BeginUpdate(crCompound);
        MarkChanged(0, -1, true, to, from);
        changeFlags_ |= cfCaret | cfText;
        caret_ = {0, std::min(from, std::max(0, LineCount() - 1))};
        ClearUndo();
        InvalidateLines(from, to);
        EndUpdate();
        Modified = false;
    }
    // Inside a primitive the primitive itself drops the parse data of exactly
    // the lines whose text it changed; the lines after an inserted or deleted
    // line keep theirs (their text did not change), so nothing here walks the
    // rest of the document.
}

void TCustomEasyEditSource::ConvertLine(TEasyStrings&, std::string& text, bool storing) {
    const bool useTab = Has(srUseTab);
    if ((!storing && useTab) || (storing && !useTab && editCount_ == 0))
        if (text.find('\t') != std::string::npos) text = ExpandTabs(text);
}

void TCustomEasyEditSource::InvalidateLines(int first, int last) {
    last = std::min(last, LineCount() - 1);
    for (int y = std::max(0, first); y <= last; ++y) strings_->Record(y)->Flags &= ~lfParsed;
}

void TCustomEasyEditSource::InvalidateLine(int y) {
    if (TEasyStringRec* r = strings_->Record(y)) r->Flags &= ~lfParsed;
}

// ---- Tab stops -----------------------------------------------------------------------------------------------

void TCustomEasyEditSource::SetTabStops(std::string_view text) {
    if (text == tabStops_.TabStops()) return;
    BeginUpdate(crCompound);
    changeFlags_ |= cfAll;
    struct Closer {
        TCustomEasyEditSource* s;
        ~Closer() { s->EndUpdate(); }
    } closer{this};
    tabStops_.SetTabStops(text);
}

int TCustomEasyEditSource::ExpandedToRaw(int y, int column, int& inside, int& width) const {
    inside = width = 0;
    const std::string_view line = strings_->GetRawLine(y);
    size_t tab = line.find('\t');
    if (tab == std::string_view::npos || column <= static_cast<int>(tab)) return column;
    int extra = 0;
    while (tab != std::string_view::npos) {
        const int start = static_cast<int>(tab) + extra;  // expanded column of the tab
        if (column <= start) break;
        const int w = NextStop(start) - start - 1;
        width = w;
        if (column <= start + w) {
            inside = column - start;
            return static_cast<int>(tab);
        }
        extra += w;
        tab = line.find('\t', tab + 1);
    }
    return column - extra;
}

int TCustomEasyEditSource::ExpandedToRaw(int y, int column) const {
    int inside, width;
    return ExpandedToRaw(y, column, inside, width);
}

int TCustomEasyEditSource::RawToExpanded(int y, int position) const {
    const std::string_view line = strings_->GetRawLine(y);
    int column = 0;
    const int n = std::min(position, static_cast<int>(line.size()));
    for (int i = 0; i < n; ++i) column = line[static_cast<size_t>(i)] == '\t' ? NextStop(column) : column + 1;
    return column + (position - n);
}

std::string TCustomEasyEditSource::ExpandTabs(std::string_view text) const {
    std::string out;
    out.reserve(text.size() + 16);
    for (char c : text) {
        if (c == '\t')
            out.append(static_cast<size_t>(NextStop(static_cast<int>(out.size())) - static_cast<int>(out.size())), ' ');
        else
            out.push_back(c);
    }
    return out;
}

// ---- Parser hand-over ------------------------------------------------------------------------------------------

void TCustomEasyEditSource::RebuildDelimiters() {
    Delimiters = DefaultDelimiters();
    if (TCustomEasyParser* p = parser_)
        for (unsigned char c : p->Delimiters()) Delimiters.set(c);
}

void TCustomEasyEditSource::SetParser(TCustomEasyParser* parser) {
    if (parser == parser_) return;
    BeginUpdate(crCompound);
    if (parser_) parser_->RemoveNotifier(this);
    parser_ = parser;
    if (parser_)
        parser_->AddNotifier(this, [this](TCustomEasyParser& sender) {
            // A parser going away leaves the text unstyled, as SetParser(nullptr) would.
            if (sender.Destroying()) parser_ = nullptr;
            ParserChanged();
        });
    ParserChanged();
    EndUpdate();
}

void TCustomEasyEditSource::ParserChanged() {
    BeginUpdate(crCompound);
    InvalidateLines(0, MaxInt);
    parsedTo_ = 0;
    changeFlags_ |= cfAll;
    RebuildDelimiters();
    // Looked up before the views hear of it: a view parses what it shows
    // while it is told.
    TCustomEasyParser* p = parser_;
    urlStyle_ = p ? p->IndexOfToken(kUrlStyleName) : -1;
    for (auto& [name, code] : SpellStyles) code = p ? p->IndexOfToken(name) : -1;
    EndUpdate();
}

void TCustomEasyEditSource::SpellStylesChanged() {
    TCustomEasyParser* p = parser_;
    for (auto& [name, code] : SpellStyles) code = p ? p->IndexOfToken(name) : -1;
    if (Has(srLiveSpell)) ParserChanged();
}

void TCustomEasyEditSource::ParseLines(int first, int last, bool force) {
    const bool spell = Has(srLiveSpell) && CanParse();
    const bool urls = Has(srHighlightUrls) && CanParse();
    TCustomEasyParser* parser = parser_;
    if (!parser && !spell && !urls) return;
    if (spell) spellDelimiters_ = Delimiters | PunctuationChars();
    last = std::min(last, LineCount() - 1);
    if (first < 0) first = 0;
    int state = first > 0 ? strings_->GetLineState(first - 1) : (parser ? parser->DefaultState() : 0);
    const std::uint16_t urlCode =
        urlStyle_ >= 0 ? static_cast<std::uint16_t>(urlStyle_) : parser ? 32759 : 8;
    for (int y = first; y <= last; ++y) {
        TEasyStringRec* r = strings_->Record(y);
        // The cache holds: same text (flag kept) and same entering state.
        if (!force && (r->Flags & lfParsed) && r->BeginState == static_cast<std::uint16_t>(state)) {
            state = r->EndState;
            continue;
        }
        r->BeginState = static_cast<std::uint16_t>(state);
        const std::string_view text = r->Text.View();
        r->Styles.Resize(0);
        r->Styles.Resize(static_cast<int>(text.size()), kNoStyle);
        if (parser) {
            parser->SetLineIndex(y);
            state = parser->ScanLine(state, text, [r](const TEasyTokenPiece& piece) {
                r->Styles.Fill(piece.Start - 1, static_cast<std::uint16_t>(piece.Token), piece.Length + 1);
            });
        }
        r->Flags |= lfParsed;
        r->EndState = static_cast<std::uint16_t>(state);
        if (urls) MarkUrls(text, r->Styles, urlCode);
        if (spell) SpellLine(y);
    }
}

void TCustomEasyEditSource::ParseTo(int line) {
    line = std::min(line, LineCount() - 1);
    if (line < parsedTo_) return;
    ParseLines(parsedTo_, line, false);
    parsedTo_ = line + 1;
}

bool TCustomEasyEditSource::ReparseLine(int y) {
    if (!(parser_ || Has(srLiveSpell)) || !strings_->Record(y)) return false;
    // EndState keeps its old value while the flag is cleared, so the answer
    // compares with what the line ended in before the edit.
    const std::uint16_t before = strings_->Record(y)->EndState;
    ParseLines(y, y, true);
    return strings_->Record(y)->EndState != before;
}

bool TCustomEasyEditSource::CheckWord(std::string_view word) {
    const TEasyCharSet& punct = PunctuationChars();
    auto trimmed = [&](unsigned char c) { return c <= ' ' || punct.test(c); };
    while (!word.empty() && trimmed(static_cast<unsigned char>(word.front()))) word.remove_prefix(1);
    while (!word.empty() && trimmed(static_cast<unsigned char>(word.back()))) word.remove_suffix(1);
    return OnWordSpell ? OnWordSpell(*this, word) : true;
}

void TCustomEasyEditSource::SpellLine(int y) {
    TEasyStringRec* r = strings_->Record(y);
    const std::string_view text = r->Text.View();
    const bool hasParser = parser_ != nullptr;
    const int n = static_cast<int>(text.size());
    int i = 0;
    while (i < n) {
        if (spellDelimiters_.test(static_cast<unsigned char>(text[static_cast<size_t>(i)]))) {
            ++i;
            continue;
        }
        int end = i;
        while (end < n && !spellDelimiters_.test(static_cast<unsigned char>(text[static_cast<size_t>(end)]))) ++end;
        const int start = i;
        i = end;
        // The word being typed is left alone until the caret leaves it.
        if ((changeFlags_ & cfText) && y == caret_.Y && caret_.X >= start && caret_.X <= end) continue;
        const std::uint16_t code = r->Styles.At(start);
        if (hasParser && code != kNoStyle &&
            std::none_of(SpellStyles.begin(), SpellStyles.end(), [code](const auto& s) { return s.second == code; }))
            continue;
        if (CheckWord(text.substr(static_cast<size_t>(start), static_cast<size_t>(end - start)))) continue;
        const std::uint16_t bad = code == kNoStyle ? 65534 : static_cast<std::uint16_t>(code + 32767);
        r->Styles.Fill(start, bad, end - start);
    }
}

// ---- Files --------------------------------------------------------------------------------------------

void TCustomEasyEditSource::LoadFromStream(std::istream& stream) { strings_->LoadFromStream(stream); }

void TCustomEasyEditSource::SaveToStream(std::ostream& stream) { strings_->SaveToStream(stream); }

void TCustomEasyEditSource::SaveToFile(const std::string& name) {
    FileName = name;
    // Through SaveToStream, so that a source with a form of its own (the rich
    // source) is saved in it.
    std::ofstream out(name, std::ios::binary | std::ios::trunc);
    if (!out) throw Exception("Cannot create file \"" + name + "\". " + std::strerror(errno));
    SaveToStream(out);
    out.close();
    if (!out) throw Exception("Cannot write file \"" + name + "\". " + std::strerror(errno));
}

void TCustomEasyEditSource::Clear() { strings_->Clear(); }

}  // namespace zorfa::text
