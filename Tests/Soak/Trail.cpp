#include "Tests/Soak/Trail.h"

#include <fcntl.h>
#include <unistd.h>

namespace tunedeck::soak {

Trail::Trail(const std::filesystem::path& file)
    : m_file(::open(file.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0600)) {}

Trail::~Trail() {
    ::close(m_file);
}

void Trail::note(std::string line) const {
    line += '\n';
    (void)!::write(m_file, line.data(), line.size());
}

} // namespace tunedeck::soak
