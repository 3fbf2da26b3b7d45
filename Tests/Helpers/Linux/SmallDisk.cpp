#include "Tests/Helpers/SmallDisk.h"

#include <QFile>

#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

using namespace Qt::StringLiterals;

namespace tunedeck::test {

namespace {

bool write(const QString& path, const QByteArray& text) {
    QFile file(path);
    return file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && file.write(text) == text.size();
}

/// Enters a private mount namespace, for other users than root in a user namespace.
bool separateMounts() {
    if (::geteuid() != 0) {
        const auto user = QByteArray::number(::geteuid());
        const auto group = QByteArray::number(::getegid());
        if (::unshare(CLONE_NEWUSER) != 0 || !write(u"/proc/self/setgroups"_s, "deny") ||
            !write(u"/proc/self/uid_map"_s, "0 " + user + " 1") ||
            !write(u"/proc/self/gid_map"_s, "0 " + group + " 1")) {
            return false;
        }
    }
    return ::unshare(CLONE_NEWNS) == 0 && ::mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
}

} // namespace

SmallDisk::SmallDisk(int kilobytes) {
    const auto options = "size=" + std::to_string(kilobytes) + "k";
    if (!separateMounts() || ::mount("tmpfs", folder().c_str(), "tmpfs", 0, options.c_str()) != 0) {
        m_reason = std::string("can't mount a tmpfs: ") + std::strerror(errno);
    }
}

SmallDisk::~SmallDisk() {
    if (isThere()) {
        ::umount2(folder().c_str(), MNT_DETACH);
    }
}

QString SmallDisk::path(const QString& relative) const {
    return relative.isEmpty() ? m_folder.path() : m_folder.filePath(relative);
}

void SmallDisk::fill() const {
    QFile file(path(u".filler"_s));
    file.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Unbuffered);
    while (file.write(QByteArray(4096, 'x')) == 4096) {
    }
}

std::string SmallDisk::folder() const {
    return QFile::encodeName(m_folder.path()).toStdString();
}

} // namespace tunedeck::test
