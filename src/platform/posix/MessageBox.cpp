#include "platform/MessageBox.h"

#include <cerrno>
#include <fcntl.h>
#include <string_view>
#include <unistd.h>

namespace qrtcl::platform {

namespace {

/// The controlling terminal; closed at the end of its life.
class Terminal {
public:
    Terminal() : mivDescriptor(::open("/dev/tty", O_RDWR | O_CLOEXEC | O_NOCTTY)) {}
    Terminal(Terminal const &) = delete;
    Terminal & operator=(Terminal const &) = delete;
    ~Terminal()
    {
        if (mivDescriptor >= 0) ::close(mivDescriptor);
    }
    /// A process in the background would be stopped if it asked.
    bool CanAsk() const { return mivDescriptor >= 0 && ::tcgetpgrp(mivDescriptor) == ::getpgrp(); }
    int Descriptor() const { return mivDescriptor; }

    /// One line without its end, also from a terminal that gives Return as it is typed; false at the end of
    /// input. Reads no further than that: what is typed ahead is for others.
    bool ReadLine(std::string & line) const
    {
        line.clear();
        for (;;) {
            char c = 0;
            ::ssize_t const got = ::read(mivDescriptor, &c, 1);
            if (got < 0 && errno == EINTR) continue;
            if (got <= 0) return false;
            if (c == '\n' || c == '\r') return true;
            line += c;
        }
    }

private:
    int mivDescriptor;
};

void Write(int descriptor, std::string_view text)
{
    while (!text.empty()) {
        ::ssize_t const written = ::write(descriptor, text.data(), text.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) return;
        text.remove_prefix(static_cast<std::size_t>(written));
    }
}

}  // namespace

bool AskOnTerminal(std::string const & text, std::string const & caption, bool question)
{
    Terminal const terminal;
    if (!terminal.CanAsk()) {
        Write(STDERR_FILENO, caption + ": " + text + '\n');
        return false;
    }
    Write(terminal.Descriptor(), caption + '\n' + text + '\n');
    std::string answer;
    for (;;) {
        Write(terminal.Descriptor(), question ? "Yes or no? " : "Press Return to go on. ");
        if (!terminal.ReadLine(answer)) return false;
        if (!question) return true;
        for (char & c : answer) c = static_cast<char>(c | 0x20);  // lower case
        if (answer == "y" || answer == "yes") return true;
        if (answer == "n" || answer == "no") return false;
    }
}

}  // namespace qrtcl::platform
