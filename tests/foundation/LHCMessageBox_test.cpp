#include "foundation/LHCMessageBox.h"

#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr unsigned int note = 0, question = 4;
constexpr int ok = 1, yes = 6, no = 7;

enum Place { Terminal, Background, Service };

/// Shows a box in a process of its own, with a new terminal on which `typed` is typed and which is its error
/// output in every place. Gives what came out there, and behind it the answer.
std::string OutcomeOf(Place place, unsigned int style, std::string const & typed)
{
    int terminal = -1, status = 0;
    ::pid_t const child = ::forkpty(&terminal, nullptr, nullptr, nullptr);
    if (child == 0) {
        ::pid_t const job = ::fork();
        if (job == 0) {
            if (place == Background) ::setpgid(0, 0);
            if (place == Service) ::setsid();
            ::_exit(LHCMessageBox::Show("text", "caption", style));
        }
        ::waitpid(job, &status, WUNTRACED);
        ::_exit(WIFEXITED(status) ? WEXITSTATUS(status) : 255);
    }
    EXPECT_EQ(::write(terminal, typed.data(), typed.size()), static_cast<::ssize_t>(typed.size()));
    std::string output;
    char c = 0;
    while (::read(terminal, &c, 1) == 1) output += c;
    ::waitpid(child, &status, 0);
    ::close(terminal);
    return output + std::to_string(WEXITSTATUS(status));
}

TEST(MessageBox, ATerminalIsAskedAndElsewhereNothingWaitsAndTheAnswerIsNo)
{
    std::string const ask = "Yes or no?", line = "caption: text\r\n";
    struct { Place place; unsigned int style; std::string typed, asked; int expected; } const rows[] = {
        {Terminal, question, "y\n", ask, yes}, {Terminal, question, "YES\r", ask, yes},
        {Terminal, question, "\nyo\nyes\n", ask, yes}, {Terminal, question, "\n\nNo\ny\n", ask, no},
        {Terminal, question, "\x04", ask, no}, {Terminal, note, "\n", "Return", ok},
        {Background, question, "y\n", line, no}, {Background, note, "", line, ok},
        {Service, question, "y\n", line, no}, {Service, note, "", line, ok}};
    for (auto const & row : rows) {
        std::string const outcome = OutcomeOf(row.place, row.style, row.typed);
        for (auto const & part : {std::string("caption"), std::string("text"), row.asked})
            EXPECT_NE(outcome.find(part), std::string::npos) << part << " in " << outcome;
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
