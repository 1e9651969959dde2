#include "VornToolsVector.h"

#include <gtest/gtest.h>

#include <functional>
#include <new>
#include <utility>

namespace {

/** Counts what happens to elements. */
struct Counted {
    Counted() {
        if (made == refusedFrom) throw std::bad_alloc();
        ++made, ++alive;
    }
    explicit Counted(int i) : value(i) { ++made, ++alive; }
    Counted(const Counted&) = delete;
    Counted& operator=(const Counted& other) {
        value = other.value;
        ++assigned;
        return *this;
    }
    ~Counted() { --alive; }

    int value = 0;
    static int made, assigned, alive;
    static int refusedFrom; ///< number made after which there is no memory for more; -1: there is
};
int Counted::made = 0;
int Counted::assigned = 0;
int Counted::alive = 0;
int Counted::refusedFrom = -1;

class VornToolsVectorTest : public testing::Test {
protected:
    void SetUp() override { Counted::made = Counted::assigned = Counted::alive = 0; }
    void TearDown() override { Counted::refusedFrom = -1; }
    static void fill(VornToolsVector<Counted>& vector, int count) {
        for (int i = 0; i < count; ++i) {
            const Counted element(i);
            vector.append(element);
        }
    }
};

TEST_F(VornToolsVectorTest, EverySlotHoldsAnElement) {
    {
        const VornToolsVector<Counted> vector;
        EXPECT_EQ(vector.size(), 0U);
        EXPECT_EQ(vector.capacity(), 100U);
        EXPECT_EQ(Counted::alive, 100);
    }
    EXPECT_EQ(Counted::alive, 0);
}

TEST_F(VornToolsVectorTest, GrowsByOneHundredThroughATemporary) {
    {
        VornToolsVector<Counted> vector;
        fill(vector, 100);
        EXPECT_EQ(vector.capacity(), 100U);
        EXPECT_EQ(Counted::assigned, 100);
        Counted::made = 0;
        fill(vector, 1);
        EXPECT_EQ(vector.capacity(), 200U);
        EXPECT_EQ(Counted::made, 1 + 100 + 200) << "the temporary and the new slots";
        EXPECT_EQ(Counted::assigned, 100 + 200 + 1) << "every element twice";
        EXPECT_EQ(Counted::alive, 200);
        fill(vector, 100);
        EXPECT_EQ(vector.size(), 201U);
        EXPECT_EQ(vector.capacity(), 300U);
        for (unsigned int i = 0; i < 201; ++i) {
            const int expected = static_cast<int>(i < 100 ? i : i == 100 ? 0 : i - 101);
            ASSERT_EQ(vector[i].value, expected) << i;
        }
    }
    EXPECT_EQ(Counted::alive, 0);
}

TEST_F(VornToolsVectorTest, CopiesOwnTheirElements) {
    {
        VornToolsVector<Counted> vector;
        fill(vector, 150);
        VornToolsVector<Counted> copy(vector);
        VornToolsVector<Counted> assigned;
        assigned = copy;
        const VornToolsVector<Counted>& same = assigned;
        assigned = same;
        copy[149].value = -1;
        EXPECT_EQ(vector[149].value, 149);
        EXPECT_EQ(assigned[149].value, 149);
        EXPECT_EQ(assigned.size(), 150U);
        EXPECT_EQ(assigned.capacity(), 200U);
    }
    EXPECT_EQ(Counted::alive, 0);
}

TEST_F(VornToolsVectorTest, HasTheCapacityForWhatItExpects) {
    for (const unsigned int expected : {0U, 1U, 100U, 101U, 200U, 201U, 1000U}) {
        VornToolsVector<Counted> appended, made(expected);
        EXPECT_EQ(made.size(), 0U);
        fill(appended, static_cast<int>(expected));
        EXPECT_EQ(made.capacity(), appended.capacity()) << expected;
        Counted::assigned = 0;
        fill(made, static_cast<int>(expected));
        EXPECT_EQ(Counted::assigned, static_cast<int>(expected)) << "each once";
    }
    EXPECT_EQ(Counted::alive, 0);
}

TEST_F(VornToolsVectorTest, ElementsChangeHandsWithoutACopy) {
    {
        VornToolsVector<Counted> vector;
        fill(vector, 150);
        const Counted* const p_first = &vector[0];
        VornToolsVector<Counted> taken(std::move(vector)), assigned;
        assigned = std::move(taken);
        EXPECT_EQ(&assigned[0], p_first);
        EXPECT_EQ(assigned.size(), 150U);
        fill(taken, 1);
        EXPECT_EQ(taken.size(), 1U);
        EXPECT_EQ(taken.capacity(), 100U);
    }
    EXPECT_EQ(Counted::alive, 0);
}

TEST_F(VornToolsVectorTest, StaysAsItWasWhereMemoryGivesOut) {
    VornToolsVector<Counted> vector, other(200);
    fill(vector, 100);
    fill(other, 150);
    const Counted element(100);
    const std::pair<int, std::function<void()>> operations[] = {
        {300, [&] { vector.append(element); }}, // 100 for the temporary and 200 new ones
        {200, [&] { vector = other; }},
        {200, [&] { const VornToolsVector<Counted> copy(other); }},
    };
    for (const auto& [makes, operation] : operations) {
        for (Counted::refusedFrom = 0; Counted::refusedFrom < makes; ++Counted::refusedFrom) {
            Counted::made = 0;
            EXPECT_THROW(operation(), std::bad_alloc);
            ASSERT_EQ(vector.size(), 100U);
            ASSERT_EQ(vector[99].value, 99);
            ASSERT_EQ(Counted::alive, 100 + 200 + 1) << Counted::refusedFrom;
        }
    }
}

} // namespace
