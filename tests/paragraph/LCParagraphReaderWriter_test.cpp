#include "paragraph/LCParagraphReaderWriter.h"

#include "paragraph/TestParagraph.h"

namespace {

/// A stored object of one number, which must not be negative.
struct Bend : LCParagraphReaderWriter {
    explicit Bend(int angle) : mivAngle(angle) {}
    bool ReadParagraphContents(LCParagraph & p) override { return (mivAngle = p.GetParameterAsInteger("angle", 0)) >= 0; }
    bool WriteParagraphContents(LCParagraph & p) const override
    {
        return p.SetParameterAsInteger("angle", mivAngle) && mivAngle >= 0;
    }
    int mivAngle;
};

TEST(ParagraphReaderWriter, StoresInANewChildEachTimeOrInTheParagraphItself)
{
    TestParagraph t;
    t.mbvFind = true;
    EXPECT_TRUE(Bend(90).WriteToParagraph("bend", t) && !Bend(-1).WriteToParagraph("bend", t));
    EXPECT_FALSE(Bend(-45).WriteToParagraph("", t));
    EXPECT_EQ(Text(t), "{bend{angle=90} bend{angle=-1} angle=-45}");

    Bend bend(1);
    EXPECT_TRUE(!bend.ReadFromParagraph("missing", t) && bend.mivAngle == 1);
    EXPECT_TRUE(bend.ReadFromParagraph("bend", t) && bend.mivAngle == 90);
    EXPECT_TRUE(!bend.ReadFromParagraph("", t) && bend.mivAngle == -45);
    t.mbvDeny = true;
    EXPECT_FALSE(Bend(90).WriteToParagraph("bend", t));
}

}  // namespace
