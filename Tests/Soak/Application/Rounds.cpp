#include "Tests/Soak/Application/Rounds.h"

#include "Tests/Soak/Timeline.h"

#include <netinet/in.h>
#include <sys/socket.h>
#include <sys/stat.h>

#include <filesystem>
#include <set>
#include <string>
#include <utility>

namespace tunedeck::soak {

namespace {

/// The process's IPv4 connections: descriptor and local port.
std::set<std::pair<int, std::uint16_t>> connections() {
    std::set<std::pair<int, std::uint16_t>> found;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
        const int descriptor = std::stoi(entry.path().filename().string());
        sockaddr_in address{};
        socklen_t size = sizeof address;
        if (::getsockname(descriptor, reinterpret_cast<sockaddr*>(&address), &size) == 0 &&
            address.sin_family == AF_INET) {
            found.emplace(descriptor, ntohs(address.sin_port));
        }
    }
    return found;
}

} // namespace

Rounds::Rounds(const Files& files) : m_files(files), m_trail(files.rounds()) {}

void Rounds::begin(const std::function<void()>& wake) {
    const auto before = connections();
    m_begin = realTime();
    m_port = 0;
    wake();
    for (const auto& connection : connections()) {
        if (!before.contains(connection)) {
            m_port = connection.second;
        }
    }
}

void Rounds::end() {
    struct stat log{};
    if (::stat(m_files.notifications().c_str(), &log) != 0) {
        log.st_size = 0;
    }
    m_trail.note(std::to_string(m_begin.count()) + ' ' + std::to_string(realTime().count()) + ' ' +
                 std::to_string(m_port) + ' ' + std::to_string(log.st_size));
}

} // namespace tunedeck::soak
