#include "paragraph/LCParagraphReaderWriter.h"

#include "paragraph/TestParagraph.h"
#include "support/Support.h"

namespace {

/// A stored object of one number, which can't be read if it is negative.
struct Bend : LCParagraphReaderWriter {
    explicit Bend(int angle) : mivAngle(angle) {}
    bool ReadParagraphContents(LCParagraph & p) override { return (mivAngle = p.GetValueAsInteger(0)) >= 0; }
    bool WriteParagraphContents(LCParagraph & p) const override { return p.SetValueAsInteger(mivAngle); }
    int mivAngle;
};

TEST(ParagraphReaderWriter, StoresInANewChildEachTimeOrInTheParagraphItself)
{
    TestParagraph t;
    t.mbvFind = true;
    EXPECT_TRUE(Bend(90).WriteToParagraph("bend", t) && Bend(30).WriteToParagraph("bend", t));
    EXPECT_TRUE(Bend(-45).WriteToParagraph("", t));
    EXPECT_EQ(Text(t), "=-45{bend=90 bend=30}");

    Bend bend(1);
    EXPECT_TRUE(!bend.ReadFromParagraph("missing", t) && bend.mivAngle == 1);
    EXPECT_TRUE(bend.ReadFromParagraph("bend", t) && bend.mivAngle == 90);
    EXPECT_TRUE(!bend.ReadFromParagraph("", t) && bend.mivAngle == -45);
    t.mbvDeny = true;
    EXPECT_FALSE(Bend(90).WriteToParagraph("", t));
}

}  // namespace
