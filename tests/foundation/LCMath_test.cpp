#include "foundation/LCMath.h"

#include <climits>
#include <cmath>
#include <random>

namespace {

using Numbers = std::vector<double>;

TEST(Math, TheComparisonsAreNotClosedAtTheSameEnd)
{
    struct { double a, b, tol; bool equal, orGreater, orLess; } const rows[] = {
        {1.0, 1.5, 0.5, true, false, true}, {2.0, 1.5, 0.5, true, true, false},
        {1.0, 1.0, 0.0, true, false, false}, {1.0, 1.25, 0.5, true, true, true},
        {0.0, 1.5, 0.5, false, false, true}, {3.0, 1.5, 0.5, false, true, false},
        {NAN, 1.0, 0.5, false, false, false}, {1.0, NAN, 0.5, false, false, false}};
    for (auto const & [a, b, tol, equal, orGreater, orLess] : rows) {
        EXPECT_EQ(std::tuple(LCMath::AlmostEq(a, b, tol), LCMath::AlmostEq(0.0L + a, 0.0L + b, 0.0L + tol),
                             LCMath::AlmostEqOrGreater(a, b, tol), LCMath::LessNotAlmostEq(a, b, tol),
                             LCMath::AlmostEqOrLess(a, b, tol), LCMath::GreaterNotAlmostEq(a, b, tol)),
                  std::tuple(equal, equal, orGreater, !orGreater, orLess, !orLess)) << a << ", " << b << ", " << tol;
    }
}

TEST(Math, DivisionByAlmostNothingThrows)
{
    for (double const divisor : {0.0, -1e-14, 1e-13}) EXPECT_THROW(LCMath::Div(1.0, divisor), LCMath::LCDivisionByZero);
    EXPECT_EQ((Numbers{LCMath::Div(0.0, 2.0), LCMath::Div(1.0, 2e-13)}), (Numbers{0.0, 1.0 / 2e-13}));
    EXPECT_THROW(LCMath::Div(1.0L, 0.0L), LCMath::LCDivisionByZero);
}

TEST(Math, RoundsByTheOneDigitBehindTheLast)
{
    struct { double v; int decimals; double expected; } const rows[] = {
        {1.2349, 2, 1.23}, {1.235, 2, 1.24}, {-1.235, 2, -1.24}, {2.5, 0, 3.0}, {-2.5, 0, -3.0}, {1.005, 2, 1.0},
        {1.9999, 3, 2.0}, {-0.0004, 3, -0.0}, {1234.0, -2, 1200.0}, {0.0, 5, 0.0}, {-0.0, 5, 0.0}, {1e300, 2, 1e300},
        {9.3e17, 0, 9.3e17}, {1.5, 400, 1.5}, {1.5, -400, 0.0}, {HUGE_VAL, 1, HUGE_VAL}, {2.0, INT_MAX, 2.0},
        {2.0, INT_MIN, 0.0}};
    for (auto const & row : rows) {
        double const rounded = LCMath::RoundToDec(row.v, row.decimals);
        EXPECT_EQ(std::pair(rounded, std::signbit(rounded)), std::pair(row.expected, std::signbit(row.expected)));
    }
    EXPECT_TRUE(std::isnan(LCMath::RoundToDec(NAN, 2)));
    EXPECT_EQ((Numbers{LCMath::CeilToDec(1.001, 2), LCMath::FloorToDec(1.009, 2), LCMath::CeilToDec(-1.001, 2),
                       LCMath::FloorToDec(-1.001, 2), LCMath::CeilToDec(1201.0, -2)}),
              (Numbers{1.01, 1.0, -1.0, -1.01, 1300.0}));
}

// The rule as it is told, with the runtime's powers, gives the same bits for every number of decimals in use.
TEST(Math, RoundingKeepsTheBitsOfTheWrittenRule)
{
    std::mt19937_64 random(1);
    std::uniform_real_distribution<double> values(-1e6, 1e6);
    for (int i = 0; i < 20000; ++i) {
        double const v = values(random);
        int const decimals = static_cast<int>(random() % 14) - 4;
        double const cut = static_cast<double>(static_cast<long long>(std::pow(10.0, decimals + 1) * v));
        double const rounded = v < 0.0 ? std::ceil(cut / 10.0 - 0.5) : std::floor(cut / 10.0 + 0.5);
        ASSERT_EQ(LCMath::RoundToDec(v, decimals), rounded / std::pow(10.0, decimals)) << v << " to " << decimals;
    }
}

TEST(Math, AnglesInDegreesAndRadians)
{
    EXPECT_EQ((Numbers{LCMath::DegToRad(180.0), LCMath::RadToDeg(LCMath::pi), LCMath::sinDeg(30.0), LCMath::cosDeg(30.0),
                       LCMath::tanDeg(30.0), LCMath::sinRad(2.0), LCMath::cosRad(2.0), LCMath::tanRad(2.0)}),
              (Numbers{LCMath::pi, 180.0, std::sin(LCMath::pi / 6), std::cos(LCMath::pi / 6), std::tan(LCMath::pi / 6),
                       std::sin(2.0), std::cos(2.0), std::tan(2.0)}));
}

}  // namespace
