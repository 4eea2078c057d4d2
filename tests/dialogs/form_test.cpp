#include "dialogs/form.h"

#include <gtest/gtest.h>

#include <map>

namespace hullrider {
namespace {

// Controls are numbers: a and b are small, the others as their names say.
int a, b, wide, tall;

FormSize SizeOf(void* control) {
    if (control == &wide) return {100, 20};
    if (control == &tall) return {30, 60};
    return {40, 20};
}

std::map<void*, FormBox> Place(const Form& form, FormSize size) {
    std::map<void*, FormBox> boxes;
    PlaceForm(form, {10, 10, size.width, size.height}, SizeOf,
              [&](void* control, const FormBox& box) { boxes[control] = box; });
    return boxes;
}

void ExpectSize(const Form& form, int width, int height) {
    const FormSize size = SizeOfForm(form, SizeOf);
    EXPECT_EQ(size.width, width);
    EXPECT_EQ(size.height, height);
}

TEST(Form, ARowKeepsWidthsAndCentersWhatIsLow) {
    const Form form = Row({&a, &tall, &wide});
    ExpectSize(form, 40 + 8 + 30 + 8 + 100, 60);
    auto boxes = Place(form, {300, 60});
    EXPECT_EQ(boxes[&a], (FormBox{10, 30, 40, 20}));
    EXPECT_EQ(boxes[&tall], (FormBox{58, 10, 30, 60}));
    EXPECT_EQ(boxes[&wide], (FormBox{96, 30, 100, 20})) << "nothing grows";
}

TEST(Form, AColumnGivesAllOfItsPartsItsWidth) {
    auto boxes = Place(WithGap(4, Column({&a, &wide, &b})), {200, 300});
    EXPECT_EQ(boxes[&a], (FormBox{10, 10, 200, 20}));
    EXPECT_EQ(boxes[&wide], (FormBox{10, 34, 200, 20}));
    EXPECT_EQ(boxes[&b], (FormBox{10, 58, 200, 20})) << "what is left over stays below";
}

TEST(Form, AGridAlignsItsColumnsAndRows) {
    const Form form = Grid(2, {&a, &wide, &tall, &b});
    ExpectSize(form, 40 + 8 + 100, 20 + 8 + 60);
    auto boxes = Place(form, {148, 88});
    EXPECT_EQ(boxes[&wide], (FormBox{58, 10, 100, 20}));
    EXPECT_EQ(boxes[&tall], (FormBox{10, 38, 40, 60}));
    EXPECT_EQ(boxes[&b], (FormBox{58, 58, 100, 20}));
    ExpectSize(Grid(2, {&a, &wide, &b}), 40 + 8 + 100, 20 + 8 + 20);
}

TEST(Form, WhatGrowsSharesWhatIsLeftOverAllTheWayUp) {
    const Form form = Column({&wide, Row({Grow(&a), Column({&b}), GrowWide(&tall)})});
    EXPECT_TRUE(GrowsHigh(form));
    EXPECT_FALSE(GrowsHigh(Row({GrowWide(&a)})));
    ExpectSize(form, 40 + 8 + 40 + 8 + 30, 20 + 8 + 60);
    auto boxes = Place(form, {227, 188});
    EXPECT_EQ(boxes[&a], (FormBox{10, 38, 90, 160})) << "half of the 101 that are left, rounded down";
    EXPECT_EQ(boxes[&b], (FormBox{108, 38, 40, 20}));
    EXPECT_EQ(boxes[&tall], (FormBox{156, 88, 81, 60}));
}

TEST(Form, ASpringPushesToTheRightAndAStackSharesItsPlace) {
    auto boxes = Place(Row({&a, Spring(), &b}), {200, 20});
    EXPECT_EQ(boxes[&b], (FormBox{170, 10, 40, 20}));
    const Form stack = Stack({Row({&wide}), Row({&tall})});
    ExpectSize(stack, 100, 60);
    boxes = Place(stack, {100, 60});
    EXPECT_EQ(boxes[&wide].x, boxes[&tall].x);
}

}  // namespace
}  // namespace hullrider
