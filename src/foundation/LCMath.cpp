#include "foundation/LCMath.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "foundation/detail/NumberText.h"

using qrtcl::number::exactPowers;

namespace {

constexpr double halfCircle = 180.0;
constexpr double divisionTolerance = 1e-13;

/// pow(10.0, exponent), which is the same from the table.
double PowerOfTen(int exponent)
{
    if (exponent >= 0 && exponent < static_cast<int>(exactPowers.size()))
        return exactPowers[static_cast<unsigned>(exponent)];
    return std::pow(10.0, exponent);
}

/// The rule of the cut digit as it stands.
double RoundAny(double v, int decimals)
{
    constexpr double limit = 9223372036854775808.0;  // 2^63
    constexpr int beyondAnyPower = 400;              // infinite, and zero when negative
    decimals = std::clamp(decimals, -beyondAnyPower, beyondAnyPower);
    double const product = PowerOfTen(decimals + 1) * v;
    if (!(product >= -limit && product < limit)) return v;

    double const scale = PowerOfTen(decimals);
    double const tenths = static_cast<double>(static_cast<std::int64_t>(product)) / 10.0;
    double const rounded = v < 0.0 ? std::ceil(tenths - 0.5) : std::floor(tenths + 0.5);
    return scale == 0.0 ? rounded : rounded / scale;
}

}  // namespace

LCMath::LCDivisionByZero::~LCDivisionByZero() = default;
char const * LCMath::LCDivisionByZero::what() const noexcept { return "Division by zero !"; }

bool LCMath::AlmostEq(double a, double b, double tol) { return std::fabs(a - b) <= tol; }
bool LCMath::AlmostEq(long double a, long double b, long double tol)
{
    return AlmostEq(static_cast<double>(a), static_cast<double>(b), static_cast<double>(tol));
}
bool LCMath::AlmostEqOrGreater(double a, double b, double tol) { return a > b - tol; }
bool LCMath::AlmostEqOrLess(double a, double b, double tol) { return a < b + tol; }
bool LCMath::GreaterNotAlmostEq(double a, double b, double tol) { return !AlmostEqOrLess(a, b, tol); }
bool LCMath::LessNotAlmostEq(double a, double b, double tol) { return !AlmostEqOrGreater(a, b, tol); }

double LCMath::Div(double a, double b)
{
    if (AlmostEq(b, 0.0, divisionTolerance)) throw LCDivisionByZero();
    return a / b;
}

long double LCMath::Div(long double a, long double b)
{
    return Div(static_cast<double>(a), static_cast<double>(b));
}

double LCMath::CeilToDec(double v, int decimals)
{
    double const scale = PowerOfTen(decimals);
    return std::ceil(scale * v) / scale;
}

double LCMath::FloorToDec(double v, int decimals)
{
    double const scale = PowerOfTen(decimals);
    return std::floor(scale * v) / scale;
}

double LCMath::RoundToDec(double v, int decimals)
{
    if (decimals >= 0 && decimals < static_cast<int>(exactPowers.size()) - 1) {
        auto const exponent = static_cast<unsigned>(decimals);
        double const product = exactPowers[exponent + 1] * v;
        constexpr double exactTenths = 562949953421312.0;  // 2^49
        if (std::fabs(product) < exactTenths) {
            // Up to here tenths are close enough for whole numbers to give the same as below.
            auto const magnitude = static_cast<std::uint64_t>(std::fabs(product));
            auto const rounded = static_cast<double>(static_cast<std::int64_t>((magnitude + 5) / 10));
            return std::copysign(rounded, v + 0.0) / exactPowers[exponent];  // -0.0 gives 0.0
        }
    }
    return RoundAny(v, decimals);
}

double LCMath::DegToRad(double degrees) { return degrees * pi / halfCircle; }
double LCMath::RadToDeg(double radians) { return radians * halfCircle / pi; }
double LCMath::sinDeg(double degrees) { return std::sin(DegToRad(degrees)); }
double LCMath::cosDeg(double degrees) { return std::cos(DegToRad(degrees)); }
double LCMath::tanDeg(double degrees) { return std::tan(DegToRad(degrees)); }
double LCMath::sinRad(double radians) { return std::sin(radians); }
double LCMath::cosRad(double radians) { return std::cos(radians); }
double LCMath::tanRad(double radians) { return std::tan(radians); }
