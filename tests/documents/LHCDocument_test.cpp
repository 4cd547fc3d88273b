#include "documents/LHCDocument.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <functional>
#include <memory>
#include <set>

#include "documents/platform/FileCalls.h"
#include "foundation/LCCheckCancel.h"
#include "foundation/LCInfo.h"
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
        {"xmlns", "_x0078_mlns", "xmlns"}, {"XMLish", "_x0058_MLish", "XMLish"}, {"_value", "_value", "_value"},
        {"_x0041_", "_x005F_x0041_", "_x005F_x0041_"}, {"_x0041:", "_x005F_x0041_x003A_", "_x005F_x0041:"},
        {"\x01", "_x0001_", "_x0001_"},
        {"\xC3\xA4", "_x00C3__x00A4_", "\xC3\xA4"},  // a letter
        {"\xC3", "_x00C3_", "_x00C3_"},              // half a letter
        {"\xF0\x9F\x98\x80", "_x00F0__x009F__x0098__x0080_", "\xF0\x9F\x98\x80"},
        {"\xEF\xBF\xBE", "_x00EF__x00BF__x00BE_", "_x00EF__x00BF__x00BE_"},  // U+FFFE
    };
    for (auto const & row : rows) {
        LHCDocument document;
        document.GetRootParagraph().SetParameterAsString(row.text, row.text + ".", true);
        EXPECT_EQ(Saved(document), LCString(declaration + "<Document>\n  <"s + row.name + ">" + row.value +
                                            ".</" + row.name + ">\n</Document>\n"));
    }
    LHCDocument document;
    document.GetRootParagraph().SetAttributeAsString("_value", "stored");
    EXPECT_EQ(Saved(document), LCString(declaration + "<Document _x005F_value=\"stored\"/>\n"s));
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
    LHCDocument fromText;
    LHCDocument fromFile;
    ASSERT_TRUE(fromText.LoadFromText(Saved(document))) << fromText.GetErrorText().str();
    ASSERT_TRUE(document.SaveToFile(folder.Path("bytes.xml")));
    ASSERT_TRUE(fromFile.LoadFromFile(folder.Path("bytes.xml")));
    EXPECT_EQ(folder.Read("bytes.xml"), Saved(document).str());
    for (LHCDocument * loaded : {&fromText, &fromFile}) {
        for (std::string const & text : texts) {
            LCParagraph * const child = loaded->GetRootParagraph().GetParagraph(text);
            ASSERT_NE(child, nullptr) << testing::PrintToString(text);
            EXPECT_EQ(child->GetValueAsString("?"), text);
            EXPECT_EQ(child->GetAttributeAsString(text, "?"), text);
            EXPECT_EQ(child->GetParagraph("parent")->GetParameterAsString("leaf", "?", false), text);
        }
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
    EXPECT_TRUE(document.LoadFromText("<before/>"));
    for (std::string const & xml : BadInputs()) {
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
    EXPECT_EQ(root.GetName(), "Document");
    EXPECT_TRUE(document->LoadFromText("<a b='1'>v<c><d/></c></a>"));
    EXPECT_EQ(&document->GetRootParagraph(), &root);
    EXPECT_EQ(root.GetName(), "a");
    EXPECT_EQ(root.GetParagraph("c")->GetParent(), &root);
    document->SetFindExisting(true);
    root.SetParameterAsString("c", "found", true);
    EXPECT_EQ(root.GetParameterAsString("c", "", false), "found");

    document->Clear();
    EXPECT_EQ(&document->GetRootParagraph(), &root);
    EXPECT_EQ(root.GetName(), "Document");
    EXPECT_EQ(root.GetParagraph("c"), nullptr);
    EXPECT_EQ(root.GetValueAsString("none"), "none");
    EXPECT_EQ(root.GetAttributeAsString("b", "none"), "none");
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

/// The system's calls, of which one fails or is interrupted every other time, and none moves many bytes.
class FaultyCalls final : public FileCalls {
public:
    explicit FaultyCalls(std::string const & call, std::errc error, std::size_t most = ~std::size_t{0})
        : movCall(call), movError(std::make_error_code(error)), mivMost(most)
    {
        Replace(this);
    }
    ~FaultyCalls() { Replace(nullptr); }

    int mivCalls = 0;  ///< of the faulty one

    using Error = std::error_code;
    using Path = std::string const;
    using Base = FileCalls;
    Error Look(Path & p, FileState & s) override { return Fails("Look") ? movError : Base::Look(p, s); }
    Error Create(Path & p, bool s, int & f) override
    {
        return Fails("Create") ? movError : Base::Create(p, s, f);
    }
    Error Read(int f, char * b, std::size_t & s) override
    {
        s = std::min(s, mivMost);
        return Fails("Read") ? movError : Base::Read(f, b, s);
    }
    Error Write(int f, char const * b, std::size_t & s) override
    {
        s = std::min(s, mivMost);
        return Fails("Write") ? movError : Base::Write(f, b, s);
    }
    Error CopyRights(int f, FileState const & s) override
    {
        return Fails("CopyRights") ? movError : Base::CopyRights(f, s);
    }
    Error Sync(int f) override { return Fails("Sync") ? movError : Base::Sync(f); }
    Error Close(int f) override { return Base::Close(f) || !Fails("Close") ? Error() : movError; }
    Error Rename(Path & f, Path & t) override { return Fails("Rename") ? movError : Base::Rename(f, t); }
    Error SyncFolder(Path & p) override { return Fails("SyncFolder") ? movError : Base::SyncFolder(p); }

private:
    bool Fails(std::string const & call)
    {
        if (call != movCall) return false;
        return ++mivCalls % 2 == 1 || movError != std::errc::interrupted;
    }

    std::string movCall;
    std::error_code movError;
    std::size_t mivMost;
};

std::set<std::string> FilesIn(TemporaryFolder const & folder)
{
    std::set<std::string> names;
    for (auto const & entry : std::filesystem::directory_iterator(folder.Path("").str()))
        names.insert(entry.path().filename());
    return names;
}

TEST(DocumentFile, AFailureAtAnyStepLeavesTheOldFileAlone)
{
    LHCDocument document;
    document.GetRootParagraph().SetParameterAsString("large", std::string(200000, 'x'), true);
    for (char const * const step :
         {"Look", "Create", "Write", "CopyRights", "Sync", "Close", "Rename", "SyncFolder"}) {
        for (bool const existing : {true, false}) {
            if (!existing && step == "CopyRights"s) continue;  // there are none to copy
            TemporaryFolder const folder;
            if (existing) folder.Write("part.xml", "old");
            FaultyCalls const calls(step, std::errc::no_space_on_device);
            EXPECT_FALSE(document.SaveToFile(folder.Path("part.xml"))) << step;
            EXPECT_TRUE(document.GetErrorText().Contains(std::strerror(ENOSPC))) << step;
            EXPECT_EQ(folder.Read("part.xml"), existing ? "old" : "") << step;
            EXPECT_EQ(FilesIn(folder).size(), existing ? 1u : 0u) << step;
        }
    }
}

TEST(DocumentFile, InterruptedAndPartialCallsGoOn)
{
    TemporaryFolder const folder;
    LCString const path = folder.Path("part.xml");
    LHCDocument document;
    document.GetRootParagraph().SetParameterAsString("large", std::string(200000, 'x'), true);
    for (char const * const step : {"Create", "Write", "Sync", "Close", "SyncFolder", "Read"}) {
        FaultyCalls const calls(step, std::errc::interrupted, 5000);
        EXPECT_TRUE(document.SaveToFile(path)) << step << document.GetErrorText().str();
        LHCDocument loaded;
        EXPECT_TRUE(loaded.LoadFromFile(path)) << step << loaded.GetErrorText().str();
        EXPECT_EQ(Saved(loaded), Saved(document)) << step;
        EXPECT_GT(calls.mivCalls, 0) << step;
    }
    FaultyCalls const calls("Read", std::errc::io_error);
    EXPECT_FALSE(document.LoadFromFile(path));
    EXPECT_NE(document.GetRootParagraph().GetParagraph("large"), nullptr);
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
