#include "foundation/LCDebugMessageDefault.h"

#include <optional>

#include "foundation/LHCMessageBox.h"

namespace {

TEST(DebugMessageDefault, EachOneShowsABoxAsLongAsItLivesAndOnlyYesIsYes)
{
    std::string shown;
    int chosen = 0;
    LHCMessageBox::SetPresenter([&](LCString const & text, LCString const & caption, unsigned int style) {
        shown += caption.str() + "|" + text.str() + "|" + std::to_string(style) + " ";
        return chosen;
    });
    auto const outcome = [&](bool answer) {
        shown.clear();
        covDebugMessage.ReportDebugMessage("caption", "note");
        covDebugMessage.ReportDebugMessageYesNo("caption", "question", answer);
        return shown + (answer ? "yes" : "no");
    };
    EXPECT_FALSE(covDebugMessage.mbvReportEnabled);
    EXPECT_EQ(outcome(true), "yes");
    std::optional<LCDebugMessageDefault> first(std::in_place), second;
    for (chosen = -1; chosen < 9; ++chosen)
        EXPECT_EQ(outcome(chosen % 2 != 0), std::string("caption|note|0 caption|question|4 ") + (chosen == 6 ? "yes" : "no"));
    second.emplace();
    EXPECT_EQ(outcome(true), "caption|note|0 caption|note|0 caption|question|4 caption|question|4 no");
    covDebugMessage.mbvReportEnabled = false;
    EXPECT_EQ(outcome(true), "no");
    first.reset();
    second.reset();
    EXPECT_EQ(outcome(true), "yes");
    LHCMessageBox::SetPresenter({});
}

}  // namespace
