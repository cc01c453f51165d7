#include "text/EasyStrings.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <istream>
#include <new>
#include <ostream>

#include "base/Errors.h"
#include "base/FileErrors.h"
#include "text/EasyLineSplit.h"
#include "text/EasyMemory.h"

namespace zorfa::text {

namespace {

// Records come in chunks: loading a million lines is one allocation, and a
// later insert takes a record from a small chunk or the free list.
constexpr int kSmallChunk = 256;

// Closes `fd` and throws the message for the errno of the failed call.
[[noreturn]] void CloseAndThrow(int fd, const char* what, const std::string& path) {
    const int error = errno;
    ::close(fd);
    throwFileError(what, path, error);
}

}  // namespace

#if defined(__x86_64__) || defined(__aarch64__)
static_assert(sizeof(TEasyStringRec) == 40, "a line record is meant to be 40 bytes: a million lines of a file");
#endif

void TEasyStringRec::Reset() noexcept {
    Text.Clear();
    Styles.Clear();
    LineObject = nullptr;
    EndState = 0;
    BeginState = 0;
    Paragraph = 65535;
    StartStyle = 65535;
    Flags = 0;
    Hidden = false;
    FoldLevel = 0;
}

// A run of records allocated at once. Raw memory, so that a large chunk can
// be advised huge pages, and records are constructed only when handed out:
// a loaded file's million records are written once.
struct TEasyStrings::RecordChunk {
    explicit RecordChunk(int capacity) : capacity(capacity) {
        const std::size_t bytes = static_cast<std::size_t>(capacity) * sizeof(TEasyStringRec);
        records = static_cast<TEasyStringRec*>(::operator new(bytes));
        AdviseLargeBlock(records, bytes);
    }
    ~RecordChunk() {
        for (int i = 0; i < constructed; ++i) records[i].~TEasyStringRec();
        ::operator delete(records);
    }
    RecordChunk(const RecordChunk&) = delete;
    RecordChunk& operator=(const RecordChunk&) = delete;

    TEasyStringRec* records;
    int capacity;
    int constructed = 0;
};

TEasyStrings::TEasyStrings() = default;

TEasyStrings::~TEasyStrings() {
    // No notification fires during destruction.
    OnChange = nullptr;
    OnChanging = nullptr;
    OnConvertLine = nullptr;
    updating_ = true;
    FreeAll();
    std::free(list_);
}

// ---- Records ------------------------------------------------------------------

void TEasyStrings::ReserveRecords(int count) {
    RecordChunk* chunk = chunks_.empty() ? nullptr : chunks_.back().get();
    const int available = (chunk ? chunk->capacity - chunk->constructed : 0) + static_cast<int>(freeRecords_.size());
    if (available >= count) return;
    // What is left of the current chunk stays usable through the free list.
    for (; chunk && chunk->constructed < chunk->capacity; ++chunk->constructed)
        freeRecords_.push_back(new (chunk->records + chunk->constructed) TEasyStringRec());
    const int missing = count - static_cast<int>(freeRecords_.size());
    chunks_.push_back(std::make_unique<RecordChunk>(std::max(missing, kSmallChunk)));
}

TEasyStringRec* TEasyStrings::NewRecord() {
    // The current chunk first, so that a load's records lie in line order.
    RecordChunk* chunk = chunks_.empty() ? nullptr : chunks_.back().get();
    if (chunk && chunk->constructed < chunk->capacity)
        return new (chunk->records + chunk->constructed++) TEasyStringRec();
    if (!freeRecords_.empty()) {
        TEasyStringRec* record = freeRecords_.back();
        freeRecords_.pop_back();
        return record;
    }
    ReserveRecords(kSmallChunk);
    chunk = chunks_.back().get();
    return new (chunk->records + chunk->constructed++) TEasyStringRec();
}

void TEasyStrings::FreeRecord(TEasyStringRec* record) noexcept {
    record->Reset();
    freeRecords_.push_back(record);
}

void TEasyStrings::FreeAll() noexcept {
    // The chunks' destructors free what the records own.
    chunks_.clear();
    freeRecords_.clear();
    freeRecords_.shrink_to_fit();
    blocks_.clear();
    count_ = 0;
}

void TEasyStrings::SetCapacityRaw(int capacity) {
    if (capacity < count_) capacity = count_;
    if (capacity == capacity_) return;
    list_ = static_cast<TEasyStringRec**>(ResizeBlock(list_, static_cast<std::size_t>(capacity) * sizeof(TEasyStringRec*)));
    capacity_ = capacity;
}

void TEasyStrings::Grow() {
    const int delta = capacity_ > 64 ? capacity_ / 4 : capacity_ > 8 ? 16 : 4;
    SetCapacityRaw(capacity_ + delta);
}

void TEasyStrings::SetCapacity(int capacity) {
    if (capacity < count_) return;
    SetCapacityRaw(capacity);
    RebuildVisibleLines();
}

TEasyStringRec* TEasyStrings::Record(int index) {
    return index >= 0 && index < count_ ? list_[index] : nullptr;
}

const TEasyStringRec* TEasyStrings::Record(int index) const {
    return index >= 0 && index < count_ ? list_[index] : nullptr;
}

// ---- TStrings part ------------------------------------------------------------

void TEasyStrings::ConvertStored(TEasyLineText& text) {
    std::string converted(text.View());
    OnConvertLine(*this, converted, true);
    if (converted != text.View()) text.Assign(converted);
}

std::string TEasyStrings::Get(int index) const {
    const TEasyStringRec* record = Record(index);
    if (!record) return {};
    std::string text(record->Text.View());
    if (OnConvertLine) OnConvertLine(const_cast<TEasyStrings&>(*this), text, false);
    return text;
}

void TEasyStrings::Put(int index, std::string_view text) {
    TEasyStringRec* record = Record(index);
    if (!record) return;
    Changing();
    record->Text.Assign(text);
    if (OnConvertLine) ConvertStored(record->Text);
    MarkChanged(index, index);
    Changed();
}

void TEasyStrings::SetRawLine(int index, std::string_view text) {
    TEasyStringRec* record = Record(index);
    if (!record) return;
    Changing();
    record->Text.Assign(text);
    MarkChanged(index, index);
    Changed();
}

void* TEasyStrings::GetObject(int index) const {
    const TEasyStringRec* record = Record(index);
    return record ? record->LineObject : nullptr;
}

void TEasyStrings::PutObject(int index, void* object) {
    TEasyStringRec* record = Record(index);
    if (!record) return;
    Changing();
    record->LineObject = object;
    Changed();
}

int TEasyStrings::Add(std::string_view text) {
    const int index = count_;
    Insert(index, text);
    return index;
}

void TEasyStrings::Insert(int index, std::string_view text) {
    if (index < 0 || index > count_) return;
    Changing();
    if (count_ == capacity_) Grow();
    TEasyStringRec* record = NewRecord();
    record->Text.Assign(text);
    std::memmove(list_ + index + 1, list_ + index, static_cast<std::size_t>(count_ - index) * sizeof(TEasyStringRec*));
    list_[index] = record;
    if (OnConvertLine) ConvertStored(record->Text);
    ++count_;
    // An entry equal to `index` stays: the new line takes over that number.
    if (useVisibleLines_) visibleLines_.ShiftAbove(index, 1);
    MarkChanged(index, MaxInt);
    Changed();
}

void TEasyStrings::Delete(int index) {
    if (index < 0 || index >= count_) return;
    Changing();
    TEasyStringRec* record = list_[index];
    record->Text.Clear();
    record->Styles.Clear();
    if (useVisibleLines_) {
        visibleLines_.RemoveLine(index);
        visibleLines_.ShiftAbove(index, -1);
    }
    FreeRecord(record);
    --count_;
    std::memmove(list_ + index, list_ + index + 1, static_cast<std::size_t>(count_ - index) * sizeof(TEasyStringRec*));
    MarkChanged(index, MaxInt);
    Changed();
}

void TEasyStrings::Clear() {
    if (count_ == 0) {
        // Nothing visible changes; storage goes quietly.
        FreeAll();
        return;
    }
    Changing();
    FreeAll();
    SetCapacityRaw(0);
    MarkChanged(0, MaxInt);
    RebuildVisibleLines();
    Changed();
}

void TEasyStrings::Exchange(int index1, int index2) {
    TEasyStringRec* a = Record(index1);
    TEasyStringRec* b = Record(index2);
    if (!a || !b) return;
    Changing();
    // Flags, states, Hidden and FoldLevel stay with the line numbers.
    a->Text.Swap(b->Text);
    a->Styles.Swap(b->Styles);
    std::swap(a->LineObject, b->LineObject);
    MarkChanged(std::min(index1, index2), std::max(index1, index2));
    Changed();
}

std::string TEasyStrings::GetText() const {
    std::string text;
    for (int i = 0; i < count_; ++i) {
        text += Get(i);
        text += "\r\n";
    }
    return text;
}

void TEasyStrings::SetText(std::string_view text) { LoadFromBuffer(text); }

// ---- Updates and notifications --------------------------------------------------

void TEasyStrings::SetUpdateState(bool updating) {
    if (updating) {
        ChangedFrom = -1;
        ChangedTo = -1;
        Changing();  // still not updating: the batch's one OnChanging
        updating_ = true;
    } else {
        updating_ = false;
        Changed();  // the batch's one OnChange
    }
}

void TEasyStrings::BeginUpdate() {
    if (updateCount_ == 0) SetUpdateState(true);
    ++updateCount_;
}

void TEasyStrings::EndUpdate() {
    if (updateCount_ <= 0) return;
    if (--updateCount_ == 0) SetUpdateState(false);
}

void TEasyStrings::Changed() {
    if (!updating_ && OnChange) OnChange(*this);
}

void TEasyStrings::Changing() {
    if (!updating_ && OnChanging) OnChanging(*this);
}

void TEasyStrings::MarkChanged(int from, int to) {
    ChangedFrom = ChangedFrom == -1 ? from : std::min(ChangedFrom, from);
    ChangedTo = std::max(ChangedTo, to);
}

// ---- Styles and states -----------------------------------------------------------

std::string_view TEasyStrings::GetRawLine(int index) const {
    const TEasyStringRec* record = Record(index);
    return record ? record->Text.View() : std::string_view();
}

std::span<const std::uint16_t> TEasyStrings::GetStyleString(int index) const {
    const TEasyStringRec* record = Record(index);
    return record ? record->Styles.Span() : std::span<const std::uint16_t>();
}

std::uint16_t TEasyStrings::GetLineState(int index) const {
    const TEasyStringRec* record = Record(index);
    return record ? record->EndState : 0;
}

void TEasyStrings::SetLineStyle(int index, int position, std::uint16_t code, int count) {
    TEasyStringRec* record = Record(index);
    if (record) record->Styles.Fill(position - 1, code, count);
}

std::uint16_t TEasyStrings::GetCharStyle(int index, int position) const {
    const TEasyStringRec* record = Record(index);
    return record ? record->Styles.At(position - 1) : kNoStyle;
}

// ---- Loading and saving ------------------------------------------------------------

void TEasyStrings::LoadFromBlock(std::unique_ptr<char[]> block, std::size_t size) {
    BeginUpdate();
    Clear();
    const char* data = block.get();
    std::size_t lines = 0;
    const char* end = size ? ScanText(data, data + size, lines) : data;  // the text ends at the first NUL
    if (lines) {
        blocks_.push_back(std::move(block));
        try {
            SplitBlock(data, end, lines);
        } catch (...) {  // out of memory: the update must not stay open
            EndUpdate();
            throw;
        }
    }
    EndUpdate();
}

void TEasyStrings::SplitBlock(const char* data, const char* end, std::size_t lines) {
    if (lines > static_cast<std::size_t>(MaxInt - count_)) throw std::bad_alloc();
    SetCapacityRaw(count_ + static_cast<int>(lines));
    // One chunk of exactly `lines` records, constructed here one by one in
    // line order.
    if (chunks_.empty() || chunks_.back()->capacity - chunks_.back()->constructed < static_cast<int>(lines))
        chunks_.push_back(std::make_unique<RecordChunk>(static_cast<int>(lines)));
    RecordChunk& chunk = *chunks_.back();
    const int first = count_;
    SplitLines(data, end, [this, &chunk](const char* start, std::size_t length) {
        TEasyStringRec* record = new (chunk.records + chunk.constructed++) TEasyStringRec();
        record->Text.Borrow(start, static_cast<std::uint32_t>(length));
        list_[count_++] = record;
    });
    // Tabs reach the hook line by line, as if each piece had been added.
    if (OnConvertLine)
        for (int i = first; i < count_; ++i) ConvertStored(list_[i]->Text);
    if (count_ > first) MarkChanged(first, MaxInt);
}

void TEasyStrings::LoadFromBuffer(std::string_view bytes) {
    std::unique_ptr<char[]> block(new char[bytes.size() ? bytes.size() : 1]);
    if (!bytes.empty()) std::memcpy(block.get(), bytes.data(), bytes.size());
    LoadFromBlock(std::move(block), bytes.size());
}

void TEasyStrings::LoadFromStream(std::istream& stream) {
    // The remainder of the stream as one block.
    std::vector<char> bytes;
    char buffer[65536];
    while (stream.read(buffer, sizeof buffer) || stream.gcount() > 0)
        bytes.insert(bytes.end(), buffer, buffer + stream.gcount());
    LoadFromBuffer(std::string_view(bytes.data(), bytes.size()));
}

void TEasyStrings::LoadFromFile(const std::string& path) {
    const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) throwFileError("Cannot open file", path, errno);
    struct stat info {};
    if (::fstat(fd, &info) != 0) CloseAndThrow(fd, "Cannot open file", path);
    if (S_ISDIR(info.st_mode)) {
        errno = EISDIR;
        CloseAndThrow(fd, "Cannot open file", path);
    }
    // A regular file of known size is read in one read; a pipe, a device or a
    // file that claims 0 bytes (as /proc files do) is read to its end.
    const bool regular = S_ISREG(info.st_mode) && info.st_size > 0;
    std::size_t capacity = regular ? static_cast<std::size_t>(info.st_size) : 65536;
    std::unique_ptr<char[]> block(new char[capacity ? capacity : 1]);
    AdviseLargeBlock(block.get(), capacity);
    std::size_t size = 0;
    for (;;) {
        if (size == capacity) {
            if (regular) break;
            capacity *= 2;
            std::unique_ptr<char[]> bigger(new char[capacity]);
            std::memcpy(bigger.get(), block.get(), size);
            block = std::move(bigger);
        }
        const ssize_t n = ::read(fd, block.get() + size, capacity - size);
        if (n < 0) {
            if (errno == EINTR) continue;
            CloseAndThrow(fd, "Cannot read file", path);
        }
        if (n == 0) break;
        size += static_cast<std::size_t>(n);
    }
    ::close(fd);
    LoadFromBlock(std::move(block), size);
}

std::unique_ptr<char[]> TEasyStrings::BuildSaveBlock(std::size_t& size) const {
    const char* brk = LineBreak == lbCRLF ? "\r\n" : LineBreak == lbCR ? "\r" : "\n";
    const std::size_t brkSize = LineBreak == lbCRLF ? 2 : 1;
    size = static_cast<std::size_t>(count_) * brkSize;
    for (int i = 0; i < count_; ++i) size += static_cast<std::size_t>(list_[i]->Text.Size());
    if (size == 0) return nullptr;
    std::unique_ptr<char[]> block(new char[size]);
    AdviseLargeBlock(block.get(), size);
    char* out = block.get();
    for (int i = 0; i < count_;) {
        // Untouched loaded lines that lie one after the other in their read
        // buffer, separated by exactly the break being written, go out in
        // one copy: a file saved with the break it was loaded with is one
        // block move. (Two borrowed texts that far apart lie in one block,
        // so the bytes between them are readable.)
        const TEasyLineText& first = list_[i]->Text;
        const char* runEnd = first.Data() + first.Size();
        int next = i + 1;
        if (!first.Owned()) {
            while (next < count_) {
                const TEasyLineText& text = list_[next]->Text;
                if (text.Owned() || text.Data() != runEnd + brkSize || runEnd[0] != brk[0] ||
                    (brkSize == 2 && runEnd[1] != brk[1]))
                    break;
                runEnd = text.Data() + text.Size();
                ++next;
            }
        }
        const std::size_t length = static_cast<std::size_t>(runEnd - first.Data());
        if (length) std::memcpy(out, first.Data(), length);
        out += length;
        out[0] = brk[0];
        if (brkSize == 2) out[1] = brk[1];
        out += brkSize;
        i = next;
    }
    return block;
}

std::string TEasyStrings::SaveToBuffer() const {
    std::size_t size = 0;
    std::unique_ptr<char[]> block = BuildSaveBlock(size);
    return std::string(block.get() ? block.get() : "", size);
}

void TEasyStrings::SaveToStream(std::ostream& stream) const {
    std::size_t size = 0;
    std::unique_ptr<char[]> block = BuildSaveBlock(size);
    if (size) stream.write(block.get(), static_cast<std::streamsize>(size));
}

void TEasyStrings::SaveToFile(const std::string& path) const {
    std::size_t size = 0;
    std::unique_ptr<char[]> block = BuildSaveBlock(size);
    const int fd = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    if (fd < 0) throwFileError("Cannot create file", path, errno);
    std::size_t written = 0;
    while (written < size) {
        const ssize_t n = ::write(fd, block.get() + written, size - written);
        if (n < 0) {
            if (errno == EINTR) continue;
            CloseAndThrow(fd, "Cannot write file", path);
        }
        written += static_cast<std::size_t>(n);
    }
    if (::close(fd) != 0) throwFileError("Cannot write file", path, errno);
}

// ---- Folding -------------------------------------------------------------------------

void TEasyStrings::RebuildVisibleLines() {
    visibleLines_.Clear();
    if (!useVisibleLines_) return;
    for (int i = 0; i < count_; ++i)
        if (list_[i]->Hidden) visibleLines_.AddLine(i);
}

void TEasyStrings::SetUseVisibleLines(bool value) {
    useVisibleLines_ = value;
    RebuildVisibleLines();
}

void TEasyStrings::SetVisible(int index, bool visible) {
    list_[index]->Hidden = !visible;
    if (!useVisibleLines_) return;
    if (visible)
        visibleLines_.RemoveLine(index);
    else
        visibleLines_.AddLine(index);
}

void TEasyStrings::SetHidden(int index, bool hidden) {
    if (index >= 0 && index < count_) SetVisible(index, !hidden);
}

bool TEasyStrings::IsLineVisible(int index) const {
    if (!useVisibleLines_) return true;
    return visibleLines_.IndexOfLine(index) < 0;
}

int TEasyStrings::HiddenCount() const { return useVisibleLines_ ? visibleLines_.Count() : 0; }

bool TEasyStrings::IsExpanded(int index) const {
    const TEasyStringRec* record = Record(index);
    return record && (record->Flags & lfExpanded);
}

bool TEasyStrings::IsCollapsed(int index) const {
    const TEasyStringRec* record = Record(index);
    return record && (record->Flags & lfCollapsed);
}

void TEasyStrings::SetExpanded(int index, bool value) { SetFoldState(index, value, false); }

void TEasyStrings::SetCollapsed(int index, bool value) { SetFoldState(index, false, value); }

template <class Change>
void TEasyStrings::RunFoldChange(int index, Change change) {
    // FoldChanging tells the owner's change handler that this is a fold
    // change, not a text change.
    const bool wasFoldChanging = FoldChanging;
    FoldChanging = true;
    Changing();
    change();
    MarkChanged(index, MaxInt);
    Changed();
    FoldChanging = wasFoldChanging;
}

void TEasyStrings::SetFoldState(int index, bool expanded, bool collapsed) {
    TEasyStringRec* record = Record(index);
    if (!record) return;
    RunFoldChange(index, [&] {
        record->Flags &= static_cast<std::uint8_t>(~(lfExpanded | lfCollapsed));
        if (expanded) record->Flags |= lfExpanded;
        if (collapsed) record->Flags |= lfCollapsed;
        ApplyHead(index);
    });
}

void TEasyStrings::ApplyHead(int head) {
    const bool visible = (list_[head]->Flags & lfExpanded) != 0;
    if (head + 1 >= count_) return;
    const std::uint8_t level = list_[head + 1]->FoldLevel;
    for (int n = head + 1; n < count_; ++n) {
        TEasyStringRec* record = list_[n];
        if (!(record->Flags & lfFoldChild) || record->FoldLevel < level) break;
        SetVisible(n, visible);
        // Opening a region opens every region nested in it.
        if (visible && (record->Flags & lfCollapsed))
            record->Flags = static_cast<std::uint8_t>((record->Flags & ~lfCollapsed) | lfExpanded);
    }
}

void TEasyStrings::SetFoldChild(int index, bool visible) {
    TEasyStringRec* record = Record(index);
    if (!record) return;
    if (visible) {
        record->Flags &= static_cast<std::uint8_t>(~lfFoldChild);
    } else {
        record->Flags |= lfFoldChild;
        const TEasyStringRec* previous = index > 0 ? list_[index - 1] : nullptr;
        if (previous && !previous->Hidden && !(previous->Flags & lfCollapsed)) return;
    }
    RunFoldChange(index, [&] { SetVisible(index, visible); });
}

void TEasyStrings::ExpandParents(int index) {
    if (index < 0 || index >= count_) return;
    for (int n = index - 1; n >= 0; --n) {
        if (list_[n]->Flags & lfCollapsed) {
            SetExpanded(n, true);
            return;
        }
    }
}

int TEasyStrings::FindHidden(int key, bool byVisible, bool strict) {
    return visibleLines_.FindHidden(key, byVisible, strict);
}

int TEasyStrings::RealToVisible(int line) {
    if (!useVisibleLines_ || count_ == 0 || visibleLines_.Count() == 0) return line;
    const int p = FindHidden(line, false, false);
    if (p < 0 || p > count_ - 1) return line;
    int result = line - (p + 1);
    // A hidden line maps to the visible line that follows its position.
    if (visibleLines_.Get(p) == line) ++result;
    return result;
}

int TEasyStrings::VisibleToReal(int line) {
    if (!useVisibleLines_ || count_ == 0 || visibleLines_.Count() == 0) return line;
    const int p = FindHidden(line, true, false);
    if (p < 0 || p >= count_) return line;
    return line + p + 1;
}

}  // namespace zorfa::text
