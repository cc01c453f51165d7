#pragma once
// Scope guards of TcxSSDataStorage, shared by its source files only.

#include "sheet/DataStorage.h"

namespace zorfa::sheet {

// Locked: the storage records no undo and asks no questions, and the listener
// reports nothing until the scope ends.
class TcxSSDataStorage::LockScope {
public:
    explicit LockScope(TcxSSDataStorage& storage) : storage_(storage), listener_(*storage.listener_) {
        ++storage_.locked_;
        listener_.lock();
    }
    ~LockScope() {
        listener_.unlock();
        --storage_.locked_;
    }
    LockScope(const LockScope&) = delete;
    LockScope& operator=(const LockScope&) = delete;

private:
    TcxSSDataStorage& storage_;
    TcxSSListener& listener_;
};

// One history action around an operation, when history records at its start.
class TcxSSDataStorage::ActionScope {
public:
    ActionScope(TcxSSDataStorage& storage, const StorageAction& action)
        : storage_(storage), on_(storage.historyOn()) {
        if (on_) storage_.history_->beginAction(storage_, action);
    }
    ~ActionScope() {
        if (on_) storage_.history_->endAction(storage_);
    }
    ActionScope(const ActionScope&) = delete;
    ActionScope& operator=(const ActionScope&) = delete;

private:
    TcxSSDataStorage& storage_;
    bool on_;
};

}  // namespace zorfa::sheet
