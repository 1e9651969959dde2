#include "VornToolsVector.h"

#include <gtest/gtest.h>

namespace {

/** Counts what happens to elements. */
struct Counted {
    Counted() { ++made, ++alive; }
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
};
int Counted::made = 0;
int Counted::assigned = 0;
int Counted::alive = 0;

class VornToolsVectorTest : public testing::Test {
protected:
    void SetUp() override { Counted::made = Counted::assigned = Counted::alive = 0; }
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

} // namespace
