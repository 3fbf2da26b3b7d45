#include "TunedeckCore/Locations/UserPaths.h"

#include <QDir>
#include <QFile>

#include <pwd.h>
#include <unistd.h>

#include <utility>

namespace tunedeck {

using namespace Qt::StringLiterals;

UserPaths::UserPaths(QString home) : m_home(std::move(home)) {
    if (m_home.size() > 1 && m_home.endsWith(u'/')) {
        m_home.chop(1);
    }
}

UserPaths UserPaths::current() {
    auto home = QFile::decodeName(qgetenv("HOME"));
    if (!home.startsWith(u'/')) {
        const auto* user = ::getpwuid(::getuid());
        home = user ? QFile::decodeName(user->pw_dir) : u"/"_s;
    }
    return UserPaths(QDir::cleanPath(home));
}

QString UserPaths::below(const char* relative) const {
    return (m_home.endsWith(u'/') ? m_home : m_home + u'/') + QLatin1StringView(relative);
}

} // namespace tunedeck
