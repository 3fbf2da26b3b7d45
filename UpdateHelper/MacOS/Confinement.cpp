#include "UpdateHelper/Confinement.h"

#include "TunedeckCore/Support/Files/FileDescriptor.h"
#include "UpdateHelper/SandboxProfile.h"

#include <sandbox.h>
#include <sys/event.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <memory>
#include <thread>

namespace tunedeck::helper {

namespace {

/// Ends this process when its parent dies, which macOS can't do itself. False if the parent can't be watched.
bool endWith(pid_t parent) {
    FileDescriptor queue(::kqueue());
    const struct kevent wanted{.ident = static_cast<uintptr_t>(parent),
                               .filter = EVFILT_PROC,
                               .flags = EV_ADD,
                               .fflags = NOTE_EXIT,
                               .data = 0,
                               .udata = nullptr};
    if (!queue || ::kevent(queue.get(), &wanted, 1, nullptr, 0, nullptr) != 0) {
        return false;
    }
    std::thread([queue = std::move(queue)] {
        struct kevent ended{};
        while (::kevent(queue.get(), nullptr, 0, &ended, 1, nullptr) < 0 && errno == EINTR) {
        }
        std::_Exit(EXIT_FAILURE);
    }).detach();
    return true;
}

/// The path without symbolic links, such as /tmp: the sandbox compares resolved paths.
std::string resolved(const std::string& path) {
    const std::unique_ptr<char, void (*)(void*)> real(::realpath(path.c_str(), nullptr), &std::free);
    return real ? real.get() : path;
}

bool limit(int resource, rlim_t value) {
    const rlimit both{value, value};
    return ::setrlimit(resource, &both) == 0;
}

std::expected<void, std::string> enterSandbox(Permissions permissions) {
    for (auto& file : permissions.files) {
        file = resolved(file);
    }
    if (!permissions.folder.empty()) {
        permissions.folder = resolved(permissions.folder);
    }
    char* error = nullptr;
    // Deprecated in favour of the App Sandbox, which confines a whole bundle from its start to a container of its own:
    // this program needs less with each step, and files that the application names.
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wdeprecated-declarations"
    if (::sandbox_init(sandboxProfile(permissions).c_str(), 0, &error) != 0) {
        const std::string text = error != nullptr ? error : "unknown error";
        ::sandbox_free_error(error);
        return std::unexpected(text);
    }
#pragma clang diagnostic pop
    return {};
}

} // namespace

// No limit of the address space, which this kernel doesn't enforce.
std::expected<void, std::string> confine(pid_t parent, const Permissions& permissions) {
    tzset(); // its file can't be read later
    if (!permissions.folder.empty() && ::mkdir(permissions.folder.c_str(), 0777) != 0 && errno != EEXIST) {
        return std::unexpected(std::strerror(errno));
    }
    const std::string failure = "The helper program can't be confined: ";
    if (!limit(RLIMIT_CORE, 0) || !limit(RLIMIT_FSIZE, static_cast<rlim_t>(permissions.fileSize))) {
        return std::unexpected(failure + std::strerror(errno));
    }
    if (!endWith(parent) || ::getppid() != parent) { // it may have died before the first call
        return std::unexpected("The application has quit.");
    }
    if (const auto confined = enterSandbox(permissions); !confined) {
        return std::unexpected(failure + confined.error());
    }
    return {};
}

} // namespace tunedeck::helper
