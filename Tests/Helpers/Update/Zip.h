#pragma once

#include <QByteArray>
#include <QString>

#include <vector>

namespace tunedeck::test {

/// Entry of a test archive.
struct ZipEntry {
    QByteArray name;
    QByteArray contents = {};
    unsigned mode = 0100644; ///< type and permissions
    QByteArray linkTarget = {};
};

/// Format of a test archive.
struct ZipStyle {
    bool stored = false; ///< uncompressed
    bool encrypted = false;
};

/// A zip archive with these entries in this order. Names aren't checked.
QByteArray zip(const std::vector<ZipEntry>& entries, ZipStyle style = {});

/// Entries of an application bundle: Info.plist, a versionScript() and an internal link.
std::vector<ZipEntry> appEntries(const QByteArray& version, const QByteArray& identifier, const QByteArray& program);

/// The program of such a bundle: a script that prints the version and ends with `text`.
QByteArray versionScript(const QByteArray& version, const QByteArray& text);

/// Writes a bundle to a folder.
void writeApp(const QString& path, const QByteArray& version, const QByteArray& identifier, const QByteArray& program);

} // namespace tunedeck::test
