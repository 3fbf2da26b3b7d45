#include "Tests/Helpers/SmallDisk.h"

namespace tunedeck::test {

SmallDisk::SmallDisk(int /*kilobytes*/) : m_reason("macOS has no private mounts") {}

SmallDisk::~SmallDisk() = default;

QString SmallDisk::path(const QString& relative) const {
    return m_folder.filePath(relative);
}

void SmallDisk::fill() const {}

} // namespace tunedeck::test
