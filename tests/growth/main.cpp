// Lays texts of many shapes out at a length and at twice that length, so that Callgrind can tell what each costs.
//   growth layouts|documents UNITS [SHAPE...]

#include <cstddef>
#include <initializer_list>
#include <iostream>
#include <set>
#include <string>
#include <vector>

#include "Counter.h"
#include "Documents.h"
#include "Layouts.h"

namespace {

/// Calls `ask` with the shapes of these names, or with all where none is named.
template <class Ask>
void measure(const std::vector<growth::Shape>& shapes, std::size_t units, const std::set<std::string>& wanted,
             Ask ask) {
    const auto askAll = [&](std::initializer_list<std::size_t> lengths) {
        for (const growth::Shape& shape : shapes) {
            for (const std::size_t length : lengths) {
                if (wanted.empty() || wanted.contains(shape.name)) {
                    ask(shape, length);
                }
            }
        }
    };
    // What is kept of fonts and words is not a cost of the text's length.
    askAll({units / 4});
    growth::startCounting();
    askAll({units, 2 * units});
}

} // namespace

int main(int argc, char** argv) {
    const std::string kind = argc > 2 ? argv[1] : "";
    if (kind != "layouts" && kind != "documents") {
        std::cerr << "usage: growth layouts|documents UNITS [SHAPE...]\n";
        return 2;
    }
    const std::size_t units = std::stoul(argv[2]);
    const std::set<std::string> wanted(argv + 3, argv + argc);
    if (kind == "layouts") {
        measure(growth::shapes(), units, wanted, growth::askLayout);
    } else {
        measure(growth::contents(), units, wanted, growth::askDocument);
    }
    return 0;
}
