// The text of GUIDs.
#include "Fuzz.h"
#include "identity/LCGUID.h"

void Fuzz(Input input)
{
    std::string const text = input.Rest();
    std::string bare = text;
    if (bare.starts_with('{')) bare.erase(0, 1);
    if (bare.ends_with('}')) bare.pop_back();
    LCGUID const guid{LCString(text)};
    RequireEqual("text", guid.AsStr(false).str(), bare);
    RequireEqual("with braces", guid.AsStr(true).str(), "{" + bare + "}");
    RequireEqual("valid", guid.IsValid(), !bare.empty());
    RequireEqual("back", LCGUID(guid.AsStr(true)) == guid, true);
}
