#pragma once

// The whole library. A program that uses a few classes includes their own headers.

#include "colour/LCColor.h"
#include "collections/LCStringList.h"
#include "collections/LCStringSet.h"
#include "collections/LCStringVector.h"
#include "foundation/LCCheckCancel.h"
#include "foundation/LCInfo.h"
#include "foundation/LCMath.h"
#include "foundation/LCObject.h"
#include "foundation/LCOverwriteCallback.h"
#include "foundation/LCString.h"
#include "identity/LCGUID.h"
#include "input/LCBarCode.h"
#include "library/LCQRTCL_DataTypesInit.h"
#include "paragraph/LCDocument.h"
#include "paragraph/LCParagraph.h"
#include "paragraph/LCParagraphList.h"
#include "paragraph/LCParagraphReaderWriter.h"
#include "streams/LCBase64.h"
#include "units/LCUnitMan.h"
