// Measures one thing and prints its figures, or the figure that pairs on the standard input make.
// Usage: tollwick-bench NAME | tollwick-bench figure WHAT UNIT MOST
#include "bench/figures.h"

#include <QApplication>

#include <iostream>

int main(int argc, char** argv) {
    using namespace tollwick::bench;
    try {
        if (argc == 5) {
            Pairs pairs;
            for (double ours = 0, floor = 0; std::cin >> ours >> floor;)
                pairs.add(ours, floor);
            return print(argv[2], argv[3], pairs, std::atof(argv[4])), EXIT_SUCCESS;
        }
        QApplication application(argc, argv);
        QApplication::setQuitOnLastWindowClosed(false);
        return Measurement::all().at(argc == 2 ? argv[1] : "")(), EXIT_SUCCESS;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "tollwick-bench: %s\n", error.what());
        return EXIT_FAILURE;
    }
}
