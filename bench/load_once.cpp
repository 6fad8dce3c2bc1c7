// SPDX-License-Identifier: Apache-2.0
// Loads and unloads a library once, after its pages were dropped from memory, and prints the nanoseconds it
// took.

#include <dlfcn.h>
#include <fcntl.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("usage: load_once LIBRARY\n", stderr);
        return 2;
    }
    const int file = open(argv[1], O_RDONLY | O_CLOEXEC);
    if (file < 0 || fdatasync(file) != 0 || posix_fadvise(file, 0, 0, POSIX_FADV_DONTNEED) != 0) {
        std::perror(argv[1]);
        return 1;
    }
    close(file);

    const auto start = std::chrono::steady_clock::now();
    void* handle = dlopen(argv[1], RTLD_NOW | RTLD_LOCAL);
    if (handle == nullptr) {
        std::fprintf(stderr, "%s\n", dlerror());
        return 1;
    }
    dlclose(handle);
    const std::chrono::nanoseconds taken = std::chrono::steady_clock::now() - start;
    std::printf("%lld\n", static_cast<long long>(taken.count()));
    return 0;
}
