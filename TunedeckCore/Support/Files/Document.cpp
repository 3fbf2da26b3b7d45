#include "TunedeckCore/Support/Files/Document.h"

#include "TunedeckCore/Support/Files/AtomicFile.h"

#include <QFile>
#include <QHash>
#include <QLoggingCategory>

#include <sys/stat.h>
#include <unistd.h>

#include <mutex>
#include <utility>

namespace tunedeck {

using namespace Qt::StringLiterals;

namespace {

Q_LOGGING_CATEGORY(filesLog, "files")

/// Some files are read every few seconds.
bool isNewProblem(const QString& path, const QString& problem) {
    static std::mutex mutex;
    static QHash<QString, QString> last;
    const std::scoped_lock lock(mutex);
    return std::exchange(last[path], problem) != problem;
}

} // namespace

std::optional<QString> documentProblem(const QString& path, std::int64_t limit) {
    const auto name = QFile::encodeName(path);
    struct stat file{};
    if (::lstat(name.constData(), &file) != 0) {
        return std::nullopt;
    }
    const bool isLink = S_ISLNK(file.st_mode);
    if (isLink && ::stat(name.constData(), &file) != 0) {
        return u"it is a link to a missing file"_s;
    }
    if (!S_ISREG(file.st_mode)) {
        return isLink ? u"it is a link to something that isn't a regular file"_s : u"it isn't a regular file"_s;
    }
    if (isLink && file.st_uid != ::geteuid()) {
        return u"it is a link to another user's file"_s;
    }
    return file.st_size > limit ? std::optional(u"it is too large"_s) : std::nullopt;
}

bool isReadableDocument(const QString& path) {
    const auto problem = documentProblem(path);
    if (isNewProblem(path, problem.value_or(QString())) && problem) {
        qCWarning(filesLog).noquote() << path << "is ignored:" << *problem;
    }
    return !problem;
}

std::optional<QByteArray> readDocument(const QString& path) {
    return isReadableDocument(path) ? readFile(path, documentLimit) : std::nullopt;
}

} // namespace tunedeck
