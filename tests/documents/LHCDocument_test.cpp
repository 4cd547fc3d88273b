#include "documents/LHCDocument.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstring>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <functional>
#include <memory>
#include <new>
#include <random>
#include <set>
#include <thread>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "documents/platform/FileCalls.h"
#include "foundation/LCCheckCancel.h"
#include "foundation/LCInfo.h"
#include "support/Allocations.h"
#include "support/Support.h"

namespace {

using namespace std::string_literals;
using qrtcl::documents::FileCalls;
using qrtcl::documents::FileState;

static_assert(!std::is_constructible_v<LHCDocument, char const *> &&
              !std::is_convertible_v<bool, LHCDocument>);
static_assert(!std::is_copy_constructible_v<LHCDocument> && !std::is_copy_assignable_v<LHCDocument>);

constexpr char const * declaration = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

LCString Saved(LHCDocument & document)
{
    LCString xml;
    EXPECT_TRUE(document.SaveToText(xml)) << document.GetErrorText().str();
    return xml;
}

std::string Repeated(std::string const & text, int count)
{
    std::string all;
    for (int i = 0; i < count; ++i) all += text;
    return all;
}

// Readers of stored files rely on this form.
TEST(Document, IsStoredInThisForm)
{
    LHCDocument document;
    LCParagraph & root = document.GetRootParagraph();
    root.SetName("Part");
    root.SetAttributeAsString("ID", "A \"1\"\t<\n");
    root.SetParameterAsDouble("thickness", 1.5, -1);
    root.SetParameterAsString("note", " a < b & c > d\r\n\"e\"\tf ", true);
    root.SetParameterAsString("blank", " \n", true);
    root.SetParameterAsString("empty", "", true);
    root.CreateParagraph("none");
    LCParagraph & both = *root.CreateParagraph("both");
    both.SetValueAsString("v", true);
    both.SetParameterAsBool("L 1", true);
    EXPECT_EQ(Saved(document), LCString(declaration) + R"(<Part ID="A &quot;1&quot;&#9;&lt;&#10;">
  <thickness>1.5</thickness>
  <note> a &lt; b &amp; c &gt; d&#13;
"e"	f </note>
  <blank _value=" &#10;"/>
  <empty _value=""/>
  <none/>
  <both _value="v">
    <L_x0020_1>1</L_x0020_1>
  </both>
</Part>
)");
}

TEST(Document, EscapesWhatXmlCantHold)
{
    struct { std::string text, name, value; } const rows[] = {
        {"", "_x_", ""}, {"_x_", "_x005F_x_", "_x_"}, {"a:b", "a_x003A_b", "a:b"}, {"-1", "_x002D_1", "-1"},
        {"xmlns", "_x0078_mlns", "xmlns"}, {"XMLish", "_x0058_MLish", "XMLish"}, {"\x01", "_x0001_", "_x0001_"},
        {"_x0041_", "_x005F_x0041_", "_x005F_x0041_"}, {"_x0041:", "_x005F_x0041_x003A_", "_x005F_x0041:"},
        {"\xC3\xA4", "_x00C3__x00A4_", "\xC3\xA4"}, {"\xC3", "_x00C3_", "_x00C3_"},  // a letter, half a letter
        {"\xF0\x9F\x98\x80", "_x00F0__x009F__x0098__x0080_", "\xF0\x9F\x98\x80"},
        {"\xEF\xBF\xBE", "_x00EF__x00BF__x00BE_", "_x00EF__x00BF__x00BE_"},  // U+FFFE
    };
    LHCDocument document;
    document.GetRootParagraph().SetAttributeAsString("_value", "stored");
    std::string expected = declaration + "<Document _x005F_value=\"stored\">\n"s;
    for (auto const & row : rows) {
        document.GetRootParagraph().SetParameterAsString(row.text, row.text + ".", true);
        expected += "  <" + row.name + ">" + row.value + ".</" + row.name + ">\n";
    }
    EXPECT_EQ(Saved(document), LCString(expected + "</Document>\n"));
}

TEST(Document, GivesEveryByteBack)
{
    std::set<std::string> texts = {"",        "_x_",    "_x0041_",      "_x005F_", "_x00ff_",
                                   "_x4E2D_", "_x0041", "__x0041_",     "]]>",     "<!--",
                                   "&amp;",   "\r\n",   "\xEF\xBB\xBF", "_value",  "xml"};
    for (int c = 0; c < 256; ++c) {
        std::string const byte(1, static_cast<char>(c));
        texts.insert({byte, "a" + byte, byte + "a", "a" + byte + "b", byte + byte, "_x0041" + byte,
                      "\xE2\x82" + byte, "\xEF\xBF" + byte, "\xED\xA0" + byte, "\xC0" + byte,
                      "\xF4\x90\x80" + byte, "_x00" + byte + "1_", "xml" + byte});
    }
    LHCDocument document;
    LCParagraph & root = document.GetRootParagraph();
    for (std::string const & text : texts) {
        LCParagraph & child = *root.CreateParagraph(text);
        child.SetValueAsString(text, true);
        child.SetAttributeAsString(text, text);
        child.CreateParagraph("parent")->SetParameterAsString("leaf", text, true);
    }
    TemporaryFolder const folder;
    LHCDocument loaded;
    ASSERT_TRUE(document.SaveToFile(folder.Path("bytes.xml")));
    ASSERT_TRUE(loaded.LoadFromFile(folder.Path("bytes.xml"))) << loaded.GetErrorText().str();
    EXPECT_EQ(folder.Read("bytes.xml"), Saved(document).str());
    for (std::string const & text : texts) {
        LCParagraph * const child = loaded.GetRootParagraph().GetParagraph(text);
        ASSERT_NE(child, nullptr) << testing::PrintToString(text);
        EXPECT_EQ(child->GetValueAsString("?"), text);
        EXPECT_EQ(child->GetAttributeAsString(text, "?"), text);
        EXPECT_EQ(child->GetParagraph("parent")->GetParameterAsString("leaf", "?", false), text);
    }
}

// What others write is read as it is meant; the second text is what we make of it.
TEST(Document, ReadsFilesOfOtherHands)
{
    struct { std::string xml, stored; } const rows[] = {
        {"\xEF\xBB\xBF<?xml version='1.0' encoding='utf-8'?><a/>", "<a/>"},
        {"<!-- c --><a><!-- c --><?pi?><b/></a><!-- c -->", "<a>\n  <b/>\n</a>"},
        {"<a>\n  one\n  <b/>\n\t\n  <c/> two\n</a>",
         "<a _value=\"one&#10;  &#10;&#9;&#10;   two\">\n  <b/>\n  <c/>\n</a>"},
        {"<a> \n <b> x </b> </a>", "<a>\n  <b> x </b>\n</a>"},
        {"<a>\r\nx\ry</a>", "<a>\nx\ny</a>"},
        {"<a>x<![CDATA[<&]]>y<!-- c --> z</a>", "<a>x&lt;&amp;y z</a>"},
        {"<a b='1' c=\"&#65;&#x42;&lt;\"/>", "<a b=\"1\" c=\"AB&lt;\"/>"},
        {"<a b='x\ty\nz'/>", "<a b=\"x y z\"/>"},
        {"<a>&apos;&quot;&amp;amp;</a>", "<a>'\"&amp;amp;</a>"},
        {"<a _value='x'>y</a>", "<a>x</a>"},
        {"<a>_x0041_ _x00e4_ _x4E2D_</a>", "<a>A _x00E4_ _x005F_x4E2D_</a>"},
        {"<x:a xmlns:x='u' x:b='1'/>", "<x_x003A_a _x0078_mlns_x003A_x=\"u\" x_x003A_b=\"1\"/>"},
        {"<\xC3\xA4/>", "<_x00C3__x00A4_/>"},
    };
    for (auto const & row : rows) {
        LHCDocument document;
        EXPECT_TRUE(document.LoadFromText(row.xml)) << row.xml << ": " << document.GetErrorText().str();
        EXPECT_EQ(Saved(document), LCString(declaration + row.stored + "\n"));
    }
}

// clang-format off
std::vector<std::string> GoodInputs()
{
    return {
        "<a/>", " <a/>\n", "<a></a >", "<a b = 'c'/>", "<a>]]</a>", "<a:b/>", "<_a-1.\xC2\xB7/>",
        "<a>\xF0\x9F\x98\x80&#x10FFFF;&#9;</a>", "<a>\x7F</a>",
        "<?xml version='1.0' standalone='yes'?><a/>", "<?xml version='1.1'?><a/>", "<a><?pi ?></a>",
        "<a xml:lang='de'/>", "<a b='>'/>", "<a>'\">&gt;</a>", "<a><![CDATA[]]]]></a>",
        "<?xml-stylesheet href='encoding.css' type='text/css'?><a/>"};
}

std::vector<std::string> BadInputs()
{
    return {
        "", " ", "text", "<a", "<a>", "<a></b>", "</a>", "<a/><b/>", "<a/>text", "<a/>&amp;",
        "<a><b></a></b>", "< a/>", "<1a/>", "<a b/>", "<a b=c/>", "<a b='1'c='2'/>", "<a b='1' b='1'/>",
        "<a b='<'/>", "<a b='&'/>", "<a>&</a>", "<a>& b</a>", "<a>&b</a>", "<a>&undefined;</a>",
        "<a>&nbsp;</a>", "<a>&#0;</a>", "<a>&#x;</a>", "<a>&#xD800;</a>", "<a>&#xFFFE;</a>",
        "<a>&#x110000;</a>", "<a>\x01</a>", "<a>\x0B</a>", "<a b='\x1F'/>", "<a>a\0b</a>"s, "<a>\xFF</a>",
        "<a>\xC3</a>", "<a>\xC0\x80</a>", "<a>\xED\xA0\x80</a>", "<a>\xEF\xBF\xBF</a>",
        "<a>\xF4\x90\x80\x80</a>", "<a b='\xE4'/>", "<\xE4/>", "<a>]]></a>", "<a><!-- -- --></a>",
        "<a><!-- </a>", "<a><![CDATA[ </a>", "<a><?xml ?></a>", " <?xml version='1.0'?><a/>", "<?xml?><a/>",
        "<?xml version='2.0'?><a/>", "<?xml version='1.0'encoding='UTF-8'?><a/>",
        "<?xml encoding='UTF-8'?><a/>", "<a/><?xml version='1.0'?>"};
}
// clang-format on

TEST(Document, IsAsStrictAsOtherReaders)
{
    LHCDocument document;
    for (std::string const & xml : GoodInputs())
        EXPECT_TRUE(document.LoadFromText(xml)) << xml << document.GetErrorText().str();
    std::vector<std::string> inputs = BadInputs();
    std::string const whole = "<?xml version='1.0'?><a b='&lt;'><!-- c --><?d?>e<f/><![CDATA[g]]>&#65;</a>";
    for (std::size_t size = 0; size < whole.size(); ++size) inputs.push_back(whole.substr(0, size));
    EXPECT_TRUE(document.LoadFromText(whole) && document.LoadFromText("<before/>"));
    for (std::string const & xml : inputs) {
        EXPECT_FALSE(document.LoadFromText(xml)) << testing::PrintToString(xml);
        EXPECT_FALSE(document.GetErrorText().IsEmpty()) << testing::PrintToString(xml);
        EXPECT_EQ(document.GetRootParagraph().GetName(), "before") << testing::PrintToString(xml);
    }
}

// The tables above against an independent reader, where there is one.
TEST(Document, TheExpectedStrictnessIsThatOfXmllint)
{
    if (std::system("xmllint --version >/dev/null 2>&1") != 0) return;
    TemporaryFolder const folder;
    auto const takes = [&](std::string const & xml) {
        LCString const file = folder.Write("input.xml", xml);
        return std::system((LCString("xmllint --huge --noout ") + file + " 2>/dev/null").c_str()) == 0;
    };
    for (std::string const & xml : GoodInputs()) EXPECT_TRUE(takes(xml)) << xml;
    for (std::string const & xml : BadInputs()) EXPECT_FALSE(takes(xml)) << testing::PrintToString(xml);
}

TEST(Document, ErrorsSayWhatAndWhere)
{
    struct { std::string xml; char const * text; } const rows[] = {
        {"<a>\n  <b>\n</a>", "line 3, column 5: the element b ends as a"},
        {"<a>\n&x;</a>", "line 2, column 4: Entity 'x' not defined"},
        {"<!DOCTYPE a [<!ENTITY b 'c'>]><a/>", "line 1, column 13: a document type is not accepted"},
        {"<?xml version='1.0' encoding='latin1'?><a/>", "line 1, column 1: another encoding than UTF-8"},
        {"\xFF\xFE<\0a\0/\0>\0"s, "line 1, column 1: another encoding than UTF-8"},
        {"<a b='1' _x0062_=''/>", "line 1, column 20: attribute _x0062_ stands for one that is there"},
        {"<a/>\0\0"s, "line 1, column 5: zero bytes behind the end"},
        {Repeated("<a>", 257), "line 1, column 771: more than 256 levels"},
    };
    LHCDocument document;
    for (auto const & row : rows) {
        EXPECT_FALSE(document.LoadFromText(row.xml));
        EXPECT_EQ(document.GetErrorText(), row.text);
    }
    TemporaryFolder const folder;
    EXPECT_FALSE(document.LoadFromFile(folder.Write("bad.xml", "<a>")));
    EXPECT_TRUE(document.GetErrorText().Contains("bad.xml: line 1, column 4: "));
    EXPECT_FALSE(document.LoadFromFile(folder.Path("missing")));
    EXPECT_TRUE(document.GetErrorText().Contains(LCString("missing: can't be opened: ") + std::strerror(ENOENT)));
    EXPECT_FALSE(document.SaveToFile(folder.Path("")));
    EXPECT_TRUE(document.GetErrorText().Contains("is a folder"));
    EXPECT_TRUE(document.LoadFromText("<a/>"));
    EXPECT_EQ(document.GetErrorText(), "");
}

TEST(Document, TheRootStaysWhereItIs)
{
    std::unique_ptr<LCDocument> const document(LHCDocumentCreator().CreateDocument());
    LCParagraph & root = document->GetRootParagraph();
    LCString const empty = LCString(declaration) + "<Document/>\n";
    LCString xml;
    EXPECT_TRUE(document->SaveToText(xml) && xml == empty) << xml.str();
    EXPECT_TRUE(document->LoadFromText("<a b='1'>v<c><d/></c></a>"));
    EXPECT_EQ(&document->GetRootParagraph(), &root);
    EXPECT_EQ(root.GetParagraph("c")->GetParent(), &root);
    document->SetFindExisting(true);
    root.SetParameterAsString("c", "found", true);
    EXPECT_EQ(root.GetParameterAsString("c", "", false), "found");
    document->Clear();
    EXPECT_EQ(&document->GetRootParagraph(), &root);
    EXPECT_TRUE(document->SaveToText(xml) && xml == empty) << xml.str();
}

TEST(Document, RefusesDepthAndAttributesBeyondTheLimits)
{
    LHCDocument document;
    LCString xml = "kept";
    LCParagraph * at = &document.GetRootParagraph();
    for (int level = 2; level <= 256; ++level) at = at->CreateParagraph("level");
    EXPECT_TRUE(LHCDocument().LoadFromText(Saved(document)));
    at->CreateParagraph("deep");
    EXPECT_FALSE(document.SaveToText(xml));
    EXPECT_EQ(document.GetErrorText(), "more than 256 levels at \"deep\"");

    document.Clear();
    for (int i = 0; i < 10000; ++i)
        document.GetRootParagraph().SetAttributeAsInteger(LCString("a") + LCString(i), i);
    document.GetRootParagraph().SetValueAsString("", true);  // is in the file one more
    EXPECT_TRUE(LHCDocument().LoadFromText(Saved(document)));
    document.GetRootParagraph().SetAttributeAsString("one", "more");
    EXPECT_FALSE(document.SaveToText(xml));
    EXPECT_EQ(document.GetErrorText(), "more than 10000 attributes at \"Document\"");
    EXPECT_EQ(xml, "kept");
}

// What is meant to keep a reader busy or to fill the memory takes no longer than its size.
TEST(Document, HostileInputIsDoneQuickly)
{
    std::string attributes = "<a";
    for (int i = 0; i < 400000; ++i) attributes += " b" + std::to_string(i) + "=''";
    std::string names = "<a>";
    for (int i = 0; i < 600000; ++i) names += "<b" + std::to_string(i) + "/>";
    std::string bomb = "<!DOCTYPE a [<!ENTITY b0 'b'>";
    for (int i = 0; i < 20; ++i) {
        std::string const name = "&b" + std::to_string(i) + ";";
        bomb += "<!ENTITY b" + std::to_string(i + 1) + " '" + Repeated(name, 10) + "'>";
    }
    bomb += "]><a b='&b20;'>&b20;</a>";
    std::pair<std::string, bool> const rows[] = {
        {attributes, false},
        {attributes + "/>", false},
        {"<a b='>' " + attributes.substr(3) + "/>", false},
        {bomb, false},
        {Repeated("<a>", 3000000), false},
        {"<" + Repeated("a", 5000000), false},
        {"<a>" + Repeated("&#65;", 1000000) + "</a>", true},
        {"<a>" + Repeated("b=\"c\" ", 100000) + "</a>", true},
        {"<a b='" + Repeated("=\"", 1000000) + "'/>", true},
        {"<a><![CDATA[ x<y " + Repeated("\"b\",", 20000) + "]]></a>", true},
        {names + "</a>", true},
        {"<a>" + Repeated(" ", 1000000) + "x" + Repeated("<b/>", 200000) + "</a>", true},
    };
    for (auto const & [xml, good] : rows) {
        LHCDocument document;
        std::clock_t const begin = std::clock();
        EXPECT_EQ(document.LoadFromText(xml), good) << xml.substr(0, 40) << document.GetErrorText().str();
        EXPECT_LT(static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC, 4.0) << xml.substr(0, 40);
    }
}

/// The system's calls, of which the one of a number fails; none moves many bytes.
class FaultyCalls final : public FileCalls {
public:
    FaultyCalls(int faulty, std::errc error) : mivLeft(faulty), movError(std::make_error_code(error)) { Replace(this); }
    ~FaultyCalls() { Replace(nullptr); }

    std::string movFailed;  ///< the call that did
    static constexpr std::size_t most = 50000;

#define CALL(name, parameters, ...) \
    std::error_code name parameters override { return Fails(#name) ? movError : FileCalls::name(__VA_ARGS__); }
    CALL(Look, (std::string const & p, FileState & s), p, s)
    CALL(Resolve, (std::string & p), p)
    CALL(CheckWritable, (std::string const & p), p)
    CALL(OpenToRead, (std::string const & p, int & f), p, f)
    CALL(Create, (std::string const & p, bool s, int & f), p, s, f)
    CALL(Read, (int f, char * b, std::size_t & s), f, b, s = std::min(s, most))
    CALL(Write, (int f, char const * b, std::size_t & s), f, b, s = std::min(s, most))
    CALL(CopyRights, (int f, FileState const & s), f, s)
    CALL(Sync, (int f), f)
    CALL(Link, (std::string const & f, std::string const & t), f, t)
    CALL(Rename, (std::string const & f, std::string const & t), f, t)
    CALL(Remove, (std::string const & p), p)
    CALL(SyncFolder, (std::string const & p), p)
    std::error_code Close(int f) override { return FileCalls::Close(f) || !Fails("Close") ? std::error_code() : movError; }

private:
    bool Fails(char const * call)
    {
        if (mivLeft-- != 0) return false;
        movFailed = call;
        return true;
    }

    int mivLeft;
    std::error_code movError;
};

std::set<std::string> FilesIn(TemporaryFolder const & folder)
{
    std::set<std::string> names;
    for (auto const & entry : std::filesystem::directory_iterator(folder.Path("").str()))
        names.insert(entry.path().filename());
    return names;
}

constexpr std::errc errors[] = {std::errc::no_space_on_device, std::errc::permission_denied, std::errc::io_error,
                                std::errc::no_such_file_or_directory, std::errc::interrupted};

// What is only interrupted goes on. Without a second name for the old file, or with one that stays, it is saved too.
TEST(DocumentFile, AFailureAtAnyStepLeavesTheOldFileAlone)
{
    LHCDocument document;
    document.GetRootParagraph().SetParameterAsString("large", std::string(200000, 'x'), true);
    std::string const whole = Saved(document).str();
    for (std::errc const error : errors) {
        bool failed = true;
        for (int step = 0; failed; ++step) {
            for (std::string const old : {"", "old"}) {
                TemporaryFolder const folder;
                LCString const path = old.empty() ? folder.Path("part.xml") : folder.Write("part.xml", old);
                FaultyCalls const calls(step, error);
                bool const saved = document.SaveToFile(path);
                failed = !calls.movFailed.empty();
                bool const stays = calls.movFailed == "Remove" && error != std::errc::interrupted;
                EXPECT_EQ(saved, !failed || error == std::errc::interrupted || stays || calls.movFailed == "Link");
                std::string const told = document.GetErrorText().str();
                EXPECT_TRUE(saved || told.starts_with(path.str() + ": ")) << calls.movFailed << ", " << told;
                EXPECT_TRUE(saved || told.ends_with(std::make_error_code(error).message())) << told;
                EXPECT_EQ(folder.Read("part.xml"), saved ? whole : old) << calls.movFailed;
                EXPECT_EQ(FilesIn(folder).size(), (saved || !old.empty()) + stays) << calls.movFailed;
            }
        }
    }
}

TEST(DocumentFile, AFailureAtAnyStepOfALoadLeavesTheDocumentAlone)
{
    TemporaryFolder const folder;
    LCString const path = folder.Write("part.xml", "<a>" + std::string(200000, 'x') + "</a>");
    for (std::errc const error : errors) {
        bool failed = true;
        for (int step = 0; failed; ++step) {
            LHCDocument document;
            FaultyCalls const calls(step, error);
            bool const loaded = document.LoadFromFile(path);
            failed = !calls.movFailed.empty();
            EXPECT_EQ(loaded, !failed || error == std::errc::interrupted || calls.movFailed == "Close");
            EXPECT_EQ(document.GetRootParagraph().GetName(), loaded ? "a" : "Document") << calls.movFailed;
        }
    }
}

// The saver is killed at any moment of its saves, of which at least one has ended.
TEST(DocumentFile, AKillLeavesTheOldFileOrTheNewOne)
{
    TemporaryFolder const folder;
    LCString const path = folder.Path("part.xml");
    LHCDocument documents[2];
    for (LHCDocument & document : documents)
        document.GetRootParagraph().SetParameterAsString("v", std::string(&document == documents ? 300000 : 9000, 'x'), true);
    auto const inode = [&] {
        struct stat status {};
        return ::stat(path.c_str(), &status) == 0 ? status.st_ino : 0;
    };
    EXPECT_TRUE(documents[0].SaveToFile(path));
    std::mt19937 random(1);
    for (int kill = 0; kill < Rounds(10); ++kill) {
        ::ino_t const before = inode();
        ::pid_t const saver = ::fork();
        for (int i = 0; saver == 0; i = 1 - i) documents[i].SaveToFile(path);
        while (inode() == before) std::this_thread::yield();
        auto const end = std::chrono::steady_clock::now() + std::chrono::microseconds(random() % 20000);
        while (std::chrono::steady_clock::now() < end) {}
        ::kill(saver, SIGKILL);
        ::waitpid(saver, nullptr, 0);
        LCString const found = folder.Read("part.xml");
        EXPECT_TRUE(found == Saved(documents[0]) || found == Saved(documents[1])) << found.Left(100).str();
    }
    for (std::string const & file : FilesIn(folder)) EXPECT_TRUE(file == "part.xml" || file.starts_with("part.xml.tmp-"));
}

TEST(DocumentFile, FollowsLinksAndKeepsTheMode)
{
    namespace fs = std::filesystem;
    TemporaryFolder const folder;
    fs::create_directory(folder.Path("sub").str());
    fs::path const target = folder.Write("sub/part.xml", "old").str();
    fs::permissions(target, fs::perms(0640));
    fs::create_symlink("sub/part.xml", folder.Path("link").str());
    fs::create_symlink("link", folder.Path("chain").str());
    fs::create_symlink("sub/new.xml", folder.Path("dangling").str());
    fs::create_symlink("loop", folder.Path("loop").str());

    LHCDocument document;
    EXPECT_TRUE(document.SaveToFile(folder.Path("chain"))) << document.GetErrorText().str();
    EXPECT_TRUE(document.SaveToFile(folder.Path("dangling"))) << document.GetErrorText().str();
    EXPECT_FALSE(document.SaveToFile(folder.Path("loop")));
    for (char const * const file : {"sub/part.xml", "sub/new.xml"})
        EXPECT_EQ(folder.Read(file), Saved(document).str());
    EXPECT_EQ(fs::status(target).permissions(), fs::perms(0640));
    EXPECT_EQ(fs::read_symlink(folder.Path("chain").str()), "link");
    EXPECT_EQ(fs::read_symlink(folder.Path("dangling").str()), "sub/new.xml");
    EXPECT_EQ(FilesIn(folder), (std::set<std::string>{"sub", "link", "chain", "dangling", "loop"}));

    LCString const longest = folder.Path(std::string(255, 'n'));
    EXPECT_TRUE(document.SaveToFile(longest)) << document.GetErrorText().str();
    EXPECT_TRUE(LHCDocument().LoadFromFile(longest));
}

TEST(DocumentFile, WritesStraightIntoWhatIsNoFile)
{
    LHCDocument document;
    EXPECT_TRUE(document.SaveToFile("/dev/null")) << document.GetErrorText().str();
    EXPECT_FALSE(std::filesystem::is_regular_file("/dev/null"));
    EXPECT_FALSE(document.SaveToFile("/dev/full"));
    EXPECT_TRUE(document.GetErrorText().Contains(std::strerror(ENOSPC)));
    EXPECT_FALSE(document.LoadFromFile("/dev/zero"));
}

void Build(LCParagraph & root)
{
    auto const longText = [](int i) { return LCString("a text that is not short ") + LCString(i); };
    for (int i = 0; i < 17; ++i) {
        root.CreateParagraph(longText(i))->SetAttributeAsString(longText(i), longText(i));
        root.SetAttributeAsString(longText(i), longText(i));
        root.SetParameterAsString(longText(i % 7), longText(i), true);
    }
    root.GetParagraph(longText(3))->SetName(longText(50));
    root.CopyToParagraph(*root.GetParagraph(longText(50)));
    root.RemoveParagraphsWithName(longText(5));
}

TEST(DocumentFile, AnyAllocationMayFail)
{
    TemporaryFolder const folder;
    LHCDocument built;
    Build(built.GetRootParagraph());
    LCString const whole = Saved(built);
    LCString const path = folder.Write("part.xml", whole.str());
    struct { std::string what; std::function<bool(LHCDocument &)> run; } const rows[] = {
        {"build", [](LHCDocument & d) { return Build(d.GetRootParagraph()), true; }},
        {"load text", [&](LHCDocument & d) { return d.LoadFromText(whole); }},
        {"load", [&](LHCDocument & d) { return d.LoadFromFile(path); }},
        {"save", [&](LHCDocument & d) { return d.SaveToFile(path); }},
    };
    for (auto const & [what, run] : rows) {
        bool failed = true;
        for (std::size_t number = 1; failed; ++number) {
            SCOPED_TRACE(what + " " + std::to_string(number));
            std::size_t const before = LiveAllocations();
            {
                LHCDocument document;
                LCString const present = Saved(document);
                bool done = false;
                try {
                    FailAllocation(number);
                    done = run(document);
                } catch (std::bad_alloc const &) {
                    EXPECT_EQ(what, "build");  // of which any part may be there
                }
                failed = FailAllocation(0);
                EXPECT_TRUE(done || what == "build" || document.GetErrorText().Contains("out of memory"));
                LCString const now = Saved(document);
                EXPECT_TRUE(now == (done && what != "save" ? whole : present) || (what == "build" && !done));
                EXPECT_EQ(folder.Read("part.xml"), done && what == "save" ? present.str() : whole.str());
                EXPECT_TRUE(what != "build" || LHCDocument().LoadFromText(now));
            }
            EXPECT_EQ(LiveAllocations(), before);
            EXPECT_EQ(FilesIn(folder), std::set<std::string>{"part.xml"});
            folder.Write("part.xml", whole.str());
        }
    }
}

/// Counts what it is told, and cancels at the question of a number.
class Observer : public LCInfo, public LCCheckCancel {
public:
    bool ShowInfo() override { return ++mivShown; }
    bool HideInfo() override { return ++mivHidden; }
    bool SetInfo(LCString const & info) override
    {
        movTold.insert(info.str());
        return true;
    }
    bool IsCancelled() override { return ++mivAsked == mivCancelAt; }

    int mivShown = 0;
    int mivHidden = 0;
    int mivAsked = 0;
    int mivCancelAt = 0;
    std::set<std::string> movTold;
};

TEST(DocumentFile, LongOperationsTellHowFarTheyAreAndCanBeCancelled)
{
    TemporaryFolder const folder;
    LCString const path = folder.Path("long.xml");
    LHCDocument document;
    for (int i = 0; i < 100000; ++i) document.GetRootParagraph().SetParameterAsInteger("p", i);
    LCString xml;
    std::pair<std::string, std::function<bool()>> const rows[] = {
        {"Saving " + path.str(), [&] { return document.SaveToFile(path); }},
        {"Loading " + path.str(), [&] { return document.LoadFromFile(path); }},
        {"Saving", [&] { return document.SaveToText(xml); }}, {"Loading", [&] { return document.LoadFromText(xml); }},
    };
    for (auto const & [what, run] : rows) {
        Observer observer;
        document.SetProgress(&observer, &observer);
        EXPECT_TRUE(run()) << what;
        EXPECT_EQ(observer.mivShown, 1) << what;
        EXPECT_EQ(observer.mivHidden, 1) << what;
        EXPECT_GT(observer.movTold.size(), 20u) << what;
        EXPECT_TRUE(observer.movTold.begin()->starts_with(what + ": ")) << *observer.movTold.begin();

        std::string const before = folder.Read("long.xml");
        for (int const question : {1, 10}) {
            observer.mivAsked = 0;
            observer.mivCancelAt = question;
            EXPECT_FALSE(run()) << what;
            EXPECT_TRUE(document.GetErrorText().Contains("cancelled")) << what;
            EXPECT_EQ(observer.mivShown, observer.mivHidden) << what;
        }
        EXPECT_EQ(folder.Read("long.xml"), before);
        EXPECT_EQ(FilesIn(folder).size(), 1u);
        EXPECT_NE(document.GetRootParagraph().GetParagraph("p"), nullptr);
    }
    Observer observer;
    document.SetProgress(&observer, nullptr);
    EXPECT_TRUE(document.LoadFromText("<short/>"));
    EXPECT_EQ(observer.mivShown, 0);
}

}  // namespace
