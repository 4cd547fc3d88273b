#include "foundation/LCMath.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdlib>

namespace {

constexpr double halfCircle = 180.0;
constexpr double divisionTolerance = 1e-13;

/// pow(10.0, exponent). The powers that a double holds exactly are the same from a table.
double PowerOfTen(int exponent)
{
    static constexpr std::array<double, 23> exact = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                     1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                                     1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
    if (exponent >= 0 && exponent < static_cast<int>(exact.size()))
        return exact[static_cast<unsigned>(exponent)];
    return std::pow(10.0, exponent);
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
    constexpr double limit = 9223372036854775808.0;  // 2^63
    constexpr int beyondAnyPower = 400;              // infinite, and zero when negative
    decimals = std::clamp(decimals, -beyondAnyPower, beyondAnyPower);
    double const product = PowerOfTen(decimals + 1) * v;
    if (!(product >= -limit && product < limit)) return v;

    double const scale = PowerOfTen(decimals);
    std::int64_t const cut = static_cast<std::int64_t>(product);
    double rounded = 0.0;
    constexpr std::int64_t exactTenths = std::int64_t{1} << 49;
    if (cut > -exactTenths && cut < exactTenths) {
        // Up to here cut / 10.0 is close enough for whole numbers to give the same.
        rounded = std::copysign(static_cast<double>((std::abs(cut) + 5) / 10), v < 0.0 ? -1.0 : 1.0);
    } else {
        double const tenths = static_cast<double>(cut) / 10.0;
        rounded = v < 0.0 ? std::ceil(tenths - 0.5) : std::floor(tenths + 0.5);
    }
    return scale == 0.0 ? rounded : rounded / scale;
}

double LCMath::DegToRad(double degrees) { return degrees * pi / halfCircle; }
double LCMath::RadToDeg(double radians) { return radians * halfCircle / pi; }
double LCMath::sinDeg(double degrees) { return std::sin(DegToRad(degrees)); }
double LCMath::cosDeg(double degrees) { return std::cos(DegToRad(degrees)); }
double LCMath::tanDeg(double degrees) { return std::tan(DegToRad(degrees)); }
double LCMath::sinRad(double radians) { return std::sin(radians); }
double LCMath::cosRad(double radians) { return std::cos(radians); }
double LCMath::tanRad(double radians) { return std::tan(radians); }
