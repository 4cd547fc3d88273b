// The library's yes/no question as a window: the application puts the desktop's dialog tool behind the
// message box. Usage: message_dialog CAPTION TEXT. Ends with 0 for Yes and 1 for No, which is also the answer
// without a display.

#include <cstdio>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

#include "foundation/LCDebugMessage.h"
#include "foundation/LCDebugMessageDefault.h"
#include "foundation/LHCMessageBox.h"

namespace {

/// The texts go as arguments of their own, through no shell, and are not read as markup.
int ShowWindow(LCString const & text, LCString const & caption, unsigned int style)
{
    bool const question = style == LHCMessageBox::civStyle_YesNo;
    std::string program = "zenity", kind = question ? "--question" : "--info", plain = "--no-markup";
    std::string title = "--title=" + caption.str(), message = "--text=" + text.str();
    char * const arguments[] = {program.data(), kind.data(),    plain.data(),
                                title.data(),   message.data(), nullptr};

    ::pid_t child = 0;
    int status = 0;
    bool const yes = ::posix_spawnp(&child, program.c_str(), nullptr, nullptr, arguments, ::environ) == 0 &&
                     ::waitpid(child, &status, 0) == child && WIFEXITED(status) && WEXITSTATUS(status) == 0;
    if (!question) return LHCMessageBox::civAnswer_Ok;
    return yes ? LHCMessageBox::civAnswer_Yes : LHCMessageBox::civAnswer_No;
}

}  // namespace

int main(int count, char * arguments[])
{
    if (count != 3) {
        std::fputs("usage: message_dialog CAPTION TEXT\n", stderr);
        return 2;
    }
    LHCMessageBox::SetPresenter(ShowWindow);
    LCDebugMessageDefault const dialogs;

    // From here on any code of the process may ask.
    bool answer = false;
    covDebugMessage.ReportDebugMessageYesNo(arguments[1], arguments[2], answer);
    std::puts(answer ? "Yes" : "No");
    return answer ? 0 : 1;
}
