#include "paragraph/LCDocument.h"

#include <type_traits>

#include "paragraph/TestParagraph.h"

namespace {

/// A document without storage, whose root is bound to its switch.
class TestDocument : public LCDocument {
public:
    using LCDocument::LCDocument;
    LCParagraph & GetRootParagraph() override { return movRoot; }
    void Clear() override { movRoot.RemoveAllParagraphs(); }
    bool LoadFromFile(LCString const &) override { return false; }
    bool SaveToFile(LCString const &) override { return false; }
    bool LoadFromText(LCString const &) override { return false; }
    bool SaveToText(LCString &) override { return false; }
    LCString GetErrorText() const override { return "no storage"; }
    void SetProgress(LCInfo *, LCCheckCancel *) override {}

private:
    TestParagraph movRoot{mbvFindExisting};
};

class TestCreator : public LCDocumentCreator {
public:
    LCDocument * CreateDocument() override { return new TestDocument; }
};

static_assert(!std::is_constructible_v<TestDocument, char const *> &&
              !std::is_convertible_v<bool, TestDocument>);
template <typename Flag>
concept IsSwitch = requires(TestDocument document, Flag flag) { document.SetFindExisting(flag); };
static_assert(IsSwitch<bool> && !IsSwitch<char const *>);
static_assert(std::is_abstract_v<LCDocument> && std::is_copy_assignable_v<LCDocument>);

TEST(Document, ItsSwitchIsOffAtFirstAndReachesTheParagraphsBoundToIt)
{
    TestCreator creator;
    std::unique_ptr<LCDocument> const document(creator.CreateDocument());
    EXPECT_FALSE(document->GetFindExisting());
    EXPECT_TRUE(TestDocument(true).GetFindExisting());
    LCParagraph & root = document->GetRootParagraph();
    for (bool const on : {false, true, true}) {
        document->SetFindExisting(on);
        root.SetParameterAsBool("p", on);
    }
    LCParagraphList children;
    root.GetParagraphs(children);
    EXPECT_EQ(children.size(), 1u);
    EXPECT_TRUE(root.GetParameterAsBool("p", false));
}

}  // namespace
