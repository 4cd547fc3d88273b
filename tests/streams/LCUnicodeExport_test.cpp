#include "streams/LCUnicodeExport.h"

#include <locale.h>

#include "platform/CharacterSet.h"
#include "support/Support.h"

namespace {

using namespace std::string_literals;

TEST(UnicodeExport, ADataLinkFileGivesItsConnectionStringToOtherPrograms)
{
    TemporaryFolder const folder;
    std::string const head = "[oledb]\r\n; Everything after this line is an OLE DB initstring\r\n";
    LCString const path = folder.Write("link", std::string(5000, 'x'));
    for (std::string const text : {"Provider=SQLOLEDB;Data Source=(local);", "", "caf\xE9\x80\xFF"}) {
        ASSERT_TRUE(LCUnicodeExport::SaveConnStrUDLFile(text.c_str(), path.c_str()));
        std::string expected = "\xFF\xFE";
        for (char const c : head + text + "\r\n") expected += {c, '\0'};
        EXPECT_EQ(folder.Read("link"), expected);
    }
}

TEST(UnicodeExport, ATextConvertsByTheThreadsCharacterSet)
{
    TemporaryFolder const folder;
    LCString const path = folder.Path("text");
    ::locale_t const utf8 = ::newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    ::locale_t const plain = ::newlocale(LC_CTYPE_MASK, "C", nullptr);
    struct { ::locale_t locale; char const * text; std::string units; } const rows[] = {
        {plain, "", ""}, {plain, "a\r\n\x80\xE9", "a\0\r\0\n\0\x80\0\xE9\0"s},
        {utf8, "\xC3\xA9\xF0\x9F\x98\x80", "\xE9\0\x3D\xD8\x00\xDE"s},
        {utf8, "\xE2\x82\xC3\xA9\xC3", "\xE2\0\x82\0\xE9\0\xC3\0"s},  // broken: by number
    };
    for (auto const & row : rows) {
        ::locale_t const before = ::uselocale(row.locale);
        for (auto const save : {&LCUnicodeExport::SaveStringToFile, &SaveConnStrUDLFile, &SaveStringAsUniCodeToFile}) {
            EXPECT_TRUE(save(row.text, path.c_str()));
            EXPECT_EQ(folder.Read("text"), "\xFF\xFE" + row.units) << row.text;
        }
        ::uselocale(before);
    }
    ::freelocale(utf8);
    ::freelocale(plain);
}

TEST(UnicodeExport, OtherCharacterSetsAndLongTexts)
{
    using qrtcl::platform::ToUtf16;
    EXPECT_EQ(ToUtf16("\x80\x81", "CP1252"), "\xAC\x20\x81\0"s);
    EXPECT_EQ(ToUtf16("a\xD2xa", "CP1258"), "\xA3\x1Ex\0a\0"s);  // accents stand behind their letter
    EXPECT_EQ(ToUtf16("\x88\x62\x88\xFF", "BIG5-HKSCS"), "\xCA\0\x04\x03\x88\0\xFF\0"s);
    EXPECT_EQ(ToUtf16("a\xE9", "no such set"), "a\0\xE9\0"s);
    EXPECT_EQ(ToUtf16(std::string(9000, 'e') + "\xFF", "UTF-8").substr(17998), "e\0\xFF\0"s);
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
