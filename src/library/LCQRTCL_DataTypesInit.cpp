#include "library/LCQRTCL_DataTypesInit.h"

void LCQRTCL_DataTypesInit::Init(void *) {}
void LCQRTCL_DataTypesInit::Terminate() {}
