#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QGuiApplication>
#include <QTimer>

#include <new>

#include "base/Errors.h"
#include "platform/Application.h"
#include "platform/CatchAll.h"
#include "platform/Cursor.h"
#include "platform/ScriptedDialogs.h"

namespace zorfa::platform {
namespace {

// A cursor that notes, at each set, how many boxes had been shown by then.
class OrderCursor final : public CursorControl {
public:
    explicit OrderCursor(const ScriptedDialogs& dialogs) : dialogs_(dialogs) {}
    void set(CursorShape shape) override {
        shape_ = shape;
        boxesAtSet.push_back(dialogs_.asked().size());
    }
    CursorShape current() const override { return shape_; }
    std::vector<size_t> boxesAtSet;

private:
    const ScriptedDialogs& dialogs_;
    CursorShape shape_ = CursorShape::Hourglass;
};

class CatchAllTest : public ::testing::Test {
protected:
    ScriptedDialogs dialogs;
    RecordingCursor cursor;
    CatchAll catchAll{dialogs, cursor};
};

TEST_F(CatchAllTest, ACompletedRunShowsNothing) {
    int ran = 0;
    EXPECT_TRUE(catchAll.run([&] { ++ran; }));
    EXPECT_EQ(ran, 1);
    EXPECT_TRUE(dialogs.asked().empty());
    EXPECT_TRUE(cursor.history().empty());
}

TEST_F(CatchAllTest, TheMessageAndHelpContextGoToTheErrorBox) {
    cursor.set(CursorShape::Hourglass);
    EXPECT_FALSE(catchAll.run([] { throw Exception("Cannot open file \"x.txt\". No such file or directory", 17); }));
    EXPECT_EQ(cursor.current(), CursorShape::Default);
    ASSERT_EQ(dialogs.asked().size(), 1u);
    EXPECT_EQ(dialogs.last().kind, BoxKind::ErrorHelp);
    EXPECT_EQ(dialogs.last().text, "Cannot open file \"x.txt\". No such file or directory");
    EXPECT_EQ(dialogs.last().helpContext, 17);
    EXPECT_EQ(dialogs.last().buttons, (std::vector<std::string>{"OK", "Help"}));
}

TEST_F(CatchAllTest, TheCursorIsResetBeforeTheBox) {
    OrderCursor order(dialogs);
    CatchAll guarded(dialogs, order);
    guarded.run([] { throw Exception("x"); });
    ASSERT_EQ(order.boxesAtSet.size(), 1u);
    EXPECT_EQ(order.boxesAtSet[0], 0u);  // no box yet when the cursor was set
    EXPECT_EQ(order.current(), CursorShape::Default);
    EXPECT_EQ(dialogs.asked().size(), 1u);
}

TEST_F(CatchAllTest, AbortIsSilentButStillResetsTheCursor) {
    cursor.set(CursorShape::Hourglass);
    EXPECT_FALSE(catchAll.run([] { throw EAbort(); }));
    EXPECT_TRUE(dialogs.asked().empty());
    EXPECT_EQ(cursor.current(), CursorShape::Default);
}

TEST_F(CatchAllTest, OtherExceptionTypes) {
    catchAll.run([] { throw std::runtime_error("plain runtime error"); });
    EXPECT_EQ(dialogs.last().text, "plain runtime error");
    EXPECT_EQ(dialogs.last().helpContext, 0);
    catchAll.run([] { throw std::bad_alloc(); });
    EXPECT_EQ(dialogs.last().text, "Out of memory");
    catchAll.run([] { throw 42; });
    EXPECT_EQ(dialogs.last().text, "Unknown exception");
    struct Odd {};
    catchAll.run([] { throw Odd{}; });
    EXPECT_EQ(dialogs.last().text, "Unknown exception");
    EXPECT_EQ(dialogs.asked().size(), 4u);
}

TEST_F(CatchAllTest, TheDatabaseBoxIsPreferredWhileItHasErrors) {
    bool hasErrors = true;
    int shown = 0;
    catchAll.setDatabaseErrorHandler({[&] { return hasErrors; }, [&] { ++shown; }});
    catchAll.run([] { throw Exception("[Microsoft][ODBC] syntax error"); });
    EXPECT_EQ(shown, 1);
    EXPECT_TRUE(dialogs.asked().empty());
    EXPECT_EQ(cursor.history().front(), CursorShape::Default);
    hasErrors = false;
    catchAll.run([] { throw Exception("ordinary"); });
    EXPECT_EQ(shown, 1);
    EXPECT_EQ(dialogs.last().text, "ordinary");
    // Abort stays silent even while the connection holds errors.
    hasErrors = true;
    catchAll.run([] { throw EAbort(); });
    EXPECT_EQ(shown, 1);
}

TEST_F(CatchAllTest, NothingEscapesEvenWhenTheHandlerThrows) {
    catchAll.setDatabaseErrorHandler({[]() -> bool { throw std::runtime_error("handler broke"); }, [] {}});
    EXPECT_NO_THROW(catchAll.run([] { throw Exception("x"); }));
    // An unscripted question inside the command fails the double and is caught
    // here like any other exception; the double keeps the failure on record.
    catchAll.setDatabaseErrorHandler({});
    EXPECT_NO_THROW(catchAll.run([&] { dialogs.askYesNo("Delete selected item ?"); }));
    EXPECT_EQ(dialogs.unexpected().size(), 1u);
    EXPECT_EQ(dialogs.last().kind, BoxKind::ErrorHelp);
}

TEST_F(CatchAllTest, HandleTakesAnExceptionCaughtElsewhere) {
    std::exception_ptr caught;
    try {
        throw Exception("load failed", 5);
    } catch (...) {
        caught = std::current_exception();
    }
    catchAll.handle(caught);
    EXPECT_EQ(dialogs.last().text, "load failed");
    EXPECT_EQ(dialogs.last().helpContext, 5);
    EXPECT_EQ(CatchAll::messageOf(std::make_exception_ptr(EAbort())), "");
}

TEST_F(CatchAllTest, NoExceptionCrossesTheEventLoop) {
    auto* app = qobject_cast<Application*>(QCoreApplication::instance());
    ASSERT_NE(app, nullptr);
    app->setCatchAll(&catchAll);
    bool after = false;
    QTimer::singleShot(0, [] { throw Exception("from a timer", 3); });
    QTimer::singleShot(0, [&] { after = true; });
    QTimer::singleShot(10, [] { QCoreApplication::quit(); });
    QCoreApplication::exec();
    app->setCatchAll(nullptr);
    EXPECT_TRUE(after);  // the loop went on
    ASSERT_EQ(dialogs.asked().size(), 1u);
    EXPECT_EQ(dialogs.last().text, "from a timer");
    EXPECT_EQ(dialogs.last().helpContext, 3);
}

TEST(QtCursor, HourglassIsAnOverrideThatDefaultRemoves) {
    QtCursor cursor;
    cursor.set(CursorShape::Hourglass);
    ASSERT_NE(QGuiApplication::overrideCursor(), nullptr);
    EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
    cursor.set(CursorShape::Hourglass);  // not stacked
    cursor.set(CursorShape::Default);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    EXPECT_EQ(cursor.current(), CursorShape::Default);
    cursor.set(CursorShape::Default);  // nothing to remove, nothing goes wrong
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST(RecordingCursor, RecordsEveryShape) {
    RecordingCursor cursor;
    cursor.set(CursorShape::Hourglass);
    cursor.set(CursorShape::Default);
    EXPECT_EQ(cursor.history(), (std::vector<CursorShape>{CursorShape::Hourglass, CursorShape::Default}));
}

}  // namespace
}  // namespace zorfa::platform
