#pragma once

#include "foundation/Export.h"

/// The family's unit table: ten quantities, their conversion between unit indexes, how many decimals a number
/// is shown with and what difference still counts.
///
///   quantity            index 0               index 1               index 2
///   Distance            mm                    in                    in
///   Speed               mm/s                  in/min                in/min
///   Weight              kg                    lb                    lb
///   Density, Strength,
///   CrownCoeff          metric                inch-based            inch-based
///   Force, ForceLength  metric                first inch-based      second inch-based
///   Time                min                   h                     d
///   Angle               degree                radian                (none)
///
/// The factors are constants of the table, several of them rounded on their own: a factor and its inverse are
/// not exact reciprocals, and a number that goes there and back need not come back the same. An index outside
/// the table has the factor 1.0 and the decimals and precision of index 0. All operations are pure and safe
/// on every thread.
class QRTCL_API LCUnitMan {
public:
    LCUnitMan() = default;
    LCUnitMan(LCUnitMan const &) = default;
    LCUnitMan & operator=(LCUnitMan const &) = default;
    virtual ~LCUnitMan();

    // The value in the unit `to`, always rounded to that unit's decimals by LCMath::RoundToDec, also where
    // `from` and `to` are equal. A value too large for that comes back unrounded.

    static double ConvertAngle(double value, int from, int to);
    static double ConvertCrownCoeff(double value, int from, int to);
    static double ConvertDensity(double value, int from, int to);
    static double ConvertDistance(double value, int from, int to);
    static double ConvertForce(double value, int from, int to);
    static double ConvertForceLength(double value, int from, int to);
    static double ConvertSpeed(double value, int from, int to);
    static double ConvertStrength(double value, int from, int to);
    static double ConvertTime(double value, int from, int to);
    static double ConvertWeight(double value, int from, int to);

    // The factor from the unit `from` to the unit `to`.

    static double GetScaleFactorAngle(int from, int to);
    static double GetScaleFactorCrownCoeff(int from, int to);
    static double GetScaleFactorDensity(int from, int to);
    static double GetScaleFactorDistance(int from, int to);
    static double GetScaleFactorForce(int from, int to);
    static double GetScaleFactorForceLength(int from, int to);
    static double GetScaleFactorSpeed(int from, int to);
    static double GetScaleFactorStrength(int from, int to);
    static double GetScaleFactorTime(int from, int to);
    static double GetScaleFactorWeight(int from, int to);

    // The number of decimals that a number is shown with. `Rounded` is for numbers that are shown more
    // coarsely than they convert.

    static int GetUnitDecAngle(int unit);
    static int GetUnitDecAngleRounded(int unit);
    static int GetUnitDecCrownCoeff(int unit);
    static int GetUnitDecDensity(int unit);
    static int GetUnitDecDistance(int unit);
    static int GetUnitDecDistanceRounded(int unit);
    static int GetUnitDecForce(int unit);
    static int GetUnitDecForceLength(int unit);
    static int GetUnitDecSpeed(int unit);
    static int GetUnitDecStrength(int unit);
    static int GetUnitDecTime(int unit);
    static int GetUnitDecWeight(int unit);

    // The smallest difference that counts.

    static double GetUnitPrecisionAngle(int unit);
    static double GetUnitPrecisionAngleRounded(int unit);
    static double GetUnitPrecisionCrownCoeff(int unit);
    static double GetUnitPrecisionDensity(int unit);
    static double GetUnitPrecisionDistance(int unit);
    static double GetUnitPrecisionDistanceRounded(int unit);
    static double GetUnitPrecisionForce(int unit);
    static double GetUnitPrecisionForceLength(int unit);
    static double GetUnitPrecisionSpeed(int unit);
    static double GetUnitPrecisionStrength(int unit);
    static double GetUnitPrecisionTime(int unit);
    static double GetUnitPrecisionWeight(int unit);

    // The same by case number: 1 distance, 2 force, 3 force per length, 4 strength, 5 density, 6 speed, 7
    // rounded distance, 8 angle, 9 rounded angle, 10 time, 11 crown coefficient, 12 weight. Any other number
    // has the factor 1.0, 6 decimals and the precision 1e-06.

    /// Angles and times (8, 9, 10) are never converted: 1.0.
    static double GetCaseScaleFactor(int caseNumber, int from, int to);
    /// An angle has 2, a rounded angle 6 and a time 0 decimals in every unit.
    static int GetCaseUnitDec(int caseNumber, int unit);
    static double GetCaseUnitPrecision(int caseNumber, int unit);
};
