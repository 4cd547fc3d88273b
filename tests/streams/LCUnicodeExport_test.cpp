#include "streams/LCUnicodeExport.h"

#include <locale.h>

#include "platform/CharacterSet.h"

namespace {

using namespace std::string_literals;

TEST(UnicodeExport, ADataLinkFileTakesEachByteAndReplacesAnother)
{
    TemporaryFolder const folder;
    LCString const path = folder.Write("link", std::string(5000, 'x'));
    for (std::string const text : {"", "caf\xE9\x80\xFF"}) {
        std::string const all = "[oledb]\r\n; Everything after this line is an OLE DB initstring\r\n" + text + "\r\n";
        std::string units = "\xFF\xFE";
        for (char const c : all) units += {c, '\0'};
        EXPECT_TRUE(LCUnicodeExport::SaveConnStrUDLFile(text.c_str(), path.c_str()));
        EXPECT_EQ(folder.Read("link"), units);
    }
}

TEST(UnicodeExport, ATextConvertsByTheThreadsCharacterSet)
{
    TemporaryFolder const folder;
    LCString const path = folder.Path("text");
    std::pair<char const *, std::string> const rows[] = {
        {"C", "\xC3\0\xA9\0\xF0\0\x9F\0\x98\0\x80\0\xC3\0"s}, {"C.UTF-8", "\xE9\0\x3D\xD8\x00\xDE\xC3\0"s}};
    for (auto const & [name, units] : rows) {
        ::locale_t const locale = ::newlocale(LC_CTYPE_MASK, name, nullptr), before = ::uselocale(locale);
        for (auto const save : {&LCUnicodeExport::SaveStringToFile, &SaveConnStrUDLFile, &SaveStringAsUniCodeToFile}) {
            EXPECT_TRUE(save("\xC3\xA9\xF0\x9F\x98\x80\xC3", path.c_str()));
            EXPECT_EQ(folder.Read("text"), "\xFF\xFE" + units);
        }
        ::uselocale(before);
        ::freelocale(locale);
    }
}

TEST(UnicodeExport, OtherCharacterSetsAndLongTexts)
{
    using qrtcl::platform::ToUtf16;
    EXPECT_EQ(ToUtf16("\x80\x81", "CP1252"), "\xAC\x20\x81\0"s);
    EXPECT_EQ(ToUtf16("a\xD2xa", "CP1258"), "\xA3\x1Ex\0a\0"s);  // accents stand behind their letter
    EXPECT_EQ(ToUtf16("\x88\x62\x88\xFF", "BIG5-HKSCS"), "\xCA\0\x04\x03\x88\0\xFF\0"s);
    EXPECT_EQ(ToUtf16("a\xE9", "no such set"), "a\0\xE9\0"s);
    EXPECT_EQ(ToUtf16(std::string("\xFF").insert(0, 9000, 'e'), "UTF-8").substr(17998), "e\0\xFF\0"s);
}

TEST(UnicodeExport, WithoutAFileOrATextTheResultIsFalse)
{
    TemporaryFolder const folder;
    for (auto const save : {&LCUnicodeExport::SaveConnStrUDLFile, &LCUnicodeExport::SaveStringToFile}) {
        EXPECT_FALSE(save("text", folder.Path("missing/file").c_str()));
        EXPECT_FALSE(save(nullptr, folder.Write("file", "kept").c_str()));
        EXPECT_EQ(folder.Read("file"), "kept");
    }
}

}  // namespace
