#pragma once

#include "FlatPattern.h"

/// The flat pattern as a drawing: the blank with its bend zones, bend lines and dimensions, and the bent
/// section.
LCString DrawSvg(Part const & part, FlatPattern const & pattern);

/// The same blank for the machine: a DXF file (R12, lengths in mm) with the outline, the bend lines and their
/// texts, each in a drawing colour.
LCString DrawDxf(Part const & part, FlatPattern const & pattern);
