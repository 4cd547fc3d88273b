#include "paragraph/LCParagraphReaderWriter.h"

#include <type_traits>

#include "paragraph/TestParagraph.h"

namespace {

static_assert(std::is_abstract_v<LCParagraphReader> && std::is_abstract_v<LCParagraphWriter>);
static_assert(std::is_base_of_v<std::list<LCParagraph *>, LCParagraphList>);

/// A stored object of one number.
struct Bend : LCParagraphReaderWriter {
    explicit Bend(int angle) : mivAngle(angle) {}
    bool ReadParagraphContents(LCParagraph & paragraph) override
    {
        mivAngle = paragraph.GetParameterAsInteger("angle", 0);
        return mivAngle >= 0;
    }
    bool WriteParagraphContents(LCParagraph & paragraph) const override
    {
        return paragraph.SetParameterAsInteger("angle", mivAngle) && mivAngle >= 0;
    }
    int mivAngle;
};

TEST(ParagraphReaderWriter, WritesANewChildEachTimeOrTheParagraphItself)
{
    TestTree t;
    t.findExisting = true;
    EXPECT_TRUE(Bend(90).WriteToParagraph("bend", t.root));
    EXPECT_FALSE(Bend(-1).WriteToParagraph("bend", t.root));
    EXPECT_TRUE(Bend(45).WriteToParagraph("", t.root));
    EXPECT_EQ(t.root.Text(), "{bend{angle=90} bend{angle=-1} angle=45}");
    t.root.mbvBarren = true;
    EXPECT_FALSE(Bend(90).WriteToParagraph("bend", t.root));
}

TEST(ParagraphReaderWriter, ReadsTheChildOrTheParagraphItself)
{
    TestTree t;
    Bend(90).WriteToParagraph("bend", t.root);
    Bend(-45).WriteToParagraph("", t.root);
    Bend bend(1);
    EXPECT_FALSE(bend.ReadFromParagraph("missing", t.root));
    EXPECT_EQ(bend.mivAngle, 1);
    EXPECT_TRUE(bend.ReadFromParagraph("bend", t.root));
    EXPECT_EQ(bend.mivAngle, 90);
    EXPECT_FALSE(bend.ReadFromParagraph("", t.root));
    EXPECT_EQ(bend.mivAngle, -45);
}

TEST(ParagraphList, NeverOwnsItsParagraphs)
{
    TestTree t;
    t.root.SetParameterAsInteger("p", 1);
    {
        LCParagraphList list;
        t.root.GetParagraphs(list);
        LCParagraphList const copy = list;
        list = *&list;
        EXPECT_EQ(list, copy);
        list.ClearWithContents();
        EXPECT_TRUE(list.empty());
        EXPECT_EQ(copy.front(), t.root.GetParagraph("p"));
    }
    EXPECT_EQ(t.root.Text(), "{p=1}");
}

}  // namespace
