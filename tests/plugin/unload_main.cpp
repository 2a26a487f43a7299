// Loads the plug-in, which brings the foundation along, uses it in a thread, unloads both while
// that thread lives, and lets the thread end afterwards.
#include <dlfcn.h>

#include <cstdio>
#include <future>
#include <thread>

namespace {

bool isLoaded(char const* path)
{
    void* const handle = dlopen(path, RTLD_NOW | RTLD_NOLOAD);
    if (handle)
        dlclose(handle);
    return handle != nullptr;
}

int fail(char const* what)
{
    std::fprintf(stderr, "%s\n", what);
    return 1;
}

int loadUseUnload(char const* plugin, char const* foundation)
{
    void* const handle = dlopen(plugin, RTLD_NOW | RTLD_LOCAL);
    if (!handle)
        return fail(dlerror());
    if (!isLoaded(plugin) || !isLoaded(foundation))
        return fail("the check for loaded libraries does not see them");
    auto* const use = reinterpret_cast<int (*)()>(dlsym(handle, "usePlugin"));
    std::promise<int> used;
    std::promise<void> end;
    std::thread thread([&] {
        used.set_value(use());
        end.get_future().wait();
    });
    int const result = used.get_future().get();
    dlclose(handle);
    bool const gone = !isLoaded(plugin) && !isLoaded(foundation);
    end.set_value();
    thread.join();
    if (result != 0)
        return fail("the plug-in did not work");
    return gone ? 0 : fail("a library is still in memory: this says nothing about unloading");
}

}  // namespace

int main(int argc, char** argv)
{
    if (argc != 3)
        return fail("usage: unload_test PLUGIN FOUNDATION");
    for (int round = 0; round < 20; ++round) {
        if (int const failed = loadUseUnload(argv[1], argv[2]))
            return failed;
    }
    return 0;
}
