#include "Tests/Helpers/TemporaryHome.h"

#include "TunedeckCore/Support/Files/RemoveTree.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <stdexcept>

namespace tunedeck::test {

namespace {

const QString& folder() {
    static const QTemporaryDir home;
    static const QString path = home.path();
    return path;
}

} // namespace

TemporaryHome::TemporaryHome() {
    QDir().mkpath(folder());
    qputenv("HOME", QFile::encodeName(folder()));
    for (const auto* name : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_STATE_HOME"}) {
        qunsetenv(name);
    }
}

TemporaryHome::~TemporaryHome() {
    removeTree(folder());
}

QString TemporaryHome::path(const QString& relative) const {
    return relative.isEmpty() ? folder() : folder() + u'/' + relative;
}

QString TemporaryHome::write(const QString& relative, const QByteArray& bytes) const {
    const auto target = path(relative);
    QFile file(target);
    if (!QDir().mkpath(QFileInfo(target).path()) || !file.open(QIODevice::WriteOnly) ||
        file.write(bytes) != bytes.size() || !file.flush()) {
        throw std::runtime_error("a test's file could not be written");
    }
    return target;
}

QString TemporaryHome::writeScript(const QString& relative, const QByteArray& text) const {
    const auto target = write(relative, "#!/bin/sh\n" + text + '\n');
    QFile::setPermissions(target, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return target;
}

QByteArray TemporaryHome::read(const QString& relative) const {
    QFile file(path(relative));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace tunedeck::test
