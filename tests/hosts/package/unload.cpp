#include <cstdlib>
#include <fstream>
#include <iostream>
#include <string>
#include <thread>

#include <dlfcn.h>

namespace {

bool isMapped(const std::string& name) {
    std::ifstream maps("/proc/self/maps");
    for (std::string line; std::getline(maps, line);) {
        if (line.find(name) != std::string::npos) {
            return true;
        }
    }
    return false;
}

} // namespace

// A plugin that measures text leaves nothing behind, twice. What a thread keeps of its words is the library's to give
// back when the thread ends, so that it is loaded until then: the thread that measures ends first.
int main() {
    for (int round = 0; round < 2; ++round) {
        void* plugin = dlopen(PLUGIN, RTLD_NOW | RTLD_LOCAL);
        if (plugin == nullptr) {
            std::cerr << dlerror() << '\n';
            return EXIT_FAILURE;
        }
        const auto lineHeight = reinterpret_cast<double (*)()>(dlsym(plugin, "lineHeight"));
        double height = 0.0;
        if (lineHeight != nullptr) {
            std::thread([&] { height = lineHeight(); }).join();
        }
        if (height <= 0.0) {
            std::cerr << "The plugin measures nothing.\n";
            return EXIT_FAILURE;
        }
        if (!isMapped("/libplugin")) {
            std::cerr << "The plugin is not seen where it has to be.\n";
            return EXIT_FAILURE;
        }
        dlclose(plugin);
        for (const char* name : {"/libplugin", "/libFontEngine"}) {
            if (isMapped(name)) {
                std::cerr << name << " stays in the process.\n";
                return EXIT_FAILURE;
            }
        }
    }
    return EXIT_SUCCESS;
}
