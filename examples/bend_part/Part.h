#pragma once

#include <optional>
#include <stdexcept>
#include <vector>

#include "QRTCL_DataTypes.h"

/// A part file that can't be used; `what()` says where and why: "part/bends/bend 2/kFactor: 0.9 is not
/// between 0 and 0.5".
class PartError : public std::runtime_error {
public:
    PartError(LCParagraph & place, LCString const & reason);
};

/// One bend between two flanges.
class Bend : public LCParagraphReaderWriter {
public:
    double angle = 90.0;       ///< degrees by which the sheet is turned out of the plane
    double innerRadius = 0.0;  ///< mm
    double kFactor = 0.0;      ///< where the neutral line lies, as a share of the thickness from the inside
    bool up = true;
    LCKeyIDRev punch;
    LCKeyIDRev die;

    /// Length of the neutral line through the bend, in mm.
    double Allowance(double thickness) const;
    /// Distance from the outer corner to where the bend begins, in mm.
    double SetBack(double thickness) const;

    bool ReadParagraphContents(LCParagraph & paragraph) override;
    bool WriteParagraphContents(LCParagraph & paragraph) const override;

    bool operator==(Bend const & other) const;
};

/// A bent sheet-metal part as its file tells it. Lengths are in mm; flanges are measured outside, over the
/// corners.
class Part : public LCParagraphReaderWriter {
public:
    LCGUID id = LCGUID::EmptyGUID();
    LCString number;
    int revision = 0;
    LCString name;
    LCKeyIDRev program;  ///< what the machine runs

    LCString material;
    double density = 0.0;          ///< kg/dm3
    double tensileStrength = 0.0;  ///< N/mm2
    double thickness = 0.0;
    double width = 0.0;  ///< along the bend lines
    LCDoubleVector flanges;
    std::vector<Bend> bends;
    LCIntVector sequence;           ///< order in which the bends are made, each counted from 1
    std::optional<double> coating;  ///< thickness of the coating in micrometres, if there is one

    LCDateTime due;
    LCTimeSpan timePerPiece;
    LCColor colour;
    LCColor cutColour;
    LCBarCode code;
    LCStringList operations;
    LCString notes;
    LCTags tags;
    bool released = false;

    /// The tools of all bends, each once.
    LCKeyIDRevSet Tools() const;

    /// Throws PartError for a value that is missing or out of range.
    bool ReadParagraphContents(LCParagraph & paragraph) override;
    bool WriteParagraphContents(LCParagraph & paragraph) const override;
};
