#pragma once

#include <sys/resource.h>
#include <unistd.h>

namespace tunedeck::test {

/// The number that the next descriptor to be opened will have.
inline int nextDescriptor() {
    const int next = dup(STDIN_FILENO);
    close(next);
    return next;
}

/// While it lives, this process can't open another descriptor.
class NoDescriptors {
public:
    NoDescriptors() {
        getrlimit(RLIMIT_NOFILE, &m_before);
        const rlimit none{.rlim_cur = static_cast<rlim_t>(nextDescriptor()), .rlim_max = m_before.rlim_max};
        setrlimit(RLIMIT_NOFILE, &none);
    }
    ~NoDescriptors() { setrlimit(RLIMIT_NOFILE, &m_before); }
    NoDescriptors(const NoDescriptors&) = delete;
    NoDescriptors& operator=(const NoDescriptors&) = delete;

    /// Whether the build can do without: the undefined-behaviour sanitizer opens pipes for its own checks.
#ifdef __SANITIZE_ADDRESS__
    static constexpr bool arePossible = false;
#else
    static constexpr bool arePossible = true;
#endif

private:
    rlimit m_before{};
};

} // namespace tunedeck::test
