// The clock in a program that runs GLib's main loop, as those with GTK do.

#include <glib-unix.h>

#include "ClockLines.h"
#include "concurrency/LHCMessageLoop.h"

int main(int argc, char ** argv)
{
    GMainLoop * const loop = g_main_loop_new(nullptr, FALSE);
    {
        ClockLines const lines(argc, argv, [=] { g_main_loop_quit(loop); });
        auto const onReadable = [](gint, GIOCondition, gpointer) -> gboolean {
            LHCMessageLoop::ProcessMessages(0);
            return G_SOURCE_CONTINUE;
        };
        g_unix_fd_add(LHCMessageLoop::GetDescriptor(), G_IO_IN, onReadable, nullptr);
        g_main_loop_run(loop);
    }
    g_main_loop_unref(loop);
}
