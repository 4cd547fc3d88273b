#include "units/LCUnitMan.h"

#include <cmath>

#include "foundation/LCMath.h"

namespace {

// Figures that an operator knows from the machine's display.
TEST(UnitMan, ConvertsToTheDecimalsOfTheTargetUnit)
{
    using Convert = double (*)(double, int, int);
    struct { Convert convert; double value; int from, to; double expected; } const rows[] = {
        {LCUnitMan::ConvertDistance, 1.0, 1, 0, 25.4}, {LCUnitMan::ConvertDistance, 100.0, 0, 1, 3.937},
        {LCUnitMan::ConvertDistance, 2.5555, 0, 0, 2.56}, {LCUnitMan::ConvertDistance, 1.0, 1, 2, 1.0},
        {LCUnitMan::ConvertForce, 100.0, 0, 1, 11.0}, {LCUnitMan::ConvertForce, 100.0, 0, 2, 10.0},
        {LCUnitMan::ConvertForceLength, 1000.0, 2, 0, 32703.0}, {LCUnitMan::ConvertTime, 90.0, 0, 1, 2.0},
        {LCUnitMan::ConvertTime, 2.0, 2, 1, 48.0}, {LCUnitMan::ConvertAngle, 180.0, 0, 1, 3.1416},
        {LCUnitMan::ConvertAngle, 1.0, 1, 0, 57.3}, {LCUnitMan::ConvertWeight, 1.0, 0, 1, 2.2046},
        {LCUnitMan::ConvertWeight, 2.2046, 1, 0, 1.0}, {LCUnitMan::ConvertSpeed, 10.0, 0, 2, 23.622},
        {LCUnitMan::ConvertStrength, 400.0, 0, 1, 58.0}, {LCUnitMan::ConvertDensity, 7.85, 0, 1, 0.2836},
        {LCUnitMan::ConvertCrownCoeff, 1.0, 0, 1, 0.3587},
    };
    for (auto const & row : rows) {
        EXPECT_EQ(row.convert(row.value, row.from, row.to), row.expected)
            << row.value << " from " << row.from << " to " << row.to;
    }
}

// Several factors are rounded on their own; a transposed or mistyped digit still shows against the
// reciprocal.
TEST(UnitMan, EachFactorIsNearlyTheReciprocalOfItsInverse)
{
    using Factor = double (*)(int, int);
    Factor const factors[] = {
        LCUnitMan::GetScaleFactorAngle,   LCUnitMan::GetScaleFactorCrownCoeff,
        LCUnitMan::GetScaleFactorDensity, LCUnitMan::GetScaleFactorDistance,
        LCUnitMan::GetScaleFactorForce,   LCUnitMan::GetScaleFactorForceLength,
        LCUnitMan::GetScaleFactorSpeed,   LCUnitMan::GetScaleFactorStrength,
        LCUnitMan::GetScaleFactorTime,    LCUnitMan::GetScaleFactorWeight,
    };
    for (auto const factor : factors) {
        for (int from = 0; from < 3; ++from) {
            for (int to = 0; to < 3; ++to) {
                EXPECT_NEAR(factor(from, to) * factor(to, from), 1.0, 3e-8) << from << " and " << to;
                if (factor == LCUnitMan::GetScaleFactorAngle && (from == 2 || to == 2))
                    continue;  // no such unit
                EXPECT_NEAR(factor(from, 1) * factor(1, to), factor(from, to), 2e-6 * factor(from, to))
                    << from << " over 1 to " << to;
            }
        }
        for (int const outside : {-1, 3, 5}) {
            EXPECT_EQ(factor(outside, 0), 1.0);
            EXPECT_EQ(factor(0, outside), 1.0);
        }
    }
}

TEST(UnitMan, DecimalsAndPrecisionBesideTheCommonRow)
{
    EXPECT_EQ(LCUnitMan::GetScaleFactorAngle(0, 2), 1.0);
    EXPECT_EQ(LCUnitMan::GetUnitDecDistance(-1), 2);
    EXPECT_EQ(LCUnitMan::GetUnitDecAngle(1), 4);
    EXPECT_EQ(LCUnitMan::GetUnitDecCrownCoeff(0), 6);
    EXPECT_EQ(LCUnitMan::GetUnitDecCrownCoeff(2), 7);
    EXPECT_EQ(LCUnitMan::GetUnitPrecisionDistanceRounded(2), 0.0001);
    EXPECT_EQ(LCUnitMan::GetUnitPrecisionAngleRounded(2), 0.01);
    EXPECT_EQ(LCUnitMan::GetUnitPrecisionTime(7), 1.0);
    EXPECT_EQ(LCUnitMan::GetUnitPrecisionForce(1), 1e-06);
}

TEST(UnitMan, TheCaseNumbersNameTheQuantities)
{
    // Factor from 0 to 1, decimals in units 0 and 1, precision in units 0 and 1.
    struct { double factor; int decimals0, decimals1; double precision0, precision1; } const rows[] = {
        {1.0, 6, 6, 1e-06, 1e-06},                  // none
        {0.03937007874015748, 2, 3, 1e-06, 1e-06},  // distance
        {0.112334353, 0, 0, 1e-06, 1e-06},          // force
        {0.03423784, 0, 0, 1e-06, 1e-06},           // force per length
        {0.1449881995, 0, 0, 1e-06, 1e-06},         // strength
        {0.03612729, 2, 4, 1e-06, 1e-06},           // density
        {2.362204724409449, 2, 4, 1e-06, 1e-06},    // speed
        {0.03937007874015748, 0, 2, 0.01, 0.0001},  // rounded distance
        {1.0, 2, 2, 1e-06, 1e-06},                  // angle
        {1.0, 6, 6, 0.01, 0.0001},                  // rounded angle
        {1.0, 0, 0, 1.0, 1.0},                      // time
        {0.3587, 6, 7, 1e-06, 1e-06},               // crown coefficient
        {2.2046, 3, 4, 1e-06, 1e-06},               // weight
        {1.0, 6, 6, 1e-06, 1e-06},                  // none
    };
    int number = 0;
    for (auto const & row : rows) {
        EXPECT_EQ(LCUnitMan::GetCaseScaleFactor(number, 0, 1), row.factor) << number;
        EXPECT_EQ(LCUnitMan::GetCaseUnitDec(number, 0), row.decimals0) << number;
        EXPECT_EQ(LCUnitMan::GetCaseUnitDec(number, 1), row.decimals1) << number;
        EXPECT_EQ(LCUnitMan::GetCaseUnitPrecision(number, 0), row.precision0) << number;
        EXPECT_EQ(LCUnitMan::GetCaseUnitPrecision(number, 1), row.precision1) << number;
        ++number;
    }
}

}  // namespace
