#include "units/LCUnitMan.h"

#include <array>

#include "foundation/LCMath.h"

namespace {

/// The factors between the three units of a quantity. Pairs that share a unit have 1.0.
struct Factors {
    double from0to1, from0to2, from1to0, from2to0, from1to2, from2to1;

    constexpr double Between(int from, int to) const
    {
        if (from == 0) return to == 1 ? from0to1 : to == 2 ? from0to2 : 1.0;
        if (from == 1) return to == 0 ? from1to0 : to == 2 ? from1to2 : 1.0;
        if (from == 2) return to == 0 ? from2to0 : to == 1 ? from2to1 : 1.0;
        return 1.0;
    }
};

/// A figure of each unit: of the first, the second, and all others.
template <typename Number> struct PerUnit {
    Number unit1, unit2, others;

    constexpr Number Of(int unit) const { return unit == 1 ? unit1 : unit == 2 ? unit2 : others; }
};

struct Quantity {
    Factors factors;
    PerUnit<int> decimals;
    PerUnit<double> precision;
};

constexpr Factors none = {1.0, 1.0, 1.0, 1.0, 1.0, 1.0};
constexpr PerUnit<double> fine = {1e-06, 1e-06, 1e-06};

// clang-format off
//                                 0 to 1                0 to 2                 1 to 0              2 to 0              1 to 2                2 to 1              decimals, precision (unit 1, unit 2, others)
constexpr Quantity angle       = {{0.017453292519943295, 1.0,                   57.29577951308232,  1.0,                1.0,                  1.0               }, {4, 2, 2}, fine};
constexpr Quantity crownCoeff  = {{0.3587,               0.3587,                2.7878449958182325, 2.7878449958182325, 1.0,                  1.0               }, {7, 7, 6}, fine};
constexpr Quantity density     = {{0.03612729,           0.03612729,            27.67990654,        27.67990654,        1.0,                  1.0               }, {4, 4, 2}, fine};
constexpr Quantity distance    = {{0.03937007874015748,  0.03937007874015748,   25.4,               25.4,               1.0,                  1.0               }, {3, 3, 2}, fine};
constexpr Quantity force       = {{0.112334353,          0.100326198,           8.90199637,         9.967486283,        0.8931034504119014,   1.1196911226371797}, {0, 0, 0}, fine};
constexpr Quantity forceLength = {{0.03423784,           0.030577933,           29.20745009,        32.7033225,         0.893103451952864,    1.1196911232234   }, {0, 0, 0}, fine};
constexpr Quantity speed       = {{2.362204724409449,    2.362204724409449,     0.4233333333333333, 0.4233333333333333, 1.0,                  1.0               }, {4, 4, 2}, fine};
constexpr Quantity strength    = {{0.1449881995,         0.1449881995,          6.897113,           6.897113,           1.0,                  1.0               }, {0, 0, 0}, fine};
constexpr Quantity time        = {{0.016666666666666666, 0.0006944444444444445, 60.0,               1440.0,             0.041666666666666664, 24.0              }, {0, 0, 0}, {1.0, 1.0, 1.0}};
constexpr Quantity weight      = {{2.2046,               2.2046,                0.4535970244035199, 0.4535970244035199, 1.0,                  1.0               }, {4, 4, 3}, fine};
constexpr Quantity angleRounded    = {none, {2, 0, 0}, {0.0001, 0.01, 0.01}};
constexpr Quantity distanceRounded = {distance.factors, {2, 2, 0}, {0.0001, 0.0001, 0.01}};

constexpr Quantity angleByCase        = {none, {2, 2, 2}, angle.precision};
constexpr Quantity angleRoundedByCase = {none, {6, 6, 6}, angleRounded.precision};
constexpr Quantity timeByCase         = {none, {0, 0, 0}, time.precision};
constexpr Quantity unknown            = {none, {6, 6, 6}, fine};

constexpr std::array<Quantity const *, 13> cases = {
    &unknown,
    &distance, &force, &forceLength, &strength, &density, &speed,
    &distanceRounded, &angleByCase, &angleRoundedByCase, &timeByCase, &crownCoeff, &weight,
};
// clang-format on

Quantity const & Case(int number)
{
    bool const known = number > 0 && number < static_cast<int>(cases.size());
    return *cases[known ? static_cast<unsigned>(number) : 0];
}

double Convert(Quantity const & quantity, double value, int from, int to)
{
    return LCMath::RoundToDec(quantity.factors.Between(from, to) * value, quantity.decimals.Of(to));
}

}  // namespace

LCUnitMan::~LCUnitMan() = default;

double LCUnitMan::ConvertAngle(double value, int from, int to) { return Convert(angle, value, from, to); }
double LCUnitMan::ConvertCrownCoeff(double value, int from, int to)
{
    return Convert(crownCoeff, value, from, to);
}
double LCUnitMan::ConvertDensity(double value, int from, int to) { return Convert(density, value, from, to); }
double LCUnitMan::ConvertDistance(double value, int from, int to)
{
    return Convert(distance, value, from, to);
}
double LCUnitMan::ConvertForce(double value, int from, int to) { return Convert(force, value, from, to); }
double LCUnitMan::ConvertForceLength(double value, int from, int to)
{
    return Convert(forceLength, value, from, to);
}
double LCUnitMan::ConvertSpeed(double value, int from, int to) { return Convert(speed, value, from, to); }
double LCUnitMan::ConvertStrength(double value, int from, int to)
{
    return Convert(strength, value, from, to);
}
double LCUnitMan::ConvertTime(double value, int from, int to) { return Convert(time, value, from, to); }
double LCUnitMan::ConvertWeight(double value, int from, int to) { return Convert(weight, value, from, to); }

double LCUnitMan::GetScaleFactorAngle(int from, int to) { return angle.factors.Between(from, to); }
double LCUnitMan::GetScaleFactorCrownCoeff(int from, int to) { return crownCoeff.factors.Between(from, to); }
double LCUnitMan::GetScaleFactorDensity(int from, int to) { return density.factors.Between(from, to); }
double LCUnitMan::GetScaleFactorDistance(int from, int to) { return distance.factors.Between(from, to); }
double LCUnitMan::GetScaleFactorForce(int from, int to) { return force.factors.Between(from, to); }
double LCUnitMan::GetScaleFactorForceLength(int from, int to)
{
    return forceLength.factors.Between(from, to);
}
double LCUnitMan::GetScaleFactorSpeed(int from, int to) { return speed.factors.Between(from, to); }
double LCUnitMan::GetScaleFactorStrength(int from, int to) { return strength.factors.Between(from, to); }
double LCUnitMan::GetScaleFactorTime(int from, int to) { return time.factors.Between(from, to); }
double LCUnitMan::GetScaleFactorWeight(int from, int to) { return weight.factors.Between(from, to); }

int LCUnitMan::GetUnitDecAngle(int unit) { return angle.decimals.Of(unit); }
int LCUnitMan::GetUnitDecAngleRounded(int unit) { return angleRounded.decimals.Of(unit); }
int LCUnitMan::GetUnitDecCrownCoeff(int unit) { return crownCoeff.decimals.Of(unit); }
int LCUnitMan::GetUnitDecDensity(int unit) { return density.decimals.Of(unit); }
int LCUnitMan::GetUnitDecDistance(int unit) { return distance.decimals.Of(unit); }
int LCUnitMan::GetUnitDecDistanceRounded(int unit) { return distanceRounded.decimals.Of(unit); }
int LCUnitMan::GetUnitDecForce(int unit) { return force.decimals.Of(unit); }
int LCUnitMan::GetUnitDecForceLength(int unit) { return forceLength.decimals.Of(unit); }
int LCUnitMan::GetUnitDecSpeed(int unit) { return speed.decimals.Of(unit); }
int LCUnitMan::GetUnitDecStrength(int unit) { return strength.decimals.Of(unit); }
int LCUnitMan::GetUnitDecTime(int unit) { return time.decimals.Of(unit); }
int LCUnitMan::GetUnitDecWeight(int unit) { return weight.decimals.Of(unit); }

double LCUnitMan::GetUnitPrecisionAngle(int unit) { return angle.precision.Of(unit); }
double LCUnitMan::GetUnitPrecisionAngleRounded(int unit) { return angleRounded.precision.Of(unit); }
double LCUnitMan::GetUnitPrecisionCrownCoeff(int unit) { return crownCoeff.precision.Of(unit); }
double LCUnitMan::GetUnitPrecisionDensity(int unit) { return density.precision.Of(unit); }
double LCUnitMan::GetUnitPrecisionDistance(int unit) { return distance.precision.Of(unit); }
double LCUnitMan::GetUnitPrecisionDistanceRounded(int unit) { return distanceRounded.precision.Of(unit); }
double LCUnitMan::GetUnitPrecisionForce(int unit) { return force.precision.Of(unit); }
double LCUnitMan::GetUnitPrecisionForceLength(int unit) { return forceLength.precision.Of(unit); }
double LCUnitMan::GetUnitPrecisionSpeed(int unit) { return speed.precision.Of(unit); }
double LCUnitMan::GetUnitPrecisionStrength(int unit) { return strength.precision.Of(unit); }
double LCUnitMan::GetUnitPrecisionTime(int unit) { return time.precision.Of(unit); }
double LCUnitMan::GetUnitPrecisionWeight(int unit) { return weight.precision.Of(unit); }

double LCUnitMan::GetCaseScaleFactor(int caseNumber, int from, int to)
{
    return Case(caseNumber).factors.Between(from, to);
}
int LCUnitMan::GetCaseUnitDec(int caseNumber, int unit) { return Case(caseNumber).decimals.Of(unit); }
double LCUnitMan::GetCaseUnitPrecision(int caseNumber, int unit)
{
    return Case(caseNumber).precision.Of(unit);
}
