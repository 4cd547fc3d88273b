#include "foundation/LHCMessageBox.h"

#include <pty.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

#include "support/Support.h"

namespace {

constexpr unsigned int note = LHCMessageBox::civStyle_Ok, question = LHCMessageBox::civStyle_YesNo;
constexpr int ok = LHCMessageBox::civAnswer_Ok, yes = LHCMessageBox::civAnswer_Yes,
              no = LHCMessageBox::civAnswer_No;

enum class Place { Terminal, Background, Service };

/// Shows a box in a process of its own, with a new terminal on which `typed` is typed. Gives what came out
/// there, or in the error output of the other places, and behind it the answer.
std::string OutcomeOf(Place place, unsigned int style, std::string const & typed)
{
    int terminal = -1, errors[2];
    EXPECT_EQ(::pipe(errors), 0);
    ::pid_t const child = ::forkpty(&terminal, nullptr, nullptr, nullptr);
    if (child == 0) {
        if (place != Place::Terminal) ::dup2(errors[1], STDERR_FILENO);
        ::pid_t const job = place == Place::Terminal ? 0 : ::fork();
        if (job == 0) {
            if (place == Place::Background) ::setpgid(0, 0);
            if (place == Place::Service) ::setsid();
            ::_exit(LHCMessageBox::Show("text", "caption", style));
        }
        int status = 0;
        ::waitpid(job, &status, WUNTRACED);
        ::_exit(WIFEXITED(status) ? WEXITSTATUS(status) : 255);
    }
    ::close(errors[1]);
    EXPECT_EQ(::write(terminal, typed.data(), typed.size()), static_cast<::ssize_t>(typed.size()));
    std::string output;
    char c = 0;
    while (::read(place == Place::Terminal ? terminal : errors[0], &c, 1) == 1) output += c;
    int status = 0;
    ::waitpid(child, &status, 0);
    ::close(terminal);
    ::close(errors[0]);
    return output + std::to_string(WEXITSTATUS(status));
}

TEST(MessageBox, ATerminalIsAskedAndElsewhereNothingWaitsAndTheAnswerIsNo)
{
    struct { Place place; unsigned int style; std::string typed, asked; int expected; } const rows[] = {
        {Place::Terminal, question, "y\n", "Yes or no?", yes},
        {Place::Terminal, question, "YES\r", "Yes or no?", yes},
        {Place::Terminal, question, "\nyo\nyes\n", "Yes or no?", yes},
        {Place::Terminal, question, "\n\nNo\ny\n", "Yes or no?", no},
        {Place::Terminal, question, "\x04", "Yes or no?", no}, {Place::Terminal, note, "\n", "Return", ok},
        {Place::Background, question, "y\n", "caption: text\n", no},
        {Place::Background, note, "", "caption: text\n", ok},
        {Place::Service, question, "y\n", "caption: text\n", no}, {Place::Service, note, "", "caption: text\n", ok},
    };
    for (auto const & row : rows) {
        std::string const outcome = OutcomeOf(row.place, row.style, row.typed);
        for (std::string const & part : {std::string("caption"), std::string("text"), row.asked}) {
            EXPECT_NE(outcome.find(part), std::string::npos) << part << " in " << outcome;
        }
        EXPECT_EQ(outcome.back(), '0' + row.expected) << testing::PrintToString(row.typed);
    }
}

TEST(MessageBox, ADialogMayPutAnotherInItsPlace)
{
    std::string const name(100, 'x');  // the function must outlive its own replacement
    LHCMessageBox::SetPresenter([name](auto &&...) {
        LHCMessageBox::SetPresenter([](auto &&...) { return -1; });
        return static_cast<int>(name.size());
    });
    EXPECT_EQ(LHCMessageBox::Show("", "", question), 100);
    EXPECT_EQ(LHCMessageBox::Show("", "", question), -1);
    LHCMessageBox::SetPresenter({});
}

}  // namespace
