// The clock in a program that waits by itself, with poll(), for several things at once: here also for its
// input, where a "q" ends it.

#include <poll.h>
#include <unistd.h>

#include "ClockLines.h"
#include "concurrency/LHCMessageLoop.h"

int main(int argc, char ** argv)
{
    bool over = false;
    ClockLines const lines(argc, argv, [&] { over = true; });

    struct pollfd waiting[] = {{LHCMessageLoop::GetDescriptor(), POLLIN, 0}, {STDIN_FILENO, POLLIN, 0}};
    while (!over && ::poll(waiting, 2, -1) >= 0) {
        if (waiting[0].revents != 0) LHCMessageLoop::ProcessMessages(0);
        if (waiting[1].revents != 0) {
            char key = '\0';
            if (::read(STDIN_FILENO, &key, 1) <= 0) waiting[1].fd = -1;  // its end: no longer watched
            if (key == 'q') over = true;
        }
    }
}
