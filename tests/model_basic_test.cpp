// The text and array helpers the chord model and the settings store lean on.

#include "platform/basic.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

using namespace varnock;

TEST(BasicSplit, KeepsEveryEmptyFieldIncludingTheTrailingOne) {
    EXPECT_EQ(Split("A,E,", ","), (std::vector<std::string>{"A", "E", ""}));
    EXPECT_EQ(Split(",,", ","), (std::vector<std::string>{"", "", ""}));
    EXPECT_EQ(Split("", ","), (std::vector<std::string>{""}));
    EXPECT_EQ(Split("4,3,11", ","), (std::vector<std::string>{"4", "3", "11"}));
}

TEST(BasicVal, ReadsTheLeadingNumberOnly) {
    EXPECT_DOUBLE_EQ(Val("7.9"), 7.9);
    EXPECT_DOUBLE_EQ(Val("abc"), 0.0);
    EXPECT_DOUBLE_EQ(Val(""), 0.0);
    EXPECT_DOUBLE_EQ(Val("  12x"), 12.0);
    EXPECT_DOUBLE_EQ(Val("-3"), -3.0);
    EXPECT_DOUBLE_EQ(Val("2e3"), 2000.0);
    EXPECT_DOUBLE_EQ(Val("5e"), 5.0);
}

TEST(BasicTruncate, CutsTowardZeroAndClampsWhatDoesNotFit) {
    EXPECT_EQ(Truncate(7.9), 7);
    EXPECT_EQ(Truncate(-7.9), -7);
    EXPECT_TRUE(std::isinf(Val("1e400")));
    EXPECT_EQ(Truncate(Val("1e400")), std::numeric_limits<Int>::max());
    EXPECT_EQ(Truncate(Val("-1e400")), std::numeric_limits<Int>::min());
    EXPECT_EQ(Truncate(std::nan("")), 0);
}

TEST(BasicText, InStrIsOneBasedAndIgnoresCase) {
    EXPECT_EQ(InStr("Varnock.ini", "VARNOCK"), 1);
    EXPECT_EQ(InStr("key=Value", "=v"), 4);
    EXPECT_EQ(InStr("abc", "x"), 0);
    EXPECT_EQ(InStr("ab", "abc"), 0);
}

TEST(BasicText, LeftAndRightAtTheEdges) {
    EXPECT_EQ(Left("abc", 0), "");
    EXPECT_EQ(Left("abc", -2), "");
    EXPECT_EQ(Left("abc", 2), "ab");
    EXPECT_EQ(Left("abc", 9), "abc");
    EXPECT_EQ(Right("abc", 0), "");
    EXPECT_EQ(Right("abc", -1), "");
    EXPECT_EQ(Right("abc", 2), "bc");
    EXPECT_EQ(Right("abc", 9), "abc");
    EXPECT_EQ(Str(-12), "-12");
}

TEST(BasicArray, EveryAccessIsChecked) {
    Array<std::string> empty;
    EXPECT_EQ(empty.Ubound(), -1);
    EXPECT_THROW(empty(0), OutOfBoundsException);
    Array<Int> a{1, 2, 3};
    EXPECT_EQ(a.Ubound(), 2);
    EXPECT_THROW(a(3), OutOfBoundsException);
    EXPECT_THROW(a(-1), OutOfBoundsException);
    Array2<std::string> t(4, 24);
    EXPECT_EQ(t(4, 24), "");
    EXPECT_THROW(t(5, 0), OutOfBoundsException);
    EXPECT_THROW(t(0, 25), OutOfBoundsException);
}
