// Loaded into a program before everything else: prints when its main window is painted for the
// first time, in seconds of the system's clock.
#include "bench/first_paint.h"

#include <QMainWindow>

static void tellFirstPaint() {
    new tollwick::bench::FirstPaint<QMainWindow>([](QMainWindow*) {
        const auto now = std::chrono::system_clock::now().time_since_epoch();
        std::printf("%.6f\n", std::chrono::duration<double>(now).count());
        std::fflush(stdout);
    });
}
Q_COREAPP_STARTUP_FUNCTION(tellFirstPaint)
