#include "platform/MessageBox.h"

#include <cerrno>

#include "platform/posix/Descriptor.h"

namespace qrtcl::platform {

namespace {

/// A process in the background of its terminal would be stopped if it asked there.
bool CanAsk(Descriptor const & terminal)
{
    return terminal.IsOpen() && ::tcgetpgrp(terminal.Number()) == ::getpgrp();
}

/// One line without its end, also from a terminal that gives Return as it is typed; false at the end of
/// input. Reads no further than that: what is typed ahead is for others.
bool ReadLine(Descriptor const & terminal, std::string & line)
{
    line.clear();
    for (;;) {
        char c = 0;
        ::ssize_t const got = ::read(terminal.Number(), &c, 1);
        if (got < 0 && errno == EINTR) continue;
        if (got <= 0) return false;
        if (c == '\n' || c == '\r') return true;
        line += c;
    }
}

}  // namespace

bool AskOnTerminal(std::string const & text, std::string const & caption, bool question)
{
    Descriptor const terminal("/dev/tty", O_RDWR);
    if (!CanAsk(terminal)) {
        WriteAll(STDERR_FILENO, caption + ": " + text + '\n');
        return false;
    }
    WriteAll(terminal.Number(), caption + '\n' + text + '\n');
    std::string answer;
    for (;;) {
        WriteAll(terminal.Number(), question ? "Yes or no? " : "Press Return to go on. ");
        if (!ReadLine(terminal, answer)) return false;
        if (!question) return true;
        for (char & c : answer) c = static_cast<char>(c | 0x20);  // lower case
        if (answer == "y" || answer == "yes") return true;
        if (answer == "n" || answer == "no") return false;
    }
}

}  // namespace qrtcl::platform
