#include "streams/LCUnicodeExport.h"

#include <string>
#include <string_view>

#include "platform/CharacterSet.h"
#include "platform/Files.h"

namespace platform = qrtcl::platform;

namespace {

constexpr std::string_view byteOrderMark = "\xFF\xFE";

void AppendUnits(std::string & content, std::string_view bytes)
{
    for (char const c : bytes) content += {c, '\0'};
}

}  // namespace

bool LCUnicodeExport::SaveConnStrUDLFile(char const * connectionString, char const * path) noexcept
{
    if (connectionString == nullptr) return false;
    try {
        std::string content(byteOrderMark);
        AppendUnits(content, "[oledb]\r\n");
        AppendUnits(content, "; Everything after this line is an OLE DB initstring\r\n");
        AppendUnits(content, connectionString);
        AppendUnits(content, "\r\n");
        return platform::WriteFile(path, content);
    } catch (...) {
        return false;
    }
}

bool LCUnicodeExport::SaveStringToFile(char const * text, char const * path) noexcept
{
    if (text == nullptr) return false;
    try {
        std::string content(byteOrderMark);
        content += platform::ToUtf16(text, platform::ThreadCharacterSet());
        return platform::WriteFile(path, content);
    } catch (...) {
        return false;
    }
}

bool SaveConnStrUDLFile(char const * text, char const * path) noexcept
{
    return LCUnicodeExport::SaveStringToFile(text, path);
}

bool SaveStringAsUniCodeToFile(char const * text, char const * path) noexcept
{
    return LCUnicodeExport::SaveStringToFile(text, path);
}
