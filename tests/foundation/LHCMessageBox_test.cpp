#include "foundation/LHCMessageBox.h"

#include <cstdlib>
#include <pty.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

#include "support/Support.h"

namespace {

struct Outcome {
    int answer;
    std::string output;
};

/// In the child: shows a box and ends with its answer.
[[noreturn]] void ShowAndEnd(unsigned int style) { ::_exit(LHCMessageBox::Show("text", "caption", style)); }

Outcome OutcomeOf(::pid_t child, int output)
{
    Outcome outcome{-1, {}};
    char buffer[256];
    ::ssize_t got = 0;
    while ((got = ::read(output, buffer, sizeof buffer)) > 0)
        outcome.output.append(buffer, static_cast<std::size_t>(got));
    ::close(output);
    int status = 0;
    if (::waitpid(child, &status, 0) == child && WIFEXITED(status)) outcome.answer = WEXITSTATUS(status);
    return outcome;
}

/// Shows a box in a process of its own with a new terminal, on which `typed` is typed.
Outcome OnTerminal(unsigned int style, std::string const & typed)
{
    int terminal = -1;
    ::pid_t const child = ::forkpty(&terminal, nullptr, nullptr, nullptr);
    if (child == 0) ShowAndEnd(style);
    if (::write(terminal, typed.data(), typed.size()) < 0) ADD_FAILURE() << "the terminal takes no input";
    return OutcomeOf(child, terminal);
}

TEST(MessageBox, OnATerminalTheUserIsAsked)
{
    struct {
        unsigned int style;
        char const * typed;
        int expected;
        char const * asked;
    } const rows[] = {
        {LHCMessageBox::civStyle_YesNo, "y\n", LHCMessageBox::civAnswer_Yes, "Yes or no?"},
        {LHCMessageBox::civStyle_YesNo, "YES\r", LHCMessageBox::civAnswer_Yes, "Yes or no?"},
        {LHCMessageBox::civStyle_YesNo, "\nyo\nyes\n", LHCMessageBox::civAnswer_Yes, "Yes or no?"},
        {LHCMessageBox::civStyle_YesNo, "n\n", LHCMessageBox::civAnswer_No, "Yes or no?"},
        {LHCMessageBox::civStyle_YesNo, "\n\nno\ny\n", LHCMessageBox::civAnswer_No, "Yes or no?"},
        {LHCMessageBox::civStyle_YesNo, "\x04", LHCMessageBox::civAnswer_No, "Yes or no?"},
        {LHCMessageBox::civStyle_Ok, "\n", LHCMessageBox::civAnswer_Ok, "Return"},
        {LHCMessageBox::civStyle_Ok, "\x04", LHCMessageBox::civAnswer_Ok, "Return"},
    };
    for (auto const & row : rows) {
        Outcome const outcome = OnTerminal(row.style, row.typed);
        EXPECT_EQ(outcome.answer, row.expected) << testing::PrintToString(row.typed);
        for (std::string const part : {"caption", "text", row.asked}) {
            EXPECT_NE(outcome.output.find(part), std::string::npos) << part << " in " << outcome.output;
        }
    }
}

// A service without a terminal, and a job in the background of one, must go on: asking would block or stop
// it.
TEST(MessageBox, WithoutATerminalToAskNothingWaitsAndTheAnswerIsNo)
{
    for (unsigned int const style : {LHCMessageBox::civStyle_Ok, LHCMessageBox::civStyle_YesNo}) {
        for (bool const background : {false, true}) {
            int ends[2];
            ASSERT_EQ(::pipe(ends), 0);
            int terminal = -1;
            ::pid_t const child = background ? ::forkpty(&terminal, nullptr, nullptr, nullptr) : ::fork();
            if (child == 0) {
                ::dup2(ends[1], STDERR_FILENO);
                if (!background) {
                    ::setsid();
                    ShowAndEnd(style);
                }
                ::pid_t const job = ::fork();
                if (job == 0) {
                    ::setpgid(0, 0);
                    ShowAndEnd(style);
                }
                int status = 0;
                ::waitpid(job, &status, WUNTRACED);
                ::_exit(WIFEXITED(status) ? WEXITSTATUS(status) : 255);
            }
            ::close(ends[1]);
            Outcome const outcome = OutcomeOf(child, ends[0]);
            EXPECT_EQ(outcome.answer, style == LHCMessageBox::civStyle_Ok ? LHCMessageBox::civAnswer_Ok
                                                                          : LHCMessageBox::civAnswer_No)
                << background;
            EXPECT_EQ(outcome.output, "caption: text\n") << background;
            ::close(terminal);
        }
    }
}

TEST(MessageBox, ADialogMayPutAnotherInItsPlace)
{
    int shown = 0;
    std::string const name(100, 'x');  // the function must outlive its own replacement
    LHCMessageBox::SetPresenter([&shown, name](LCString const &, LCString const &, unsigned int) {
        LHCMessageBox::SetPresenter(
            [&shown](LCString const &, LCString const &, unsigned int) { return shown = -1; });
        shown = static_cast<int>(name.size());
        return 6;
    });
    EXPECT_EQ(LHCMessageBox::Show("", "", LHCMessageBox::civStyle_YesNo), 6);
    EXPECT_EQ(shown, 100);
    EXPECT_EQ(LHCMessageBox::Show("", "", LHCMessageBox::civStyle_YesNo), -1);
    LHCMessageBox::SetPresenter({});
}

}  // namespace
