// The text and array helpers the chord model and the settings store lean on.

#include "platform/basic.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace varnock;

TEST(Basic, SplitKeepsEveryEmptyFieldIncludingTheTrailingOne) {
    using V = std::vector<std::string>;
    EXPECT_EQ(Split("A,E,", ","), (V{"A", "E", ""}));
    EXPECT_EQ(Split(",,", ","), (V{"", "", ""}));
    EXPECT_EQ(Split("", ","), (V{""}));
}

TEST(Basic, NumbersFromTextAndBack) {
    const std::pair<const char *, double> vals[] = {
        {"7.9", 7.9}, {"abc", 0}, {"", 0}, {"  12x", 12}, {"-3", -3}, {"2e3", 2000}, {"5e", 5}};
    for (const auto &[text, value] : vals)
        EXPECT_DOUBLE_EQ(Val(text), value) << text;
    EXPECT_EQ(Truncate(7.9), 7);
    EXPECT_EQ(Truncate(-7.9), -7);
    EXPECT_EQ(Truncate(Val("1e400")), std::numeric_limits<Int>::max());
    EXPECT_EQ(Truncate(Val("-1e400")), std::numeric_limits<Int>::min());
    EXPECT_EQ(Truncate(std::nan("")), 0);
    EXPECT_EQ(Str(-12), "-12");
}

TEST(Basic, TextPositionsCountFromOneAndIgnoreCase) {
    EXPECT_EQ(InStr("Varnock.ini", "VARNOCK"), 1);
    EXPECT_EQ(InStr("key=Value", "=v"), 4);
    EXPECT_EQ(InStr("ab", "abc"), 0);
    const std::tuple<Int, const char *, const char *> cuts[] = {
        {-2, "", ""}, {0, "", ""}, {2, "ab", "bc"}, {9, "abc", "abc"}};
    for (const auto &[n, left, right] : cuts) {
        EXPECT_EQ(Left("abc", n), left) << n;
        EXPECT_EQ(Right("abc", n), right) << n;
    }
}

TEST(Basic, EveryArrayAccessIsChecked) {
    EXPECT_EQ(Array<std::string>().Ubound(), -1);
    EXPECT_THROW(Array<std::string>()(0), OutOfBoundsException);
    Array<Int> a{1, 2, 3};
    EXPECT_THROW(a(3), OutOfBoundsException);
    EXPECT_THROW(a(-1), OutOfBoundsException);
    Array2<std::string> t(4, 24);
    EXPECT_EQ(t(4, 24), "");
    EXPECT_THROW(t(5, 0), OutOfBoundsException);
    EXPECT_THROW(t(0, 25), OutOfBoundsException);
}
