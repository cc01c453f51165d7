#pragma once
// The screen cursor: the hourglass during long operations, the default after.
// Setting a shape replaces the one before (like the screen cursor property),
// it does not stack. QtCursor sets it, RecordingCursor records it for tests.

#include <vector>

namespace zorfa::platform {

enum class CursorShape { Default, Hourglass };

class CursorControl {
public:
    virtual ~CursorControl() = default;
    virtual void set(CursorShape shape) = 0;
    virtual CursorShape current() const = 0;
};

class RecordingCursor final : public CursorControl {
public:
    void set(CursorShape shape) override {
        current_ = shape;
        history_.push_back(shape);
    }
    CursorShape current() const override { return current_; }
    // Every shape set, in order.
    const std::vector<CursorShape>& history() const noexcept { return history_; }
    void clear() { history_.clear(); }

private:
    CursorShape current_ = CursorShape::Default;
    std::vector<CursorShape> history_;
};

// The application's override cursor (QApplication::setOverrideCursor). Default
// removes every override this object set.
class QtCursor final : public CursorControl {
public:
    void set(CursorShape shape) override;
    CursorShape current() const override { return current_; }

private:
    CursorShape current_ = CursorShape::Default;
};

}  // namespace zorfa::platform
