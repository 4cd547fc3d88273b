#include "units/LCUnitMan.h"

namespace {

using U = LCUnitMan;

// Figures that an operator knows from the machine's display.
TEST(UnitMan, ConvertsToTheDecimalsOfTheTargetUnit)
{
    struct { double (*convert)(double, int, int); double value; int from, to; double expected; } const rows[] = {
        {U::ConvertDistance, 1.0, 1, 0, 25.4}, {U::ConvertDistance, 100.0, 0, 1, 3.937},
        {U::ConvertDistance, 2.5555, 0, 0, 2.56}, {U::ConvertDistance, 1.0, 1, 2, 1.0},
        {U::ConvertForce, 100.0, 0, 1, 11.0}, {U::ConvertForce, 100.0, 0, 2, 10.0},
        {U::ConvertForceLength, 1000.0, 2, 0, 32703.0}, {U::ConvertAngle, 180.0, 0, 1, 3.1416},
        {U::ConvertAngle, 1.0, 1, 0, 57.3}, {U::ConvertTime, 90.0, 0, 1, 2.0}, {U::ConvertTime, 2.0, 2, 1, 48.0},
        {U::ConvertWeight, 1.0, 0, 1, 2.2046}, {U::ConvertWeight, 2.2046, 1, 0, 1.0},
        {U::ConvertSpeed, 10.0, 0, 2, 23.622}, {U::ConvertStrength, 400.0, 0, 1, 58.0},
        {U::ConvertDensity, 7.85, 0, 1, 0.2836}, {U::ConvertCrownCoeff, 1.0, 0, 1, 0.3587}};
    for (auto const & row : rows)
        EXPECT_EQ(row.convert(row.value, row.from, row.to), row.expected) << row.value << " from " << row.from;
}

// Several factors are rounded on their own; a transposed or mistyped digit still shows against the
// reciprocal.
TEST(UnitMan, EachFactorIsNearlyTheReciprocalOfItsInverse)
{
    for (auto const factor :
         {U::GetScaleFactorAngle, U::GetScaleFactorCrownCoeff, U::GetScaleFactorDensity, U::GetScaleFactorDistance,
          U::GetScaleFactorForce, U::GetScaleFactorForceLength, U::GetScaleFactorSpeed, U::GetScaleFactorStrength,
          U::GetScaleFactorTime, U::GetScaleFactorWeight}) {
        for (int from = 0; from < 3; ++from) {
            for (int to = 0; to < 3; ++to) {
                EXPECT_NEAR(factor(from, to) * factor(to, from), 1.0, 3e-8) << from << " and " << to;
                if (factor == U::GetScaleFactorAngle && (from == 2 || to == 2)) continue;  // no such unit
                EXPECT_NEAR(factor(from, 1) * factor(1, to) / factor(from, to), 1.0, 2e-6) << from << " and " << to;
            }
        }
        for (int const none : {-1, 3, 5}) EXPECT_EQ(std::pair(factor(none, 0), factor(0, none)), std::pair(1.0, 1.0));
    }
}

TEST(UnitMan, DecimalsAndPrecisionOfEachQuantity)
{
    // In the units 0, 1 and 2; any other number is like 0.
    struct { int (*decimals)(int); double (*precision)(int); std::vector<int> ofUnits; double first, third; }
    const rows[] = {
        {U::GetUnitDecAngle, U::GetUnitPrecisionAngle, {2, 4, 2}, 1e-06, 1e-06},
        {U::GetUnitDecAngleRounded, U::GetUnitPrecisionAngleRounded, {0, 2, 0}, 0.01, 0.01},
        {U::GetUnitDecCrownCoeff, U::GetUnitPrecisionCrownCoeff, {6, 7, 7}, 1e-06, 1e-06},
        {U::GetUnitDecDensity, U::GetUnitPrecisionDensity, {2, 4, 4}, 1e-06, 1e-06},
        {U::GetUnitDecDistance, U::GetUnitPrecisionDistance, {2, 3, 3}, 1e-06, 1e-06},
        {U::GetUnitDecDistanceRounded, U::GetUnitPrecisionDistanceRounded, {0, 2, 2}, 0.01, 0.0001},
        {U::GetUnitDecForce, U::GetUnitPrecisionForce, {0, 0, 0}, 1e-06, 1e-06},
        {U::GetUnitDecForceLength, U::GetUnitPrecisionForceLength, {0, 0, 0}, 1e-06, 1e-06},
        {U::GetUnitDecSpeed, U::GetUnitPrecisionSpeed, {2, 4, 4}, 1e-06, 1e-06},
        {U::GetUnitDecStrength, U::GetUnitPrecisionStrength, {0, 0, 0}, 1e-06, 1e-06},
        {U::GetUnitDecTime, U::GetUnitPrecisionTime, {0, 0, 0}, 1.0, 1.0},
        {U::GetUnitDecWeight, U::GetUnitPrecisionWeight, {3, 4, 4}, 1e-06, 1e-06}};
    for (auto const & row : rows) {
        auto const place = &row - rows;
        EXPECT_EQ((std::vector{row.decimals(0), row.decimals(1), row.decimals(2)}), row.ofUnits) << place;
        EXPECT_EQ(std::pair(row.decimals(-1), row.decimals(7)), std::pair(row.ofUnits[0], row.ofUnits[0])) << place;
        EXPECT_EQ(std::pair(row.precision(0), row.precision(2)), std::pair(row.first, row.third)) << place;
    }
    EXPECT_EQ(std::pair(U::GetUnitPrecisionAngleRounded(1), U::GetScaleFactorAngle(0, 2)), std::pair(0.0001, 1.0));
}

TEST(UnitMan, TheCaseNumbersNameTheQuantities)
{
    // Factor from 0 to 1, decimals and precision in unit 1.
    std::tuple<double, int, double> const rows[] = {
        // None, distance, force, force per length, strength, density and speed,
        {1.0, 6, 1e-06}, {0.03937007874015748, 3, 1e-06}, {0.112334353, 0, 1e-06}, {0.03423784, 0, 1e-06},
        {0.1449881995, 0, 1e-06}, {0.03612729, 4, 1e-06}, {2.362204724409449, 4, 1e-06},
        // rounded distance, angle, rounded angle, time, crown coefficient, weight and none.
        {0.03937007874015748, 2, 0.0001}, {1.0, 2, 1e-06}, {1.0, 6, 0.0001}, {1.0, 0, 1.0}, {0.3587, 7, 1e-06},
        {2.2046, 4, 1e-06}, {1.0, 6, 1e-06}};
    for (int number = 0; auto const & row : rows) {
        EXPECT_EQ(std::tuple(U::GetCaseScaleFactor(number, 0, 1), U::GetCaseUnitDec(number, 1),
                             U::GetCaseUnitPrecision(number, 1)), row) << number;
        ++number;
    }
}

}  // namespace
