// The clock in a program that runs libuv's loop.

#include <uv.h>

#include "ClockLines.h"
#include "concurrency/LHCMessageLoop.h"

int main(int argc, char ** argv)
{
    uv_loop_t * const loop = uv_default_loop();
    uv_poll_t watch;
    uv_poll_init(loop, &watch, LHCMessageLoop::GetDescriptor());
    {
        ClockLines const lines(argc, argv,
                               [&] { uv_close(reinterpret_cast<uv_handle_t *>(&watch), nullptr); });
        uv_poll_start(&watch, UV_READABLE, [](uv_poll_t *, int, int) { LHCMessageLoop::ProcessMessages(0); });
        uv_run(loop, UV_RUN_DEFAULT);
    }
    return uv_loop_close(loop);
}
