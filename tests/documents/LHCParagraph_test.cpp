#include "documents/LHCParagraph.h"

#include <algorithm>
#include <ctime>
#include <random>

#include "paragraph/TestParagraph.h"
#include "support/Allocations.h"
#include "support/Support.h"

namespace {

struct ConcreteParagraph : testing::Test {
    bool movFind = false;
    LHCParagraph movRoot{movFind, "root"};
};

LCString Numbered(unsigned long i) { return LCString("p") + LCString(i); }

// A plain list of children says what every search must find, whatever was created, renamed and removed.
TEST_F(ConcreteParagraph, SearchesFindWhatAPlainListFinds)
{
    for (unsigned const names : {1u, 3u, 60u}) {
        std::mt19937 random(names);
        std::vector<LCParagraph *> model;
        movRoot.RemoveAllParagraphs();
        for (unsigned step = 0; step < 4000; ++step) {
            LCString const name = Numbered(random() % names);
            auto const at = model.begin() + static_cast<long>(model.empty() ? 0 : random() % model.size());
            auto const kind = random() % (model.size() > 40 ? 8 : 6);
            if (at == model.end() || kind == 0) {
                model.push_back(movRoot.CreateParagraph(name));
                model.back()->SetAttributeAsInteger("id", static_cast<int>(step % 4));
            } else if (kind < 3) {
                model.insert(at, movRoot.CreateParagraphBefore(**at, name));
            } else if (kind < 5) {
                ASSERT_TRUE((*at)->SetName(name) && (*at)->GetName() == name);
            } else if (kind == 5 && random() % 8 == 0) {
                auto const gone = std::erase_if(model, [&](auto child) { return child->GetName() == name; });
                ASSERT_EQ(movRoot.RemoveParagraphsWithName(name), gone);
            } else {
                ASSERT_TRUE(movRoot.RemoveParagraph(**at));
                model.erase(at);
            }

            LCString const sought = Numbered(random() % (names + 1));
            LCParagraphList named, marked, found;
            for (LCParagraph * const child : model) {
                if (child->GetName() != sought) continue;
                named.push_back(child);
                if (child->GetAttributeAsInteger("id", 0) == 2) marked.push_back(child);
            }
            auto const first = [](LCParagraphList const & list) { return list.empty() ? nullptr : list.front(); };
            movRoot.GetParagraphsWithName(sought, found, true);
            ASSERT_EQ(found, named) << names << " names, step " << step;
            ASSERT_EQ(movRoot.GetParagraph(sought), first(named));
            ASSERT_EQ(movRoot.GetParagraphWithNameAndAttributeAsInteger(sought, "id", 2), first(marked));
            movRoot.GetParagraphs(found);
            ASSERT_EQ(found, Make<LCParagraphList>(model));
        }
    }
}

TEST_F(ConcreteParagraph, ChildrenAreKnownByTheirParentOnly)
{
    LCParagraph & child = *movRoot.CreateParagraph("child");
    LCParagraph & below = *child.CreateParagraph("below");
    LHCParagraph foreign(movFind);
    for (LCParagraph * const other : std::initializer_list<LCParagraph *>{&below, &foreign, &movRoot})
        EXPECT_TRUE(!movRoot.RemoveParagraph(*other) && movRoot.CreateParagraphBefore(*other, "x") == nullptr);
    EXPECT_EQ(Text(movRoot), "root{child{below}}");
}

// Few attributes are searched one by one, many by an index.
TEST_F(ConcreteParagraph, AttributesKeepTheirOrderHoweverMany)
{
    for (unsigned const count : {3u, 40u}) {
        LHCParagraph paragraph(movFind, "");
        LCString expected;
        for (unsigned i = 0; i < count; ++i) {
            paragraph.SetAttributeAsInteger(Numbered(i), 5);
            if (i != 1) expected += "@" + Numbered(i) + (i == 0 ? "=70 " : "=5 ");
        }
        paragraph.SetAttributeAsInteger(Numbered(0), 70);
        EXPECT_TRUE(paragraph.RemoveAttribute(Numbered(1)) && !paragraph.RemoveAttribute(Numbered(1)));
        paragraph.SetAttributeAsInteger(Numbered(1), 71);
        EXPECT_EQ(Text(paragraph), "{" + expected + "@p1=71}");
    }
}

// The second one is what a class of its own inherits.
TEST_F(ConcreteParagraph, CopiesIntoOtherTreesAndIntoItself)
{
    movRoot.SetAttributeAsString("a", "1");
    movRoot.SetParameterAsString("x", "value", true);
    LCParagraph & below = *movRoot.CreateParagraph("y")->CreateParagraph("z");
    for (bool const inherited : {false, true}) {
        LHCParagraph other(movFind = inherited, "other");
        other.SetValueAsString("goes", true);
        other.SetAttributeAsString("A", "stays");
        other.CreateParagraph("x");
        inherited ? movRoot.LCParagraph::CopyToParagraph(other) : movRoot.CopyToParagraph(other);
        EXPECT_EQ(Text(other), "other={@A=stays @a=1 x x=value y={z=}}");
    }
    movRoot.CopyToParagraph(below);
    EXPECT_EQ(Text(movRoot), "root{@a=1 x=value y{z={@a=1 x=value y={z=}}}}");
    movRoot.CopyToParagraph(movRoot);
    EXPECT_EQ(Text(movRoot), "root={@a=1 x=value y{z={@a=1 x=value y={z=}}} x=value y={z={@a=1 x=value y={z=}}}}");
}

// What grows with the square takes minutes here.
TEST_F(ConcreteParagraph, AHundredThousandChildrenCostOnlyTheirNumber)
{
    constexpr unsigned count = 100000;
    std::clock_t const begin = std::clock();
    movFind = true;
    for (unsigned i = 0; i < count; ++i) {
        for (unsigned const n : {i, i / 2}) movRoot.SetParameterAsBool(Numbered(n), true);
        movRoot.SetAttributeAsBool(Numbered(i), true);
        EXPECT_EQ(movRoot.RemoveAttribute(Numbered(i / 2)), i % 2 == 0);
    }
    EXPECT_EQ(movRoot.RemoveParagraphsWithName(Numbered(count - 1)), 1);

    // Inserted before one in the middle that is found by name and attribute, and removed from there on.
    movRoot.RemoveAllParagraphs();
    for (unsigned i = 0; i <= count; ++i) movRoot.CreateParagraph("one");
    ASSERT_NE(movRoot.GetParagraph("one"), nullptr);
    LCParagraphList list;
    movRoot.GetParagraphs(list);
    std::rotate(list.begin(), std::next(list.begin(), count / 2), list.end());
    list.back()->SetName("rare");
    list.back()->SetAttributeAsBool("here", true);
    for (; list.size() > 1; list.pop_front()) {
        LCParagraph * const found = movRoot.GetParagraphWithNameAndAttributeAsBool("rare", "here", true);
        ASSERT_TRUE(movRoot.CreateParagraphBefore(*found, "one") && movRoot.RemoveParagraph(*list.front()));
    }
    // Renamed, the first one of the old name each time.
    for (unsigned i = 0; i < count; ++i) movRoot.GetParagraph("one")->SetName(Numbered(i / 10));
    EXPECT_EQ(movRoot.RemoveParagraphsWithName(Numbered(7)), 10);
    // Replaced where they stand, and renamed to one name in their order.
    movRoot.RemoveAllParagraphs();
    for (unsigned i = 0; i < count; ++i) {
        LCParagraph & old = *movRoot.CreateParagraph(Numbered(i));
        LCParagraph * const replacement = movRoot.CreateParagraphBefore(old, Numbered(i));
        ASSERT_TRUE(movRoot.RemoveParagraph(old) && movRoot.GetParagraph(Numbered(i)) == replacement);
    }
    movRoot.GetParagraphs(list);
    for (LCParagraph * const child : list) ASSERT_TRUE(child->SetName("one") && movRoot.GetParagraph("one") == list.front());
    EXPECT_LT(static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC, 8.0);
}

TEST_F(ConcreteParagraph, DeepTreesTakeNoMoreOfTheStack)
{
    LCParagraph * deepest = &movRoot;
    for (int i = 0; i < 300000; ++i) deepest = deepest->CreateParagraph("level");
    deepest->SetValueAsString("bottom", true);
    LHCParagraph copy(movFind);
    movRoot.CopyToParagraph(copy);
    ASSERT_TRUE(movRoot.RemoveParagraph(*movRoot.GetParagraph("level")));
    LCParagraph * at = &copy;
    while (LCParagraph * const next = at->GetParagraph("level")) at = next;
    EXPECT_EQ(at->GetValueAsString(""), "bottom");
}

TEST_F(ConcreteParagraph, TakesAtMost250BytesForAParameterAndUsesRoomAgain)
{
    auto const fill = [&](std::size_t count) {
        std::size_t const before = AllocatedBytes();
        for (std::size_t part = 0; part < count / 10; ++part) {
            LCParagraph & parent = *movRoot.CreateParagraph("part");
            for (unsigned i = 0; i < 10; ++i) parent.SetParameterAsDouble(Numbered(i), i * 0.5, -1);
        }
        return AllocatedBytes() - before;
    };
    constexpr std::size_t million = 1000000;
    EXPECT_LE(fill(million), 250 * million * 11 / 10);
    movRoot.CreateParagraph("keeps the pages");
    for (int round = 0; round < 3; ++round)
        EXPECT_TRUE(movRoot.RemoveParagraphsWithName("part") > 0 && fill(million / 10) < million / 10);
}

}  // namespace
