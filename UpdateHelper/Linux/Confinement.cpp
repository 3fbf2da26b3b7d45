#include "UpdateHelper/Confinement.h"

#include "TunedeckCore/Support/Files/FileDescriptor.h"
#include "UpdateHelper/Linux/Landlock.h"

#include <fcntl.h>
#include <linux/landlock.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <ctime>

namespace tunedeck::helper {

namespace {

// Landlock by version. The newer rights aren't in the headers of Debian 12.
constexpr std::uint64_t readRights = LANDLOCK_ACCESS_FS_READ_FILE | LANDLOCK_ACCESS_FS_READ_DIR;
constexpr std::uint64_t writeRights = LANDLOCK_ACCESS_FS_WRITE_FILE | LANDLOCK_ACCESS_FS_REMOVE_DIR |
                                      LANDLOCK_ACCESS_FS_REMOVE_FILE | LANDLOCK_ACCESS_FS_MAKE_DIR |
                                      LANDLOCK_ACCESS_FS_MAKE_REG | LANDLOCK_ACCESS_FS_MAKE_SYM;
constexpr std::uint64_t neverAllowed = LANDLOCK_ACCESS_FS_EXECUTE | LANDLOCK_ACCESS_FS_MAKE_CHAR |
                                       LANDLOCK_ACCESS_FS_MAKE_BLOCK | LANDLOCK_ACCESS_FS_MAKE_FIFO |
                                       LANDLOCK_ACCESS_FS_MAKE_SOCK;
constexpr std::uint64_t truncateRight = 1ULL << 14; // version 3
constexpr std::uint64_t tcpRights = 0b11;           // version 4: bind, connect
constexpr std::uint64_t scopes = 0b11;              // version 6: abstract sockets and signals of other processes

/// landlock_ruleset_attr of version 6; an older kernel accepts it if what it doesn't know is 0.
struct Ruleset {
    std::uint64_t files;
    std::uint64_t network;
    std::uint64_t scoped;
};

bool allow(const FileDescriptor& ruleset, const std::string& path, std::uint64_t rights) {
    const FileDescriptor file(open(path.c_str(), O_PATH | O_CLOEXEC | O_NOFOLLOW));
    const landlock_path_beneath_attr rule{.allowed_access = rights, .parent_fd = file.get()};
    return file && syscall(SYS_landlock_add_rule, ruleset.get(), LANDLOCK_RULE_PATH_BENEATH, &rule, 0) == 0;
}

bool restrictAccess(const Permissions& permissions) {
    const int version = landlockVersion();
    if (version == 0) {
        return true;
    }
    const std::uint64_t write = writeRights | (version >= 3 ? truncateRight : 0);
    const Ruleset rights{.files = neverAllowed | write | (permissions.network ? 0 : readRights) |
                                  (version >= 2 ? LANDLOCK_ACCESS_FS_REFER : 0),
                         .network = version >= 4 && !permissions.network ? tcpRights : 0,
                         .scoped = version >= 6 ? scopes : 0};
    const FileDescriptor ruleset(static_cast<int>(syscall(SYS_landlock_create_ruleset, &rights, sizeof(rights), 0)));
    return ruleset &&
           std::ranges::all_of(permissions.files,
                               [&](const auto& file) { return allow(ruleset, file, LANDLOCK_ACCESS_FS_READ_FILE); }) &&
           (permissions.folder.empty() || allow(ruleset, permissions.folder, readRights | write)) &&
           syscall(SYS_landlock_restrict_self, ruleset.get(), 0) == 0;
}

bool limit(decltype(RLIMIT_CORE) resource, rlim_t value) {
    const rlimit both{value, value};
    return setrlimit(resource, &both) == 0;
}

bool limitResources(const Permissions& permissions) {
    constexpr rlim_t addressSpace = rlim_t{TUNEDECK_ADDRESS_SPACE_MIB} * 1024 * 1024;
    return limit(RLIMIT_CORE, 0) && limit(RLIMIT_FSIZE, static_cast<rlim_t>(permissions.fileSize)) &&
           (addressSpace == 0 || limit(RLIMIT_AS, addressSpace));
}

} // namespace

int landlockVersion() {
    return std::max(
        0, static_cast<int>(syscall(SYS_landlock_create_ruleset, nullptr, 0, LANDLOCK_CREATE_RULESET_VERSION)));
}

std::expected<void, std::string> confine(pid_t parent, const Permissions& permissions) {
    tzset(); // its file can't be read later
    if (!permissions.folder.empty() && mkdir(permissions.folder.c_str(), 0777) != 0 && errno != EEXIST) {
        return std::unexpected(std::strerror(errno));
    }
    if (prctl(PR_SET_PDEATHSIG, SIGKILL, 0, 0, 0) != 0 || prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0 ||
        prctl(PR_SET_DUMPABLE, 0, 0, 0, 0) != 0 || !restrictAccess(permissions) || !limitResources(permissions)) {
        return std::unexpected(std::string("The helper program can't be confined: ") + std::strerror(errno));
    }
    if (getppid() != parent) { // it may have died before the first call
        return std::unexpected("The application has quit.");
    }
    return {};
}

} // namespace tunedeck::helper
