// The clock under the library's own loop: all that a program without another one needs.

#include "ClockLines.h"
#include "concurrency/LHCMessageLoop.h"

int main(int argc, char ** argv)
{
    ClockLines const lines(argc, argv, [] { LHCMessageLoop::Quit(); });
    LHCMessageLoop::Run();
}
