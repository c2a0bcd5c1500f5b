// Measures one thing and prints its figures. Usage: tollwick-bench NAME
#include "bench/figures.h"

#include <QApplication>

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    try {
        tollwick::bench::Measurement::all().at(argc == 2 ? argv[1] : "")();
        return EXIT_SUCCESS;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "tollwick-bench: %s\n", error.what());
        return EXIT_FAILURE;
    }
}
