#include "streams/LCUnicodeExport.h"

#include <filesystem>
#include <locale.h>
#include <optional>

#include "platform/CharacterSet.h"
#include "support/Support.h"

namespace {

using namespace std::string_literals;

using Save = bool (*)(char const *, char const *) noexcept;

/// What another program reads out of a data link file: the connection string, or nothing for a file that is
/// none.
std::optional<std::u16string> ReadDataLink(std::string const & file)
{
    std::u16string const head = u"\uFEFF[oledb]\r\n; Everything after this line is an OLE DB initstring\r\n";
    if (file.size() % 2 != 0 || file.size() < 128) return std::nullopt;
    std::u16string units;
    for (std::size_t i = 0; i < file.size(); i += 2) {
        unsigned const low = static_cast<unsigned char>(file[i]);
        unsigned const high = static_cast<unsigned char>(file[i + 1]);
        units += static_cast<char16_t>(high << 8 | low);
    }
    if (units.substr(0, head.size()) != head || head.size() != 64) return std::nullopt;
    std::u16string const blanks = u" \t\r\n";
    std::size_t const first = units.find_first_not_of(blanks, head.size());
    if (first == std::u16string::npos) return std::u16string();
    return units.substr(first, units.find_last_not_of(blanks) + 1 - first);
}

/// The character set of another locale for this thread.
class ThreadLocale {
public:
    explicit ThreadLocale(char const * name)
        : mopLocale(::newlocale(LC_CTYPE_MASK, name, nullptr)), mopBefore(::uselocale(mopLocale))
    {}
    ThreadLocale(ThreadLocale const &) = delete;
    ThreadLocale & operator=(ThreadLocale const &) = delete;
    ~ThreadLocale()
    {
        ::uselocale(mopBefore);
        ::freelocale(mopLocale);
    }

private:
    ::locale_t mopLocale;
    ::locale_t mopBefore;
};

TEST(UnicodeExport, ADataLinkFileGivesItsConnectionStringToOtherPrograms)
{
    TemporaryFolder const folder;
    LCString const path = folder.Write("link", std::string(5000, 'x'));
    struct {
        std::string bytes;
        std::u16string text;
    } const rows[] = {
        {"Provider=SQLOLEDB;Data Source=(local);", u"Provider=SQLOLEDB;Data Source=(local);"},
        {"", u""},
        {"caf\xE9 \x80\xFF", u"caf\u00E9 \u0080\u00FF"},
    };
    ThreadLocale const other("C.UTF-8");  // which is not asked
    for (auto const & row : rows) {
        ASSERT_TRUE(LCUnicodeExport::SaveConnStrUDLFile(row.bytes.c_str(), path.c_str()));
        std::string const file = folder.Read("link");
        EXPECT_EQ(file.size(), 132 + 2 * row.bytes.size());
        EXPECT_EQ(file.substr(file.size() - 4), "\r\0\n\0"s);
        EXPECT_EQ(ReadDataLink(file), row.text);
    }
}

TEST(UnicodeExport, ATextConvertsByTheThreadsCharacterSet)
{
    TemporaryFolder const folder;
    LCString const path = folder.Path("text");
    struct {
        char const *locale, *text;
        std::string units;
    } const rows[] = {
        {"C", "", ""},
        {"C", "a\r\n", "a\0\r\0\n\0"s},
        {"C", "\x80\xE9", "\x80\0\xE9\0"s},
        {"C.UTF-8", "\xC3\xA9\xE2\x82\xAC", "\xE9\0\xAC\x20"s},
        {"C.UTF-8", "\xF0\x9F\x98\x80", "\x3D\xD8\x00\xDE"s},
        {"C.UTF-8", "a\xE9z\xC3", "a\0\xE9\0z\0\xC3\0"s},        // broken: each byte by its number
        {"C.UTF-8", "\xE2\x82\xC3\xA9", "\xE2\0\x82\0\xE9\0"s},  // and what follows converts again
    };
    for (auto const & row : rows) {
        ThreadLocale const locale(row.locale);
        for (Save const save : {Save{&LCUnicodeExport::SaveStringToFile}, Save{&SaveConnStrUDLFile},
                                Save{&SaveStringAsUniCodeToFile}}) {
            ASSERT_TRUE(save(row.text, path.c_str()));
            EXPECT_EQ(folder.Read("text"), "\xFF\xFE" + row.units) << row.locale << ' ' << row.text;
        }
    }
}

TEST(UnicodeExport, OtherCharacterSetsAndLongTexts)
{
    using qrtcl::platform::ToUtf16;
    EXPECT_EQ(ToUtf16("\x80\x81", "CP1252"), "\xAC\x20\x81\0"s);
    EXPECT_EQ(ToUtf16("a\xE9", "no such set"), "a\0\xE9\0"s);
    std::string text;
    std::string units;
    for (int i = 0; i < 3000; ++i) {
        text += "\xC3\xA9\xFF-";
        units += "\xE9\0\xFF\0-\0"s;
    }
    EXPECT_EQ(ToUtf16(text, "UTF-8"), units);
}

TEST(UnicodeExport, WithoutAFileOrATextNothingIsWritten)
{
    TemporaryFolder const folder;
    for (Save const save :
         {Save{&LCUnicodeExport::SaveConnStrUDLFile}, Save{&LCUnicodeExport::SaveStringToFile}}) {
        EXPECT_FALSE(save("text", folder.Path("missing/file").c_str()));
        EXPECT_FALSE(save("text", folder.Path(".").c_str()));
        EXPECT_FALSE(save(nullptr, folder.Path("file").c_str()));
        EXPECT_FALSE(std::filesystem::exists(folder.Path("file").str()));
    }
}

}  // namespace
