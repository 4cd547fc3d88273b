#pragma once

#include <list>
#include <set>
#include <vector>

#include "collections/ContainerLayers.h"
#include "collections/LCIntPair.h"
#include "collections/LCStringPair.h"
#include "foundation/Export.h"

// The collections of pairs. All have the interface of their standard container, are copied and moved like it,
// and are empty after a move. Those of strings have `ContainsCI` and `FindCI` for a pair, `FindFirst` and
// `FindCIFirst` for its first text: all walk from the front, in a set too.

class QRTCL_API LCIntIntPairList : public qrtcl::Plain<std::list<LCIntIntPair>> {};
class QRTCL_API LCIntShortPairList : public qrtcl::Plain<std::list<LCIntShortPair>> {};

class QRTCL_API LCStringPairList : public qrtcl::SearchPairs<std::list<LCStringPair>> {};
class QRTCL_API LCStringPairVector : public qrtcl::SearchPairs<std::vector<LCStringPair>> {};
class QRTCL_API LCStringPairSet : public qrtcl::SearchPairs<std::set<LCStringPair>> {};

class QRTCL_API LCStringIntPairList : public qrtcl::SearchPairs<std::list<LCStringIntPair>> {};
class QRTCL_API LCStringIntPairVector : public qrtcl::SearchPairs<std::vector<LCStringIntPair>> {};
class QRTCL_API LCStringIntPairSet : public qrtcl::SearchPairs<std::set<LCStringIntPair>> {};
