#pragma once

#include "colour/LCColor.h"

inline void PrintTo(LCColor const & colour, std::ostream * out) { *out << colour.StrTRGBA().str(); }
