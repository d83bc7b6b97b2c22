#include "adapters/gazetteer/build/places_writer.h"

#include <cstdlib>
#include <fmt/format.h>

int main(int count, char** arguments) {
    if (count != 5) {
        fmt::print(stderr, "Makes the file in which places are found without a network:\n"
                           "brindlefox-gazetteer CITIES.txt REGIONS.json DIVISIONS.json OUTPUT\n");
        return 2;
    }
    try {
        const auto places = bridge::gazetteer::writePlaces({arguments[1], arguments[2], arguments[3]}, arguments[4]);
        fmt::print("{}: {} places\n", arguments[4], places);
        return EXIT_SUCCESS;
    } catch (const std::exception& error) {
        fmt::print(stderr, "brindlefox-gazetteer: {}\n", error.what());
        return EXIT_FAILURE;
    }
}
