#include "streams/LCDBHashCode.h"

LCDBHashCode::~LCDBHashCode() = default;

bool LCDBHashCode::IsEqual(LCDBHashCode const &) const { return true; }
