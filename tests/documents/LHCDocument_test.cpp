#include "documents/LHCDocument.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <functional>
#include <memory>
#include <new>
#include <set>

#include <libxml/xmlmemory.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include "documents/platform/FileCalls.h"
#include "foundation/LCCheckCancel.h"
#include "foundation/LCInfo.h"
#include "paragraph/TestParagraph.h"
#include "support/Allocations.h"
#include "support/Support.h"

namespace {

using namespace std::string_literals;
using qrtcl::documents::FileCalls;
using qrtcl::documents::FileState;

constexpr char const * declaration = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

LCString Saved(LHCDocument & document)
{
    LCString xml;
    EXPECT_TRUE(document.SaveToText(xml)) << document.GetErrorText().str();
    return xml;
}

std::string Repeated(char const * text, int count) { return LCString(count, 'x').Replace("x", text).str(); }

// Readers of stored files rely on this form.
TEST(Document, IsStoredInThisForm)
{
    LHCDocument document;
    LCParagraph & root = document.GetRootParagraph();
    root.SetName("Part");
    root.SetAttributeAsString("ID", "A \"1\"\t<\n");
    root.SetAttributeAsString("_value", "stored");
    root.SetParameterAsDouble("thickness", 1.5, -1);
    root.SetParameterAsString("note", " a < b & c > d\r\n\"e\"\tf ", true);
    root.SetParameterAsString("blank", " \n", true);
    root.SetParameterAsString("empty", "", true);
    std::string expected = declaration + R"(<Part ID="A &quot;1&quot;&#9;&lt;&#10;" _x005F_value="stored">
  <thickness>1.5</thickness>
  <note> a &lt; b &amp; c &gt; d&#13;
"e"	f </note>
  <blank _value=" &#10;"/>
  <empty _value=""/>
)"s;
    // What XML can't hold is escaped.
    struct { std::string text, name, value; } const rows[] = {
        {"", "_x_", ""}, {"_x_", "_x005F_x_", "_x_"}, {"a:b", "a_x003A_b", "a:b"}, {"-1", "_x002D_1", "-1"},
        {"xmlns", "_x0078_mlns", "xmlns"}, {"XMLish", "_x0058_MLish", "XMLish"}, {"\x01", "_x0001_", "_x0001_"},
        {"_x0041_", "_x005F_x0041_", "_x005F_x0041_"}, {"_x0041:", "_x005F_x0041_x003A_", "_x005F_x0041:"},
        {"\xC3\xA4", "_x00C3__x00A4_", "\xC3\xA4"}, {"\xC3", "_x00C3_", "_x00C3_"},  // a letter, half a letter
        {"\xF0\x9F\x98\x80", "_x00F0__x009F__x0098__x0080_", "\xF0\x9F\x98\x80"}, {"L 1", "L_x0020_1", "L 1"},
        {"\xEF\xBF\xBE", "_x00EF__x00BF__x00BE_", "_x00EF__x00BF__x00BE_"}};  // U+FFFE
    for (auto const & [text, name, value] : rows) {
        root.SetParameterAsString(text, text + ".", true);
        expected += "  <" + name + ">" + value + ".</" + name + ">\n";
    }
    EXPECT_EQ(Saved(document), LCString(expected + "</Part>\n"));
}

TEST(Document, GivesEveryByteBack)
{
    std::set<std::string> texts = {"", "_x_", "_x0041_", "_x005F_", "_x00ff_", "_x4E2D_", "_x0041", "__x0041_", "]]>",
                                   "<!--", "&amp;", "\r\n", "\xEF\xBB\xBF", "_value", "xml"};
    for (int c = 0; c < 256; ++c) {
        std::string const byte(1, static_cast<char>(c));
        for (auto const before : {"", "a", "_x0041", "\xE2\x82", "\xEF\xBF", "\xED\xA0", "\xC0", "\xF4\x90\x80"})
            texts.insert(before + byte);
        texts.insert({"xml" + byte, byte + "a", "a" + byte + "b", byte + byte, "_x00" + byte + "1_"});
    }
    for (std::string const & text : texts) {
        LHCDocument document, loaded;
        LCParagraph & child = *document.GetRootParagraph().CreateParagraph(text);
        child.SetValueAsString(text, true);
        child.SetAttributeAsString(text, text);
        child.SetParameterAsString("leaf", text, true);
        EXPECT_TRUE(loaded.LoadFromText(Saved(document))) << loaded.GetErrorText().str();
        EXPECT_EQ(Text(loaded.GetRootParagraph()), Text(document.GetRootParagraph()));
    }
}

// What others write is read as it is meant; the second text is what we make of it.
TEST(Document, ReadsFilesOfOtherHands)
{
    std::pair<char const *, char const *> const rows[] = {
        {"\xEF\xBB\xBF<?xml version='1.0' encoding='utf-8'?><a/>", "<a/>"}, {"<a>\r\nx\ry</a>", "<a>\nx\ny</a>"},
        {"<!-- c --><a><!-- c --><?pi?><b/></a><!-- c -->", "<a>\n  <b/>\n</a>"}, {"<a _value='x'>y</a>", "<a>x</a>"},
        {"<a>\n  A\n  <b/>\n\t\n  <c/> B\n</a>", "<a _value=\"A&#10;  &#10;&#9;&#10;   B\">\n  <b/>\n  <c/>\n</a>"},
        {"<a> \n <b> x </b> </a>", "<a>\n  <b> x </b>\n</a>"}, {"<a b='x\ty\nz'/>", "<a b=\"x y z\"/>"},
        {"<a>x<![CDATA[<&]]>y<!-- c --> z</a>", "<a>x&lt;&amp;y z</a>"}, {"<\xC3\xA4/>", "<_x00C3__x00A4_/>"},
        {"<a b='1' c=\"&#65;&#x42;&lt;\"/>", "<a b=\"1\" c=\"AB&lt;\"/>"}, {"<a>&apos;</a>", "<a>'</a>"},
        {"<a>_x0041_ _x00e4_ _x4E2D_</a>", "<a>A _x00E4_ _x005F_x4E2D_</a>"}, {"<a>&amp;amp;</a>", "<a>&amp;amp;</a>"},
        {"<x:a xmlns:x='u' x:b='1'/>", "<x_x003A_a _x0078_mlns_x003A_x=\"u\" x_x003A_b=\"1\"/>"}};
    for (auto const & [xml, stored] : rows) {
        LHCDocument document;
        EXPECT_TRUE(document.LoadFromText(xml)) << xml << ": " << document.GetErrorText().str();
        EXPECT_EQ(Saved(document), LCString(declaration) + stored + "\n");
    }
}

std::string const small = "<?xml version='1.0'?><a b='&lt;'><!-- c --><?d?>e<f/><![CDATA[g]]>&#65;</a>";

// What is well-formed is xmllint's to say.
TEST(Document, IsAsStrictAsOtherReaders)
{
    LHCDocument document;
    for (char const * const xml : {
             " <a/>\n", "<a></a >", "<a>]]</a>", "<_a-1.\xC2\xB7 b = 'c'/>",
             "<a b='>'>\x7F\xF0\x9F\x98\x80&#x10FFFF;&#9;</a>", "<?xml version='1.1'?><a><![CDATA[]]]]></a>",
             "<?xml version='1.0' standalone='yes'?><a/>", "<?xml-stylesheet href='encoding.css' type='a'?><a/>"})
        EXPECT_TRUE(document.LoadFromText(xml)) << xml << document.GetErrorText().str();
    std::vector<std::string> inputs = {
        "text", "<a></b>", "<a/><b/>", "<a/>text", "<a/>&amp;", "<a b='1'c='2'/>", "<a b='1' b='1'/>", "<a b='&'/>",
        "<a>&b</a>", "<a>&undefined;</a>", "<a>&nbsp;</a>", "<a>&#0;</a>", "<a>&#xD800;</a>", "<a>&#x110000;</a>",
        "<a>\x01</a>", "<a b='\x1F'/>", "<a>a\0b</a>"s, "<a>\xFF</a>", "<a>\xC3</a>", "<a>\xC0\x80</a>", "<\xE4/>",
        "<a>\xED\xA0\x80</a>", "<a>\xEF\xBF\xBF</a>", "<a>\xF4\x90\x80\x80</a>", "<a b='\xE4'/>", "<a>]]></a>",
        " <?xml version='1.0'?><a/>", "<?xml version='2.0'?><a/>", "<?xml encoding='UTF-8'?><a/>"};
    for (std::size_t size = 0; size < small.size(); ++size) inputs.push_back(small.substr(0, size));
    EXPECT_TRUE(document.LoadFromText(small) && document.LoadFromText("<before/>"));
    for (std::string const & xml : inputs) {
        EXPECT_TRUE(!document.LoadFromText(xml) && !document.GetErrorText().IsEmpty()) << testing::PrintToString(xml);
        EXPECT_EQ(document.GetRootParagraph().GetName(), "before") << testing::PrintToString(xml);
    }
}

TEST(Document, EveryByteMayBeAnyOther)
{
    for (std::size_t at = 0; at < small.size(); ++at) {
        for (int byte = 0; byte < 256; ++byte) {
            std::string const changed = small.substr(0, at) + static_cast<char>(byte) + small.substr(at + 1);
            LHCDocument document, again;
            bool const loaded = document.LoadFromText("<before/>") && document.LoadFromText(changed);
            ASSERT_EQ(document.GetErrorText().IsEmpty(), loaded) << changed;
            ASSERT_TRUE(again.LoadFromText(Saved(document))) << changed;
            ASSERT_EQ(Text(again.GetRootParagraph()), Text(document.GetRootParagraph())) << changed;
            ASSERT_TRUE(loaded || document.GetRootParagraph().GetName() == "before") << changed;
        }
    }
}

TEST(Document, ErrorsSayWhatAndWhere)
{
    std::pair<std::string, char const *> const rows[] = {
        {"<a>\n  <b>\n</a>", "line 3, column 5: the element b ends as a"},
        {"<!DOCTYPE a [<!ENTITY b 'c'>]><a/>", "line 1, column 13: a document type is not accepted"},
        {"<?xml version='1.0' encoding='latin1'?><a/>", "line 1, column 1: another encoding than UTF-8"},
        {"\xFF\xFE<\0a\0/\0>\0"s, "line 1, column 1: another encoding than UTF-8"},
        {"<a b='1' _x0062_=''/>", "line 1, column 20: attribute _x0062_ stands for one that is there"},
        {"<a/>\0\0"s, "line 1, column 5: zero bytes behind the end"},
        {Repeated("<a>", 257), "line 1, column 771: more than 256 levels"}};
    LHCDocument document;
    auto const told = [&](char const * text) { return document.GetErrorText().Contains(text); };
    for (auto const & [xml, text] : rows) {
        EXPECT_FALSE(document.LoadFromText(xml));
        EXPECT_EQ(document.GetErrorText(), text);
    }
    TemporaryFolder const folder;
    EXPECT_FALSE(document.LoadFromFile(folder.Write("bad.xml", "<a>")) || !told("bad.xml: line 1, column 4: "));
    EXPECT_FALSE(document.SaveToFile(folder.Path("")) || !told("is a folder"));
    EXPECT_FALSE(document.LoadFromFile(folder.Path("missing")) || !told("missing: can't be opened: "));
    EXPECT_TRUE(told(std::strerror(ENOENT)) && document.LoadFromText("<a/>") && document.GetErrorText().IsEmpty());
}

TEST(Document, TheRootStaysWhereItIs)
{
    std::unique_ptr<LCDocument> const document(LHCDocumentCreator().CreateDocument());
    LCParagraph & root = document->GetRootParagraph();
    EXPECT_TRUE(Text(root) == "Document" && document->LoadFromText("<a b='1'>v<c><d/></c></a>"));
    EXPECT_EQ(root.GetParagraph("c")->GetParent(), &root);
    document->SetFindExisting(true);
    root.SetParameterAsString("c", "found", true);
    EXPECT_EQ(Text(document->GetRootParagraph()), "a=v{@b=1 c=found{d}}");
    document->Clear();
    EXPECT_TRUE(&document->GetRootParagraph() == &root && Text(root) == "Document");
}

TEST(Document, RefusesWhatIsBeyondTheLimits)
{
    LHCDocument deep, wide, named;
    named.GetRootParagraph().SetName(std::string(10'000'000, 'n'));
    LCParagraph * at = &deep.GetRootParagraph();
    for (int level = 2; level <= 256; ++level) at = at->CreateParagraph("level");
    for (int i = 0; i < 10000; ++i) wide.GetRootParagraph().SetAttributeAsInteger(LCString(i), i);
    wide.GetRootParagraph().SetValueAsString("", true);  // is in the file one more
    for (LHCDocument * const largest : {&deep, &wide, &named}) EXPECT_TRUE(LHCDocument().LoadFromText(Saved(*largest)));
    named.GetRootParagraph().SetName(std::string(10'000'000, 'n') + "m");
    at->CreateParagraph("deep");
    wide.GetRootParagraph().SetAttributeAsString("one", "more");
    LCString xml = "kept";
    EXPECT_FALSE(deep.SaveToText(xml) || wide.SaveToText(xml) || named.SaveToText(xml));
    EXPECT_EQ(deep.GetErrorText() + "; " + wide.GetErrorText() + "; " + xml,
              "more than 256 levels at \"deep\"; more than 10000 attributes at \"Document\"; kept");
    EXPECT_EQ(named.GetErrorText(), "more than 10000000 bytes in a name at \"" + std::string(100, 'n') + "\"");
}

// What is meant to keep a reader busy or to fill the memory takes no longer than its size.
TEST(Document, HostileInputIsDoneQuickly)
{
    std::string attributes = "<a", names = "<a>", bomb = "<!DOCTYPE a [<!ENTITY b0 'b'>";
    for (int i = 0; i < 1000000; ++i) attributes += " b" + std::to_string(i) + "=''";
    for (int i = 0; i < 600000; ++i) names += "<b" + std::to_string(i) + "/>";
    for (int i = 0; i < 20; ++i)
        bomb += "<!ENTITY b" + std::to_string(i + 1) + " '" + Repeated(("&b" + std::to_string(i) + ";").c_str(), 10) + "'>";
    std::pair<std::string, bool> const rows[] = {
        {bomb + "]><a b='&b20;'>&b20;</a>", false}, {names + "</a>", true}, {attributes, false}, {attributes + "/>", false},
        {"<a b='>' " + attributes.substr(3) + "/>", false},
        {"<a>" + Repeated("&#65;", 1000000) + "</a>", true}, {"<a>" + Repeated("b=\"c\" ", 100000) + "</a>", true},
        {"<a b='" + Repeated("=\"", 1000000) + "'/>", true}, {"<" + Repeated("a", 5000000), false},
        {"<a><![CDATA[ x<y " + Repeated("b=\"c\"\n", 100000) + "]]></a>", true}, {Repeated("<a>", 3000000), false},
        {"<a>" + Repeated(" ", 1000000) + "x" + Repeated("<b/>", 200000) + "</a>", true}};
    for (auto const & [xml, good] : rows) {
        LHCDocument document;
        std::clock_t const begin = std::clock();
        EXPECT_EQ(document.LoadFromText(xml), good) << xml.substr(0, 40) << document.GetErrorText().str();
        EXPECT_LT(static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC, 4.0) << xml.substr(0, 40);
    }
    struct rusage use {};
    ASSERT_EQ(::getrusage(RUSAGE_SELF, &use), 0);
    EXPECT_LT(use.ru_maxrss, 1000 * 1024);  // in KiB
    if (Rounds(1) == 1) return;
    LHCDocument document;
    LCString gigabyte("<a>" + std::string(1 << 30, 'x') + "</a>");
    EXPECT_TRUE(document.LoadFromText(gigabyte)) << document.GetErrorText().str();
    EXPECT_EQ(document.GetRootParagraph().GetValueAsString("").size(), 1u << 30);
    EXPECT_FALSE(document.LoadFromText(LCString(gigabyte.str().substr(0, 1 << 30))));
    document.GetRootParagraph().SetAttributeAsString("much", gigabyte);
    EXPECT_FALSE(document.SaveToText(gigabyte));
}

constexpr std::errc end = std::errc::owner_dead;

/// The system's calls, of which the one of a number fails, or ends the process; none moves many bytes.
struct FaultyCalls final : FileCalls {
    FaultyCalls(int step, std::errc error) : mivLeft(step), movError(std::make_error_code(error)) { Replace(this); }
    ~FaultyCalls() { Replace(nullptr); }

#define CALL(name, parameters, ...) \
    std::error_code name parameters override { return Fails(#name) ? movError : FileCalls::name(__VA_ARGS__); }
    CALL(Look, (std::string const & p, FileState & s), p, s)
    CALL(Resolve, (std::string & p), p)
    CALL(CheckWritable, (std::string const & p), p)
    CALL(OpenToRead, (std::string const & p, int & f), p, f)
    CALL(OpenToWrite, (std::string const & p, int & f), p, f)
    CALL(Create, (std::string const & p, bool s, int & f), p, s, f)
    CALL(Read, (int f, char * b, std::size_t & s), f, b, s = std::min(s, most))
    CALL(Write, (int f, char const * b, std::size_t & s), f, b, s = std::min(s, most))
    CALL(CopyRights, (int f, FileState const & s), f, s)
    CALL(Sync, (int f), f)
    CALL(Link, (std::string const & f, std::string const & t), f, t)
    CALL(Rename, (std::string const & f, std::string const & t), f, t)
    CALL(Remove, (std::string const & p), p)
    CALL(SyncFolder, (std::string const & p), p)
    std::error_code Close(int f) override { return FileCalls::Close(f), Fails("Close") ? movError : std::error_code(); }

    bool Fails(char const * call)
    {
        movCalls += call + " "s;
        if (mivLeft-- != 0) return false;
        if (movError == end) ::raise(SIGKILL);
        movFailed = call;
        return true;
    }

    static constexpr std::size_t most = 50000;
    std::string movCalls, movFailed;  ///< all, and the one that did
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

// What is only interrupted goes on. Without a second name for the old file, or with one that stays, it is saved too.
TEST(DocumentFile, AFailureAtAnyStepLeavesTheOldFileAndDocumentAlone)
{
    LHCDocument document, empty;
    document.GetRootParagraph().SetParameterAsString("large", std::string(200000, 'x'), true);
    std::string const whole = Saved(document).str();
    TemporaryFolder const good;
    good.Write("part.xml", whole);
    for (auto const error : {std::errc::no_space_on_device, std::errc::io_error, std::errc::permission_denied,
                             std::errc::no_such_file_or_directory, std::errc::interrupted}) {
        bool failed = true, goesOn = error == std::errc::interrupted;
        for (int step = 0; failed; ++step) {
            for (std::string const old : {"", "old"}) {
                TemporaryFolder const folder;
                LCString const path = old.empty() ? folder.Path("part.xml") : folder.Write("part.xml", old);
                FaultyCalls const calls(step, error);
                bool const saved = document.SaveToFile(path);
                failed = !calls.movFailed.empty();
                bool const stays = calls.movFailed == "Remove" && !goesOn;
                EXPECT_EQ(saved, !failed || goesOn || stays || calls.movFailed == "Link") << calls.movFailed;
                std::string const told = document.GetErrorText().str();
                EXPECT_TRUE(saved || (told.starts_with(path.str() + ":") && told.ends_with(calls.movError.message())))
                    << calls.movFailed << told;
                EXPECT_EQ(folder.Read("part.xml"), saved ? whole : old) << calls.movFailed;
                EXPECT_EQ(FilesIn(folder).size(), (saved || !old.empty()) + stays) << calls.movFailed;
                // What a loss of power must not undo.
                std::string const last = old.empty() ? "Write Sync Close Rename " : "Write CopyRights Sync Close Link Rename ";
                EXPECT_TRUE(failed || calls.movCalls.find(last + "SyncFolder") != std::string::npos) << calls.movCalls;
            }
            FaultyCalls const straight(step, error);
            EXPECT_TRUE(document.SaveToFile("/dev/null") ? straight.movFailed.empty() || goesOn : !straight.movFailed.empty());
            LHCDocument read;
            FaultyCalls const calls(step, error);
            bool const loaded = read.LoadFromFile(good.Path("part.xml"));
            failed = failed || !calls.movFailed.empty();
            EXPECT_EQ(loaded, calls.movFailed.empty() || goesOn || calls.movFailed == "Close") << calls.movFailed;
            EXPECT_EQ(Text(read.GetRootParagraph()), Text((loaded ? document : empty).GetRootParagraph()));
        }
    }
}

// First at each call of a few saves, then wherever they are.
TEST(DocumentFile, AKillAtAnyMomentLeavesOneOfTheTwoFiles)
{
    TemporaryFolder const folder;
    LCString const path = folder.Path("part.xml");
    LHCDocument documents[2];
    for (int i : {0, 1}) documents[i].GetRootParagraph().SetValueAsString(LCString(i == 0 ? 300000 : 9000, 'x'), true);
    EXPECT_TRUE(documents[0].SaveToFile(path));
    constexpr int steps = 60;
    for (int kill = 0; kill < steps + Rounds(10); ++kill) {
        ::pid_t const saver = ::fork();
        if (saver == 0) {
            FaultyCalls const calls(kill < steps ? kill : -1, end);
            for (int i = 1;; i = 1 - i) documents[i].SaveToFile(path);
        }
        if (kill >= steps) {
            ::usleep(static_cast<unsigned>((kill - steps) * 7919 % 20000));
            ::kill(saver, SIGKILL);
        }
        ::waitpid(saver, nullptr, 0);
        LCString const found = folder.Read("part.xml");
        EXPECT_TRUE(found == Saved(documents[0]) || found == Saved(documents[1])) << kill << found.Left(100).str();
    }
    for (std::string const & file : FilesIn(folder))
        EXPECT_TRUE(file == "part.xml" || file.starts_with("part.xml.tmp-")) << file;
}

TEST(DocumentFile, FollowsLinksKeepsTheModeAndWritesStraightIntoWhatIsNoFile)
{
    namespace fs = std::filesystem;
    TemporaryFolder const folder;
    auto const path = [&](std::string const & name) { return fs::path(folder.Path(name).str()); };
    fs::create_directory(path("sub"));
    folder.Write("sub/part.xml", "old");
    fs::permissions(path("sub/part.xml"), fs::perms(0640));
    std::pair<char const *, char const *> const links[] = {
        {"link", "sub/part.xml"}, {"chain", "link"}, {"dangling", "sub/new.xml"}, {"loop", "loop"}};
    for (auto const & [link, target] : links) fs::create_symlink(target, path(link));

    LHCDocument document;
    for (auto const link : {"chain", "dangling", "loop"})
        EXPECT_EQ(document.SaveToFile(folder.Path(link)), link != "loop"s) << document.GetErrorText().str();
    for (auto const file : {"sub/part.xml", "sub/new.xml"}) EXPECT_EQ(folder.Read(file), Saved(document).str());
    EXPECT_EQ(fs::status(path("sub/part.xml")).permissions(), fs::perms(0640));
    for (auto const & [link, target] : links) EXPECT_EQ(fs::read_symlink(path(link)), target);
    EXPECT_EQ(FilesIn(folder), (std::set<std::string>{"sub", "link", "chain", "dangling", "loop"}));
    EXPECT_TRUE(document.SaveToFile(folder.Path(std::string(255, 'n')))) << document.GetErrorText().str();
    EXPECT_TRUE(document.SaveToFile("/dev/null") && !fs::is_regular_file("/dev/null")) << document.GetErrorText().str();
    EXPECT_TRUE(!document.SaveToFile("/dev/full") && document.GetErrorText().Contains(std::strerror(ENOSPC)));
    EXPECT_FALSE(document.LoadFromFile("/dev/zero"));
}

bool Build(LCParagraph & root) try {
    auto const longText = [](int i) { return LCString("a text that is not short ") + LCString(i); };
    for (int i = 0; i < 17; ++i) {
        root.CreateParagraph(longText(i))->SetAttributeAsString(longText(i), longText(i));
        root.SetAttributeAsString(longText(i), longText(i));
        root.SetParameterAsString(longText(i % 7), longText(i), true);
    }
    root.GetParagraph(longText(3))->SetName(longText(50));
    root.CopyToParagraph(*root.GetParagraph(longText(50)));
    return root.RemoveParagraphsWithName(longText(5)) > 0;
} catch (std::bad_alloc const &) { return false; }  // any part of it may be there

TEST(DocumentFile, AnyAllocationMayFail)
{
    TemporaryFolder const folder;
    LHCDocument built, empty;
    Build(built.GetRootParagraph());
    LCString const whole = Saved(built), present = Saved(empty), path = folder.Path("part.xml");
    std::pair<std::string, std::function<bool(LHCDocument &)>> const rows[] = {
        {"build", [](LHCDocument & d) { return Build(d.GetRootParagraph()); }},
        {"load", [&](LHCDocument & d) { return d.LoadFromFile(path); }},
        {"save", [&](LHCDocument & d) { return d.SaveToFile(path); }}};
    for (auto const & [what, run] : rows) {
        SCOPED_TRACE(what);
        bool failed = true;
        std::size_t const before = LiveAllocations();
        for (std::size_t n = 1; failed; ++n) {
            folder.Write("part.xml", whole.str());
            LHCDocument document;
            FailAllocation(n);
            bool const done = run(document);
            failed = FailAllocation(0);
            EXPECT_TRUE(done || what == "build" || document.GetErrorText().Contains("out of memory")) << n;
            EXPECT_TRUE(what == "build" && !done ? LHCDocument().LoadFromText(Saved(document))
                                                 : Saved(document) == (done && what != "save" ? whole : present)) << n;
            EXPECT_EQ(folder.Read("part.xml"), done && what == "save" ? present.str() : whole.str()) << n;
            EXPECT_EQ(FilesIn(folder), std::set<std::string>{"part.xml"}) << n;
        }
        EXPECT_EQ(LiveAllocations(), before);
    }
}

/// Notes what it is told, and cancels at the question of a number.
struct Observer : LCInfo, LCCheckCancel {
    bool ShowInfo() override { return SetInfo("shown"); }
    bool HideInfo() override { return SetInfo("hidden"); }
    bool SetInfo(LCString const & info) override { return movTold.push_back(info), true; }
    bool IsCancelled() override { return --mivLeft == 0; }

    std::vector<LCString> movTold;
    int mivLeft = 0;
};

TEST(DocumentFile, LongOperationsTellHowFarTheyAreAndCanBeCancelled)
{
    TemporaryFolder const folder;
    LCString const path = folder.Path("long.xml");
    LHCDocument document;
    for (int i = 0; i < 100000; ++i) document.GetRootParagraph().SetParameterAsInteger("p", i);
    std::pair<std::string, std::function<bool()>> const rows[] = {
        {"Saving " + path.str(), [&] { return document.SaveToFile(path); }},
        {"Loading " + path.str(), [&] { return document.LoadFromFile(path); }}};
    for (auto const & [what, run] : rows) {
        Observer observer;
        document.SetProgress(&observer, nullptr);
        auto const & told = observer.movTold;
        ASSERT_TRUE(run() && told.size() > 22) << what;
        EXPECT_EQ(std::set<LCString>(told.begin(), told.end()).size(), told.size()) << what;
        EXPECT_TRUE(told[0] == "shown" && told[1].str().starts_with(what + ": ") && told.back() == "hidden") << what;
        document.SetProgress(&observer, &observer);
        observer.mivLeft = 10;
        EXPECT_TRUE(!run() && document.GetErrorText().Contains("cancelled") && told.back() == "hidden") << what;
        EXPECT_TRUE(FilesIn(folder).size() == 1 && document.GetRootParagraph().GetParagraph("p") != nullptr) << what;
    }
    Observer brief;
    document.SetProgress(&brief, &brief);
    EXPECT_TRUE(document.LoadFromText("<short/>") && brief.movTold.empty());
    brief.mivLeft = 1;
    EXPECT_TRUE(!document.LoadFromText("<short/>") && brief.movTold.empty());  // at the first question
}

// The parser's own memory: from the first element on, the block of a number is refused.
std::size_t parserBlocks = 0, refusedBlock = 0;
bool IsRefused() { return ++parserBlocks == refusedBlock; }

TEST(DocumentFile, TheParserMayLackMemory)
{
    ::xmlMemSetup(std::free, [](std::size_t size) { return IsRefused() ? nullptr : std::malloc(size); },
                  [](void * block, std::size_t size) { return IsRefused() ? nullptr : std::realloc(block, size); },
                  [](char const * text) { return IsRefused() ? nullptr : ::strdup(text); });
    std::string const xml = "<a><b c='d' xml:space='preserve'/><e f='" + std::string(70000, 'g') + "'/>&#65;h</a>";
    struct : LCCheckCancel { bool IsCancelled() override { return parserBlocks = 0, false; } } count;
    LHCDocument whole, empty, document;
    EXPECT_TRUE(whole.LoadFromText(xml));
    document.SetProgress(nullptr, &count);
    for (refusedBlock = 1; parserBlocks + 1 >= refusedBlock; ++refusedBlock) {
        parserBlocks = refusedBlock;
        bool const loaded = document.LoadFromText(xml);
        EXPECT_EQ(document.GetErrorText().str(), loaded ? "" : "out of memory") << refusedBlock;
        EXPECT_EQ(Saved(document), Saved(loaded ? whole : empty)) << refusedBlock;
    }
    refusedBlock = 0;
}

}  // namespace
