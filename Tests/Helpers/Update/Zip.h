#pragma once

#include <QByteArray>
#include <QString>

#include <vector>

namespace tunedeck::test {

/// One entry of an archive made for a test.
struct ZipEntry {
    QByteArray name;
    QByteArray contents = {};
    unsigned mode = 0100644; ///< type and permissions
    QByteArray linkTarget = {};
};

/// How an archive is written.
struct ZipStyle {
    bool stored = false; ///< without compression
    bool zip64 = false;
    bool encrypted = false;
};

/// A zip archive with these entries in this order, whatever they are called.
QByteArray zip(const std::vector<ZipEntry>& entries, ZipStyle style = {});

/// An application bundle's entries: its Info.plist, a program and a link inside it.
std::vector<ZipEntry> appEntries(const QByteArray& version, const QByteArray& identifier, const QByteArray& program);

/// Writes a bundle as a folder.
void writeApp(const QString& path, const QByteArray& version, const QByteArray& identifier, const QByteArray& program);

} // namespace tunedeck::test
