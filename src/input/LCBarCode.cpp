#include "input/LCBarCode.h"

LCBarCode::~LCBarCode() = default;

LCString LCBarCode::GetType() const { return movType; }

LCString LCBarCode::GetData() const { return movData; }

bool LCBarCode::SetType(LCString const & type)
{
    movType = type;
    return true;
}

bool LCBarCode::SetData(LCString const & data)
{
    movData = data;
    return true;
}

bool LCBarCode::operator==(LCBarCode const & other) const
{
    return movType == other.movType && movData == other.movData;
}

bool LCBarCode::operator!=(LCBarCode const & other) const { return !(*this == other); }

bool LCBarCode::operator<(LCBarCode const & other) const
{
    auto const byType = movType <=> other.movType;
    return byType != 0 ? byType < 0 : movData < other.movData;
}
