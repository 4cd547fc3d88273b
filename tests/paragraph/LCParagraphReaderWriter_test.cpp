#include "paragraph/LCParagraphReaderWriter.h"

#include "paragraph/TestParagraph.h"

namespace {

/// A stored object of one number, which must not be negative.
struct Bend : LCParagraphReaderWriter {
    explicit Bend(int angle) : mivAngle(angle) {}
    bool ReadParagraphContents(LCParagraph & p) override
    {
        return (mivAngle = p.GetParameterAsInteger("angle", 0)) >= 0;
    }
    bool WriteParagraphContents(LCParagraph & p) const override
    {
        return p.SetParameterAsInteger("angle", mivAngle) && mivAngle >= 0;
    }
    int mivAngle;
};

TEST(ParagraphReaderWriter, StoresInANewChildEachTimeOrInTheParagraphItself)
{
    TestTree t;
    t.findExisting = true;
    EXPECT_TRUE(Bend(90).WriteToParagraph("bend", t.root));
    EXPECT_FALSE(Bend(-1).WriteToParagraph("bend", t.root));
    EXPECT_TRUE(Bend(45).WriteToParagraph("", t.root));
    EXPECT_EQ(t.root.Text(), "{bend{angle=90} bend{angle=-1} angle=45}");

    Bend bend(1);
    EXPECT_FALSE(bend.ReadFromParagraph("missing", t.root));
    EXPECT_EQ(bend.mivAngle, 1);
    EXPECT_TRUE(bend.ReadFromParagraph("bend", t.root));
    EXPECT_EQ(bend.mivAngle, 90);
    t.root.GetParagraph("angle")->SetValueAsInteger(-45);
    EXPECT_FALSE(bend.ReadFromParagraph("", t.root));
    EXPECT_EQ(bend.mivAngle, -45);

    t.root.mbvRefuse = true;
    EXPECT_FALSE(Bend(90).WriteToParagraph("bend", t.root));
}

}  // namespace
