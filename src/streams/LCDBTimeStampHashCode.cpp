#include "streams/LCDBTimeStampHashCode.h"

LCDBTimeStampHashCode::~LCDBTimeStampHashCode() = default;

bool LCDBTimeStampHashCode::IsEqual(LCDBHashCode const & other) const
{
    auto const * const stamped = dynamic_cast<LCDBTimeStampHashCode const *>(&other);
    return stamped != nullptr && stamped->DBTimeStamp == DBTimeStamp;
}

LCDBHashCode * LCDBTimeStampHashCode::Clone() const { return new LCDBTimeStampHashCode(*this); }

int LCDBTimeStampHashCode::GetDBTimeStamp() const { return DBTimeStamp; }

void LCDBTimeStampHashCode::SetDBTimeStamp(int stamp) { DBTimeStamp = stamp; }
