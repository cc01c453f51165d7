// TEasyRecordList: fixed-size records, growth, the index error, and the
// overridable Grow / Error / Clear.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <vector>

#include "base/Errors.h"
#include "text/EasyRecordList.h"

using namespace zorfa::text;

namespace {

struct Step {  // 8 bytes, the shape of an undo record
    std::uint8_t Kind, Reason;
    bool Chained, First;
    std::int32_t Data;
};
static_assert(sizeof(Step) == 8);

Step MakeStep(int data) { return Step{static_cast<std::uint8_t>(data % 7), 1, false, true, data}; }

}  // namespace

TEST(RecordList, AddGetInsertDelete) {
    TEasyRecordList list(sizeof(Step));
    EXPECT_EQ(list.RecordSize(), 8);
    for (int i = 0; i < 5; ++i) {
        Step s = MakeStep(i);
        EXPECT_EQ(list.Add(&s), i);
    }
    Step s = MakeStep(99);
    list.Insert(2, &s);
    ASSERT_EQ(list.Count(), 6);
    EXPECT_EQ(list.At<Step>(2).Data, 99);
    EXPECT_EQ(list.At<Step>(3).Data, 2);
    list.Delete(0);
    EXPECT_EQ(list.At<Step>(0).Data, 1);
    EXPECT_EQ(static_cast<Step*>(list.Last())->Data, 4);
    list.Pop();
    EXPECT_EQ(list.Count(), 4);
    EXPECT_EQ(std::memcmp(list.Data() + 8, &s, 8), 0);  // flat, back to back
}

TEST(RecordList, GrowthRuleAndCapacity) {
    TEasyRecordList list(8);
    std::vector<int> capacities;
    for (int i = 0; i < 120; ++i) {
        const int before = list.Capacity();
        list.Add(nullptr);
        if (list.Capacity() != before) capacities.push_back(list.Capacity());
    }
    EXPECT_EQ(capacities, (std::vector<int>{4, 8, 12, 28, 44, 60, 76, 95, 118, 147}));
    list.SetCapacity(3);  // never below Count
    EXPECT_EQ(list.Capacity(), 120);
    list.Clear();
    EXPECT_EQ(list.Count(), 0);
    EXPECT_EQ(list.Capacity(), 0);
}

TEST(RecordList, SetCountZeroFillsNewRecords) {
    TEasyRecordList list(8);
    list.SetCount(3);
    EXPECT_EQ(list.Count(), 3);
    EXPECT_EQ(list.At<Step>(2).Data, 0);
    Step s = MakeStep(5);
    list.Add(&s);
    list.SetCount(1);
    list.SetCount(4);
    EXPECT_EQ(list.At<Step>(3).Data, 0);
}

TEST(RecordList, BadIndexRaisesTheListError) {
    TEasyRecordList list(8);
    list.Add(nullptr);
    try {
        list.Get(1);
        FAIL() << "no exception";
    } catch (const zorfa::Exception& e) {
        EXPECT_STREQ(e.what(), "List index out of bounds (1)");
    }
    EXPECT_THROW(list.Delete(-1), zorfa::Exception);
    EXPECT_THROW(list.Insert(3, nullptr), zorfa::Exception);
    EXPECT_EQ(list.Count(), 1);
}

namespace {

class StackList : public TEasyRecordList {
public:
    StackList() : TEasyRecordList(8) {}
    void Grow() override { SetCapacity(Capacity() + 16); }  // steps of 16
    void Error(int index) const override { ++errors; (void)index; }
    mutable int errors = 0;
};

}  // namespace

TEST(RecordList, OverriddenGrowAndError) {
    StackList list;
    for (int i = 0; i < 17; ++i) list.Add(nullptr);
    EXPECT_EQ(list.Capacity(), 32);
    EXPECT_EQ(list.Get(40), nullptr);  // an Error that returns: no record
    list.Delete(40);
    EXPECT_EQ(list.errors, 2);
    EXPECT_EQ(list.Count(), 17);
}
