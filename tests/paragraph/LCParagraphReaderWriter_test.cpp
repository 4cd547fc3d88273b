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
    TestTree t;
    t.findExisting = true;
    EXPECT_TRUE(Bend(90).WriteToParagraph("bend", t.root) && !Bend(-1).WriteToParagraph("bend", t.root));
    EXPECT_FALSE(Bend(-45).WriteToParagraph("", t.root));
    EXPECT_EQ(t.root.Text(), "{bend{angle=90} bend{angle=-1} angle=-45}");

    Bend bend(1);
    struct { char const * name; bool read; int angle; } const rows[] = {
        {"missing", false, 1}, {"bend", true, 90}, {"", false, -45}};
    for (auto const & [name, read, angle] : rows) {
        EXPECT_EQ(bend.ReadFromParagraph(name, t.root), read) << name;
        EXPECT_EQ(bend.mivAngle, angle) << name;
    }
    t.root.mbvRefuse = true;
    EXPECT_FALSE(Bend(90).WriteToParagraph("bend", t.root));
}

}  // namespace
