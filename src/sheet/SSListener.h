#pragma once
// The two ways a cell storage talks to its book: TcxSSListener carries the
// events (each swallowed while the listener is locked, so bulk operations
// report once at the end), and StorageHistory records what undo needs.
// Both are interfaces here; the book implements them. A storage without a
// book uses a listener that reports nothing and no history.

#include <cstdint>
#include <string_view>
#include <vector>

#include "sheet/CellFormulaLink.h"
#include "sheet/SheetUtils.h"

namespace zorfa::sheet {

class TcxSSDataStorage;
struct CellRecord;

class TcxSSListener {
public:
    virtual ~TcxSSListener() = default;

    void lock() noexcept { ++lockCount_; }
    void unlock() noexcept {
        if (lockCount_ > 0) --lockCount_;
    }
    bool isLocked() const noexcept { return lockCount_ > 0; }

    // Not an event: every change marks the book modified, locked or not.
    void markModified() { doMarkModified(); }

    // kind 0: the column count changed; 1: the row count.
    void countChanged(int kind, std::int32_t count) {
        if (!isLocked()) doCountChanged(kind, count);
    }
    void cellChanged(std::int32_t column, std::int32_t row) {
        if (!isLocked()) doCellChanged(column, row);
    }
    // A question: may these cells be cleared? A locked listener answers yes.
    bool canClearCells(const CellRect& rect) { return isLocked() || doCanClearCells(rect); }
    void cellsCleared(const CellRect& rect) {
        if (!isLocked()) doCellsCleared(rect);
    }
    void mergeChanged(const CellRect& rect, bool merged) {
        if (!isLocked()) doMergeChanged(rect, merged);
    }
    // Rows, columns or cells moved: the view lays itself out again.
    void layoutChanged() {
        if (!isLocked()) doLayoutChanged();
    }

protected:
    virtual void doMarkModified() {}
    virtual void doCountChanged(int kind, std::int32_t count) {}
    virtual void doCellChanged(std::int32_t column, std::int32_t row) {}
    virtual bool doCanClearCells(const CellRect& rect) { return true; }
    virtual void doCellsCleared(const CellRect& rect) {}
    virtual void doMergeChanged(const CellRect& rect, bool merged) {}
    virtual void doLayoutChanged() {}

private:
    int lockCount_ = 0;
};

// Locks a listener for a scope.
class ListenerLock {
public:
    explicit ListenerLock(TcxSSListener& listener) : listener_(listener) { listener_.lock(); }
    ~ListenerLock() { listener_.unlock(); }
    ListenerLock(const ListenerLock&) = delete;
    ListenerLock& operator=(const ListenerLock&) = delete;

private:
    TcxSSListener& listener_;
};

// One undoable operation of a storage; the cell changes reported between
// beginAction and endAction belong to it.
struct StorageAction {
    enum class Kind : std::uint8_t { ClearCells, InsertCells, DeleteCells, MergeCells, SplitCells, SortCells };

    Kind kind = Kind::ClearCells;
    CellRect rect;
    ShiftMode mode = ShiftMode::Horizontal;        // InsertCells, DeleteCells
    const std::vector<CellRect>* mergedBefore = nullptr;  // inclusive; InsertCells, DeleteCells, MergeCells, SplitCells
    // The caption the history shows for the action, where the storage names
    // it ("Delete cells" for clearing); empty leaves the naming to the book.
    std::string_view title;
};

class StorageHistory {
public:
    virtual ~StorageHistory() = default;

    // Off while undo and redo run and while a book is loaded.
    virtual bool isRecording() const = 0;
    virtual void beginAction(TcxSSDataStorage& storage, const StorageAction& action) = 0;
    // The cell as it was, just before the storage changes it.
    virtual void cellChanging(TcxSSDataStorage& storage, std::int32_t column, std::int32_t row,
                              const CellRecord& before) = 0;
    virtual void endAction(TcxSSDataStorage& storage) = 0;
};

}  // namespace zorfa::sheet
