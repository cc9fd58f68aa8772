// A plug-in in the host's manner that notes what is called into the file named by LORVA_TEST_PLUGIN_NOTES.

#include "workbench/plugininforecord.h"

#include <cstdio>
#include <cstdlib>
#include <stdexcept>

#define JOIN_EXPANDED(a, b, c) a##b##c
#define JOIN(a, b, c) JOIN_EXPANDED(a, b, c)
#define TEXT_EXPANDED(a) #a
#define TEXT(a) TEXT_EXPANDED(a)

#ifdef CALLS_NOWHERE
extern "C" void lorvaFunctionThatNobodyHas();
#endif

namespace {

[[maybe_unused]] void note(const char *what)
{
    const char *path = std::getenv("LORVA_TEST_PLUGIN_NOTES");
    std::FILE *file = path ? std::fopen(path, "a") : nullptr;
    if (!file)
        return;
    std::fprintf(file, "%s %s\n", TEXT(PLUGIN_NAME), what);
    std::fclose(file);
}

struct Unloading
{
    ~Unloading() { note("unloaded"); }
} unloading;

} // namespace

extern "C" {

#ifndef WITHOUT_INFO
__attribute__((visibility("default"))) const workbench::PluginInfoRecord *JOIN(Get, PLUGIN_NAME, PluginInfo)()
{
    note("info");
    static const workbench::PluginInfoRecord record{
        TEXT(PLUGIN_NAME) " plug-in", "Product", "Creator", "1.2", nullptr, 2};
#ifdef WITHOUT_RECORD
    return nullptr;
#else
    return &record;
#endif
}
#endif

#ifndef WITHOUT_INIT
__attribute__((visibility("default"))) const char *JOIN(Init, PLUGIN_NAME, Plugin)(int argc, char **argv)
{
    note(argc == 1 && argv && argv[0] && !argv[1] ? "init" : "init with strange arguments");
#ifdef REFUSES
    return "no licence today";
#endif
#ifdef THROWS
    throw std::runtime_error("the disk is full of eels");
#endif
#ifdef THROWS_A_NUMBER
    throw 7;
#endif
#ifdef CALLS_NOWHERE
    lorvaFunctionThatNobodyHas();
#endif
    return nullptr;
}
#endif
}
