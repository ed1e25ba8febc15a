// The region polygon as typed by the operator: parsing quirks, the normal form, the box.
#include <gtest/gtest.h>

#include "core/ShapeText.h"

TEST(ShapeText, TheDefaultTextParsesIntoFourCornersAndItsNormalForm) {
    const auto points = ShapeText::Parse(ShapeText::kDefault);
    ASSERT_TRUE(points);
    EXPECT_EQ(*points, (std::vector<ShapePoint>{{0, 0}, {1000, 0}, {1000, 1000}, {0, 1000}}));
    // Differs from the default only by the blank after the first comma and the one at the end.
    EXPECT_EQ(ShapeText::Normal(*points), "0, 0; 1000, 0; 1000, 1000; 0, 1000 ");
    EXPECT_EQ(*ShapeText::Parse(ShapeText::Normal(*points)), *points);
}

TEST(ShapeText, FewerThanTwoPointsGiveTheFullFrame) {
    const std::vector<ShapePoint> full = {{0, 0}, {1000, 0}, {1000, 1000}, {0, 1000}};
    EXPECT_EQ(*ShapeText::Parse("500, 500"), full);
    EXPECT_EQ(*ShapeText::Parse(""), full);
    EXPECT_EQ(*ShapeText::Parse("  ;  "), full);
    // A point with one number has y 0.
    EXPECT_EQ(*ShapeText::Parse("100; 200, 300"), (std::vector<ShapePoint>{{100, 0}, {200, 300}}));
}

TEST(ShapeText, AFieldWithoutANumberOrAThirdNumberIsInvalid) {
    EXPECT_FALSE(ShapeText::Parse("1, 2, 3; 4, 5"));
    EXPECT_FALSE(ShapeText::Parse("a, 1; 2, 3"));
    EXPECT_FALSE(ShapeText::Parse("1, 2x; 3, 4"));
    EXPECT_FALSE(ShapeText::Parse("1, ; 3, 4"));
    EXPECT_FALSE(ShapeText::Parse("1,2;;3,4"));  // an empty point between two others
    EXPECT_FALSE(ShapeText::Parse("1,2; ;3,4;"));
    EXPECT_TRUE(ShapeText::Parse("1,2;3,4;"));  // a trailing separator
    EXPECT_TRUE(ShapeText::Parse("  10,  20;\t30 , 40 "));
    EXPECT_TRUE(ShapeText::Parse("-5, 20; 30, 40"));
}

TEST(ShapeText, TheBoundingBoxTakesTheSmallestAndLargest) {
    int roi[4] = {};
    ShapeText::BoundingBox({{300, 700}, {100, 900}, {800, 50}}, roi);
    EXPECT_EQ(roi[0], 100);
    EXPECT_EQ(roi[1], 50);
    EXPECT_EQ(roi[2], 800);
    EXPECT_EQ(roi[3], 900);
    // A single point: a box of no size.
    ShapeText::BoundingBox({{400, 400}}, roi);
    EXPECT_EQ(roi[0], roi[2]);
}
