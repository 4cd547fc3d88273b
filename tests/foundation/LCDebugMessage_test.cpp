#include "foundation/LCDebugMessage.h"

#include <optional>
#include <string>

#include "foundation/LCDebugMessageDefault.h"
#include "foundation/LHCMessageBox.h"
#include "support/Support.h"

namespace {

/// Puts a dialog in place of the box that notes what it shows and gives `mivAnswer`.
class DebugMessage : public testing::Test {
protected:
    DebugMessage()
    {
        LHCMessageBox::SetPresenter(
            [this](LCString const & text, LCString const & caption, unsigned int style) {
                movShown += caption.str() + "|" + text.str() + "|" + std::to_string(style) + ";";
                return mivAnswer;
            });
    }
    ~DebugMessage() override
    {
        LHCMessageBox::SetPresenter({});
        covDebugMessage = LCDebugMessage();
    }
    static void Report() { covDebugMessage.ReportDebugMessage("caption", "text"); }
    static bool Ask(bool answer)
    {
        covDebugMessage.ReportDebugMessageYesNo("caption", "text", answer);
        return answer;
    }

    std::string movShown;
    int mivAnswer = LHCMessageBox::civAnswer_Ok;
};

TEST_F(DebugMessage, WithoutAReceiverAMessageReachesNobody)
{
    EXPECT_FALSE(covDebugMessage.mbvReportEnabled);
    Report();
    EXPECT_TRUE(Ask(true));
    EXPECT_EQ(movShown, "");
}

TEST_F(DebugMessage, TheDefaultShowsABoxAndOnlyYesIsYes)
{
    LCDebugMessageDefault const dialogs;
    Report();
    EXPECT_EQ(movShown, "caption|text|0;");
    for (int const answer : {-1, 0, 1, 2, 5, 6, 7, 255}) {
        mivAnswer = answer;
        movShown.clear();
        EXPECT_EQ(Ask(true), answer == 6) << answer;
        EXPECT_EQ(Ask(false), answer == 6) << answer;
        EXPECT_EQ(movShown, "caption|text|4;caption|text|4;");
    }
}

TEST_F(DebugMessage, SwitchedOffEveryAnswerIsNoAndNothingIsShown)
{
    LCDebugMessageDefault const dialogs;
    covDebugMessage.mbvReportEnabled = false;
    mivAnswer = LHCMessageBox::civAnswer_Yes;
    Report();
    EXPECT_FALSE(Ask(true));
    EXPECT_EQ(movShown, "");
}

TEST_F(DebugMessage, EachDefaultShowsOneBoxUntilItIsGone)
{
    {
        LCDebugMessageDefault const first;
        std::optional<LCDebugMessageDefault> second(std::in_place);
        Report();
        EXPECT_EQ(movShown, "caption|text|0;caption|text|0;");
        second.reset();
        EXPECT_FALSE(Ask(true));
        EXPECT_EQ(movShown, "caption|text|0;caption|text|0;caption|text|4;");
    }
    movShown.clear();
    EXPECT_TRUE(covDebugMessage.mbvReportEnabled);
    Report();
    EXPECT_TRUE(Ask(true));
    EXPECT_EQ(movShown, "");
}

static_assert(!std::is_copy_constructible_v<LCDebugMessageDefault>);
static_assert(!std::is_copy_assignable_v<LCDebugMessageDefault>);

}  // namespace
