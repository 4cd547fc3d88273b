#include "foundation/LCInfo.h"

LCInfo * gopInfo = nullptr;

LCInfo::~LCInfo() = default;

bool LCInfo::ShowInfo() { return true; }
bool LCInfo::HideInfo() { return true; }
bool LCInfo::SetInfo(LCString const &) { return true; }
bool LCInfo::ClearInfo() { return true; }
