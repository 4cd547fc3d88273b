#pragma once

// The whole library. A program that uses a few classes includes their own headers.

#include "foundation/LCString.h"
