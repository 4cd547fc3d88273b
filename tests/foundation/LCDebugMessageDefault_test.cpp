#include "foundation/LCDebugMessageDefault.h"

#include <optional>
#include <string>

#include "foundation/LHCMessageBox.h"
#include "support/Support.h"

namespace {

TEST(DebugMessageDefault, EachOneShowsABoxAsLongAsItLivesAndOnlyYesIsYes)
{
    std::string shown;
    int chosen = 0;
    LHCMessageBox::SetPresenter([&](LCString const & text, LCString const & caption, unsigned int style) {
        shown += caption.str() + "|" + text.str() + "|" + std::to_string(style) + " ";
        return chosen;
    });
    auto const shownBy = [&](bool before, bool expected) {
        shown.clear();
        bool answer = before;
        covDebugMessage.ReportDebugMessage("caption", "note");
        covDebugMessage.ReportDebugMessageYesNo("caption", "question", answer);
        EXPECT_EQ(answer, expected) << chosen;
        return shown;
    };

    EXPECT_FALSE(covDebugMessage.mbvReportEnabled);
    EXPECT_EQ(shownBy(true, true), "");
    std::optional<LCDebugMessageDefault> first(std::in_place);
    for (chosen = -1; chosen < 9; ++chosen) {
        EXPECT_EQ(shownBy(true, chosen == 6), "caption|note|0 caption|question|4 ");
        EXPECT_EQ(shownBy(false, chosen == 6), shown);
    }
    chosen = 6;
    {
        LCDebugMessageDefault const second;
        EXPECT_EQ(shownBy(false, true),
                  "caption|note|0 caption|note|0 caption|question|4 caption|question|4 ");
    }
    covDebugMessage.mbvReportEnabled = false;
    EXPECT_EQ(shownBy(true, false), "");
    covDebugMessage.mbvReportEnabled = true;
    first.reset();
    EXPECT_EQ(shownBy(true, true), "");
    EXPECT_TRUE(covDebugMessage.mbvReportEnabled);

    covDebugMessage = LCDebugMessage();
    LHCMessageBox::SetPresenter({});
}

static_assert(!std::is_copy_constructible_v<LCDebugMessageDefault>);

}  // namespace
