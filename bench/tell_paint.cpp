// Loaded into a program before everything else: writes the time of its main window's first paint to
// the descriptor that TOLLWICK_BENCH_FD names.
#include "bench/figures.h"
#include "bench/first_paint.h"

#include <QMainWindow>

#include <unistd.h>

static void tellFirstPaint() {
    using namespace tollwick::bench;
    new FirstPaint<QMainWindow>([](QMainWindow*, Clock::time_point now) {
        if (::write(qEnvironmentVariableIntValue("TOLLWICK_BENCH_FD"), &now, sizeof now) < 0)
            ::_exit(EXIT_FAILURE);
    });
}
Q_COREAPP_STARTUP_FUNCTION(tellFirstPaint)
