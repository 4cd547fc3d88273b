#pragma once

#include <exception>

#include "foundation/Export.h"

/// Comparison of doubles through an explicit tolerance, rounding to decimals, angles in degrees.
///
/// The comparisons are not closed at the same end: at a distance of exactly `tol`, `AlmostEq` holds while
/// `AlmostEqOrGreater` and `AlmostEqOrLess` do not. Differences and sums are plain double arithmetic. The
/// forms for long double compute exactly as those for double.
class QRTCL_API LCMath {
public:
    LCMath() = delete;

    /// What `Div` throws; `what()` is "Division by zero !".
    class QRTCL_API LCDivisionByZero : public std::exception {
    public:
        ~LCDivisionByZero() override;
        char const * what() const noexcept override;
    };

    static constexpr double pi = 3.141592653589793;

    /// |a - b| <= tol; false with a not-a-number.
    static bool AlmostEq(double a, double b, double tol);
    static bool AlmostEq(long double a, long double b, long double tol);
    /// a > b - tol, strictly; false with a not-a-number.
    static bool AlmostEqOrGreater(double a, double b, double tol);
    /// a < b + tol, strictly; false with a not-a-number.
    static bool AlmostEqOrLess(double a, double b, double tol);
    /// The negation of `AlmostEqOrLess`, so true with a not-a-number.
    static bool GreaterNotAlmostEq(double a, double b, double tol);
    /// The negation of `AlmostEqOrGreater`, so true with a not-a-number.
    static bool LessNotAlmostEq(double a, double b, double tol);

    /// a / b; throws LCDivisionByZero for a divisor within 1e-13 of zero, that distance included.
    static double Div(double a, double b);
    static long double Div(long double a, long double b);

    // Rounding to `decimals` digits behind the point; a negative number rounds to tens, hundreds, and so on.

    static double CeilToDec(double v, int decimals);
    static double FloorToDec(double v, int decimals);
    /// Half away from zero, decided by the one digit behind the last kept one, which is cut from the product
    /// and not rounded: 1.2349 with 2 decimals is 1.23, and 1.005 with 2 decimals is 1, as 1.005 * 1000 lies
    /// just under 1005. A value whose product does not fit 64 bits, an infinity and a not-a-number come back
    /// unrounded.
    static double RoundToDec(double v, int decimals);

    static double DegToRad(double degrees);
    static double RadToDeg(double radians);
    static double sinDeg(double degrees);
    static double cosDeg(double degrees);
    static double tanDeg(double degrees);
    static double sinRad(double radians);
    static double cosRad(double radians);
    static double tanRad(double radians);
};
